#pragma once
/// \file
/// Outline helpers for a QTreeView over any model.
///
/// A row is a row as the user sees it: rows are numbered from 0 at the top,
/// in display order, over the children of the view's root index and, below
/// them, the children of expanded items only; hidden rows are not counted.
/// The level of a row is 0 for the root's children, 1 for theirs, and so on.
/// Qt keeps its own row table private, so finding a row walks from the top:
/// it costs time in proportion to the row's number.

#include <WQGeneral/WQWidgetsExport.h>

#include <QModelIndex>
#include <QString>

class QTreeView;

namespace wq {

/// \addtogroup menus
/// @{

/// The number of rows the view shows now.
WQ_WIDGETS_EXPORT int numberOfRows(const QTreeView& view);
/// The item at a row; invalid outside 0 ... numberOfRows() - 1.
WQ_WIDGETS_EXPORT QModelIndex itemAtRow(const QTreeView& view, int row);
/// The row's level; -1 outside 0 ... numberOfRows() - 1.
WQ_WIDGETS_EXPORT int levelForRow(const QTreeView& view, int row);
/// The row showing an item (any column of it); -1 when it is not shown.
WQ_WIDGETS_EXPORT int rowForItem(const QTreeView& view, const QModelIndex& item);

/// The nearest row above `row` whose level is lower than its own: its parent's
/// row. -1 for a negative row, a row at level 0 or past the end, and when no
/// row above has a lower level.
WQ_WIDGETS_EXPORT int parentRowForRow(const QTreeView& view, int row);

/// Expands every item with all its children. Rows are counted again on every
/// step, so rows that appear while it runs (a model that fetches children
/// when they are first shown, or adds them when told of an expansion) are
/// expanded too. The view lays itself out once, afterwards.
WQ_WIDGETS_EXPORT void expandAllItems(QTreeView& view);
/// The same walk expanding (expand) or collapsing each row's item with all
/// its children, then marks the header of `column`: when collapsing with the
/// "LittleRightArrow" image (see WQNamedImage.h), when expanding with the
/// style's descending-sort arrow. The mark is the header's sort indicator,
/// set without sorting the view. A column outside the header gets no mark.
WQ_WIDGETS_EXPORT void expandAll(QTreeView& view, bool expand, int column);

/// The image expandAll last put in the column's header: "LittleRightArrow",
/// "NSDescendingSortIndicator", or empty when the column has no mark.
WQ_WIDGETS_EXPORT QString indicatorImageInTableColumn(const QTreeView& view, int column);

/// @}

} // namespace wq
