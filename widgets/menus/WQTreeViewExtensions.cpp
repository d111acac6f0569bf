#include <WQGeneral/menus/WQNamedImage.h>
#include <WQGeneral/menus/WQTreeViewExtensions.h>

#include "WQHeaderIndicatorStyle.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeView>

#include <vector>

namespace wq {
namespace {

const QString kDescendingSortIndicator = QString::fromLatin1(WQHeaderIndicatorStyle::kDescendingImageName);

// Visits the view's rows from the top in display order. The number of
// children is read afresh at every step, so rows added on the way, and the
// children of items expanded on the way, are visited.
class RowWalker {
public:
    explicit RowWalker(const QTreeView& view, bool fetch = false)
        : _view(view), _model(view.model()), _fetch(fetch)
    {
        if (_model)
            _stack.push_back({view.rootIndex(), 0});
    }

    // Moves to the next row; false past the last.
    bool next()
    {
        if (!_model)
            return false;
        if (_current.isValid() && _view.isExpanded(_current) && _model->hasChildren(_current)) {
            if (_fetch && _model->canFetchMore(_current))
                _model->fetchMore(_current);
            _stack.push_back({_current, 0});
        }
        while (!_stack.empty()) {
            Frame& frame = _stack.back();
            const int count = _model->rowCount(frame.parent);
            while (frame.next < count && _view.isRowHidden(frame.next, frame.parent))
                ++frame.next;
            if (frame.next < count) {
                _current = _model->index(frame.next++, 0, frame.parent);
                _level = int(_stack.size()) - 1;
                ++_row;
                return true;
            }
            _stack.pop_back();
        }
        _current = QModelIndex();
        return false;
    }

    // Moves to `row`; false when there are fewer rows.
    bool advanceTo(int row)
    {
        while (_row < row)
            if (!next())
                return false;
        return _row == row;
    }

    const QModelIndex& index() const { return _current; }
    int level() const { return _level; }
    int row() const { return _row; }

private:
    struct Frame {
        QModelIndex parent;
        int next;
    };
    const QTreeView& _view;
    QAbstractItemModel* _model;
    bool _fetch;
    std::vector<Frame> _stack;
    QModelIndex _current;
    int _level = -1;
    int _row = -1;
};

// Expanding or collapsing an item the view has laid out moves every row
// below it in Qt's row table; with a layout pending, the view only records
// the state and lays out once. The protected scheduler is reached through a
// pointer to the base class's member, which any view may be called with.
struct LayoutScheduler : QTreeView {
    static void schedule(QTreeView& view) { (view.*(&LayoutScheduler::scheduleDelayedItemsLayout))(); }
};

void collapseWithChildren(QTreeView& view, const QModelIndex& item)
{
    const QAbstractItemModel* model = view.model();
    std::vector<QModelIndex> pending{item};
    while (!pending.empty()) {
        const QModelIndex index = pending.back();
        pending.pop_back();
        if (view.isExpanded(index))
            view.collapse(index);
        // Items keep their state under a collapsed parent: every descendant
        // is looked at.
        for (int row = model->rowCount(index) - 1; row >= 0; --row)
            pending.push_back(model->index(row, 0, index));
    }
}

void setIndicator(QTreeView& view, int column, const QString& imageName)
{
    QHeaderView* header = view.header();
    if (!header || column < 0 || column >= header->count())
        return;
    WQHeaderIndicatorStyle::install(*header);
    header->setProperty(WQHeaderIndicatorStyle::kImageProperty, imageName);
    header->setProperty(WQHeaderIndicatorStyle::kSectionProperty, column);
    {
        // A mark, not a request to sort.
        const QSignalBlocker blocker(header);
        header->setSortIndicator(column, Qt::DescendingOrder);
        header->setSortIndicatorShown(true);
    }
    header->viewport()->update();
}

} // namespace

int numberOfRows(const QTreeView& view)
{
    RowWalker walker(view);
    while (walker.next()) {
    }
    return walker.row() + 1;
}

QModelIndex itemAtRow(const QTreeView& view, int row)
{
    RowWalker walker(view);
    return row >= 0 && walker.advanceTo(row) ? walker.index() : QModelIndex();
}

int levelForRow(const QTreeView& view, int row)
{
    RowWalker walker(view);
    return row >= 0 && walker.advanceTo(row) ? walker.level() : -1;
}

int rowForItem(const QTreeView& view, const QModelIndex& item)
{
    if (!item.isValid() || item.model() != view.model())
        return -1;
    const QModelIndex first = item.siblingAtColumn(0);
    RowWalker walker(view);
    while (walker.next())
        if (walker.index() == first)
            return walker.row();
    return -1;
}

int parentRowForRow(const QTreeView& view, int row)
{
    if (row < 0)
        return -1;
    // One walk down to the row, remembering the last row seen at each level:
    // scanning up from the row for the first lower level finds the latest
    // of those below the row's own level.
    RowWalker walker(view);
    std::vector<int> lastRowAtLevel;
    while (walker.next() && walker.row() < row) {
        const auto level = std::size_t(walker.level());
        lastRowAtLevel.resize(level + 1, -1);
        lastRowAtLevel[level] = walker.row();
    }
    if (walker.row() != row || walker.level() == 0)
        return -1;
    int parent = -1;
    for (std::size_t level = 0; level < std::size_t(walker.level()) && level < lastRowAtLevel.size(); ++level)
        parent = std::max(parent, lastRowAtLevel[level]);
    return parent;
}

void expandAllItems(QTreeView& view)
{
    if (!view.model())
        return;
    LayoutScheduler::schedule(view);
    const QAbstractItemModel* model = view.model();
    // The walk goes on into each item it expands, so expanding every row's
    // item as it comes expands each item's children as well.
    RowWalker walker(view, true);
    while (walker.next())
        if (!view.isExpanded(walker.index()) && model->hasChildren(walker.index()))
            view.expand(walker.index());
}

void expandAll(QTreeView& view, bool expand, int column)
{
    if (view.model()) {
        if (expand) {
            expandAllItems(view);
        } else {
            LayoutScheduler::schedule(view);
            RowWalker walker(view);
            while (walker.next())
                collapseWithChildren(view, walker.index());
        }
    }
    setIndicator(view, column, expand ? kDescendingSortIndicator : kWQLittleRightArrowImageName);
}

QString indicatorImageInTableColumn(const QTreeView& view, int column)
{
    const QHeaderView* header = view.header();
    if (!header || !header->isSortIndicatorShown() || header->sortIndicatorSection() != column
        || header->property(WQHeaderIndicatorStyle::kSectionProperty).toInt() != column)
        return QString();
    return header->property(WQHeaderIndicatorStyle::kImageProperty).toString();
}

} // namespace wq
