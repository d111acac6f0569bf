#include <WQGeneral/money/WQMoneyFormatter.h>

#include "WQMoneyFormatter_p.h"
#include <WQGeneral/formatters/WQToolkit.h>
#include "detail/WQEntryMessages.h"
#include "detail/WQTextEditing.h"

#include "WQMoneyPlaces.h"
#include "WQStandardTyping.h"

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
    if (_wq_refuseForeign(_wq_d->invertedDecimalPlusLocalizedSeparatorsCharSet, inserted, errorDescription))
        return false;

    WQStandardTypingSettings settings;
    settings.thousands = _wq_d->localizedThousandsSeparator;
    settings.decimal = _wq_d->localizedDecimalSeparator;
    settings.symbol = _wq_d->localizedCurrencySymbol;
    settings.places = _wq_d->plan.places[0];
    for (int sign = 0; sign < 2; ++sign) {
        settings.grouping[sign] = _wq_d->plan.grouping[sign];
        settings.symbolShown[sign] = _wq_d->plan.symbol[sign];
    }
    settings.symbolAtEnd = _wq_d->plan.symbolAtEnd;
    settings.negativeSign = _wq_d->plan.negativeSign;

    const qsizetype caret = std::clamp<qsizetype>(proposedSelectedRange->location, 0, partialString->size());
    const bool deleting = WQToolkit::shared().currentEvent().isDeleteKeyDown();
    WQStandardTypingAnswer answer = _wq_standardTyping(settings, *partialString, caret, deleting);
    switch (answer.kind) {
    case WQStandardTypingAnswer::Kind::RefusedTwice:
        if (errorDescription)
            *errorDescription = _wq_moreThanOnceMessage(_wq_d->localizedDecimalSeparator);
        return false;
    case WQStandardTypingAnswer::Kind::RefusedSilently:
        return false;
    case WQStandardTypingAnswer::Kind::Rewritten:
        break;
    }
    if (answer.emptyCaret >= 0)
        if (WQFieldEditor* editor = WQToolkit::shared().keyFieldEditor())
            editor->setSelectedRange({answer.emptyCaret, proposedSelectedRange->length});

    proposedSelectedRange->location = answer.caret;
    proposedSelectedRange->length =
        std::clamp<qsizetype>(proposedSelectedRange->length, 0, answer.text.size() - answer.caret);
    _wq_setRewrite(partialString, std::move(answer.text));
    if (errorDescription)
        *errorDescription = QString();
    return false;
}

namespace {

// The decimal checks run on the text without the symbol and with doubled
// separators collapsed. Only text holding the separator's first character
// can hold the separator afterwards: the edits add nothing.
WQStandardTypingAnswer::Kind checkDecimals(const WQStandardTypingSettings& settings, QStringView proposed)
{
    const QStringView decimal = settings.decimal;
    if (decimal.isEmpty() || !proposed.contains(decimal.front()))
        return WQStandardTypingAnswer::Kind::Rewritten;
    WQTextEditChain edits;
    edits.collapseDoubled(decimal);
    edits.removeAll(settings.symbol);
    QString scratch;
    edits.run(proposed, scratch);
    const qsizetype point = _wq_find(scratch, decimal);
    if (point < 0)
        return WQStandardTypingAnswer::Kind::Rewritten;
    const qsizetype after = point + decimal.size();
    if (after < scratch.size() && _wq_find(scratch, decimal, after) >= 0)
        return WQStandardTypingAnswer::Kind::RefusedTwice;
    // One more place while a closing sign is typed.
    qsizetype limit = settings.places;
    if (scratch.endsWith(u')') || scratch.endsWith(u'-'))
        ++limit;
    return scratch.size() - after > limit ? WQStandardTypingAnswer::Kind::RefusedSilently
                                          : WQStandardTypingAnswer::Kind::Rewritten;
}

} // namespace

WQStandardTypingAnswer _wq_standardTyping(const WQStandardTypingSettings& settings, QStringView proposed,
                                          qsizetype caret, bool deleting)
{
    WQStandardTypingAnswer answer;
    answer.kind = checkDecimals(settings, proposed);
    if (answer.kind != WQStandardTypingAnswer::Kind::Rewritten)
        return answer;

    // Separators, symbol (whole, then what is left of a partly deleted one
    // or of its blank) and signs out, in one pass.
    const QStringView symbol = settings.symbol;
    WQTextEditChain edits;
    edits.removeAll(settings.thousands);
    edits.collapseDoubled(settings.decimal);
    edits.removeAll(symbol);
    if (symbol.size() > 1) {
        for (qsizetype i = 0; i < symbol.size(); ++i) {
            if (symbol.sliced(i, 1) != settings.decimal)
                edits.removeAll(symbol.sliced(i, 1));
        }
    }
    const int minus = edits.removeAll(u"-");
    const int opening = edits.removeAll(u"(");
    edits.removeAll(u")");
    QString stripped;
    edits.run(proposed, stripped, &caret);
    const bool negative = (edits.count(minus) + edits.count(opening)) % 2 == 1;

    // 0.5 becomes .5 before decoration, as intended; all zeros leave "0".
    QStringView digits = stripped;
    if (digits.size() > 1) {
        qsizetype zeros = 0;
        while (zeros < digits.size() && digits[zeros] == u'0')
            ++zeros;
        caret -= std::min(zeros, caret);
        if (zeros == digits.size()) {
            digits = digits.first(1);
            caret = 1;
        } else {
            digits = digits.sliced(zeros);
        }
    }

    const QStringView thousands = settings.thousands;
    const bool grouping = settings.grouping[negative] && !thousands.isEmpty();
    const qsizetype decimalAt = grouping ? _wq_find(digits, settings.decimal) : -1;
    const qsizetype integerEnd = decimalAt >= 0 ? decimalAt : digits.size();
    const qsizetype separators = grouping ? _wq_groupingCount(integerEnd) : 0;
    const qsizetype body = digits.size() + separators * thousands.size();
    const bool symbolShown = settings.symbolShown[negative];
    const bool symbolInFront = symbolShown && !settings.symbolAtEnd;
    const char sign = negative ? settings.negativeSign : '\0';

    answer.text = QString(body + (symbolShown ? symbol.size() : 0) + (sign == '-' ? 1 : sign == '(' ? 2 : 0),
                          Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(answer.text.data());
    if (sign)
        *out++ = char16_t(sign);
    if (symbolInFront)
        out = std::copy_n(symbol.utf16(), symbol.size(), out);
    if (grouping) {
        [[maybe_unused]] const qsizetype written = _wq_writeGrouped(out, digits, thousands, integerEnd, [&](qsizetype q, const auto& holdsSeparatorAt) {
            if (q >= caret)
                return;
            if (!deleting || !holdsSeparatorAt(caret))
                ++caret;
        });
        Q_ASSERT(written == body);
    } else {
        std::copy_n(digits.utf16(), digits.size(), out);
    }
    out += body;
    if (symbolShown && !symbolInFront)
        out = std::copy_n(symbol.utf16(), symbol.size(), out);
    if (sign == '(')
        *out++ = u')';

    caret = std::clamp<qsizetype>(caret, 0, body);
    if (body == 0)
        answer.emptyCaret = caret;
    if (symbolInFront)
        caret += symbol.size();
    if (sign)
        ++caret;
    answer.caret = caret;
    return answer;
}

} // namespace wq
