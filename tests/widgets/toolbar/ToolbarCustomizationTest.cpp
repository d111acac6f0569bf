#include "ToolbarTesting.h"

#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDataStream>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>

using namespace wq;
using namespace wq::test;

namespace {

const QString kSeparator = kWQToolbarSeparatorItemIdentifier;
const QString kFlexible = kWQToolbarFlexibleSpaceItemIdentifier;

QStringList texts(const QListWidget& list, bool enabledOnly = false)
{
    QStringList out;
    for (int i = 0; i < list.count(); ++i)
        if (!enabledOnly || (list.item(i)->flags() & Qt::ItemIsEnabled))
            out << list.item(i)->text();
    return out;
}

void clickRow(QListWidget& list, int row, Qt::KeyboardModifiers modifiers = {})
{
    const QRect rect = list.visualItemRect(list.item(row));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, rect.center());
}

// Drops what a drag from one of the lists carries onto a list, where a user
// aims: in the gap above a row (or below the last one), right of its label.
// On the way, the toolbar list shows an insertion line in that gap.
void drop(QListWidget& target, bool fromPalette, const QList<int>& rows, const QStringList& identifiers, int atRow)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << (fromPalette ? 0 : 1) << rows << identifiers;
    QMimeData data;
    data.setData(WQToolbarCustomizationDialog::kItemMimeType, bytes);
    const int gap = atRow < target.count() ? target.visualItemRect(target.item(atRow)).top() - 1
                                           : target.visualItemRect(target.item(target.count() - 1)).bottom() + 1;
    const QPoint at(target.viewport()->width() - 6, gap);
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(target.viewport(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(target.viewport(), &move);
    if (target.objectName() == u"toolbarItems") {
        EXPECT_EQ(target.viewport()->grab().toImage().pixelColor(target.viewport()->width() / 2, gap),
                  target.palette().color(QPalette::Highlight));
    }
    QDropEvent dropped(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(target.viewport(), &dropped);
    EXPECT_TRUE(dropped.isAccepted());
}

struct Opened {
    WQToolbarCustomizationDialog* dialog = nullptr;
    QListWidget* palette = nullptr;
    QListWidget* items = nullptr;
};

// Right-clicks the toolbar and chooses "Customize Toolbar…" from the keyboard.
Opened openFromContextMenu(WQToolbar& toolbar)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(4, 4), toolbar.mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(&toolbar, &event);
    auto* menu = toolbar.findChild<QMenu*>();
    EXPECT_NE(menu, nullptr);
    if (!menu)
        return {};
    EXPECT_TRUE(QTest::qWaitForWindowExposed(menu));
    QTest::keyClick(menu, Qt::Key_Up);
    EXPECT_EQ(menu->activeAction()->text(), u"Customize Toolbar\u2026");
    QTest::keyClick(menu, Qt::Key_Return);
    Opened opened;
    opened.dialog = toolbar.customizationPalette();
    EXPECT_NE(opened.dialog, nullptr);
    if (!opened.dialog)
        return {};
    EXPECT_TRUE(QTest::qWaitForWindowExposed(opened.dialog));
    opened.palette = opened.dialog->findChild<QListWidget*>(QStringLiteral("palette"));
    opened.items = opened.dialog->findChild<QListWidget*>(QStringLiteral("toolbarItems"));
    return opened;
}

using ToolbarCustomization = ToolbarTest;

TEST_F(ToolbarCustomization, TheUserAddsRemovesAndReordersItemsAndKeepsTheChoice)
{
    auto controller = std::make_unique<SampleController>();
    WQToolbar* toolbar = controller->setUpToolbar(QStringLiteral("Main"));
    showActive(*controller->window());
    Opened d = openFromContextMenu(*toolbar);
    ASSERT_NE(d.dialog, nullptr);
    EXPECT_EQ(d.dialog->parentWidget(), controller->window());
    EXPECT_EQ(d.dialog->windowModality(), Qt::WindowModal);

    // The palette offers what the toolbar allows and can show, standard items
    // always; what the toolbar has already is greyed out.
    EXPECT_EQ(texts(*d.palette), QStringList({"New Transaction", "Delete Transaction", "Report", "Search Field",
                                              "unlabelled", "Separator", "Space", "Flexible Space"}));
    EXPECT_EQ(texts(*d.palette, true), QStringList({"Report", "unlabelled", "Separator", "Space", "Flexible Space"}));
    EXPECT_EQ(texts(*d.items),
              QStringList({"New Transaction", "Delete Transaction", "Flexible Space", "Search Field"}));

    // Keyboard: Return adds the palette's selection; the toolbar follows.
    clickRow(*d.palette, 2);
    QTest::keyClick(d.palette, Qt::Key_Return);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"new", "delete", kFlexible, "search", "report"}));
    EXPECT_FALSE(d.palette->item(2)->flags() & Qt::ItemIsEnabled);
    // Ctrl+Up twice moves it before the flexible space; Delete removes "new".
    QTest::keyClick(d.items, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(d.items, Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"new", "delete", "report", kFlexible, "search"}));
    clickRow(*d.items, 0);
    QTest::keyClick(d.items, Qt::Key_Delete);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"delete", "report", kFlexible, "search"}));

    // Drag and drop: a separator from the palette before "report", "search"
    // within the list to the front, "delete" back out to the palette.
    drop(*d.items, true, {5}, {kSeparator}, 1);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"delete", kSeparator, "report", kFlexible, "search"}));
    drop(*d.items, false, {4}, {"search"}, 0);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"search", "delete", kSeparator, "report", kFlexible}));
    drop(*d.palette, false, {1}, {"delete"}, 0);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"search", kSeparator, "report", kFlexible}));
    // An item already there is not added twice, however it arrives.
    drop(*d.items, true, {2}, {"report"}, 0);
    EXPECT_EQ(toolbar->itemIdentifiers().count(QStringLiteral("report")), 1);

    // The buttons do the same.
    clickRow(*d.items, 2);
    QTest::mouseClick(d.dialog->findChild<QPushButton*>(QStringLiteral("moveDown")), Qt::LeftButton);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"search", kSeparator, kFlexible, "report"}));
    auto* mode = d.dialog->findChild<QComboBox*>(QStringLiteral("displayMode"));
    mode->setCurrentIndex(mode->findData(int(Qt::ToolButtonIconOnly)));
    EXPECT_EQ(toolbar->toolButtonStyle(), Qt::ToolButtonIconOnly);

    QTest::mouseClick(d.dialog->findChild<QPushButton*>(QStringLiteral("done")), Qt::LeftButton);
    EXPECT_TRUE(spinUntil([&] { return !toolbar->customizationPalette(); }));

    // After a restart the choice is there.
    const QStringList chosen = toolbar->itemIdentifiers();
    controller = std::make_unique<SampleController>();
    toolbar = controller->setUpToolbar(QStringLiteral("Main"));
    EXPECT_EQ(toolbar->itemIdentifiers(), chosen);
    EXPECT_EQ(toolbar->toolButtonStyle(), Qt::ToolButtonIconOnly);

    // Restore Defaults, then Cancel: the toolbar is as it was.
    showActive(*controller->window());
    d = openFromContextMenu(*toolbar);
    ASSERT_NE(d.dialog, nullptr);
    QTest::mouseClick(d.dialog->findChild<QPushButton*>(QStringLiteral("restoreDefaults")), Qt::LeftButton);
    EXPECT_EQ(toolbar->itemIdentifiers(), controller->defaults);
    QTest::keyClick(d.dialog, Qt::Key_Escape);
    EXPECT_TRUE(spinUntil([&] { return !toolbar->customizationPalette(); }));
    EXPECT_EQ(toolbar->itemIdentifiers(), chosen);
}

