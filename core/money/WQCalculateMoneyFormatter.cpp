#include <WQGeneral/money/WQCalculateMoneyFormatter.h>

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQDeferred.h>

namespace wq {
namespace {

// The text with operator characters removed from both ends; operators inside
// stay.
QString trimmedOfOperators(const QString& text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && WQCalculateMoneyFormatter::isMathOperator(text[begin]))
        ++begin;
    while (end > begin && WQCalculateMoneyFormatter::isMathOperator(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}

} // namespace

WQCalculateMoneyFormatter::WQCalculateMoneyFormatter(WQMoneyFormatterDelegate* delegate)
    : WQMoneyFormatter(delegate)
{
}

WQCalculateMoneyFormatter::~WQCalculateMoneyFormatter() = default;

bool WQCalculateMoneyFormatter::isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                                     const QString& originalString, WQRange originalSelectedRange,
                                                     QString* errorDescription)
{
    const auto inherited = [&] {
        return WQMoneyFormatter::isPartialStringValid(partialString, proposedSelectedRange, originalString,
                                                      originalSelectedRange, errorDescription);
    };
    if (!partialString || !proposedSelectedRange || partialString->isEmpty())
        return inherited();

    // With the delete key the reference is where the field editor's
    // selection is; a field without editor falls back on the previous
    // selection, so a deletion still never calculates.
    WQToolkit& toolkit = WQToolkit::shared();
    qsizetype reference = originalSelectedRange.location;
    if (toolkit.currentEvent().isDeleteKeyDown())
        if (const WQFieldEditor* editor = toolkit.keyFieldEditor())
            reference = editor->selectedRange().location;
    if (proposedSelectedRange->location <= reference || reference < 0)
        return inherited();

    const QStringView inserted =
        QStringView(*partialString).mid(reference, proposedSelectedRange->location - reference);
    qsizetype at = 0;
    while (at < inserted.size() && !isMathOperator(inserted[at]))
        ++at;
    if (at == inserted.size())
        return inherited();

    const QString mathOperator(inserted[at]);
    const QString trimmed = trimmedOfOperators(*partialString);
    if (mathOperator == u"=") {
        rewriteProposal(partialString, proposedSelectedRange, trimmed, {0, trimmed.size()});
        toolkit.finishCalculation();
        return false;
    }
    if (trimmed.isEmpty())
        return inherited(); // a lone minus is the money formatter's

    rewriteProposal(partialString, proposedSelectedRange, trimmed, {0, trimmed.size()});
    // Whether the parse succeeded is deliberately not looked at: the value
    // it leaves is the calculator's first number.
    QVariant value;
    getObjectValue(&value, trimmed, nullptr);
    std::optional<double> number;
    if (value.isValid())
        number = value.toDouble();

    _wq_temp_math_operator = mathOperator;
    WQPerformDeferred<WQCalculateMoneyFormatter*>(
        _wq_alive, [number](WQCalculateMoneyFormatter*& self) { self->_tv_delayed_window_setup(number); });
    return false;
}

void WQCalculateMoneyFormatter::_tv_delayed_window_setup(std::optional<double> number)
{
    const QString mathOperator = std::exchange(_wq_temp_math_operator, QString());
    // Without a number the calculator has nothing to start from; an
    // operator already taken by an earlier step leaves nothing to do.
    if (!number || mathOperator.isNull())
        return;
    if (const std::shared_ptr<WQCalculateMoneyFormatter> self = weak_from_this().lock())
        WQToolkit::shared().setUpForMathOperator(mathOperator, *number, self);
}

} // namespace wq
