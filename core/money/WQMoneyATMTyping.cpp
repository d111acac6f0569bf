#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include "detail/WQEntryMessages.h"
#include "detail/WQTextEditing.h"

#include "WQMoneyPlaces.h"

#include <cmath>

namespace wq {
namespace {

// Digits and "-" only: the separators have no place when digits enter
// from the right.
const WQDigitSet& notATMKeys()
{
    static const WQDigitSet set = WQDigitSet::decimalDigitsPlus({u"-"}).invertedSet();
    return set;
}

} // namespace

bool WQMoneyFormatter::_wq_atm_isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                                    const QString& originalString, WQRange originalSelectedRange,
                                                    QString* errorDescription)
{
    if (!partialString || !proposedSelectedRange)
        return false;
    const QString inserted = _wq_insertedText(*partialString, *proposedSelectedRange, originalSelectedRange);
    // Errors of the parses below are not shown: only whether the paste
    // had one matters.
    QString pasteError;
    double pasted = 0;
    if (inserted.size() <= 1) {
        if (_wq_refuseForeign(notATMKeys(), inserted, errorDescription))
            return false;
    } else {
        pasted = _wq_doubleValueForMoneyString(inserted, &pasteError);
    }

    const auto multiplierFor = [this](bool negative) {
        const QString pattern = _wq_formatForMoney(negative);
        return double(_local_decimal_place_multiplier(pattern, !pattern.isNull()));
    };

    if (WQToolkit::shared().currentEvent().isDeleteKeyDown()) {
        // The last digit goes, whatever was selected.
        const double value = _wq_doubleValueForMoneyString(originalString, nullptr);
        const double m = multiplierFor(value < 0);
        const double shifted = value * m / 10;
        _wq_setRewrite(partialString, stringForAmount((value < 0 ? std::ceil(shifted) : std::floor(shifted)) / m));
    } else if (inserted.size() == 1) {
        const double value = _wq_doubleValueForMoneyString(originalString, nullptr);
        double amount;
        if (inserted == u"-") {
            amount = -value;
        } else {
            const double digit = std::max(0, inserted.front().digitValue());
            if (originalSelectedRange.length != originalString.size()) {
                // The digit enters at the right, wherever the caret stood.
                const bool negative = 10 * value < 0;
                const double m = multiplierFor(negative);
                amount = negative ? 10 * value - digit / m : 10 * value + digit / m;
            } else {
                // All selected: the digit replaces the amount, the sign stays.
                const double m = multiplierFor(value < 0);
                amount = value < 0 ? -(digit / m) : digit / m;
            }
        }
        _wq_setRewrite(partialString, stringForAmount(amount));
    } else if (pasteError.isNull()) {
        // A paste, or a cut (nothing inserted: zero).
        _wq_setRewrite(partialString, stringForAmount(pasted));
    } else {
        // A paste that does not read as one amount stays as pasted.
        _wq_setRewrite(partialString, *partialString);
    }

    proposedSelectedRange->location = partialString->size();
    proposedSelectedRange->length = 0;
    if (errorDescription)
        *errorDescription = QString();
    return false;
}

} // namespace wq
