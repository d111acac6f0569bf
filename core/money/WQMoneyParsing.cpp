#include <WQGeneral/money/WQMoneyFormatter.h>

#include "WQMoneyFormatter_p.h"
#include "detail/WQEntryMessages.h"
#include "detail/WQTextEditing.h"

#include <charconv>
#include <limits>

namespace wq {
namespace {

// The leading decimal number: ASCII digits with at most one point. Nothing
// to read reads as 0; a number past the largest double reads as that double
// (the conversion would otherwise give back nothing at all, shown as 0).
double leadingNumber(QStringView text)
{
    // Leading zeros say nothing and would take up the buffer.
    qsizetype start = 0;
    while (start + 1 < text.size() && text[start] == u'0' && text[start + 1] != u'.')
        ++start;
    char buffer[352];
    std::size_t length = 0;
    buffer[length++] = '0';
    bool point = false;
    bool wholeDigits = false;
    bool cut = false;
    for (QChar c : text.sliced(start)) {
        const bool digit = c >= u'0' && c <= u'9';
        if (!digit && !(c == u'.' && !point))
            break;
        if (length >= sizeof buffer) {
            // Only whole digits still matter: enough of them overflow anyway.
            cut = !point && digit;
            break;
        }
        if (digit) {
            buffer[length++] = char(c.unicode());
            wholeDigits = wholeDigits || (!point && c != u'0');
        } else {
            point = true;
            buffer[length++] = '.';
        }
    }
    double value = 0;
    const std::from_chars_result read = std::from_chars(buffer, buffer + length, value);
    if (cut || (read.ec == std::errc::result_out_of_range && wholeDigits))
        return std::numeric_limits<double>::max();
    return read.ec == std::errc() ? value : 0.0;
}

} // namespace

bool WQMoneyFormatter::getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const
{
    double amount = 0;
    bool success = false;
    if (!string.isNull()) {
        QString error;
        amount = _wq_doubleValueForMoneyString(string, &error);
        success = error.isNull();
        if (errorDescription)
            *errorDescription = error;
    }
    if (value)
        *value = amount;
    return success;
}

double WQMoneyFormatter::_wq_doubleValueForMoneyString(const QString& string, QString* error) const
{
    QString text = string;
    qsizetype unusedCaret = 0;
    bool negative = false;

    _wq_removeAll(text, _wq_d->localizedThousandsSeparator, unusedCaret);
    // Two minus signs cancel.
    if (_wq_removeAll(text, u"-", unusedCaret) % 2)
        negative = !negative;
    for (;;) {
        const qsizetype open = text.indexOf(u'(');
        const qsizetype close = text.lastIndexOf(u')');
        if (open < 0 || close < 0 || open > close)
            break;
        negative = !negative;
        text.remove(close, 1);
        text.remove(open, 1);
    }
    _wq_removeAll(text, _wq_d->localizedCurrencySymbol, unusedCaret);
    // Everything but digits and the decimal separator's characters goes.
    if (_wq_d->invertedATMStyleCharSet.intersects(text)) {
        QString kept;
        kept.reserve(text.size());
        for (qsizetype i = 0; i < text.size(); ++i) {
            const qsizetype width =
                text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate() ? 2 : 1;
            const QStringView character = QStringView(text).mid(i, width);
            if (!_wq_d->invertedATMStyleCharSet.intersects(character))
                kept += character;
            i += width - 1;
        }
        text = kept;
    }

    const QString& separator = _wq_d->localizedDecimalSeparator;
    if (!separator.isEmpty()) {
        const bool symbolHasSeparator = _wq_containsText(_wq_d->localizedCurrencySymbol, separator);
        const bool symbolTrails = _wq_d->localizedPositiveFormat.endsWith(u'$');
        bool seen = false;
        qsizetype accepted = 0;
        qsizetype searchFrom = 0;
        for (qsizetype at = text.indexOf(separator); at >= 0; at = _wq_find(text, separator, searchFrom)) {
            if (!seen) {
                text.replace(at, separator.size(), QChar(u'.'));
                accepted = at;
                seen = true;
                searchFrom = at + 1;
            } else if (at == searchFrom) {
                // Repeated separators collapse into one.
                text.remove(at, separator.size());
            } else {
                if (symbolHasSeparator) {
                    if (symbolTrails && at + separator.size() == text.size()) {
                        // The point of a trailing symbol such as "kr.".
                        text.remove(at, separator.size());
                        break;
                    }
                    if (accepted == 0) {
                        // The accepted point was a leading symbol's: start over.
                        text.remove(0, 1);
                        seen = false;
                        searchFrom = 0;
                        continue;
                    }
                }
                text.replace(at, separator.size(), QChar(u'.'));
                accepted = at;
                searchFrom = at + 1;
                if (error)
                    *error = _wq_moreThanOnceMessage(separator);
            }
        }
    }

    const double amount = leadingNumber(text);
    return negative ? -amount : amount;
}

} // namespace wq
