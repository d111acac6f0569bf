#include "WQToolbarItemList.h"

#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>

#include <QDataStream>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

#include <algorithm>

namespace wq {

WQToolbarItemList::WQToolbarItemList(Role role, QWidget* parent) : QListWidget(parent), _wq_role(role)
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    // The toolbar list draws its own insertion line (the view's own shows
    // only over an item, not in the gaps between items where drops land).
    setDropIndicatorShown(false);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDragDropOverwriteMode(false);
    setDefaultDropAction(Qt::MoveAction);
    setIconSize(QSize(24, 24));
    setSpacing(1);
}

QMimeData* WQToolbarItemList::encode(const Payload& payload)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << int(payload.origin) << payload.rows << payload.itemIdentifiers;
    auto* data = new QMimeData;
    data->setData(WQToolbarCustomizationDialog::kItemMimeType, bytes);
    return data;
}

std::optional<WQToolbarItemList::Payload> WQToolbarItemList::decode(const QMimeData* data)
{
    if (!data || !data->hasFormat(WQToolbarCustomizationDialog::kItemMimeType))
        return std::nullopt;
    QDataStream in(data->data(WQToolbarCustomizationDialog::kItemMimeType));
    int origin = -1;
    Payload payload;
    in >> origin >> payload.rows >> payload.itemIdentifiers;
    if (in.status() != QDataStream::Ok || (origin != int(Role::Palette) && origin != int(Role::Toolbar))
        || payload.rows.size() != payload.itemIdentifiers.size())
        return std::nullopt;
    payload.origin = Role(origin);
    return payload;
}

QStringList WQToolbarItemList::mimeTypes() const
{
    return {WQToolbarCustomizationDialog::kItemMimeType};
}

QMimeData* WQToolbarItemList::mimeData(const QList<QListWidgetItem*>& items) const
{
    Payload payload{_wq_role, {}, {}};
    QList<QListWidgetItem*> sorted = items;
    std::sort(sorted.begin(), sorted.end(),
              [this](const QListWidgetItem* a, const QListWidgetItem* b) { return row(a) < row(b); });
    for (const QListWidgetItem* item : sorted) {
        payload.rows << row(item);
        payload.itemIdentifiers << item->data(kIdentifierRole).toString();
    }
    return encode(payload);
}

Qt::DropActions WQToolbarItemList::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

void WQToolbarItemList::startDrag(Qt::DropActions)
{
    const QList<QListWidgetItem*> items = selectedItems();
    if (items.isEmpty())
        return;
    auto* drag = new QDrag(this);
    drag->setMimeData(mimeData(items));
    // The first item's image and label under the pointer.
    const QListWidgetItem* first = items.first();
    const QRect rect = visualItemRect(first);
    QPixmap image(rect.size() * devicePixelRatioF());
    image.setDevicePixelRatio(devicePixelRatioF());
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setOpacity(0.85);
        first->icon().paint(&painter, QRect(QPoint(2, (rect.height() - iconSize().height()) / 2), iconSize()));
        painter.drawText(rect.translated(-rect.topLeft()).adjusted(iconSize().width() + 8, 0, 0, 0),
                         Qt::AlignVCenter | Qt::AlignLeft, first->text());
    }
    drag->setPixmap(image);
    drag->setHotSpot(QPoint(12, rect.height() / 2));
    // The drop side changes the lists; nothing is taken out here.
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
}

void WQToolbarItemList::dragEnterEvent(QDragEnterEvent* event)
{
    if (!decode(event->mimeData())) {
        event->ignore();
        return;
    }
    QListWidget::dragEnterEvent(event);
    event->acceptProposedAction();
}

void WQToolbarItemList::dragMoveEvent(QDragMoveEvent* event)
{
    if (!decode(event->mimeData())) {
        event->ignore();
        return;
    }
    QListWidget::dragMoveEvent(event);
    event->acceptProposedAction();
    _wq_showInsertion(_wq_role == Role::Toolbar ? _wq_rowAt(event->position().toPoint()) : -1);
}

void WQToolbarItemList::dragLeaveEvent(QDragLeaveEvent* event)
{
    _wq_showInsertion(-1);
    QListWidget::dragLeaveEvent(event);
}

void WQToolbarItemList::_wq_showInsertion(int row)
{
    if (row == _wq_insertionRow)
        return;
    _wq_insertionRow = row;
    viewport()->update();
}

void WQToolbarItemList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (_wq_insertionRow < 0)
        return;
    // A line in the gap the dropped items would fill.
    int y = 0;
    if (_wq_insertionRow < count())
        y = visualItemRect(item(_wq_insertionRow)).top() - spacing();
    else if (count() > 0)
        y = visualItemRect(item(count() - 1)).bottom() + spacing();
    QPainter painter(viewport());
    painter.fillRect(QRect(2, std::max(0, y - 1), viewport()->width() - 4, 2), palette().color(QPalette::Highlight));
}

int WQToolbarItemList::_wq_rowAt(QPoint position) const
{
    // By height alone: a drop between two items (in the spacing, where no
    // item is) or beside a short label still lands where it points.
    for (int row = 0; row < count(); ++row)
        if (position.y() <= visualItemRect(item(row)).center().y())
            return row;
    return count();
}

void WQToolbarItemList::dropEvent(QDropEvent* event)
{
    const std::optional<Payload> payload = decode(event->mimeData());
    _wq_showInsertion(-1);
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    if (!payload) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    emit dropped(*payload, _wq_rowAt(event->position().toPoint()));
}

void WQToolbarItemList::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (_wq_role == Role::Palette && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        emit activatedByKey();
        return;
    }
    if (_wq_role == Role::Toolbar) {
        if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
            emit activatedByKey();
            return;
        }
        if ((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) && (key == Qt::Key_Up || key == Qt::Key_Down)) {
            emit moveRequested(key == Qt::Key_Up ? -1 : +1);
            return;
        }
    }
    QListWidget::keyPressEvent(event);
}

} // namespace wq
