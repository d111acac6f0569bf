#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include "detail/WQTextEditing.h"
#include <WQGeneral/formatters/WQToolkit.h>

#include "detail/WQEntryMessages.h"

namespace wq {

WQPositiveIntegerFormatter::WQPositiveIntegerFormatter()
    : _wq_localizedThousandsSeparator_string(WQNumberSettings::groupingSeparator())
    , _wq_invertedDecimalSetPlusLocalizedSeparators_character_set(
          WQDigitSet::decimalDigitsPlus({_wq_localizedThousandsSeparator_string}).invertedSet())
{
    setFormat(QStringLiteral("#,##0"));
}

std::optional<QString> WQPositiveIntegerFormatter::stringForObjectValue(const QVariant& value) const
{
    if (value.typeId() == QMetaType::QString && value.toString().isEmpty())
        return QStringLiteral("");
    return WQNumberFormatter::stringForObjectValue(value);
}

bool WQPositiveIntegerFormatter::isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                                      const QString&, WQRange originalSelectedRange,
                                                      QString* errorDescription)
{
    if (!partialString || !proposedSelectedRange)
        return false;
    const QString inserted = _wq_insertedText(*partialString, *proposedSelectedRange, originalSelectedRange);
    if (_wq_refuseForeign(_wq_invertedDecimalSetPlusLocalizedSeparators_character_set, inserted, errorDescription))
        return false;

    const QString& separator = _wq_localizedThousandsSeparator_string;
    QString text = *partialString;
    qsizetype caret = std::clamp<qsizetype>(proposedSelectedRange->location, 0, text.size());

    // Separators are dropped; each one starting at or before the caret
    // takes the caret one place left.
    if (!separator.isEmpty()) {
        QString rebuilt;
        rebuilt.reserve(text.size());
        qsizetype from = 0;
        const qsizetype limit = caret;
        for (qsizetype at = _wq_find(text, separator); at >= 0; at = _wq_find(text, separator, from)) {
            rebuilt += QStringView(text).mid(from, at - from);
            if (at + separator.size() <= limit + separator.size() && caret > 0)
                --caret;
            from = at + separator.size();
        }
        rebuilt += QStringView(text).mid(from);
        text = rebuilt;
    }

    _wq_dropLeadingZeros(text, caret);

    if (_wq_containsText(positiveFormat(), u",") && !separator.isEmpty()) {
        const bool deleting = WQToolkit::shared().currentEvent().isDeleteKeyDown();
        _wq_insertGrouping(text, separator, QStringView(), [&](qsizetype q) {
            if (q > caret)
                return;
            if (!deleting || QStringView(text).mid(caret, separator.size()) != separator)
                ++caret;
        });
    }

    caret = std::clamp<qsizetype>(caret, 0, text.size());
    proposedSelectedRange->location = caret;
    proposedSelectedRange->length = std::clamp<qsizetype>(proposedSelectedRange->length, 0, text.size() - caret);
    if (text.isEmpty())
        if (WQFieldEditor* editor = WQToolkit::shared().keyFieldEditor())
            editor->setSelectedRange(*proposedSelectedRange);
    _wq_setRewrite(partialString, std::move(text));
    if (errorDescription)
        *errorDescription = QString();
    return false;
}

} // namespace wq
