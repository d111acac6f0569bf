#include <WQGeneral/formatters/WQFieldSession.h>

#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QScopedValueRollback>

#include <exception>
#include <vector>

namespace wq {
namespace {

QString describe(const std::exception& error) { return QString::fromUtf8(error.what()); }

} // namespace

class WQFieldSessionPrivate {
    Q_DECLARE_PUBLIC(WQFieldSession)
public:
    struct State {
        QString text;
        WQRange selection;
    };

    WQFieldSessionPrivate(WQFieldSession* session, WQFieldSession::Field& field,
                          std::shared_ptr<WQFormatter> formatter)
        : q_ptr(session), field(field), editor(session), formatter(std::move(formatter))
    {
    }

    State currentState() const { return {field.text(), field.selectedRange()}; }
    void show(const QString& text, WQRange selection);
    void judgeEdit(const State& before, const WQEditEvent& edit);
    void followFormatter();
    void showValue(const QVariant& value);
    void remember(const State& seen);
    void step(std::vector<State>& from, std::vector<State>& to);
    void noteRefusal(bool refused);
    /// Reads text as editing's end does; false with error when it cannot.
    bool read(const QString& text, QVariant* value, QString* error) const;

    WQFieldSession* q_ptr;
    WQFieldSession::Field& field;
    WQFieldEditor* editor;
    std::shared_ptr<WQFormatter> formatter;
    QVariant objectValue;
    State shown;              ///< what the field stood at after the last edit
    State beforeEvent;        ///< the same, when the current event began
    WQEditEvent event;        ///< the event being handled
    int eventDepth = 0;
    bool editedInEvent = false;
    bool judging = false;
    bool showing = false;     ///< the session itself is changing the text
    bool pendingEdit = false;
    bool refusalShown = false;
    std::vector<State> undoStack;
    std::vector<State> redoStack;
    WQObservation formatterObservation;
};

WQFieldSession::WQFieldSession(Field& field, std::shared_ptr<WQFormatter> formatter, QObject* parent)
    : QObject(parent), _wq_d(std::make_unique<WQFieldSessionPrivate>(this, field, std::move(formatter)))
{
    Q_D(WQFieldSession);
    d->shown = d->currentState();
    d->followFormatter();
}

WQFieldSession::~WQFieldSession() = default;

WQEditEvent WQFieldSession::keyEvent(int key, const QString& text, Qt::KeyboardModifiers modifiers)
{
    WQEditEvent event;
    event.type = WQEditEvent::Type::KeyDown;
    if (key == Qt::Key_Backspace)
        event.characters = QString(QChar(WQEditEvent::DeleteCharacter));
    else if (key != Qt::Key_Delete) // forward delete must never read as 127
        event.characters = text;
    event.optionKeyDown = modifiers.testFlag(Qt::AltModifier);
    return event;
}

void WQFieldSession::setFieldEditor(WQFieldEditor* editor) noexcept
{
    Q_D(WQFieldSession);
    d->editor = editor ? editor : this;
}

const std::shared_ptr<WQFormatter>& WQFieldSession::formatter() const noexcept
{
    Q_D(const WQFieldSession);
    return d->formatter;
}

QVariant WQFieldSession::objectValue() const
{
    Q_D(const WQFieldSession);
    return d->objectValue;
}

bool WQFieldSession::hasPendingEdit() const noexcept
{
    Q_D(const WQFieldSession);
    return d->pendingEdit;
}

bool WQFieldSession::canUndoEdit() const noexcept
{
    Q_D(const WQFieldSession);
    return !d->undoStack.empty();
}

bool WQFieldSession::canRedoEdit() const noexcept
{
    Q_D(const WQFieldSession);
    return !d->redoStack.empty();
}

void WQFieldSession::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    Q_D(WQFieldSession);
    d->formatter = std::move(formatter);
    d->followFormatter();
    if (!d->pendingEdit && d->objectValue.isValid())
        d->showValue(d->objectValue);
}

