#include <WQGeneral/fields/WQLineEdit.h>

#include "WQKeyTranslation.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>
#include <exception>

namespace wq {
namespace {

WQEditEvent editEventForKey(const QKeyEvent& key)
{
    WQEditEvent event;
    event.type = WQEditEvent::Type::KeyDown;
    if (key.key() == Qt::Key_Backspace)
        event.characters = QString(QChar(WQEditEvent::DeleteCharacter));
    else if (key.key() != Qt::Key_Delete) // forward delete must never read as 127
        event.characters = key.text();
    event.optionKeyDown = key.modifiers().testFlag(Qt::AltModifier);
    return event;
}

QString describe(const std::exception& error) { return QString::fromUtf8(error.what()); }

} // namespace

WQLineEdit::WQLineEdit(QWidget* parent) : WQLineEdit(nullptr, parent) {}

WQLineEdit::WQLineEdit(std::shared_ptr<WQFormatter> formatter, QWidget* parent)
    : QLineEdit(parent), _wq_formatter(std::move(formatter))
{
    connect(this, &QLineEdit::textEdited, this, &WQLineEdit::_wq_textEdited);
    connect(this, &QLineEdit::textChanged, this, &WQLineEdit::_wq_noteTextChanged);
    connect(this, &QLineEdit::selectionChanged, this, &WQLineEdit::_wq_noteSelection);
    connect(this, &QLineEdit::cursorPositionChanged, this, &WQLineEdit::_wq_noteSelection);
    _wq_followFormatter();
}

WQLineEdit::~WQLineEdit() = default;

void WQLineEdit::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_formatter = std::move(formatter);
    _wq_applyDateRange();
    _wq_followFormatter();
    if (!_wq_pendingEdit && _wq_objectValue.isValid())
        _wq_showValue(_wq_objectValue);
}

void WQLineEdit::_wq_followFormatter()
{
    _wq_formatterObservation.reset();
    if (!_wq_formatter)
        return;
    _wq_formatterObservation.observe(_wq_formatter->changeNotificationName(), _wq_formatter.get(),
                                     [this](const WQNotification&) {
                                         // What the user is typing stays theirs.
                                         if (!_wq_pendingEdit && _wq_objectValue.isValid())
                                             _wq_showValue(_wq_objectValue);
                                     });
}

QString WQLineEdit::string() const
{
    return _wq_judging ? _wq_shown.text : QLineEdit::text();
}

void WQLineEdit::abortEditing()
{
    if (_wq_pendingEdit) {
        if (_wq_objectValue.isValid()) {
            _wq_showValue(_wq_objectValue);
        } else {
            _wq_remember(_wq_shown);
            _wq_show(QString(), {0, 0});
            _wq_shown = _wq_currentState();
        }
        _wq_pendingEdit = false;
        _wq_noteRefusal(false);
    }
    selectAll();
    _wq_shown = _wq_currentState();
}

void WQLineEdit::_wq_remember(const State& seen)
{
    if (!_wq_undoStack.empty() && _wq_undoStack.back().text == seen.text)
        return;
    _wq_undoStack.push_back(seen);
    _wq_redoStack.clear();
}

void WQLineEdit::_wq_step(std::vector<State>& from, std::vector<State>& to)
{
    if (from.empty())
        return;
    to.push_back(_wq_shown);
    const State target = from.back();
    from.pop_back();
    _wq_show(target.text, target.selection);
    _wq_shown = _wq_currentState();
    // A text the user saw is theirs again, to be read when editing ends.
    _wq_pendingEdit = _wq_shown.text != _wq_displayString(_wq_objectValue) || !_wq_objectValue.isValid();
    emit editedTextChanged(_wq_shown.text);
}

void WQLineEdit::undoEdit() { _wq_step(_wq_undoStack, _wq_redoStack); }
void WQLineEdit::redoEdit() { _wq_step(_wq_redoStack, _wq_undoStack); }

void WQLineEdit::_wq_noteRefusal(bool refused)
{
    if (refused) {
        _wq_refusalShown = true;
    } else if (_wq_refusalShown) {
        _wq_refusalShown = false;
        emit refusalCleared();
    }
}

