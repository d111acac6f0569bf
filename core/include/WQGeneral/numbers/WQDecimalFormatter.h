#pragma once
/// \class wq::WQDecimalFormatter
/// Plain decimal numbers (rates, shares): keystrokes are only filtered.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/numbers/WQNumberFormatter.h>

namespace wq {

/// \addtogroup numbers
/// @{

class WQ_CORE_EXPORT WQDecimalFormatter : public WQNumberFormatter {
public:
    WQDecimalFormatter();

    /// The numeric locale's decimal separator; "." when it has none. Also
    /// the money formatter's decimal separator under system settings.
    static QString systemDecimalSeparator();

    /// A null or empty separator means "."; the typing filter follows it.
    void setDecimalSeparator(const QString& separator) override;

    /// Whole numbers within 32 bits without decimals, anything else with two.
    std::optional<QString> stringForObjectValue(const QVariant& value) const override;
    /// Minus signs anywhere flip the sign; other foreign characters are dropped.
    bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const override;
    /// true for a valid edit, false with a message for a refused one.
    bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                              const QString& originalString, WQRange originalSelectedRange,
                              QString* errorDescription) override;

private:
    QString _wq_decimalSeparator_string;
    WQDigitSet _wq_invertedDecimalSetPlusLocalizedSeparator_character_set;
};

/// @}

} // namespace wq
