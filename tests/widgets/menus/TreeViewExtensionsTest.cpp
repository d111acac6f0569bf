#include "FieldTesting.h"

#include <WQGeneral/menus/WQNamedImage.h>
#include <WQGeneral/menus/WQTreeViewExtensions.h>

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTreeView>

using namespace wq;

namespace {

// The rows as Qt's own view walks them, for comparison.
QStringList qtRows(const QTreeView& view)
{
    QStringList rows;
    for (QModelIndex index = view.model()->index(0, 0, view.rootIndex()); index.isValid();
         index = view.indexBelow(index))
        rows << index.data().toString();
    return rows;
}

// The rows as our functions walk them, a dot per level; on the way, checked
// to be the rows Qt's view walks.
QStringList ourRows(const QTreeView& view)
{
    QStringList rows, plain;
    for (int row = 0; row < numberOfRows(view); ++row) {
        plain << itemAtRow(view, row).data().toString();
        rows << QString(levelForRow(view, row), u'.') + plain.last();
    }
    EXPECT_EQ(plain, qtRows(view));
    return rows;
}

// Assets > (Checking, Savings > (Emergency, Vacation)), Liabilities > Card, Income.
struct Tree {
    Tree()
    {
        model.setHorizontalHeaderLabels({QStringLiteral("Account"), QStringLiteral("Balance")});
        auto add = [](QStandardItem* parent, const char* name) {
            auto* item = new QStandardItem(QString::fromLatin1(name));
            parent->appendRow({item, new QStandardItem(QStringLiteral("0.00"))});
            return item;
        };
        QStandardItem* root = model.invisibleRootItem();
        QStandardItem* assets = add(root, "Assets");
        add(assets, "Checking");
        QStandardItem* savings = add(assets, "Savings");
        add(savings, "Emergency");
        add(savings, "Vacation");
        add(add(root, "Liabilities"), "Card");
        add(root, "Income");
        view.setModel(&model);
        view.resize(320, 260);
    }
    QStandardItemModel model;
    QTreeView view;
};

TEST(TreeViewExtensions, RowsAreTheViewsOwnRowsWithTheirLevelsAndParents)
{
    Tree t;
    EXPECT_EQ(ourRows(t.view), QStringList({"Assets", "Liabilities", "Income"}));
    t.view.expandAll();
    const QStringList all = {"Assets", ".Checking", ".Savings", "..Emergency", "..Vacation",
                             "Liabilities", ".Card", "Income"};
    EXPECT_EQ(ourRows(t.view), all);
    EXPECT_FALSE(itemAtRow(t.view, 8).isValid());
    EXPECT_FALSE(itemAtRow(t.view, -1).isValid());
    EXPECT_EQ(levelForRow(t.view, 8), -1);
    const QModelIndex vacation = t.model.index(1, 1, t.model.index(1, 0, t.model.index(0, 0)));
    EXPECT_EQ(rowForItem(t.view, vacation), 4);
    EXPECT_EQ(rowForItem(t.view, QModelIndex()), -1);

    // Hidden rows and a root index are honoured as the view honours them.
    const QModelIndex savings = t.model.index(1, 0, t.model.index(0, 0));
    t.view.setRowHidden(0, savings, true);
    EXPECT_EQ(ourRows(t.view),
              QStringList({"Assets", ".Checking", ".Savings", "..Vacation", "Liabilities", ".Card", "Income"}));
    t.view.setRootIndex(t.model.index(0, 0));
    EXPECT_EQ(ourRows(t.view), QStringList({"Checking", "Savings", ".Vacation"}));
    EXPECT_EQ(rowForItem(t.view, vacation), 2);
    EXPECT_EQ(rowForItem(t.view, t.model.index(1, 0)), -1);

    // Parent rows, of every row and of rows outside.
    t.view.setRootIndex(QModelIndex());
    t.view.setRowHidden(0, savings, false);
    const std::pair<int, int> cases[] = {
        {0, -1}, {1, 0}, {2, 0}, {3, 2}, {4, 2}, {5, -1}, {6, 5}, {7, -1},  // every row
        {-1, -1}, {-7, -1}, {8, -1}, {1000, -1},                            // outside
    };
    for (const auto& [row, parent] : cases)
        EXPECT_EQ(parentRowForRow(t.view, row), parent) << "row " << row;

    // Rows move with collapsing: Savings' children are gone, Card is row 4.
    t.view.collapse(t.model.index(1, 0, t.model.index(0, 0)));
    EXPECT_EQ(parentRowForRow(t.view, 4), 3);
    EXPECT_EQ(parentRowForRow(t.view, 3), -1);
}

// Each item says it has children until asked for them; then three appear,
// down to the third level.
class LazyModel : public QStandardItemModel {
public:
    LazyModel()
    {
        for (const char* name : {"A", "B"})
            appendRow(new QStandardItem(QString::fromLatin1(name)));
    }
    static int depth(const QModelIndex& index)
    {
        int depth = 0;
        for (QModelIndex i = index; i.isValid(); i = i.parent())
            ++depth;
        return depth;
    }
    bool hasChildren(const QModelIndex& parent) const override
    {
        return !parent.isValid() || QStandardItemModel::hasChildren(parent) || canFetchMore(parent);
    }
    bool canFetchMore(const QModelIndex& parent) const override
    {
        return parent.isValid() && depth(parent) < 3 && !itemFromIndex(parent)->hasChildren();
    }
    void fetchMore(const QModelIndex& parent) override
    {
        if (!canFetchMore(parent))
            return;
        QStandardItem* item = itemFromIndex(parent);
        for (int i = 1; i <= 3; ++i)
            item->appendRow(new QStandardItem(item->text() + QString::number(i)));
        ++fetches;
    }
    int fetches = 0;
};

TEST(TreeViewExtensions, ExpandAllItemsVisitsRowsThatAppearOnTheWay)
{
    LazyModel model;
    QTreeView view;
    view.setModel(&model);
    expandAllItems(view);
    // A, its three children and their three each; the same for B.
    EXPECT_EQ(numberOfRows(view), 2 * (1 + 3 + 9));
    EXPECT_EQ(model.fetches, 2 * (1 + 3));
    EXPECT_EQ(ourRows(view).mid(0, 6), QStringList({"A", ".A1", "..A11", "..A12", "..A13", ".A2"}));

    // Rows added when the view announces an expansion are visited too, also
    // at a level the walk is already going through.
    Tree t;
    QObject::connect(&t.view, &QTreeView::expanded, &t.view, [&t](const QModelIndex& index) {
        if (index.data().toString() != u"Liabilities")
            return;
        t.model.itemFromIndex(index)->child(0)->appendRow(new QStandardItem(QStringLiteral("Statement")));
        auto* equity = new QStandardItem(QStringLiteral("Equity"));
        equity->appendRow(new QStandardItem(QStringLiteral("Opening")));
        t.model.appendRow(equity);
    });
    expandAllItems(t.view);
    EXPECT_EQ(ourRows(t.view).mid(5), QStringList({"Liabilities", ".Card", "..Statement", "Income", "Equity",
                                                   ".Opening"}));
    EXPECT_TRUE(t.view.isExpanded(t.model.index(3, 0)));
}

TEST(TreeViewExtensions, ExpandAllExpandsOrCollapsesEverythingAndMarksTheHeader)
{
    Tree t;
    // Sortable, but in the model's order until the user sorts.
    t.view.header()->setSortIndicator(-1, Qt::AscendingOrder);
    t.view.setSortingEnabled(true);
    t.view.header()->setSortIndicatorShown(false);
    test::showActive(t.view);

    // Collapsing a tree that is all collapsed keeps it so and still marks.
    expandAll(t.view, false, 0);
    EXPECT_EQ(numberOfRows(t.view), 3);
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 0), u"LittleRightArrow");
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 1), QString());
    const QImage collapsedHeader = t.view.header()->grab().toImage();

    expandAll(t.view, true, 0);
    EXPECT_EQ(qtRows(t.view), QStringList({"Assets", "Checking", "Savings", "Emergency", "Vacation", "Liabilities",
                                           "Card", "Income"}));
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 0), u"NSDescendingSortIndicator");
    EXPECT_EQ(t.view.header()->sortIndicatorOrder(), Qt::DescendingOrder);
    // Marking the header did not sort the tree.
    EXPECT_EQ(t.model.index(0, 0).data().toString(), u"Assets");
    // The two marks look different.
    EXPECT_NE(t.view.header()->grab().toImage(), collapsedHeader);

    // Collapsing goes into items under collapsed parents: nothing stays
    // expanded out of sight.
    t.view.collapse(t.model.index(0, 0));
    expandAll(t.view, false, 1);
    EXPECT_EQ(qtRows(t.view), QStringList({"Assets", "Liabilities", "Income"}));
    EXPECT_FALSE(t.view.isExpanded(t.model.index(1, 0, t.model.index(0, 0))));
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 1), u"LittleRightArrow");
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 0), QString());

    // A column the header does not have gets no mark and nothing breaks.
    expandAll(t.view, true, 7);
    EXPECT_EQ(numberOfRows(t.view), 8);
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 1), u"LittleRightArrow");

    // The user sorting by a column replaces the mark with a real sort arrow.
    const QHeaderView* header = t.view.header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(1) + 10, header->height() / 2));
    EXPECT_EQ(indicatorImageInTableColumn(t.view, 1), QString());

    // A view without a model is left alone.
    QTreeView view;
    EXPECT_EQ(numberOfRows(view), 0);
    EXPECT_EQ(parentRowForRow(view, 0), -1);
    expandAllItems(view);
    expandAll(view, false, 0);
    EXPECT_FALSE(WQImageNamed(kWQLittleRightArrowImageName).isNull());
    EXPECT_TRUE(WQImageNamed(QStringLiteral("no-such-image-anywhere")).isNull());
}

} // namespace
