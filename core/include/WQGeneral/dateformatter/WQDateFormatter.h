#pragma once
/// \class wq::WQDateFormatter
/// The entry formatter of date fields: shows a WQDate in a date format, reads
/// typed text back in the order of that format (missing numbers come from
/// today), lets only digits, the separator and the increment keys be typed,
/// and turns the increment keys into steps of the date in the field:
/// \verbatim
///   + or =   next day (Alt: next month)      - previous day (Alt: previous month)
///   U+2260, U+00B1   next month               U+2013   previous month
///   t or T   today
/// \endverbatim
/// Its class side (the user's date patterns and names) is WQSystemDateSettings.
///
/// Text is read as a date only when its year lies between kEarliestYear and
/// kLatestYear, the years the four-digit storage layouts write and read
/// back; an application may narrow that to a range of its own
/// (setDateRange), which the increment keys keep to as well.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace wq {

/// \addtogroup dateformatter
/// @{

class WQ_CORE_EXPORT WQDateFormatter : public WQFormatter, public WQSystemDateSettings {
public:
    /// Where "today" comes from; nullopt when the clock cannot be read.
    using TodayProvider = std::function<std::optional<WQDate>()>;

    /// Usually given shortDateFormat(). Either date-pattern letters (M/d/yy)
    /// or percent directives (%m/%d/%y).
    explicit WQDateFormatter(const QString& format);
    /// A formatter with the same format, range and today.
    WQDateFormatter(const WQDateFormatter& other);
    /// Takes other's format, range and today.
    WQDateFormatter& operator=(const WQDateFormatter& other);
    ~WQDateFormatter() override;

    /// A new format is announced with kWQNotif_FormatterChanged.
    void setDateFormat(const QString& format);
    /// The format as given to the constructor or setDateFormat().
    const QString& dateFormat() const noexcept;
    /// The one character typed between the numbers ("\0" when the format has none).
    const QString& localizedSeparator() const noexcept;

    /// Whether years show with four digits (yyyy or %Y) rather than two.
    bool showCentury() const noexcept;
    /// Whether days below 10 show with a leading zero.
    bool zeroPadDate() const noexcept;
    /// Whether months below 10 show with a leading zero.
    bool zeroPadMonth() const noexcept;
    /// 0-based places of the month and the day among the format's date fields.
    int monthPosition() const noexcept;
    /// 0-based place of the day among the format's date fields.
    int dayPosition() const noexcept;

    /// The first year text is read in: what "%04ld" writes in four characters.
    static constexpr qint64 kEarliestYear = -999;
    /// The last year text is read in.
    static constexpr qint64 kLatestYear = 9999;

    /// The earliest date text is read as; nullopt (the default) for none
    /// beyond kEarliestYear. A minimum after the maximum moves the maximum to it.
    void setMinimumDate(std::optional<WQDate> minimum);
    /// The earliest date of the application's range, if it set one.
    const std::optional<WQDate>& minimumDate() const noexcept;
    /// The latest date text is read as; nullopt (the default) for none beyond
    /// kLatestYear. A maximum before the minimum moves the minimum to it.
    void setMaximumDate(std::optional<WQDate> maximum);
    /// The latest date of the application's range, if it set one.
    const std::optional<WQDate>& maximumDate() const noexcept;
    /// Both limits at once; a maximum before the minimum is taken as the minimum.
    void setDateRange(std::optional<WQDate> minimum, std::optional<WQDate> maximum);

    /// Today is read on every call that needs it; the default reads the
    /// system clock. An empty provider restores the default.
    void setTodayProvider(TodayProvider provider);
    /// Today from the provider in force; nullopt when the clock cannot be read.
    std::optional<WQDate> today() const;

    /// A WQDate in the format; a string as it is; nullopt for anything else.
    std::optional<QString> stringForObjectValue(const QVariant& value) const override;
    /// Up to three numbers split at the separator; stores a WQDate. Besides
    /// the four refusals of an unreadable text, a year outside kEarliestYear
    /// to kLatestYear is "Invalid year entry." and a date outside the range
    /// says which limit it passed, in this formatter's format.
    bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const override;
    /// The same as a WQDate, for callers that do not want a QVariant.
    std::optional<WQDate> dateForString(const QString& string, QString* errorDescription = nullptr) const;
    bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                              const QString& originalString, WQRange originalSelectedRange,
                              QString* errorDescription) override;

    /// A step of the date in a field: months and days to add, or a jump to today.
    struct IncrementStep {
        /// Months to add (negative to go back).
        qint64 months = 0;
        /// Days to add (negative to go back).
        qint64 days = 0;
        /// Jump to today instead of stepping.
        bool today = false;
    };
    /// The step that typed text makes when it holds an increment key (the
    /// first kind found, in the order of the table above); nullopt otherwise.
    /// Date pickers use it for the same keys.
    static std::optional<IncrementStep> incrementStep(const QString& insertedText, bool optionKeyDown);

protected:
    /// Reads the format into the display flags and the separator; for subclasses that change it.
    void _wq_processFormat();

private:
    // True when insertedText holds no increment key; otherwise steps the date
    // of originalString into *partialString (caret at its end) when that text
    // parses, and answers false either way.
    bool _wq_incrementDecrement(const QString& insertedText, const QString& originalString,
                                QString* partialString, WQRange* proposedSelectedRange) const;

    QString _wq_render(const WQDate& date) const;
    /// Why date cannot be read (year or range); empty when it can.
    QString _wq_outOfRange(const WQDate& date) const;

    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
};

/// @}

} // namespace wq
