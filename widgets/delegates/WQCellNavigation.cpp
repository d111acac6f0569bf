#include "WQCellNavigation.h"

#include <QHeaderView>
#include <QTableView>

namespace wq::delegates {
namespace {

// Positions as shown: a table view's headers may have moved sections.
struct ShownOrder {
    const QTableView* table;

    int shownRow(int row) const { return table ? table->verticalHeader()->visualIndex(row) : row; }
    int shownColumn(int column) const { return table ? table->horizontalHeader()->visualIndex(column) : column; }
    int modelRow(int shown) const { return table ? table->verticalHeader()->logicalIndex(shown) : shown; }
    int modelColumn(int shown) const { return table ? table->horizontalHeader()->logicalIndex(shown) : shown; }
    bool hidden(int row, int column) const { return table && (table->isRowHidden(row) || table->isColumnHidden(column)); }
};

} // namespace

QModelIndex neighbouringEditableCell(const QAbstractItemView& view, const QModelIndex& from, bool backwards)
{
    const QAbstractItemModel* model = from.model();
    if (!model)
        return {};
    const QModelIndex parent = from.parent();
    const int rows = model->rowCount(parent);
    const int columns = model->columnCount(parent);
    const ShownOrder order{qobject_cast<const QTableView*>(&view)};
    int row = order.shownRow(from.row());
    int column = order.shownColumn(from.column());
    const int step = backwards ? -1 : 1;
    for (;;) {
        column += step;
        if (column >= columns) {
            column = 0;
            ++row;
        } else if (column < 0) {
            column = columns - 1;
            --row;
        }
        if (row < 0 || row >= rows)
            return {};
        const int modelRow = order.modelRow(row);
        const int modelColumn = order.modelColumn(column);
        if (modelRow < 0 || modelColumn < 0 || order.hidden(modelRow, modelColumn))
            continue;
        const QModelIndex cell = model->index(modelRow, modelColumn, parent);
        if (cell.flags().testFlags(Qt::ItemIsEditable | Qt::ItemIsEnabled))
            return cell;
    }
}

} // namespace wq::delegates