void WQFieldSessionPrivate::followFormatter()
{
    formatterObservation.reset();
    if (!formatter)
        return;
    formatterObservation.observe(formatter->changeNotificationName(), formatter.get(),
                                 [this](const WQNotification&) {
                                     // What the user is typing stays theirs.
                                     if (!pendingEdit && objectValue.isValid())
                                         showValue(objectValue);
                                 });
}

QString WQFieldSession::string() const
{
    Q_D(const WQFieldSession);
    return d->judging ? d->shown.text : d->field.text();
}

WQRange WQFieldSession::selectedRange() const
{
    Q_D(const WQFieldSession);
    return d->field.selectedRange();
}

void WQFieldSession::setSelectedRange(WQRange range)
{
    Q_D(WQFieldSession);
    d->field.setSelectedRange(range);
}

bool WQFieldSession::escape()
{
    Q_D(WQFieldSession);
    if (!d->pendingEdit)
        return false;
    abortEditing();
    return true;
}

void WQFieldSession::abortEditing()
{
    Q_D(WQFieldSession);
    if (d->pendingEdit) {
        if (d->objectValue.isValid()) {
            d->showValue(d->objectValue);
        } else {
            d->remember(d->shown);
            d->show(QString(), {0, 0});
            d->shown = d->currentState();
        }
        d->pendingEdit = false;
        d->noteRefusal(false);
    }
    const QString text = d->field.text();
    d->show(text, {0, text.size()});
    d->shown = d->currentState();
}

void WQFieldSessionPrivate::remember(const State& seen)
{
    if (!undoStack.empty() && undoStack.back().text == seen.text)
        return;
    undoStack.push_back(seen);
    redoStack.clear();
}

void WQFieldSessionPrivate::step(std::vector<State>& from, std::vector<State>& to)
{
    Q_Q(WQFieldSession);
    if (from.empty())
        return;
    to.push_back(shown);
    const State target = from.back();
    from.pop_back();
    show(target.text, target.selection);
    shown = currentState();
    // A text the user saw is theirs again, to be read when editing ends.
    pendingEdit = shown.text != q->displayString(objectValue) || !objectValue.isValid();
    emit q->editedTextChanged(shown.text);
}

void WQFieldSession::undoEdit()
{
    Q_D(WQFieldSession);
    d->step(d->undoStack, d->redoStack);
}

void WQFieldSession::redoEdit()
{
    Q_D(WQFieldSession);
    d->step(d->redoStack, d->undoStack);
}

void WQFieldSessionPrivate::noteRefusal(bool refused)
{
    Q_Q(WQFieldSession);
    if (refused) {
        refusalShown = true;
    } else if (refusalShown) {
        refusalShown = false;
        emit q->refusalCleared();
    }
}

void WQFieldSessionPrivate::show(const QString& text, WQRange selection)
{
    const QScopedValueRollback showingNow(showing, true);
    // Replacing the text drops the field's own history; keep it when nothing changes.
    if (field.text() != text)
        field.setText(text);
    field.setSelectedRange(selection);
}

void WQFieldSession::beginEvent(const WQEditEvent& event)
{
    Q_D(WQFieldSession);
    if (d->eventDepth++ > 0)
        return;
    d->beforeEvent = d->currentState();
    d->event = event;
    d->editedInEvent = false;
}

void WQFieldSession::endEvent()
{
    Q_D(WQFieldSession);
    if (d->eventDepth == 0)
        return;
    --d->eventDepth;
    if (d->eventDepth > 0)
        return;
    if (d->editedInEvent)
        d->judgeEdit(d->beforeEvent, d->event);
    else
        d->shown = d->currentState();
}

void WQFieldSession::textEdited()
{
    Q_D(WQFieldSession);
    if (d->showing)
        return;
    d->pendingEdit = true;
    if (d->eventDepth > 0) {
        d->editedInEvent = true;
        return;
    }
    d->judgeEdit(d->shown, WQEditEvent{});
}

