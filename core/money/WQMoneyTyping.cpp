#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include "detail/WQEntryMessages.h"
#include "detail/WQTextEditing.h"

#include "WQMoneyPlaces.h"

#include <algorithm>

namespace wq {

bool WQMoneyFormatter::isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                            const QString& originalString, WQRange originalSelectedRange,
                                            QString* errorDescription)
{
    if (isATMMode())
        return _wq_atm_isPartialStringValid(partialString, proposedSelectedRange, originalString,
                                            originalSelectedRange, errorDescription);
    return _wq_std_isPartialStringValid(partialString, proposedSelectedRange, originalString, originalSelectedRange,
                                        errorDescription);
}

bool WQMoneyFormatter::_wq_std_isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                                    const QString&, WQRange originalSelectedRange,
                                                    QString* errorDescription)
{
    if (!partialString || !proposedSelectedRange)
        return false;
    const QString inserted = _wq_insertedText(*partialString, *proposedSelectedRange, originalSelectedRange);
    if (_wq_refuseForeign(_wq_invertedDecimalPlusLocalizedSeparatorsCharSet, inserted, errorDescription))
        return false;

    const QString& decimal = _wq_localizedDecimalSeparator;
    const QString& thousands = _wq_localizedThousandsSeparator;
    const QString& symbol = _wq_localizedCurrencySymbol;
    qsizetype caret = std::clamp<qsizetype>(proposedSelectedRange->location, 0, partialString->size());

    // Decimal checks, on a copy: one separator at most, and no more digits
    // after it than the places (one more while a closing sign is typed).
    {
        QString scratch = *partialString;
        qsizetype ignored = 0;
        _wq_collapseDoubled(scratch, decimal, ignored);
        _wq_removeAll(scratch, symbol, ignored);
        const qsizetype point = _wq_find(scratch, decimal);
        if (point >= 0) {
            const qsizetype after = point + decimal.size();
            if (after < scratch.size() && _wq_find(scratch, decimal, after) >= 0) {
                if (errorDescription)
                    *errorDescription = _wq_moreThanOnceMessage(decimal);
                return false;
            }
            const QString base = positiveFormat();
            const QString& places = base.isNull() || base.size() == 1 ? _wq_localizedPositiveFormat : base;
            quint8 allowed = 0;
            _local_decimal_place_multiplier(places, !places.isNull(), &allowed);
            qsizetype limit = allowed;
            if (scratch.endsWith(u')') || scratch.endsWith(u'-'))
                ++limit;
            if (scratch.size() - after > limit)
                return false;
        }
    }

    QString text = *partialString;
    bool negative = false;
    _wq_removeAll(text, thousands, caret);
    _wq_collapseDoubled(text, decimal, caret);
    _wq_removeAll(text, symbol, caret);
    // What is left of a partly deleted symbol, or of its blank.
    if (symbol.size() > 1) {
        for (QChar c : symbol) {
            if (QStringView(&c, 1) != decimal)
                _wq_removeAll(text, QStringView(&c, 1), caret);
        }
    }
    if (_wq_removeAll(text, u"-", caret) % 2)
        negative = !negative;
    if (_wq_removeAll(text, u"(", caret) % 2)
        negative = !negative;
    _wq_removeAll(text, u")", caret);

    // 0.5 becomes .5 before decoration, as intended.
    _wq_dropLeadingZeros(text, caret);

    QString localized;
    const QString format = _wq_formatForMoney(negative, &localized);
    if (localized.contains(u',') && !thousands.isEmpty()) {
        const bool deleting = WQToolkit::shared().currentEvent().isDeleteKeyDown();
        _wq_insertGrouping(text, thousands, decimal, [&](qsizetype q) {
            if (q >= caret)
                return;
            if (!deleting || QStringView(text).mid(caret, thousands.size()) != thousands)
                ++caret;
        });
    }

    caret = std::clamp<qsizetype>(caret, 0, text.size());
    if (text.isEmpty())
        if (WQFieldEditor* editor = WQToolkit::shared().keyFieldEditor())
            editor->setSelectedRange({caret, proposedSelectedRange->length});

    if (format.contains(u'$')) {
        if (_wq_localizedPositiveFormat.endsWith(u'$')) {
            text += symbol;
        } else {
            text.prepend(symbol);
            caret += symbol.size();
        }
    }
    if (negative) {
        if (_wq_localizedNegativeFormat.contains(u'-')) {
            text.prepend(u'-');
            ++caret;
        } else if (_wq_localizedNegativeFormat.contains(u'(') && _wq_localizedNegativeFormat.contains(u')')) {
            text = u'(' + text + u')';
            ++caret;
        }
    }

    proposedSelectedRange->location = caret;
    proposedSelectedRange->length = std::clamp<qsizetype>(proposedSelectedRange->length, 0, text.size() - caret);
    _wq_setRewrite(partialString, std::move(text));
    if (errorDescription)
        *errorDescription = QString();
    return false;
}

} // namespace wq
