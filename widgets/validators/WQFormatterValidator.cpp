#include <WQGeneral/validators/WQFormatterValidator.h>

#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QGuiApplication>
#include <QHash>

#include <algorithm>
#include <exception>
#include <optional>

namespace wq {
namespace {

// The display form of a text the formatter reads; none for one it cannot
// read, or that makes it throw.
std::optional<QString> displayForm(const WQFormatter& formatter, const QString& text)
{
    try {
        QVariant value;
        if (!formatter.getObjectValue(&value, text, nullptr))
            return std::nullopt;
        return formatter.stringForObjectValue(value);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

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

class WQFormatterValidatorPrivate {
public:
    // Inputs judge their text again whenever the formatter changes.
    void followFormatter(WQFormatterValidator* validator)
    {
        formatterObservation.reset();
        if (formatter)
            formatterObservation.observe(formatter->changeNotificationName(), formatter.get(),
                                         [validator](const WQNotification&) { emit validator->changed(); });
    }

    struct Seen {
        QString text;
        int cursor = 0;
    };

    std::shared_ptr<WQFormatter> formatter;
    QHash<const QObject*, Seen> seen; ///< the last text let through, per input
    WQObservation formatterObservation;

    QValidator::State readState(const QString& text) const;
};

WQFormatterValidator::WQFormatterValidator(std::shared_ptr<WQFormatter> formatter, QObject* parent)
    : QValidator(parent), _wq_d(std::make_unique<WQFormatterValidatorPrivate>())
{
    _wq_d->formatter = std::move(formatter);
    _wq_d->followFormatter(this);
}

const std::shared_ptr<WQFormatter>& WQFormatterValidator::formatter() const noexcept
{
    return _wq_d->formatter;
}

WQFormatterValidator::~WQFormatterValidator() = default;

void WQFormatterValidator::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_d->formatter = std::move(formatter);
    _wq_d->followFormatter(this);
    emit changed();
}


QValidator::State WQFormatterValidatorPrivate::readState(const QString& text) const
{
    if (!formatter)
        return QValidator::Acceptable;
    try {
        QVariant value;
        if (!formatter->getObjectValue(&value, text, nullptr))
            return QValidator::Intermediate;
        return formatter->stringForObjectValue(value) == text ? QValidator::Acceptable : QValidator::Intermediate;
    } catch (const std::exception&) {
        return QValidator::Intermediate;
    }
}

QValidator::State WQFormatterValidator::validate(QString& input, int& pos) const
{
    if (!_wq_d->formatter)
        return Acceptable;
    const QObject* target = editedInput(input);
    if (!target)
        return _wq_d->readState(input); // set by the program: not an edit

    const auto seen = _wq_d->seen.constFind(target);
    WQFormatterValidatorPrivate::Seen before;
    if (seen != _wq_d->seen.cend()) {
        before = *seen;
    } else if (pos > 0 && pos <= input.size()) {
        before = {QString(input).remove(pos - 1, 1), int(pos - 1)};
    } else {
        before = {input, pos};
    }
    if (before.text == input) {
        // Nothing changed since the last text let through: a rewrite coming
        // back, or the input asking again.
        if (seen != _wq_d->seen.cend())
            _wq_d->seen[target].cursor = pos;
        return _wq_d->readState(input);
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
        accepted = _wq_d->formatter->isPartialStringValid(&partial, &range, before.text, edit.replaced, &error);
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
    if (!_wq_d->seen.contains(target)) {
        // The memory of an input goes with it.
        connect(target, &QObject::destroyed, this, [this, target] { _wq_d->seen.remove(target); });
    }
    _wq_d->seen[target] = {input, pos};
    return _wq_d->readState(input);
}

void WQFormatterValidator::fixup(QString& input) const
{
    if (!_wq_d->formatter)
        return;
    if (const std::optional<QString> shown = displayForm(*_wq_d->formatter, input))
        input = *shown;
}

} // namespace wq
