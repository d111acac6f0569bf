#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include "detail/WQTextEditing.h"

#include "detail/WQEntryMessages.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace wq {

QString WQDecimalFormatter::systemDecimalSeparator()
{
    const QString separator = WQNumberSettings::decimalSeparator();
    return separator.isEmpty() ? QStringLiteral(".") : separator;
}

WQDecimalFormatter::WQDecimalFormatter()
{
    setDecimalSeparator(systemDecimalSeparator());
    setFormat(QStringLiteral("0"));
}

void WQDecimalFormatter::setDecimalSeparator(const QString& separator)
{
    WQNumberFormatter::setDecimalSeparator(separator.isEmpty() ? QStringLiteral(".") : separator);
    _wq_decimalSeparator_string = WQNumberFormatter::decimalSeparator();
    _wq_invertedDecimalSetPlusLocalizedSeparator_character_set =
        WQDigitSet::decimalDigitsPlus({_wq_decimalSeparator_string}).invertedSet();
}

std::optional<QString> WQDecimalFormatter::stringForObjectValue(const QVariant& value) const
{
    if (value.typeId() == QMetaType::QString && value.toString().isEmpty())
        return QStringLiteral("");
    const std::optional<double> number = _wq_numberValue(value);
    if (!number)
        return WQNumberFormatter::stringForObjectValue(value);
    const double d = *number;
    // Only a value inside the 32-bit range can equal its 32-bit integer.
    if (d >= double(std::numeric_limits<qint32>::min()) && d <= double(std::numeric_limits<qint32>::max())
        && d == double(qint32(d)))
        return QString::number(qint32(d));
    char buffer[400];
    std::snprintf(buffer, sizeof buffer, "%.2f", d);
    QString text = QString::fromLatin1(buffer);
    text.replace(u'.', _wq_decimalSeparator_string);
    return text;
}

bool WQDecimalFormatter::getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const
{
    const auto& foreign = _wq_invertedDecimalSetPlusLocalizedSeparator_character_set;
    if (!string.contains(u'-') && !foreign.intersects(string))
        return WQNumberFormatter::getObjectValue(value, string, errorDescription);

    QString cleaned;
    cleaned.reserve(string.size() + 1);
    bool negative = false;
    for (qsizetype i = 0; i < string.size(); ++i) {
        const QChar c = string[i];
        if (c == u'-') {
            negative = !negative;
            continue;
        }
        char32_t code = c.unicode();
        qsizetype width = 1;
        if (c.isHighSurrogate() && i + 1 < string.size() && string[i + 1].isLowSurrogate()) {
            code = QChar::surrogateToUcs4(c, string[i + 1]);
            width = 2;
        }
        if (!foreign.contains(code))
            cleaned += QStringView(string).mid(i, width);
        i += width - 1;
    }
    if (negative)
        cleaned.prepend(u'-');
    return WQNumberFormatter::getObjectValue(value, cleaned, errorDescription);
}

bool WQDecimalFormatter::isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                              const QString&, WQRange originalSelectedRange,
                                              QString* errorDescription)
{
    if (!partialString || !proposedSelectedRange)
        return false;
    const QString inserted = _wq_insertedText(*partialString, *proposedSelectedRange, originalSelectedRange);
    if (_wq_refuseForeign(_wq_invertedDecimalSetPlusLocalizedSeparator_character_set, inserted, errorDescription))
        return false;
    if (partialString->isEmpty())
        if (WQFieldEditor* editor = WQToolkit::shared().keyFieldEditor())
            editor->setSelectedRange(*proposedSelectedRange);
    if (errorDescription)
        *errorDescription = QString();
    // A valid edit stands as proposed.
    return true;
}

} // namespace wq
