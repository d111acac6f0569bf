#include <WQGeneral/dateformatter/WQDateFormatter.h>

#include "WQDateFormatter_p.h"
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include "WQDateIncrementKeys.h"

#include <algorithm>

namespace wq {

using namespace dateformatter;

std::optional<WQDateFormatter::IncrementStep> WQDateFormatter::incrementStep(const QString& insertedText,
                                                                             bool optionKeyDown)
{
    IncrementStep step;
    if (insertedText.contains(u'=') || insertedText.contains(u'+'))
        (optionKeyDown ? step.months : step.days) = 1;
    else if (insertedText.contains(u'-'))
        (optionKeyDown ? step.months : step.days) = -1;
    else if (insertedText.contains(QChar(kNotEqual)) || insertedText.contains(QChar(kPlusMinus)))
        step.months = 1;
    else if (insertedText.contains(QChar(kEnDash)))
        step.months = -1;
    else if (insertedText.contains(u't', Qt::CaseInsensitive))
        step.today = true;
    else
        return std::nullopt;
    return step;
}

bool WQDateFormatter::_wq_incrementDecrement(const QString& insertedText, const QString& originalString,
                                             QString* partialString, WQRange* proposedSelectedRange) const
{
    const std::optional<IncrementStep> step =
        incrementStep(insertedText, WQToolkit::shared().currentEvent().optionKeyDown);
    if (!step)
        return true;

    // The text before the key is stepped, so the key never spoils the parse.
    std::optional<WQDate> result = step->today ? today() : dateForString(originalString);
    if (!result)
        return false;
    if (!step->today)
        result = result->dateByAddingYears(0, step->months, step->days);
    // A step past the range is refused, as one from a text that does not parse.
    if (!_wq_outOfRange(*result).isEmpty())
        return false;
    const QString shown = _wq_render(*result);
    return rewriteProposal(partialString, proposedSelectedRange, shown, WQRange{shown.size(), 0});
}

bool WQDateFormatter::isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                           const QString& originalString, WQRange originalSelectedRange,
                                           QString* errorDescription)
{
    if (errorDescription)
        *errorDescription = QString();
    if (!partialString || !proposedSelectedRange)
        return false;
    const QString& proposed = *partialString;

    // A deletion (the caret went back past where the edit started) inserts
    // nothing and always stands.
    const qsizetype start = originalSelectedRange.location;
    const qsizetype insertedLength = proposedSelectedRange->location - start;
    if (insertedLength < 0) {
        if (proposed.isEmpty())
            if (WQFieldEditor* editor = WQToolkit::shared().keyFieldEditor())
                editor->setSelectedRange(*proposedSelectedRange);
        return true;
    }
    const QString inserted =
        start >= 0 && start <= proposed.size() ? proposed.mid(start, insertedLength) : QString();

    if (_wq_d->invertedDecimalSetPlusLocalizedSeparators.intersects(inserted)) {
        if (errorDescription)
            *errorDescription = WQFormatTemplate(WQStrings::tr("\"%@\" is not valid here"), {inserted});
        return false;
    }

    const QChar separator = _wq_d->localizedSeparator.isEmpty() ? QChar(0) : _wq_d->localizedSeparator[0];
    const qsizetype first = proposed.indexOf(separator);

    // Text pasted over the whole field may hold a key.
    if (start == 0 && originalSelectedRange.length == originalString.size() && first >= 0
        && !_wq_incrementDecrement(inserted, originalString, partialString, proposedSelectedRange))
        return false;

    // At most two separators, each followed by something.
    if (first >= 0 && first + 1 < proposed.size()) {
        const qsizetype second = proposed.indexOf(separator, first + 1);
        if (second >= 0 && second + 1 < proposed.size() && proposed.indexOf(separator, second + 1) >= 0) {
            if (_wq_incrementDecrement(inserted, originalString, partialString, proposedSelectedRange)
                && errorDescription)
                *errorDescription = WQFormatTemplate(WQStrings::tr("\"%@\" can't appear more than twice here"),
                                                     {_wq_d->localizedSeparator});
            return false;
        }
    }

    // A separator that is no key is a separator; one that is a key steps.
    if ((!inserted.contains(separator) || _wq_d->incrementerSet.contains(separator))
        && !_wq_incrementDecrement(inserted, originalString, partialString, proposedSelectedRange))
        return false;

    if (partialString->isEmpty())
        if (WQFieldEditor* editor = WQToolkit::shared().keyFieldEditor())
            editor->setSelectedRange(*proposedSelectedRange);
    return true;
}

} // namespace wq
