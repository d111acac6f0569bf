#include <WQGeneral/validators/WQFormatterValidator.h>

#include <QGuiApplication>

#include <algorithm>
#include <exception>

namespace wq {
namespace {

// The edit that turned one text into another: the range of the old text that
// was replaced (the selection before the edit) and what replaced it. The new
// text after the cursor is taken to be untouched, which places the edit when
// the texts repeat characters ("11" -> "111").
struct Edit {
    WQRange replaced;
    QString inserted;
};

Edit editBetween(const QString& before, const QString& after, qsizetype cursor)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype suffix = 0;
    while (suffix < shorter && before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix])
        ++suffix;
    suffix = std::min(suffix, after.size() - std::clamp<qsizetype>(cursor, 0, after.size()));
    qsizetype prefix = 0;
    const qsizetype prefixLimit = std::min(before.size(), after.size()) - suffix;
    while (prefix < prefixLimit && before[prefix] == after[prefix])
        ++prefix;
    return {{prefix, before.size() - suffix - prefix}, after.mid(prefix, after.size() - suffix - prefix)};
}

// The field editor a formatter sees while the validator judges: the text from
// before the edit, and a selection the formatter may set.
class ValidatedInput final : public WQFieldEditor {
public:
    ValidatedInput(QString before, WQRange selection) : _before(std::move(before)), _selection(selection) {}
    WQRange selectedRange() const override { return _selection; }
    void setSelectedRange(WQRange range) override { _selection = range; }
    QString string() const override { return _before; }

private:
    QString _before;
    WQRange _selection;
};

// The input being edited: the focused object, when what it shows is the text
// being validated (a program may set the text of another one).
const QObject* editedInput(const QString& text)
{
    const QObject* focused = QGuiApplication::focusObject();
    if (!focused)
        return nullptr;
    for (const char* property : {"text", "currentText"}) {
        const QVariant shown = focused->property(property);
        if (shown.isValid())
            return shown.toString() == text ? focused : nullptr;
    }
    return nullptr;
}

} // namespace

WQFormatterValidator::WQFormatterValidator(std::shared_ptr<WQFormatter> formatter, QObject* parent)
    : QValidator(parent), _wq_formatter(std::move(formatter))
{
    _wq_followFormatter();
}

WQFormatterValidator::~WQFormatterValidator() = default;

void WQFormatterValidator::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_formatter = std::move(formatter);
    _wq_followFormatter();
    emit changed();
}

void WQFormatterValidator::_wq_followFormatter()
{
    _wq_formatterObservation.reset();
    if (_wq_formatter)
        _wq_formatterObservation.observe(_wq_formatter->changeNotificationName(), _wq_formatter.get(),
                                         [this](const WQNotification&) { emit changed(); });
}

QValidator::State WQFormatterValidator::_wq_readState(const QString& text) const
{
    if (!_wq_formatter)
        return Acceptable;
    try {
        QVariant value;
        if (!_wq_formatter->getObjectValue(&value, text, nullptr))
            return Intermediate;
        return _wq_formatter->stringForObjectValue(value) == text ? Acceptable : Intermediate;
    } catch (const std::exception&) {
        return Intermediate;
    }
}

QValidator::State WQFormatterValidator::validate(QString& input, int& pos) const
{
    if (!_wq_formatter)
        return Acceptable;
    const QObject* target = editedInput(input);
    if (!target)
        return _wq_readState(input); // set by the program: not an edit

    const auto seen = _wq_seen.constFind(target);
    Seen before;
    if (seen != _wq_seen.cend()) {
        before = *seen;
    } else if (pos > 0 && pos <= input.size()) {
        before = {QString(input).remove(pos - 1, 1), int(pos - 1)};
    } else {
        before = {input, pos};
    }
    if (before.text == input) {
        // Nothing changed since the last text let through: a rewrite coming
        // back, or the input asking again.
        if (seen != _wq_seen.cend())
            _wq_seen[target].cursor = pos;
        return _wq_readState(input);
    }

    const Edit edit = editBetween(before.text, input, pos);
    WQEditEvent event;
    if (edit.inserted.isEmpty()) {
        // Backspace removes up to the cursor (or a selection), Delete from it.
        event.type = WQEditEvent::Type::KeyDown;
        if (edit.replaced.end() == before.cursor || edit.replaced.length > 1)
            event.characters = QString(QChar(WQEditEvent::DeleteCharacter));
    } else if (edit.inserted.size() == 1) {
        event = {WQEditEvent::Type::KeyDown, edit.inserted, false};
    }
    event.optionKeyDown = QGuiApplication::keyboardModifiers().testFlag(Qt::AltModifier);

    QString partial = input;
    WQRange range{pos, 0};
    const WQRange proposed = range;
    QString error;
    bool accepted = false;
    bool rewritten = false;
    ValidatedInput editor(before.text, edit.replaced);
    try {
        const WQEditScope scope(event, &editor);
        accepted = _wq_formatter->isPartialStringValid(&partial, &range, before.text, edit.replaced, &error);
        rewritten = scope.rewritten() || partial != input || range != proposed;
    } catch (const std::exception& failure) {
        error = QString::fromUtf8(failure.what());
    }

    if (!error.isEmpty())
        emit const_cast<WQFormatterValidator*>(this)->editRefused(error);
    if (!accepted && !rewritten)
        return Invalid; // the input goes back to the text before the edit

    if (!accepted) {
        input = partial;
        pos = int(std::clamp<qsizetype>(range.end(), 0, input.size()));
    }
    if (!_wq_seen.contains(target)) {
        // The memory of an input goes with it.
        connect(target, &QObject::destroyed, this, [this, target] { _wq_seen.remove(target); });
    }
    _wq_seen[target] = {input, pos};
    return _wq_readState(input);
}

void WQFormatterValidator::fixup(QString& input) const
{
    if (!_wq_formatter)
        return;
    try {
        QVariant value;
        if (!_wq_formatter->getObjectValue(&value, input, nullptr))
            return;
        if (const std::optional<QString> shown = _wq_formatter->stringForObjectValue(value))
            input = *shown;
    } catch (const std::exception&) {
        // A text the formatter cannot read stays as it is.
    }
}

} // namespace wq
