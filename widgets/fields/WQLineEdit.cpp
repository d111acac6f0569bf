#include "WQLineEdit_p.h"

#include "WQKeyTranslation.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>

#include <algorithm>

namespace wq {

WQLineEditPrivate::WQLineEditPrivate(WQLineEdit* edit, std::shared_ptr<WQFormatter> formatter)
    : q_ptr(edit), session(*this, std::move(formatter))
{
    // Formatters judging an edit see the line edit itself as the field editor.
    session.setFieldEditor(edit);
}

WQLineEdit::WQLineEdit(QWidget* parent) : WQLineEdit(nullptr, parent) {}

WQLineEdit::WQLineEdit(std::shared_ptr<WQFormatter> formatter, QWidget* parent)
    : QLineEdit(parent), _wq_d(std::make_unique<WQLineEditPrivate>(this, std::move(formatter)))
{
    Q_D(WQLineEdit);
    WQFieldSession* session = &d->session;
    connect(this, &QLineEdit::textEdited, session, &WQFieldSession::textEdited);
    connect(this, &QLineEdit::textChanged, session, &WQFieldSession::textChanged);
    connect(this, &QLineEdit::selectionChanged, session, &WQFieldSession::selectionChanged);
    connect(this, &QLineEdit::cursorPositionChanged, session, &WQFieldSession::selectionChanged);
    connect(session, &WQFieldSession::objectValueChanged, this, [this](const QVariant& value) {
        emit objectValueChanged(value);
        d_func()->emitTypedValue(value);
    });
    connect(session, &WQFieldSession::editedTextChanged, this, &WQLineEdit::editedTextChanged);
    connect(session, &WQFieldSession::editRefused, this, &WQLineEdit::editRefused);
    connect(session, &WQFieldSession::valueRefused, this, &WQLineEdit::valueRefused);
    connect(session, &WQFieldSession::refusalCleared, this, &WQLineEdit::refusalCleared);
}

// The session goes before the line edit's own parts, and its connections with it.
WQLineEdit::~WQLineEdit() = default;

void WQLineEdit::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    Q_D(WQLineEdit);
    const FormatterKind before = formatterKind();
    d->applyDateRange(formatter);
    d->session.setFormatter(std::move(formatter));
    if (formatterKind() != before)
        emit formatterKindChanged(formatterKind());
}

const std::shared_ptr<WQFormatter>& WQLineEdit::formatter() const noexcept
{
    Q_D(const WQLineEdit);
    return d->session.formatter();
}

QVariant WQLineEdit::objectValue() const
{
    Q_D(const WQLineEdit);
    return d->session.objectValue();
}

void WQLineEdit::setObjectValue(const QVariant& value)
{
    Q_D(WQLineEdit);
    d->session.setObjectValue(value);
}

QVariant WQLineEdit::currentObjectValue() const
{
    Q_D(const WQLineEdit);
    return d->session.currentObjectValue();
}

bool WQLineEdit::validateEditing()
{
    Q_D(WQLineEdit);
    return d->session.validateEditing();
}

bool WQLineEdit::hasPendingEdit() const noexcept
{
    Q_D(const WQLineEdit);
    return d->session.hasPendingEdit();
}

void WQLineEdit::abortEditing()
{
    Q_D(WQLineEdit);
    d->session.abortEditing();
}

void WQLineEdit::undoEdit()
{
    Q_D(WQLineEdit);
    d->session.undoEdit();
}

void WQLineEdit::redoEdit()
{
    Q_D(WQLineEdit);
    d->session.redoEdit();
}

bool WQLineEdit::canUndoEdit() const noexcept
{
    Q_D(const WQLineEdit);
    return d->session.canUndoEdit();
}

bool WQLineEdit::canRedoEdit() const noexcept
{
    Q_D(const WQLineEdit);
    return d->session.canRedoEdit();
}

QString WQLineEdit::string() const
{
    Q_D(const WQLineEdit);
    return d->session.string();
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

bool WQLineEdit::event(QEvent* event)
{
    Q_D(WQLineEdit);
    // Digits of other scripts and the keypad's decimal key are typed as what
    // the formatter reads.
    if (const std::unique_ptr<QEvent> translated = WQTranslatedInput(*event, formatter().get())) {
        const bool handled = WQLineEdit::event(translated.get());
        event->setAccepted(translated->isAccepted());
        return handled;
    }
    // Edits made while an event is handled are judged once the line edit has
    // finished with it, so its own signals all go out before any correction.
    WQEditEvent edit;
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        edit = WQFieldSession::keyEvent(key.key(), key.text(), key.modifiers());
        break;
    }
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

    d->session.beginEvent(edit);
    const bool handled = QLineEdit::event(event);
    d->session.endEvent();
    return handled;
}

void WQLineEdit::keyPressEvent(QKeyEvent* event)
{
    Q_D(WQLineEdit);
    if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo)) {
        if (!isReadOnly())
            event->matches(QKeySequence::Undo) ? undoEdit() : redoEdit();
        event->accept();
        return;
    }
    // Escape gives up an edit; with nothing to give up it goes on to the
    // window (a dialog closes).
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier && d->session.escape()) {
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

} // namespace wq