WQRange WQLineEdit::selectedRange() const
{
    if (hasSelectedText())
        return {selectionStart(), selectionLength()};
    return {cursorPosition(), 0};
}

void WQLineEdit::setSelectedRange(WQRange range)
{
    const qsizetype size = QLineEdit::text().size();
    const qsizetype location = std::clamp<qsizetype>(range.location, 0, size);
    const qsizetype length = std::clamp<qsizetype>(range.length, 0, size - location);
    if (length > 0)
        setSelection(int(location), int(length));
    else
        setCursorPosition(int(location));
}

WQLineEdit::State WQLineEdit::_wq_currentState() const
{
    return {QLineEdit::text(), selectedRange()};
}

void WQLineEdit::_wq_show(const QString& text, WQRange selection)
{
    const QScopedValueRollback showing(_wq_showing, true);
    // Replacing the text drops the undo history; keep it when nothing changes.
    if (QLineEdit::text() != text)
        setText(text);
    setSelectedRange(selection);
}

bool WQLineEdit::event(QEvent* event)
{
    // Digits of other scripts and the keypad's decimal key are typed as what
    // the formatter reads.
    if (const std::unique_ptr<QEvent> translated = WQTranslatedInput(*event, _wq_formatter.get())) {
        const bool handled = WQLineEdit::event(translated.get());
        event->setAccepted(translated->isAccepted());
        return handled;
    }
    // Edits made while an event is handled are judged once the line edit has
    // finished with it, so its own signals all go out before any correction.
    WQEditEvent edit;
    switch (event->type()) {
    case QEvent::KeyPress:
        edit = editEventForKey(static_cast<const QKeyEvent&>(*event));
        break;
    case QEvent::InputMethod: {
        const auto& input = static_cast<const QInputMethodEvent&>(*event);
        if (!input.commitString().isEmpty())
            edit = {WQEditEvent::Type::KeyDown, input.commitString(), false};
        break;
    }
    case QEvent::Drop:
    case QEvent::MouseButtonRelease: // middle-button paste
        break;
    default:
        return QLineEdit::event(event);
    }

    if (_wq_eventDepth++ == 0) {
        _wq_beforeEvent = _wq_currentState();
        _wq_event = edit;
        _wq_editedInEvent = false;
    }
    const bool handled = QLineEdit::event(event);
    if (--_wq_eventDepth == 0) {
        if (_wq_editedInEvent)
            _wq_judgeEdit(_wq_beforeEvent, _wq_event);
        else
            _wq_shown = _wq_currentState();
    }
    return handled;
}

void WQLineEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo)) {
        if (!isReadOnly())
            event->matches(QKeySequence::Undo) ? undoEdit() : redoEdit();
        event->accept();
        return;
    }
    // Escape gives up an edit; with nothing to give up it goes on to the
    // window (a dialog closes).
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier && _wq_pendingEdit) {
        abortEditing();
        event->accept();
        return;
    }
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !validateEditing()) {
        event->accept(); // a refused value must not reach a default button
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void WQLineEdit::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    // Switching windows or opening a menu does not end editing.
    if (event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason)
        return;
    if (!validateEditing()) {
        QTimer::singleShot(0, this, [this] {
            if (isVisible() && isEnabled())
                setFocus(Qt::OtherFocusReason);
        });
    }
}

void WQLineEdit::contextMenuEvent(QContextMenuEvent* event)
{
    // The standard menu, with Undo and Redo going through the field's own
    // history (the line edit's would skip the formatter's rewrites). An
    // editable line edit's menu starts with those two.
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    const QList<QAction*> actions = menu->actions();
    if (!isReadOnly() && actions.size() >= 2 && !actions[0]->isSeparator() && !actions[1]->isSeparator()) {
        const auto reroute = [this](QAction* action, const QString& name, bool enabled, void (WQLineEdit::*step)()) {
            disconnect(action, &QAction::triggered, nullptr, nullptr);
            action->setObjectName(name);
            action->setEnabled(enabled);
            connect(action, &QAction::triggered, this, step);
        };
        reroute(actions[0], QStringLiteral("edit-undo"), canUndoEdit(), &WQLineEdit::undoEdit);
        reroute(actions[1], QStringLiteral("edit-redo"), canRedoEdit(), &WQLineEdit::redoEdit);
    }
    menu->exec(event->globalPos());
}

