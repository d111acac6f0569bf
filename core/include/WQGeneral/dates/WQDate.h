#pragma once
/// \class wq::WQDate
/// A calendar date of the proleptic Gregorian calendar, with no time of day and
/// no time zone: the date every document stores, shows and computes with.
///
/// Construction folds overflowing months and days forward (2023-01-32 is
/// 2023-02-01); a day of 0, and month 0 with day 0, are kept as given, and
/// 0000-00-00 (also the default value) stands for "no date" where a parse
/// fails. Weekdays run 0 = Sunday ... 6 = Saturday; day 1 of the common era is
/// 0001-01-01.
///
/// Years are signed 64-bit. Operations whose result cannot be represented
/// (a year past the 64-bit range, a day count past 64 bits) raise
/// NSRangeException instead of wrapping.
///
/// WQDate is a Qt metatype from the moment the program starts: a QVariant
/// holding one converts to and from QDate (toQDate(), fromQDate()) and
/// QString (the storage layout YYYY-MM-DD), so item views, QDataWidgetMapper
/// and QML show and take dates without being told how. The no-date value
/// converts to neither.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQExceptions.h>

#include <QDate>
#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <compare>
#include <optional>

namespace wq {

/// \addtogroup dates
/// @{

class WQ_CORE_EXPORT WQDate {
public:
    /// 0000-00-00, the "no date" value.
    constexpr WQDate() = default;
    /// Normalises: months above 12 carry into the year, days beyond the month
    /// carry into the following months.
    WQDate(qint64 year, quint64 month, quint64 day);

    // --- class side ---------------------------------------------------------
    /// 0 for month 0 or above 12.
    static quint8 daysInMonth(quint8 month, qint64 year) noexcept;
    /// Gregorian leap years: every fourth, except centuries not divisible by 400.
    static bool isLeapYear(qint64 year) noexcept;
    /// Today in the system time zone; nullopt if the clock cannot be broken down.
    static std::optional<WQDate> date();
    /// The same as the constructor, normalising alike.
    static WQDate dateWithYear(qint64 year, quint64 month, quint64 day) { return WQDate(year, month, day); }
    /// nullopt (and a log line) for day numbers below 1.
    static std::optional<WQDate> dateWithDayOfCommonEra(qint64 dayNumber);

    // --- fields -------------------------------------------------------------
    /// The year; 0 and below are the years before 1 CE (astronomical numbering).
    constexpr qint64 yearOfCommonEra() const noexcept { return _wq_year; }
    /// 1 to 12, or 0 where the date was made with month 0.
    constexpr quint64 monthOfYear() const noexcept { return _wq_month; }
    /// 1 to 31, or 0 where the date was made with day 0.
    constexpr quint64 dayOfMonth() const noexcept { return _wq_day; }

    // --- day counting (constant time) ---------------------------------------
    /// Years before 1500, and month 0, follow the same 400-year Gregorian cycle
    /// as later years (month 0 counts as January, so 2024-00-00 is a Sunday
    /// like 2023-12-31).
    quint8 dayOfWeek() const noexcept;
    /// 1 for 1 January; month 0 counts as January.
    quint16 dayOfYear() const noexcept;
    /// Years of 0 and below count no years: the answer is their day of year.
    /// Raises NSRangeException past what a signed 64-bit day count holds.
    qint64 dayOfCommonEra() const;

