#pragma once
/// \class wq::WQNumberFormatter
/// The base of the number entry formatters: a settable positive and negative
/// pattern and a decimal-style display and parsing of plain numbers, done by
/// ICU for the numeric locale. Subclasses add their own typing rules.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

namespace wq {

/// \addtogroup numbers
/// @{

class WQ_CORE_EXPORT WQNumberFormatter : public WQFormatter {
public:
    WQNumberFormatter();
    ~WQNumberFormatter() override;
    WQNumberFormatter(const WQNumberFormatter&) = delete;
    WQNumberFormatter& operator=(const WQNumberFormatter&) = delete;

    /// Sets both patterns: "#,##0" gives #,##0 and -#,##0.
    void setFormat(const QString& pattern);
    /// Null until set.
    QString positiveFormat() const;
    /// Null until set.
    QString negativeFormat() const;
    /// The pattern for zero and positive numbers.
    void setPositiveFormat(const QString& format);
    /// The pattern for negative numbers.
    void setNegativeFormat(const QString& format);

    /// The numeric locale's separators unless set.
    QString decimalSeparator() const;
    /// Overrides the locale's decimal separator; an empty one means ".".
    /// Virtual so that a subclass keeps what it derives from the separator
    /// however it is set.
    virtual void setDecimalSeparator(const QString& separator);
    /// The numeric locale's grouping separator.
    QString groupingSeparator() const;

    /// Numbers in the patterns; strings, bools and anything else have no
    /// display (nullopt).
    std::optional<QString> stringForObjectValue(const QVariant& value) const override;
    /// The whole text must be a number of the patterns; an empty text is a
    /// success without a value (a null QVariant).
    bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const override;

protected:
    /// Called after a pattern changed, for subclasses that keep what they
    /// derive from the patterns.
    virtual void _wq_patternsChanged() {}

private:
    struct _wq_Icu;
    _wq_Icu& _wq_icu() const;
    void _wq_invalidate();

    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
};

/// @}

} // namespace wq
