#include <WQGeneral/views/WQTableView.h>

#include "FieldTesting.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QMenu>
#include <QStandardItemModel>

using namespace wq;

namespace {

struct Register {
    QStandardItemModel model{5, 2};
    WQTableView table;
    QMenu* menu = new QMenu;
    QAction* remove = menu->addAction(QStringLiteral("Delete"));
    QAction* duplicate = menu->addAction(QStringLiteral("Duplicate"));

    Register()
    {
        for (int r = 0; r < model.rowCount(); ++r)
            model.setItem(r, 0, new QStandardItem(QStringLiteral("row %1").arg(r)));
        table.setModel(&model);
        table.setSelectionBehavior(QAbstractItemView::SelectRows);
        table.setSelectionMode(QAbstractItemView::ExtendedSelection);
        table.setMenu(menu);
        table.resize(300, 400);   // room below the last row
        test::showActive(table);
    }

    void select(const QList<int>& rows)
    {
        table.clearSelection();
        for (int r : rows)
            table.selectionModel()->select(model.index(r, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    QPoint rowPoint(int row) const
    {
        if (row < 0)
            return QPoint(20, table.viewport()->height() - 10);
        return table.visualRect(model.index(row, 1)).center();
    }

    // Right-clicks and answers the menu that popped up (closed again).
    QMenu* rightClick(int row)
    {
        // Through the window, as the platform sends it, so that the press
        // also brings the context-menu event.
        QTest::mouseClick(table.windowHandle(), Qt::RightButton, Qt::NoModifier,
                          table.viewport()->mapTo(&table, rowPoint(row)));
        QMenu* shown = nullptr;
        test::spinUntil([&] { return (shown = qobject_cast<QMenu*>(QApplication::activePopupWidget())) != nullptr; }, 400);
        if (shown)
            shown->close();
        return shown;
    }
};

QStringList texts(const QMenu& menu)
{
    QStringList list;
    for (const QAction* a : menu.actions())
        list << a->text() + (a->isEnabled() ? QString() : QStringLiteral(" (off)"));
    return list;
}

} // namespace

TEST(TableView, ContextMenuFollowsTheClickedRowOrComesFromTheDelegate)
{
    struct Case {
        const char* what;
        QList<int> selected;
        int clicked;
        QList<int> selectedAfter;
        bool ownMenu;   // the table's menu itself, or a disabled copy
    };
    const Case cases[] = {
        {"unselected row, nothing selected", {}, 2, {2}, true},
        {"unselected row, others selected", {1, 3}, 0, {0}, true},
        {"selected row keeps the selection", {1, 3}, 3, {1, 3}, true},
        {"below the last row keeps the selection", {1, 3}, -1, {1, 3}, true},
        {"below the last row with nothing selected", {}, -1, {}, false},
    };
    Register reg;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        reg.select(c.selected);
        QMenu* shown = reg.rightClick(c.clicked);
        ASSERT_NE(shown, nullptr);
        EXPECT_TRUE(reg.table.hasFocus());
        EXPECT_EQ(reg.table.selectedRows(), c.selectedAfter);
        if (c.ownMenu) {
            EXPECT_EQ(shown, reg.menu);
            EXPECT_EQ(texts(*shown), (QStringList{"Delete", "Duplicate"}));
        } else {
            EXPECT_NE(shown, reg.menu);
            EXPECT_EQ(texts(*shown), (QStringList{"Delete (off)", "Duplicate (off)"}));
            EXPECT_TRUE(reg.remove->isEnabled());   // the table's own items are untouched
        }
    }

    // A delegate gives the menu per row.
    struct RowMenus : WQTableViewDelegate {
        QList<int> asked;
        QMenu menu;
        QMenu* tableViewContextMenuForRow(WQTableView&, int row) override
        {
            asked << row;
            menu.setTitle(QStringLiteral("row %1").arg(row));
            return row == 4 ? nullptr : &menu;
        }
    } delegate;
    reg.table.setDelegate(&delegate);
    reg.table.clearSelection();
    EXPECT_EQ(reg.rightClick(1), &delegate.menu);
    EXPECT_EQ(delegate.menu.title(), QStringLiteral("row 1"));
    EXPECT_EQ(reg.rightClick(-1), &delegate.menu);   // asked even below the rows
    EXPECT_EQ(reg.table.selectedRows(), QList<int>{1});
    EXPECT_EQ(reg.rightClick(4), nullptr);            // the delegate's "no menu" holds
    EXPECT_EQ(delegate.asked, (QList<int>{1, -1, 4}));
    reg.table.setDelegate(nullptr);
}