void WQLineEdit::_wq_textEdited()
{
    if (_wq_showing)
        return;
    _wq_pendingEdit = true;
    if (_wq_eventDepth > 0) {
        _wq_editedInEvent = true;
        return;
    }
    // An edit from outside any event (a context-menu action, a slot called
    // by the application) is judged at once.
    _wq_judgeEdit(_wq_shown, WQEditEvent{});
}

void WQLineEdit::_wq_noteTextChanged()
{
    if (_wq_showing || _wq_eventDepth > 0)
        return;
    if (QLineEdit::text() != _wq_shown.text) {
        _wq_pendingEdit = true; // set by the application: read at editing end
        _wq_remember(_wq_shown);
    }
    _wq_shown = _wq_currentState();
}

void WQLineEdit::_wq_noteSelection()
{
    if (_wq_showing || _wq_eventDepth > 0 || QLineEdit::text() != _wq_shown.text)
        return;
    _wq_shown.selection = selectedRange();
}

void WQLineEdit::_wq_judgeEdit(const State& before, const WQEditEvent& event)
{
    const State proposal = _wq_currentState();
    if (!_wq_formatter) {
        // Every edit stands; it is remembered all the same, for undo.
        _wq_shown = proposal;
        if (proposal.text != before.text) {
            _wq_remember(before);
            emit editedTextChanged(proposal.text);
        }
        return;
    }
    QString partial = proposal.text;
    WQRange range = proposal.selection;
    QString error;
    bool accepted = false;
    bool rewritten = false;
    try {
        const QScopedValueRollback judging(_wq_judging, true);
        const WQEditScope scope(event, this);
        accepted = _wq_formatter->isPartialStringValid(&partial, &range, before.text, before.selection, &error);
        rewritten = scope.rewritten();
    } catch (const std::exception& failure) {
        partial = proposal.text;
        range = proposal.selection;
        error = describe(failure);
    }

    if (!accepted) {
        if (rewritten || partial != proposal.text || range != proposal.selection)
            _wq_show(partial, range);
        else
            _wq_show(before.text, before.selection);
    }
    _wq_shown = _wq_currentState();
    if (_wq_shown.text != before.text)
        _wq_remember(before);
    if (!error.isEmpty())
        emit editRefused(error);
    _wq_noteRefusal(!error.isEmpty());
    if (_wq_shown.text != before.text)
        emit editedTextChanged(_wq_shown.text);
}

QString WQLineEdit::_wq_displayString(const QVariant& value) const
{
    if (!_wq_formatter)
        return value.toString();
    try {
        return _wq_formatter->stringForObjectValue(value).value_or(QString());
    } catch (const std::exception&) {
        return QString();
    }
}

void WQLineEdit::setObjectValue(const QVariant& value)
{
    _wq_showValue(value);
    // A value from the application starts a new history.
    _wq_undoStack.clear();
    _wq_redoStack.clear();
}

void WQLineEdit::_wq_showValue(const QVariant& value)
{
    if (_wq_currentState().text != _wq_displayString(value))
        _wq_remember(_wq_shown);
    _wq_noteRefusal(false);
    _wq_objectValue = value;
    _wq_pendingEdit = false;
    const QString shown = _wq_displayString(value);
    _wq_show(shown, WQRange{shown.size(), 0});
    _wq_shown = _wq_currentState();
    emit objectValueChanged(value);
    _wq_emitTypedValue(value);
}

bool WQLineEdit::_wq_read(const QString& text, QVariant* value, QString* error) const
{
    *value = text;
    if (!_wq_formatter)
        return true;
    try {
        return _wq_formatter->getObjectValue(value, text, error);
    } catch (const std::exception& failure) {
        *error = describe(failure);
        return false;
    }
}

bool WQLineEdit::validateEditing()
{
    if (!_wq_pendingEdit)
        return true;
    QVariant value;
    QString error;
    if (!_wq_read(QLineEdit::text(), &value, &error)) {
        emit valueRefused(error);
        _wq_noteRefusal(true);
        return false;
    }
    _wq_showValue(value);
    return true;
}

} // namespace wq