    // --- comparison ---------------------------------------------------------
    /// -1, 0 or +1 by year, month, day.
    int compare(const WQDate& other) const noexcept { return compareWithDate(other); }
    /// Raises NSBadComparisonException unless the value holds a WQDate.
    int compare(const QVariant& other) const;
    /// -1, 0 or +1 by year, month, day.
    int compareWithDate(const WQDate& other) const noexcept;
    /// Quiet: anything that is not a WQDate is simply not equal.
    bool isEqual(const QVariant& other) const noexcept;
    /// True for the same year, month and day.
    bool isEqual(const WQDate& other) const noexcept { return *this == other; }
    /// Strict: raises NSBadComparisonException unless the value holds a WQDate.
    bool isEqualToDate(const QVariant& other) const;
    /// True for the same year, month and day.
    bool isEqualToDate(const WQDate& other) const noexcept { return *this == other; }
    /// True when both dates lie in the same year.
    bool isSameYearAs(const WQDate& other) const noexcept { return _wq_year == other._wq_year; }
    /// True when both dates lie in the same month of the same year.
    bool isSameMonthAs(const WQDate& other) const noexcept
    {
        return _wq_month == other._wq_month && _wq_year == other._wq_year;
    }
    /// True for the same year, month and day.
    bool isSameDayAs(const WQDate& other) const noexcept { return *this == other; }
    /// True when this date is earlier than other.
    bool comesBefore(const WQDate& other) const noexcept { return *this < other; }
    /// True when this date is later than other.
    bool comesAfter(const WQDate& other) const noexcept { return *this > other; }

    friend constexpr bool operator==(const WQDate&, const WQDate&) = default;
    // The checker takes the defaulted comparison's literal 0 for a null pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    friend constexpr std::strong_ordering operator<=>(const WQDate&, const WQDate&) = default;

    // --- arithmetic ---------------------------------------------------------
    /// Years and months first, days last; a day past the end of the target
    /// month carries into the next month (2023-01-31 + 1 month = 2023-03-03).
    WQDate dateByAddingYears(qint64 years, qint64 months, qint64 days) const;

    /// Fills the places given (nullptr = not wanted) with this date minus
    /// `other`: positive when this date is later. Days borrowed for a month
    /// are counted in the earlier date's month.
    void yearsMonthsDaysSinceDate(qint64* years, qint64* months, qint64* days, const WQDate& other) const;
    /// The parts asked of yearsMonthsDaysSinceDate(); a part not wanted stays empty.
    struct Difference {
        /// Whole years; empty where not wanted.
        std::optional<qint64> years, months, days;
        /// \var months
        /// Whole months; empty where not wanted.
        /// \var days
        /// Whole days; empty where not wanted.
    };
    /// The same, answering only the parts wanted.
    Difference yearsMonthsDaysSinceDate(const WQDate& other, bool wantYears, bool wantMonths, bool wantDays) const;

    // --- text ---------------------------------------------------------------
    /// `format` is either percent directives ("%Y-%m-%d") or, when it holds no
    /// '%', date-pattern letters ("M/d/yy"). Names come from `locale` (the
    /// dictionary keyed by WQDateLocaleKey_...); missing names are left out.
    /// Results are cached (a fixed number per thread, the least recently used
    /// making room). Raises
    /// NSInvalidArgumentException for an unknown directive and
    /// NSRangeException for a '%' that ends the format.
    QString descriptionWithCalendarFormat(const QString& format, const std::optional<QVariantMap>& locale) const;
    /// The same without making an optional copy of the dictionary.
    QString descriptionWithCalendarFormat(const QString& format, const QVariantMap& locale) const;
    /// Names from the system's regional settings.
    QString descriptionWithCalendarFormat(const QString& format) const;
    QString description() const;                               ///< "%Y-%m-%d"
    /// The date as "%Y-%m-%d" with names from locale.
    QString descriptionWithLocale(const QVariantMap& locale) const;
    QString debugDescription() const;                          ///< "%ld-%02d-%02d", no cache

    /// The cache of the calling thread: each thread keeps its own texts, so
    /// that threads never wait for each other.
    QString cacheKeyForFormat(const QString& format, const std::optional<QVariantMap>& locale) const;
    /// A cached text of the calling thread, or nullopt.
    static std::optional<QString> cachedValueForKey(const QString& key);
    /// Keeps a text in the calling thread's cache, making room when it is full.
    static void cacheValue(const QString& value, const QString& key);

    /// Reads `text` by the percent directives of `format`; 0000-00-00 when the
    /// text does not match. Names match without regard to case; %y reads 69-99
    /// as 19xx and 00-68 as 20xx; %Y reads a signed year, four digits when
    /// another directive follows at once. Fields the format does not mention
    /// default to January, day 1 and the current year. A bad format raises as
    /// descriptionWithCalendarFormat does.
    static WQDate dateWithString(const QString& text, const QString& format, const std::optional<QVariantMap>& locale);
    /// Reads text with the system's month and weekday names.
    static WQDate dateWithString(const QString& text, const QString& format);