TEST_F(ToolbarCustomization, ANewDefaultSetJoinsTheUsersChoiceAndGoneItemsAreSkipped)
{
    // Saved by an earlier version whose default set had no "report"; the
    // user dropped "delete" and has an item that no longer exists.
    QSettings settings;
    settings.setValue(QStringLiteral("Toolbars/Main/itemIdentifiers"),
                      QStringList({"search", "retired", "new", kSeparator, kSeparator, "search"}));
    settings.setValue(QStringLiteral("Toolbars/Main/defaultItemIdentifiers"),
                      QStringList({"new", "delete", kFlexible, "search"}));
    settings.sync();

    // The new default set: "report" after "new", "unlabelled" first, and
    // "notAllowed", which the toolbar may not show.
    auto controller = std::make_unique<SampleController>(
        QStringList({"unlabelled", "new", "report", "delete", kFlexible, "search", "notAllowed"}));
    WQToolbar* toolbar = controller->setUpToolbar(QStringLiteral("Main"));
    EXPECT_EQ(toolbar->itemIdentifiers(),
              QStringList({"search", "unlabelled", "new", "report", kSeparator, kSeparator}));
    // The merge is kept with the new set it was made from: the user can
    // remove a new item for good.
    EXPECT_EQ(QSettings().value(QStringLiteral("Toolbars/Main/defaultItemIdentifiers")).toStringList(),
              controller->defaults);
    toolbar->removeItemAtIndex(3);
    toolbar->saveConfiguration();
    controller = std::make_unique<SampleController>(controller->defaults);
    toolbar = controller->setUpToolbar(QStringLiteral("Main"));
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"search", "unlabelled", "new", kSeparator, kSeparator}));

    // Without a saved choice, the default set as it is now.
    toolbar->restoreDefaultConfiguration();
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"unlabelled", "new", "report", "delete", kFlexible, "search"}));
    EXPECT_FALSE(QSettings().contains(QStringLiteral("Toolbars/Main/itemIdentifiers")));
}

} // namespace
