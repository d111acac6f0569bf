#include <WQGeneral/delegates/WQFormatterDelegate.h>

#include <WQGeneral/dates/WQDate.h>

#include "WQCellEditor.h"
#include "WQCellNavigation.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <bit>
#include <exception>

namespace wq {
namespace {

using delegates::CellEditor;

// Past this many distinct values the texts are dropped and gathered again:
// a screen holds far fewer, a long scroll through a big model far more.
constexpr qsizetype kMaxTexts = 4096;

bool isNumber(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

// Formatters work with WQDate: a cell's QDate is read as one, and an invalid
// QDate or the no-date value as no value.
QVariant formatterValue(const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<QDate>()) {
        const QDate date = value.toDate();
        return date.isValid() ? QVariant::fromValue(WQDate::fromQDate(date)) : QVariant();
    }
    if (value.metaType() == QMetaType::fromType<WQDate>() && value.value<WQDate>() == WQDate())
        return QVariant();
    return value;
}

} // namespace

WQFormatterDelegate::WQFormatterDelegate(std::shared_ptr<WQFormatter> formatter, QObject* parent)
    : QStyledItemDelegate(parent), _wq_formatter(std::move(formatter))
{
    _wq_followFormatter();
}

WQFormatterDelegate::WQFormatterDelegate(WQLineEdit::FormatterKind kind, int places, QObject* parent)
    : WQFormatterDelegate(WQMakeFormatter(kind, places), parent)
{
}

WQFormatterDelegate::~WQFormatterDelegate() = default;

void WQFormatterDelegate::setFormatter(std::shared_ptr<WQFormatter> formatter)
{
    _wq_formatter = std::move(formatter);
    _wq_followFormatter();
    _wq_forgetTexts();
}

void WQFormatterDelegate::_wq_followFormatter()
{
    _wq_formatterObservation.reset();
    if (_wq_formatter)
        _wq_formatterObservation.observe(_wq_formatter->changeNotificationName(), _wq_formatter.get(),
                                         [this](const WQNotification&) { _wq_forgetTexts(); });
}

void WQFormatterDelegate::_wq_forgetTexts()
{
    _wq_texts.clear();
    // Views lay their items out again and repaint.
    emit sizeHintChanged(QModelIndex());
}

void WQFormatterDelegate::setValueRole(int role)
{
    if (role == _wq_valueRole)
        return;
    _wq_valueRole = role;
    emit valueRoleChanged(role);
    emit sizeHintChanged(QModelIndex());
}

void WQFormatterDelegate::setNegativeBrush(const QBrush& brush)
{
    if (brush == _wq_negativeBrush)
        return;
    _wq_negativeBrush = brush;
    emit negativeBrushChanged(brush);
    emit sizeHintChanged(QModelIndex());
}

void WQFormatterDelegate::setAlignment(Qt::Alignment alignment)
{
    if (alignment == _wq_alignment)
        return;
    _wq_alignment = alignment;
    emit alignmentChanged(alignment);
    emit sizeHintChanged(QModelIndex());
}

WQFormatterDelegate::Shown WQFormatterDelegate::_wq_render(const QVariant& cellValue) const
{
    Shown shown;
    const QVariant value = formatterValue(cellValue);
    if (!value.isValid())
        return shown;
    shown.number = isNumber(value.metaType());
    try {
        shown.text = _wq_formatter->stringForObjectValue(value).value_or(QString());
        // Negative as the user reads it: with a sign the amount without one
        // does not show (a tiny negative shows as zero, unsigned).
        if (shown.number && value.toDouble() < 0)
            shown.negative = shown.text != _wq_formatter->stringForObjectValue(-value.toDouble()).value_or(QString());
    } catch (const std::exception&) {
        shown.text.clear();
    }
    return shown;
}

const WQFormatterDelegate::Shown& WQFormatterDelegate::_wq_shown(const QVariant& value) const
{
    ValueKey key{value.typeId()};
    switch (key.type) {
    case QMetaType::Double:
    case QMetaType::Float:
        key.bits = std::bit_cast<qint64>(value.toDouble());
        break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        key.bits = value.toLongLong();
        break;
    case QMetaType::ULongLong:
        key.bits = qint64(value.toULongLong());
        break;
    case QMetaType::QDate:
        key.bits = value.toDate().toJulianDay();
        break;
    default:
        if (value.metaType() == QMetaType::fromType<WQDate>()) {
            const WQDate date = value.value<WQDate>();
            key.bits = date.yearOfCommonEra();
            key.more = date.monthOfYear() << 8 | date.dayOfMonth();
        } else {
            _wq_uncached = _wq_render(value);
            return _wq_uncached;
        }
    }
    if (const auto known = _wq_texts.constFind(key); known != _wq_texts.cend())
        return *known;
    if (_wq_texts.size() >= kMaxTexts)
        _wq_texts.clear();
    return *_wq_texts.insert(key, _wq_render(value));
}

QString WQFormatterDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    if (!_wq_formatter)
        return QStyledItemDelegate::displayText(value, locale);
    if (_wq_styling)
        return QString();
    return _wq_shown(value).text;
}

void WQFormatterDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    if (!_wq_formatter)
        return QStyledItemDelegate::initStyleOption(option, index);
    _wq_styleCell(option, index);
}

const WQFormatterDelegate::Shown& WQFormatterDelegate::_wq_styleCell(QStyleOptionViewItem* option,
                                                                    const QModelIndex& index) const
{
    // The base reads the model's alignment, if any, over this empty one; the
    // text it would make from the display role is not wanted.
    option->displayAlignment = Qt::Alignment();
    {
        const QScopedValueRollback styling(_wq_styling, true);
        QStyledItemDelegate::initStyleOption(option, index);
    }
    const Shown& shown = _wq_shown(_wq_valueRole == Qt::DisplayRole ? index.data() : index.data(_wq_valueRole));
    option->text = shown.text;
    if (shown.text.isEmpty())
        option->features &= ~QStyleOptionViewItem::HasDisplay;
    else
        option->features |= QStyleOptionViewItem::HasDisplay;
    if (!option->displayAlignment) {
        Qt::Alignment alignment = _wq_alignment ? _wq_alignment : shown.number ? Qt::AlignRight : Qt::AlignLeft;
        if (!(alignment & Qt::AlignVertical_Mask))
            alignment |= Qt::AlignVCenter;
        option->displayAlignment = alignment;
    }
    if (shown.negative && _wq_negativeBrush.style() != Qt::NoBrush)
        option->palette.setBrush(QPalette::Text, _wq_negativeBrush);
    return shown;
}

void WQFormatterDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!_wq_formatter)
        return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem cell = option;
    const Shown& shown = _wq_styleCell(&cell, index);
    const QWidget* widget = cell.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    // A text that fits on one line beside nothing else, in a cell selected as
    // a whole (as in tables): the style draws the cell without it, and the
    // text goes on as laid out once for all repaints. Anything more (an icon,
    // a check box, a text to wrap or elide, a selection that hugs the text, a
    // style sheet that may colour the text) is the style's.
    const bool plain = !cell.text.isEmpty() && cell.showDecorationSelected
        && !(cell.features & (QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasCheckIndicator))
        && !(cell.state & QStyle::State_Editing) && !style->inherits("QStyleSheetStyle");
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    const QRect room = cell.rect.adjusted(margin, 0, -margin, 0);
    if (!plain || !shown.fitsOneLine(cell.font, room.width()))
        return style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);

    cell.text.clear();
    cell.features &= ~QStyleOptionViewItem::HasDisplay;
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);

    // The text's colour as the style chooses it.
    QPalette::ColorGroup group = QPalette::Normal;
    if (!(cell.state & QStyle::State_Enabled))
        group = QPalette::Disabled;
    else if (!(cell.state & QStyle::State_Active))
        group = QPalette::Inactive;
    const QPalette::ColorRole role = cell.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text;
    painter->save();
    painter->setPen(cell.palette.color(group, role));
    painter->setFont(cell.font);
    // Placed as the style places a text layout: vertically by its rounded
    // size, along the line to the unit fraction.
    const QSizeF size = shown.laidOut.size();
    const Qt::Alignment alignment = QStyle::visualAlignment(cell.direction, cell.displayAlignment);
    const int top = QStyle::alignedRect(cell.direction, alignment & Qt::AlignVertical_Mask, size.toSize(), room).top();
    qreal left = room.left();
    if (alignment & Qt::AlignRight)
        left += room.width() - size.width();
    else if (alignment & Qt::AlignHCenter)
        left += (room.width() - size.width()) / 2;
    painter->drawStaticText(QPointF(left, top), shown.laidOut);
    painter->restore();
}

bool WQFormatterDelegate::Shown::fitsOneLine(const QFont& font, int width) const
{
    if (text.contains(u'\n') || text.contains(QChar::LineSeparator))
        return false;
    if (laidOut.text().isEmpty() || laidOutFont != font) {
        laidOut.setText(text);
        laidOut.setTextFormat(Qt::PlainText);
        laidOut.prepare(QTransform(), font);
        laidOutFont = font;
    }
    return laidOut.size().width() <= width;
}

QWidget* WQFormatterDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                           const QModelIndex& index) const
{
    auto* editor = new CellEditor(_wq_formatter, index, parent);
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
    const QVariant value = formatterValue(index.data(_wq_valueRole));
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
        && index.data(_wq_valueRole).metaType() == QMetaType::fromType<QDate>())
        value = value.value<WQDate>().toQDate();
    model->setData(index, value, _wq_valueRole);
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
