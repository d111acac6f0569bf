#pragma once
// Where Tab and Shift+Tab go from a cell being edited.

#include <QModelIndex>

class QAbstractItemView;

namespace wq::delegates {

// The next (or previous) editable, enabled cell after from among its
// siblings, row by row in the order the view shows them; a table view's
// hidden rows and columns are skipped. Invalid past the last one.
QModelIndex neighbouringEditableCell(const QAbstractItemView& view, const QModelIndex& from, bool backwards);

} // namespace wq::delegates
