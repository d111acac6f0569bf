// A formatter delegate's editors: made, filled, read back, and their keys
// and focus.

#include <WQGeneral/delegates/WQFormatterDelegate.h>

#include "WQFormatterDelegate_p.h"

#include <WQGeneral/dates/WQDate.h>

#include "WQCellEditor.h"
#include "WQCellNavigation.h"
#include "WQCellValue.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>

namespace wq {

using delegates::CellEditor;

WQFormatterDelegate::WQFormatterDelegate(std::shared_ptr<WQFormatter> formatter, QObject* parent)
    : QStyledItemDelegate(parent), _wq_d(std::make_unique<WQFormatterDelegatePrivate>(std::move(formatter)))
{
    _wq_followFormatter();
}

WQFormatterDelegate::WQFormatterDelegate(WQLineEdit::FormatterKind kind, int places, QObject* parent)
    : WQFormatterDelegate(WQMakeFormatter(kind, places), parent)
{
}

WQFormatterDelegate::~WQFormatterDelegate() = default;

const std::shared_ptr<WQFormatter>& WQFormatterDelegate::formatter() const noexcept { return _wq_d->formatter; }
int WQFormatterDelegate::valueRole() const noexcept { return _wq_d->valueRole; }
QBrush WQFormatterDelegate::negativeBrush() const { return _wq_d->negativeBrush; }
Qt::Alignment WQFormatterDelegate::alignment() const noexcept { return _wq_d->alignment; }

void WQFormatterDelegate::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_d->formatter = std::move(formatter);
    _wq_followFormatter();
    _wq_forgetTexts();
}

void WQFormatterDelegate::_wq_followFormatter()
{
    _wq_d->formatterObservation.reset();
    if (_wq_d->formatter)
        _wq_d->formatterObservation.observe(_wq_d->formatter->changeNotificationName(), _wq_d->formatter.get(),
                                         [this](const WQNotification&) { _wq_forgetTexts(); });
}

void WQFormatterDelegate::_wq_forgetTexts()
{
    _wq_d->texts.clear();
    // Views lay their items out again and repaint.
    emit sizeHintChanged(QModelIndex());
}

void WQFormatterDelegate::setValueRole(int role)
{
    if (role == _wq_d->valueRole)
        return;
    _wq_d->valueRole = role;
    emit valueRoleChanged(role);
    emit sizeHintChanged(QModelIndex());
}

void WQFormatterDelegate::setNegativeBrush(const QBrush& brush)
{
    if (brush == _wq_d->negativeBrush)
        return;
    _wq_d->negativeBrush = brush;
    emit negativeBrushChanged(brush);
    emit sizeHintChanged(QModelIndex());
}

void WQFormatterDelegate::setAlignment(Qt::Alignment alignment)
{
    if (alignment == _wq_d->alignment)
        return;
    _wq_d->alignment = alignment;
    emit alignmentChanged(alignment);
    emit sizeHintChanged(QModelIndex());
}

QWidget* WQFormatterDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                           const QModelIndex& index) const
{
    auto* editor = new CellEditor(_wq_d->formatter, index, parent);
    editor->setFrame(editor->style()->styleHint(QStyle::SH_ItemView_DrawDelegateFrame, nullptr, editor));
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    editor->setAlignment(cell.displayAlignment);
    // The editor's signals are the delegate's, with the cell.
    auto* self = const_cast<WQFormatterDelegate*>(this);
    connect(editor, &WQLineEdit::editRefused, self,
            [self, editor](const QString& reason) { emit self->editRefused(editor->index(), reason); });
    connect(editor, &WQLineEdit::valueRefused, self,
            [self, editor](const QString& reason) { emit self->valueRefused(editor->index(), reason); });
    connect(editor, &CellEditor::valueChosen, self, [self, editor] { self->_wq_commit(editor); });
    return editor;
}

void WQFormatterDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* field = qobject_cast<WQLineEdit*>(editor);
    if (!field)
        return QStyledItemDelegate::setEditorData(editor, index);
    // What the user is typing stays theirs, and a value shown already (the
    // model reporting back what was just written) keeps its selection.
    const QVariant value = delegates::formatterValue(index.data(_wq_d->valueRole));
    if (field->hasPendingEdit() || (field->objectValue().isValid() && field->objectValue() == value))
        return;
    field->setObjectValue(value);
}

void WQFormatterDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    auto* field = qobject_cast<WQLineEdit*>(editor);
    if (!field)
        return QStyledItemDelegate::setModelData(editor, model, index);
    if (!field->validateEditing())
        return;
    QVariant value = field->objectValue();
    if (value.metaType() == QMetaType::fromType<WQDate>()
        && index.data(_wq_d->valueRole).metaType() == QMetaType::fromType<QDate>())
        value = value.value<WQDate>().toQDate();
    model->setData(index, value, _wq_d->valueRole);
}

void WQFormatterDelegate::_wq_commit(WQLineEdit* editor)
{
    // Reading the text shows the value with the caret at its end; a total or
    // date put in stays selected, as in a field.
    const QString text = editor->text();
    const WQRange selection = editor->selectedRange();
    if (!editor->validateEditing())
        return;
    if (editor->text() == text)
        editor->setSelectedRange(selection);
    emit commitData(editor);
}

void WQFormatterDelegate::_wq_move(WQLineEdit* editor, bool backwards)
{
    auto* cell = static_cast<CellEditor*>(editor);
    const QPersistentModelIndex from = cell->index();
    QAbstractItemView* view = cell->view();
    emit commitData(editor);
    const QModelIndex next = view && from.isValid() ? delegates::neighbouringEditableCell(*view, from, backwards)
                                                    : QModelIndex();
    emit closeEditor(editor, NoHint);
    if (!next.isValid())
        return;
    const QPersistentModelIndex target(next);
    view->setCurrentIndex(target);
    // A view that edits the current cell has opened its editor already.
    if (!view->editTriggers().testFlag(QAbstractItemView::CurrentChanged))
        view->edit(target);
}

bool WQFormatterDelegate::eventFilter(QObject* watched, QEvent* event)
{
    auto* editor = qobject_cast<CellEditor*>(watched);
    if (!editor)
        return QStyledItemDelegate::eventFilter(watched, event);

    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Escape is the editor's, never a window shortcut's.
        if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel)) {
            event->accept();
            return true;
        }
        return false;
    case QEvent::FocusOut: {
        // A pop-up of the editor's own (calculator, calendar, context menu)
        // or another window taking the keyboard does not end the edit, as in
        // a field; a text that cannot be read keeps the focus (the field says why).
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason)
            return false;
        if (editor->isAncestorOf(QApplication::focusWidget()) || !editor->canLeave())
            return false;
        _wq_commit(editor);
        emit closeEditor(editor, NoHint);
        return false;
    }
    case QEvent::KeyPress:
        break;
    default:
        return false;
    }

    const auto* key = static_cast<QKeyEvent*>(event);
    const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
    switch (key->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
            return false;
        if (editor->validateEditing())
            _wq_move(editor, key->key() == Qt::Key_Backtab || modifiers.testFlag(Qt::ShiftModifier));
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (editor->validateEditing()) {
            emit commitData(editor);
            emit closeEditor(editor, SubmitModelCache);
        }
        return true;
    case Qt::Key_Escape:
        editor->abortEditing();
        emit closeEditor(editor, RevertModelCache);
        return true;
    case Qt::Key_F4:
        if (!editor->isDateCell())
            return false;
        editor->dropDownCalendar();
        return true;
    case Qt::Key_Down:
        if (editor->isDateCell() && modifiers == Qt::AltModifier) {
            editor->dropDownCalendar();
            return true;
        }
        [[fallthrough]];
    case Qt::Key_Up:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        // The view moves on and closes the editor: only with a text it can keep.
        return !editor->validateEditing();
    default:
        return false;
    }
}

} // namespace wq