    // --- conversions --------------------------------------------------------
    /// The calendar date of that moment in the system time zone. An invalid
    /// QDateTime raises NSInternalInconsistencyException.
    static WQDate dateWithNSDate(const QDateTime& moment);
    /// The first moment of the date in the system time zone (midnight, or the
    /// end of a daylight-saving gap that swallows midnight). Day 0 is the last
    /// day of the previous month. Invalid past QDate's range.
    QDateTime nsDate() const;
    /// The same calendar day as a QDate (which has no year 0: year 0 here is
    /// its year -1). An invalid QDate for the no-date value, a month or day
    /// of 0, and years beyond QDate's range.
    QDate toQDate() const;
    /// The same calendar day; the no-date value for an invalid QDate.
    static WQDate fromQDate(const QDate& date);

    // --- fixed storage layouts ----------------------------------------------
    /// MM/DD/YYYY: month and day zero-padded to two digits, the year to four
    /// (more when it has them; a negative year keeps its sign within the four).
    QString optimizedStringTovanaFormat() const;
    /// Reads MM/DD/YYYY by character position, not by pattern, as the files of
    /// older versions need: nullopt only for a text shorter than 10 units. The
    /// month is read from units 0-1, the day from 3-4 and the year from unit 6
    /// to the end, each as the C library's atoi reads a number (leading white
    /// space, a sign, the leading ASCII digits, 0 without any; what follows is
    /// ignored); units 2 and 5 are not looked at. So "12-31-1999" and
    /// " 3/ 5/ 2024 and more" read too, and "xx/yy/zzzz" reads as 0000-00-00.
    /// The year is cut to 32 bits, month and day to 8 bits, and the fields
    /// are then normalised as the constructor does ("13/01/2024" is 2025-01-01).
    static std::optional<WQDate> optimizedDateWithStringTovanaFormat(const QString& text);
    /// YYYY-MM-DD: the year zero-padded to four digits (more when it has them;
    /// a negative year keeps its sign within the four), month and day to two.
    QString optimizedStringXMLFormat() const;
    /// Reads YYYY-MM-DD by character position, not by pattern: nullopt only for
    /// a text shorter than 10 units. The year is read from units 0-3, the month
    /// from 5-6 and the day from 8-9, each as atoi reads a number (as
    /// optimizedDateWithStringTovanaFormat() does); units 4 and 7 and all after
    /// unit 9 are not looked at, so "2024x03y05 and more" is 2024-03-05 and
    /// "2024-03-05T10:00:00" reads its date. Fields are cut and normalised as
    /// there. Only a year of four characters reads back what
    /// optimizedStringXMLFormat() wrote: a longer one shifts every field.
    static std::optional<WQDate> optimizedDateWithStringXMLFormat(const QString& text);
    /// The same positions in a NUL-terminated C string, read no further than
    /// its terminator: nullopt only for nullptr or an empty string; a shorter
    /// text reads the fields it reaches ("2024" is 2024-00-00, "x" 0000-00-00).
    static std::optional<WQDate> optimizedDateWithCStringXMLFormat(const char* text);

private:
    struct Raw {};
    constexpr WQDate(Raw, qint64 year, quint8 month, quint8 day) noexcept
        : _wq_year(year), _wq_month(month), _wq_day(day) {}

    qint64 _wq_year = 0;
    quint8 _wq_month = 0;
    quint8 _wq_day = 0;
};

/// @}

} // namespace wq

Q_DECLARE_METATYPE(wq::WQDate)

/// \cond
namespace wq::_wq_metatype {
// Defined beside the QVariant converters, which are registered as the library
// starts. Every file that includes this header names it, so a static link
// always takes the registration in, whatever the application calls.
WQ_CORE_EXPORT extern const bool kWQDateConvertersRegistered;
[[gnu::used]] static const bool* const kWQDateConvertersAnchor = &kWQDateConvertersRegistered;
} // namespace wq::_wq_metatype
/// \endcond
