#include <WQGeneral/formatters/WQFieldSession.h>

#include <QScopedValueRollback>

#include <exception>

namespace wq {
namespace {

QString describe(const std::exception& error) { return QString::fromUtf8(error.what()); }

} // namespace

WQFieldSession::WQFieldSession(Field& field, std::shared_ptr<WQFormatter> formatter, QObject* parent)
    : QObject(parent), _wq_field(field), _wq_formatter(std::move(formatter))
{
    _wq_shown = _wq_currentState();
    _wq_followFormatter();
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

void WQFieldSession::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_formatter = std::move(formatter);
    _wq_followFormatter();
    if (!_wq_pendingEdit && _wq_objectValue.isValid())
        _wq_showValue(_wq_objectValue);
}

void WQFieldSession::_wq_followFormatter()
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

QString WQFieldSession::string() const
{
    return _wq_judging ? _wq_shown.text : _wq_field.text();
}

WQRange WQFieldSession::selectedRange() const { return _wq_field.selectedRange(); }

void WQFieldSession::setSelectedRange(WQRange range) { _wq_field.setSelectedRange(range); }

bool WQFieldSession::escape()
{
    if (!_wq_pendingEdit)
        return false;
    abortEditing();
    return true;
}

void WQFieldSession::abortEditing()
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
    const QString text = _wq_field.text();
    _wq_show(text, {0, text.size()});
    _wq_shown = _wq_currentState();
}

void WQFieldSession::_wq_remember(const State& seen)
{
    if (!_wq_undoStack.empty() && _wq_undoStack.back().text == seen.text)
        return;
    _wq_undoStack.push_back(seen);
    _wq_redoStack.clear();
}

void WQFieldSession::_wq_step(std::vector<State>& from, std::vector<State>& to)
{
    if (from.empty())
        return;
    to.push_back(_wq_shown);
    const State target = from.back();
    from.pop_back();
    _wq_show(target.text, target.selection);
    _wq_shown = _wq_currentState();
    // A text the user saw is theirs again, to be read when editing ends.
    _wq_pendingEdit = _wq_shown.text != displayString(_wq_objectValue) || !_wq_objectValue.isValid();
    emit editedTextChanged(_wq_shown.text);
}

void WQFieldSession::undoEdit() { _wq_step(_wq_undoStack, _wq_redoStack); }
void WQFieldSession::redoEdit() { _wq_step(_wq_redoStack, _wq_undoStack); }

void WQFieldSession::_wq_noteRefusal(bool refused)
{
    if (refused) {
        _wq_refusalShown = true;
    } else if (_wq_refusalShown) {
        _wq_refusalShown = false;
        emit refusalCleared();
    }
}

WQFieldSession::State WQFieldSession::_wq_currentState() const
{
    return {_wq_field.text(), _wq_field.selectedRange()};
}

void WQFieldSession::_wq_show(const QString& text, WQRange selection)
{
    const QScopedValueRollback showing(_wq_showing, true);
    // Replacing the text drops the field's own history; keep it when nothing changes.
    if (_wq_field.text() != text)
        _wq_field.setText(text);
    _wq_field.setSelectedRange(selection);
}

void WQFieldSession::beginEvent(const WQEditEvent& event)
{
    if (_wq_eventDepth++ > 0)
        return;
    _wq_beforeEvent = _wq_currentState();
    _wq_event = event;
    _wq_editedInEvent = false;
}

void WQFieldSession::endEvent()
{
    if (_wq_eventDepth == 0 || --_wq_eventDepth > 0)
        return;
    if (_wq_editedInEvent)
        _wq_judgeEdit(_wq_beforeEvent, _wq_event);
    else
        _wq_shown = _wq_currentState();
}

void WQFieldSession::textEdited()
{
    if (_wq_showing)
        return;
    _wq_pendingEdit = true;
    if (_wq_eventDepth > 0) {
        _wq_editedInEvent = true;
        return;
    }
    _wq_judgeEdit(_wq_shown, WQEditEvent{});
}

void WQFieldSession::textChanged()
{
    if (_wq_showing || _wq_eventDepth > 0)
        return;
    if (_wq_field.text() != _wq_shown.text) {
        _wq_pendingEdit = true; // set by the application: read at editing end
        _wq_remember(_wq_shown);
    }
    _wq_shown = _wq_currentState();
}

void WQFieldSession::selectionChanged()
{
    if (_wq_showing || _wq_eventDepth > 0 || _wq_field.text() != _wq_shown.text)
        return;
    _wq_shown.selection = _wq_field.selectedRange();
}

void WQFieldSession::_wq_judgeEdit(const State& before, const WQEditEvent& event)
{
    const State proposal = _wq_currentState();
    if (!_wq_formatter) {
        _wq_shown = proposal;
        return;
    }
    QString partial = proposal.text;
    WQRange range = proposal.selection;
    QString error;
    bool accepted = false;
    bool rewritten = false;
    try {
        const QScopedValueRollback judging(_wq_judging, true);
        const WQEditScope scope(event, _wq_editor);
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

QString WQFieldSession::displayString(const QVariant& value) const
{
    if (!_wq_formatter)
        return value.toString();
    try {
        return _wq_formatter->stringForObjectValue(value).value_or(QString());
    } catch (const std::exception&) {
        return QString();
    }
}

void WQFieldSession::setObjectValue(const QVariant& value)
{
    _wq_showValue(value);
    // A value from the application starts a new history.
    _wq_undoStack.clear();
    _wq_redoStack.clear();
}

void WQFieldSession::_wq_showValue(const QVariant& value)
{
    const QString shown = displayString(value);
    if (_wq_field.text() != shown)
        _wq_remember(_wq_shown);
    _wq_noteRefusal(false);
    _wq_objectValue = value;
    _wq_pendingEdit = false;
    _wq_show(shown, WQRange{shown.size(), 0});
    _wq_shown = _wq_currentState();
    emit objectValueChanged(value);
}

bool WQFieldSession::validateEditing()
{
    if (!_wq_pendingEdit)
        return true;
    const QString text = _wq_field.text();
    QVariant value = text;
    if (_wq_formatter) {
        QString error;
        bool ok = false;
        try {
            ok = _wq_formatter->getObjectValue(&value, text, &error);
        } catch (const std::exception& failure) {
            error = describe(failure);
        }
        if (!ok) {
            emit valueRefused(error);
            _wq_noteRefusal(true);
            return false;
        }
    }
    _wq_showValue(value);
    return true;
}

} // namespace wq
