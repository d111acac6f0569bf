#pragma once
/// \class wq::WQPositiveIntegerFormatter
/// Whole numbers that cannot be negative (counts, numbers of payments): the
/// digits are regrouped as the user types.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/numbers/WQNumberFormatter.h>

namespace wq {

/// \addtogroup numbers
/// @{

class WQ_CORE_EXPORT WQPositiveIntegerFormatter : public WQNumberFormatter {
public:
    WQPositiveIntegerFormatter();

    /// An empty string shows as ""; numbers as the base shows them (#,##0).
    std::optional<QString> stringForObjectValue(const QVariant& value) const override;
    bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                              const QString& originalString, WQRange originalSelectedRange,
                              QString* errorDescription) override;

    /// The grouping separator in force.
    QString localizedThousandsSeparator() const { return _wq_localizedThousandsSeparator_string; }

private:
    QString _wq_localizedThousandsSeparator_string;
    WQDigitSet _wq_invertedDecimalSetPlusLocalizedSeparators_character_set;
};

/// @}

} // namespace wq
