#include <WQGeneral/views/WQTableView.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>

#include <set>

namespace wq {

namespace {

// Items as they are, but none can be chosen; submenus are copied the same way.
void copyDisabled(const QMenu& from, QMenu& to)
{
    to.setTitle(from.title());
    to.setIcon(from.icon());
    for (QAction* action : from.actions()) {
        if (action->isSeparator()) {
            to.addSeparator()->setText(action->text());
            continue;
        }
        QAction* copy = nullptr;
        if (const QMenu* submenu = action->menu()) {
            auto* subcopy = new QMenu(&to);
            copyDisabled(*submenu, *subcopy);
            copy = to.addMenu(subcopy);
        } else {
            copy = to.addAction(action->icon(), action->text());
        }
        copy->setText(action->text());
        copy->setShortcut(action->shortcut());
        copy->setCheckable(action->isCheckable());
        copy->setChecked(action->isChecked());
        copy->setToolTip(action->toolTip());
        copy->setVisible(action->isVisible());
        copy->setEnabled(false);
    }
}

} // namespace

class WQTableViewPrivate {
public:
    // A copy of the table's menu with every item off, for clicks the menu
    // does not serve; the previous one goes when it is no longer shown.
    QMenu* disabledCopy(WQTableView* table, const QMenu& menu);

    WQTableViewDelegate* delegate = nullptr;
    QPointer<QMenu> menu;
    QPointer<QMenu> lastDisabledCopy;
};

WQTableView::WQTableView(QWidget* parent)
    : QTableView(parent), _wq_d(std::make_unique<WQTableViewPrivate>())
{
    setContextMenuPolicy(Qt::DefaultContextMenu);
}

WQTableViewDelegate* WQTableView::delegate() const noexcept
{
    return _wq_d->delegate;
}

void WQTableView::setDelegate(WQTableViewDelegate* delegate) noexcept
{
    _wq_d->delegate = delegate;
}

QMenu* WQTableView::menu() const
{
    return _wq_d->menu;
}

WQTableView::~WQTableView() = default;

void WQTableView::setMenu(QMenu* menu)
{
    if (menu)
        menu->setParent(this, menu->windowFlags());
    _wq_d->menu = menu;
}

QList<int> WQTableView::selectedRows() const
{
    std::set<int> rows;
    if (const QItemSelectionModel* selection = selectionModel())
        for (const QModelIndex& index : selection->selectedIndexes())
            if (index.parent() == rootIndex())
                rows.insert(index.row());
    return QList<int>(rows.begin(), rows.end());
}

QMenu* WQTableView::menuForEvent(const QPoint& pos)
{
    setFocus(Qt::PopupFocusReason);

    const int row = rowAt(pos.y());
    QItemSelectionModel* selection = selectionModel();
    if (row >= 0 && selection && model() && !selection->rowIntersectsSelection(row, rootIndex())) {
        const QModelIndex index = model()->index(row, qMax(0, columnAt(pos.x())), rootIndex());
        selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }

    if (_wq_d->delegate)
        return _wq_d->delegate->tableViewContextMenuForRow(*this, row);
    if (!_wq_d->menu)
        return nullptr;
    if (!selectedRows().isEmpty())
        return _wq_d->menu;
    return _wq_d->disabledCopy(this, *_wq_d->menu);
}

QMenu* WQTableViewPrivate::disabledCopy(WQTableView* table, const QMenu& menu)
{
    if (lastDisabledCopy && !lastDisabledCopy->isVisible())
        delete lastDisabledCopy;
    else if (lastDisabledCopy)
        lastDisabledCopy->deleteLater();
    auto* copy = new QMenu(table);
    copyDisabled(menu, *copy);
    lastDisabledCopy = copy;
    return copy;
}

void WQTableView::contextMenuEvent(QContextMenuEvent* event)
{
    // Mouse menus arrive through the viewport, in its coordinates; the menu
    // key arrives at the table itself, and then means the current row.
    QPoint pos = event->pos();
    QPoint globalPos = event->globalPos();
    if (event->reason() != QContextMenuEvent::Mouse) {
        const QRect current = visualRect(currentIndex());
        pos = current.isValid() ? current.center() : QPoint(0, 0);
        globalPos = viewport()->mapToGlobal(pos);
    }
    if (QMenu* menu = menuForEvent(pos)) {
        menu->popup(globalPos);
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace wq