void WQFieldSession::textChanged()
{
    Q_D(WQFieldSession);
    if (d->showing || d->eventDepth > 0)
        return;
    if (d->field.text() != d->shown.text) {
        d->pendingEdit = true; // set by the application: read at editing end
        d->remember(d->shown);
    }
    d->shown = d->currentState();
}

void WQFieldSession::selectionChanged()
{
    Q_D(WQFieldSession);
    if (d->showing || d->eventDepth > 0 || d->field.text() != d->shown.text)
        return;
    d->shown.selection = d->field.selectedRange();
}

void WQFieldSessionPrivate::judgeEdit(const State& before, const WQEditEvent& edit)
{
    Q_Q(WQFieldSession);
    const State proposal = currentState();
    if (!formatter) {
        // Every edit stands; it is remembered all the same, for undo.
        shown = proposal;
        if (proposal.text != before.text) {
            remember(before);
            emit q->editedTextChanged(proposal.text);
        }
        return;
    }
    QString partial = proposal.text;
    WQRange range = proposal.selection;
    QString error;
    bool accepted = false;
    bool rewritten = false;
    try {
        const QScopedValueRollback judgingNow(judging, true);
        const WQEditScope scope(edit, editor);
        accepted = formatter->isPartialStringValid(&partial, &range, before.text, before.selection, &error);
        rewritten = scope.rewritten();
    } catch (const std::exception& failure) {
        partial = proposal.text;
        range = proposal.selection;
        error = describe(failure);
    }

    if (!accepted) {
        if (rewritten || partial != proposal.text || range != proposal.selection)
            show(partial, range);
        else
            show(before.text, before.selection);
    }
    shown = currentState();
    if (shown.text != before.text)
        remember(before);
    if (!error.isEmpty())
        emit q->editRefused(error);
    noteRefusal(!error.isEmpty());
    if (shown.text != before.text)
        emit q->editedTextChanged(shown.text);
}

QString WQFieldSession::displayString(const QVariant& value) const
{
    Q_D(const WQFieldSession);
    if (!d->formatter)
        return value.toString();
    try {
        return d->formatter->stringForObjectValue(value).value_or(QString());
    } catch (const std::exception&) {
        return QString();
    }
}

void WQFieldSession::setObjectValue(const QVariant& value)
{
    Q_D(WQFieldSession);
    d->showValue(value);
    // A value from the application starts a new history.
    d->undoStack.clear();
    d->redoStack.clear();
}

void WQFieldSessionPrivate::showValue(const QVariant& value)
{
    Q_Q(WQFieldSession);
    const QString shownText = q->displayString(value);
    if (field.text() != shownText)
        remember(shown);
    noteRefusal(false);
    objectValue = value;
    pendingEdit = false;
    show(shownText, WQRange{shownText.size(), 0});
    shown = currentState();
    emit q->objectValueChanged(value);
}

bool WQFieldSessionPrivate::read(const QString& text, QVariant* value, QString* error) const
{
    *value = text;
    if (!formatter)
        return true;
    try {
        return formatter->getObjectValue(value, text, error);
    } catch (const std::exception& failure) {
        *error = describe(failure);
        return false;
    }
}

QVariant WQFieldSession::currentObjectValue() const
{
    Q_D(const WQFieldSession);
    if (!d->pendingEdit)
        return d->objectValue;
    QVariant value;
    QString error;
    return d->read(d->field.text(), &value, &error) ? value : d->objectValue;
}

bool WQFieldSession::validateEditing()
{
    Q_D(WQFieldSession);
    if (!d->pendingEdit)
        return true;
    QVariant value;
    QString error;
    if (!d->read(d->field.text(), &value, &error)) {
        emit valueRefused(error);
        d->noteRefusal(true);
        return false;
    }
    d->showValue(value);
    return true;
}

} // namespace wq
