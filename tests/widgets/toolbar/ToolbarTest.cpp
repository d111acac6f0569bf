// The toolbar a window controller builds from its dictionary: items made as
// their descriptions say, mistakes reported, state kept and views lent; and
// the user's customization of it, kept across restarts.

#include "FieldTesting.h"
#include "ScopedTranslations.h"

#include <WQGeneral/alerts/WQWindowController.h>
#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>
#include <WQGeneral/toolbar/WQToolbarDictionary.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include <WQTestSupport.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QToolButton>

// A window controller with a sample toolbar dictionary: two actions, a
// search field as a view, an item with both a view and an action, an item
// that is allowed but not in the default set.
namespace wq::test {

class SampleController : public WQWindowController {
    Q_OBJECT
    Q_PROPERTY(QWidget* searchField READ searchField)
public:
    explicit SampleController(QStringList defaults = {QStringLiteral("new"), QStringLiteral("delete"),
                                                      kWQToolbarFlexibleSpaceItemIdentifier,
                                                      QStringLiteral("search")})
        : WQWindowController(std::make_unique<QMainWindow>()), defaults(std::move(defaults))
    {
        _search = new QLineEdit(window());
        _search->setObjectName(QStringLiteral("search"));
        _search->resize(180, 26);
        window()->resize(640, 200);
    }

    QWidget* searchField() const { return _search; }

    std::optional<QVariantMap> toolbarDictionary() const override
    {
        if (!hasDictionary)
            return std::nullopt;
        auto item = [](const char* label, const char* palette, const char* tip, const char* image, const char* action) {
            QVariantMap description{{kWQToolbarItemKey_Label, QString::fromLatin1(label)},
                                    {kWQToolbarItemKey_PaletteLabel, QString::fromLatin1(palette)},
                                    {kWQToolbarItemKey_ToolTip, QString::fromLatin1(tip)}};
            if (image)
                description.insert(kWQToolbarItemKey_ImageName, QString::fromLatin1(image));
            if (action)
                description.insert(kWQToolbarItemKey_Action, QString::fromLatin1(action));
            return description;
        };
        QVariantMap search = item("Search", "Search Field", "Find payees", "LittleRightArrow", "newTransaction");
        search.insert(kWQToolbarItemKey_View, QStringLiteral("searchField"));
        return QVariantMap{
            {kWQToolbarKey_ItemInfoByIdentifier,
             QVariantMap{{QStringLiteral("new"), item("New", "New Transaction", "Add a transaction", "LittleRightArrow",
                                                      "newTransaction")},
                         {QStringLiteral("delete"), item("Delete", "Delete Transaction", "Delete the selection",
                                                         nullptr, "deleteTransaction")},
                         {QStringLiteral("report"), item("Report", "", "", nullptr, "report")},
                         {QStringLiteral("unlabelled"), QVariantMap{}},
                         {QStringLiteral("search"), search},
                         {QStringLiteral("broken"), QVariantMap{{kWQToolbarItemKey_View, QStringLiteral("noSuchView")}}}}},
            {kWQToolbarKey_DefaultItemIdentifiers, defaults},
            {kWQToolbarKey_AllowedItemIdentifiers,
             QStringList{"new", "delete", "report", "search", "unlabelled", "broken"}},
        };
    }

    QStringList defaults;
    bool hasDictionary = true;

public slots:
    // The actions the dictionary names, answered so that it may name them.
    void newTransaction() {}
    void deleteTransaction(QObject*) {}
    void report() {}

private:
    QLineEdit* _search;
};

// Every test starts without saved toolbars.
class ToolbarTest : public ::testing::Test {
protected:
    void SetUp() override { QSettings().remove(QStringLiteral("Toolbars")); }
    void TearDown() override { QSettings().remove(QStringLiteral("Toolbars")); }
};

} // namespace wq::test

using namespace wq;
using namespace wq::test;

namespace {

using ToolbarDictionary = ToolbarTest;

TEST_F(ToolbarDictionary, ItemsAreMadeAsTheirDescriptionsSay)
{
    SampleController controller;
    WQToolbar* toolbar = nullptr;
    {
        const ScopedTranslations german("ToolbarStrings", {{"New", QStringLiteral("Neu")},
                                                           {"Add a transaction", QStringLiteral("Buchung erfassen")}});
        toolbar = controller.setUpToolbar(QStringLiteral("Main"));
    }
    ASSERT_NE(toolbar, nullptr);
    EXPECT_EQ(toolbar->parentWidget(), controller.window());
    EXPECT_EQ(toolbar->itemIdentifiers(), controller.defaults);

    struct Case {
        const char* identifier;
        const char* label;
        const char* paletteLabel;
        const char* toolTip;
        bool image;
        const char* action;
    };
    const Case cases[] = {
        {"new", "Neu", "New Transaction", "Buchung erfassen", true, "newTransaction"},
        {"delete", "Delete", "Delete Transaction", "Delete the selection", false, "deleteTransaction"},
        {"search", "Search", "Search Field", "Find payees", false, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.identifier);
        const WQToolbarItem* item = toolbar->itemWithIdentifier(QString::fromLatin1(c.identifier));
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->label(), QString::fromLatin1(c.label));
        EXPECT_EQ(item->paletteLabel(), QString::fromLatin1(c.paletteLabel));
        EXPECT_EQ(item->toolTip(), QString::fromLatin1(c.toolTip));
        EXPECT_EQ(!item->icon().isNull(), c.image);
        EXPECT_EQ(wq_action(*item), QByteArray(c.action));
        if (*c.action) {
            EXPECT_EQ(wq_target(*item), &controller);
        }
    }
    // Clicked, the items send their actions as any item does; text under the
    // image, as toolbars of this kind show it.
    EXPECT_EQ(qobject_cast<QToolButton*>(toolbar->widgetForAction(toolbar->itemWithIdentifier("new")))
                  ->toolButtonStyle(),
              Qt::ToolButtonTextUnderIcon);

    // The view item: the controller's widget, at least as large as it was.
    const WQToolbarItem* search = toolbar->itemWithIdentifier(QStringLiteral("search"));
    EXPECT_EQ(search->view(), controller.searchField());
    EXPECT_EQ(search->minSize(), QSize(180, 26));
    EXPECT_EQ(toolbar->widgetForAction(const_cast<WQToolbarItem*>(search)), controller.searchField());
    EXPECT_EQ(controller.searchField()->minimumSize(), QSize(180, 26));

    // Texts that are missing are empty; unknown identifiers and views that
    // are not there give no item.
    const std::unique_ptr<WQToolbarItem> unlabelled =
        controller.toolbarItemForItemIdentifier(*toolbar, QStringLiteral("unlabelled"), true);
    ASSERT_NE(unlabelled, nullptr);
    EXPECT_EQ(unlabelled->label(), QString());
    EXPECT_EQ(unlabelled->toolTip(), QString());
    EXPECT_EQ(controller.toolbarItemForItemIdentifier(*toolbar, QStringLiteral("nope"), true), nullptr);
    EXPECT_EQ(controller.toolbarItemForItemIdentifier(*toolbar, QStringLiteral("broken"), true), nullptr);
    EXPECT_EQ(controller.toolbarAllowedItemIdentifiers(*toolbar).size(), 6);
}

TEST_F(ToolbarDictionary, MistakesAreReportedOnceByNameAndNoDictionaryGivesNothing)
{
    SampleController controller;
    const QVariantMap dictionary{
        {kWQToolbarKey_ItemInfoByIdentifier,
         QVariantMap{{QStringLiteral("report"), QVariantMap{{QStringLiteral("lable"), QStringLiteral("Report")},
                                                            {kWQToolbarItemKey_ImageName, QStringLiteral("NoSuchImage")},
                                                            {kWQToolbarItemKey_Action, QStringLiteral("sendReport")}}}}},
        {QStringLiteral("defaultItems"), QStringList{QStringLiteral("report")}},
        {kWQToolbarKey_AllowedItemIdentifiers, QStringList{QStringLiteral("report"), QStringLiteral("print")}},
    };
    test::LogCapture log;
    for (int twice = 0; twice < 2; ++twice) {
        // The item is made all the same, as before.
        const auto item = WQToolbarItemFromDictionary(dictionary, QStringLiteral("report"), controller);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(wq_action(*item), "sendReport");
        WQToolbarAllowedItemIdentifiers(dictionary);
    }
    EXPECT_EQ(log.lines(),
              QStringList({"WQGeneral: toolbar dictionary: unknown key \"defaultItems\"",
                           "WQGeneral: toolbar dictionary: allowedItemIdentifiers names \"print\", which "
                           "itemInfoByIdentifier does not describe",
                           "WQGeneral: toolbar item \"report\": unknown key \"lable\"",
                           "WQGeneral: toolbar item \"report\": no image named \"NoSuchImage\"",
                           "WQGeneral: toolbar item \"report\": wq::test::SampleController does not answer the "
                           "action \"sendReport\""}));

    // No dictionary at all gives nothing but the standard items.
    controller.hasDictionary = false;
    WQToolbar* toolbar = controller.setUpToolbar(QStringLiteral("Main"));
    EXPECT_TRUE(toolbar->items().isEmpty());
    EXPECT_TRUE(controller.toolbarDefaultItemIdentifiers(*toolbar).isEmpty());
    EXPECT_TRUE(controller.toolbarAllowedItemIdentifiers(*toolbar).isEmpty());
    EXPECT_EQ(controller.toolbarItemForItemIdentifier(*toolbar, QStringLiteral("new"), true), nullptr);
    EXPECT_EQ(toolbar->allowedItemIdentifiers(), WQToolbar::standardItemIdentifiers());
}

TEST_F(ToolbarDictionary, ItemsKeepTheirStateAndViewsGoBackToTheWindow)
{
    SampleController controller;
    auto* toolbar = new WQToolbar(QStringLiteral("Main"), controller.window());
    // Without a delegate there is nothing to make items from.
    toolbar->insertItemWithItemIdentifier(QStringLiteral("new"), 0);
    EXPECT_EQ(toolbar->itemWithIdentifier(QStringLiteral("new")), nullptr);
    // The application marks an item checkable as it is added, and caps a view.
    QObject::connect(toolbar, &WQToolbar::willAddItem, toolbar, [](WQToolbarItem* item) {
        item->setCheckable(item->itemIdentifier() == u"delete");
        if (item->view())
            item->setMaxSize(QSize(240, 30));
    });
    toolbar->setDelegate(&controller);
    WQToolbarItem* remove = toolbar->itemWithIdentifier(QStringLiteral("delete"));
    ASSERT_TRUE(remove->isCheckable());
    remove->setChecked(true);

    QWidget* search = controller.searchField();
    toolbar->setItemIdentifiers({QStringLiteral("report"), QStringLiteral("delete"), QStringLiteral("report")});
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"report", "delete"}));
    EXPECT_EQ(toolbar->itemWithIdentifier(QStringLiteral("delete")), remove);
    EXPECT_TRUE(remove->isChecked());
    // The search field was lent, not given.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(controller.searchField(), search);
    EXPECT_EQ(search->parentWidget(), controller.window());
    EXPECT_TRUE(search->isHidden());

    toolbar->insertItemWithItemIdentifier(QStringLiteral("search"), 0);
    toolbar->insertItemWithItemIdentifier(kWQToolbarSeparatorItemIdentifier, 1);
    toolbar->insertItemWithItemIdentifier(kWQToolbarSeparatorItemIdentifier, 99);
    EXPECT_EQ(toolbar->itemIdentifiers(),
              QStringList({"search", kWQToolbarSeparatorItemIdentifier, "report", "delete",
                           kWQToolbarSeparatorItemIdentifier}));
    EXPECT_EQ(search->parentWidget(), toolbar);
    EXPECT_EQ(search->maximumSize(), QSize(240, 30));
    EXPECT_TRUE(toolbar->items().last()->isStandardItem() && !remove->isStandardItem());
    showActive(*controller.window());
    EXPECT_TRUE(spinUntil([search] { return search->isVisible(); }));
    toolbar->removeItemAtIndex(0);
    toolbar->removeItemAtIndex(42);
    EXPECT_EQ(toolbar->itemIdentifiers().size(), 4);

    // A delegate that goes first leaves an empty toolbar, not a dangling one.
    WQToolbar standalone(QStringLiteral("Standalone"));
    auto other = std::make_unique<SampleController>();
    standalone.setDelegate(other.get());
    EXPECT_EQ(standalone.items().size(), 4);
    other.reset();
    EXPECT_EQ(standalone.delegate(), nullptr);
    EXPECT_TRUE(standalone.items().isEmpty());
}

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

// Drops rows of one list, as a drag from that list carries them, onto a list
// where a user aims: in the gap above a row (or below the last one), right of
// its label. On the way, the toolbar list shows an insertion line in that gap.
void drop(QListWidget& target, const QListWidget& source, const QList<int>& rows, int atRow)
{
    QModelIndexList indexes;
    for (int row : rows)
        indexes << source.model()->index(row, 0);
    const std::unique_ptr<QMimeData> data(source.model()->mimeData(indexes));
    const int gap = atRow < target.count() ? target.visualItemRect(target.item(atRow)).top() - 1
                                           : target.visualItemRect(target.item(target.count() - 1)).bottom() + 1;
    const QPoint at(target.viewport()->width() - 6, gap);
    QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(target.viewport(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(target.viewport(), &move);
    if (target.objectName() == u"toolbarItems") {
        EXPECT_EQ(target.viewport()->grab().toImage().pixelColor(target.viewport()->width() / 2, gap),
                  target.palette().color(QPalette::Highlight));
    }
    QDropEvent dropped(at, Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton, {});
    QApplication::sendEvent(target.viewport(), &dropped);
    EXPECT_TRUE(dropped.isAccepted());
}

struct Opened {
    WQToolbarCustomizationDialog* dialog = nullptr;
    QListWidget* palette = nullptr;
    QListWidget* items = nullptr;
};

// Right-clicks the toolbar and picks, from the keyboard, the item that so many
// Up presses reach if it has that text; answers whether it had.
bool pickFromContextMenu(WQToolbar& toolbar, int ups, QStringView text)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(4, 4), toolbar.mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(&toolbar, &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu || !QTest::qWaitForWindowExposed(menu))
        return false;
    for (int i = 0; i < ups; ++i)
        QTest::keyClick(menu, Qt::Key_Up);
    const bool found = menu->activeAction() && menu->activeAction()->text() == text;
    QTest::keyClick(menu, found ? Qt::Key_Return : Qt::Key_Escape);
    return found;
}

// Right-clicks the toolbar and chooses "Customize Toolbar…" from the keyboard.
Opened openFromContextMenu(WQToolbar& toolbar)
{
    EXPECT_TRUE(pickFromContextMenu(toolbar, 1, u"Customize Toolbar\u2026"));
    // The caller asserts a dialog; without one the lists stay null.
    Opened opened{toolbar.customizationPalette()};
    if (opened.dialog && QTest::qWaitForWindowExposed(opened.dialog)) {
        opened.palette = opened.dialog->findChild<QListWidget*>(QStringLiteral("palette"));
        opened.items = opened.dialog->findChild<QListWidget*>(QStringLiteral("toolbarItems"));
    }
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
    drop(*d.items, *d.palette, {5}, 1);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"delete", kSeparator, "report", kFlexible, "search"}));
    drop(*d.items, *d.items, {4}, 0);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"search", "delete", kSeparator, "report", kFlexible}));
    drop(*d.palette, *d.items, {1}, 0);
    EXPECT_EQ(toolbar->itemIdentifiers(), QStringList({"search", kSeparator, "report", kFlexible}));
    // An item already there is not added twice, however it arrives.
    drop(*d.items, *d.palette, {2}, 0);
    EXPECT_EQ(toolbar->itemIdentifiers().count(QStringLiteral("report")), 1);
    // A space below the last row; a drag that ends outside the lists takes
    // nothing out.
    drop(*d.items, *d.palette, {6}, d.items->count());
    const QStringList dropped = {"search", kSeparator, "report", kFlexible, kWQToolbarSpaceItemIdentifier};
    EXPECT_EQ(toolbar->widgetForAction(toolbar->items().last())->maximumWidth(), 24);
    const QPoint from = d.items->visualItemRect(d.items->item(0)).center();
    QTest::mousePress(d.items->viewport(), Qt::LeftButton, {}, from);
    for (const int down : {5, 40})
        QTest::mouseMove(d.items->viewport(), from + QPoint(0, down));
    QTest::mouseRelease(d.items->viewport(), Qt::LeftButton, {}, from + QPoint(0, 40));
    EXPECT_EQ(toolbar->itemIdentifiers(), dropped);
    EXPECT_EQ(d.dialog->itemIdentifiers(), dropped);

    // The buttons do the same.
    clickRow(*d.items, 2);
    QTest::mouseClick(d.dialog->findChild<QPushButton*>(QStringLiteral("moveDown")), Qt::LeftButton);
    EXPECT_EQ(toolbar->itemIdentifiers(),
              QStringList({"search", kSeparator, kFlexible, "report", kWQToolbarSpaceItemIdentifier}));
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

    // The toolbar's own menu sets the mode at once, and keeps it.
    ASSERT_TRUE(pickFromContextMenu(*toolbar, 2, u"Text Only"));
    EXPECT_EQ(toolbar->toolButtonStyle(), Qt::ToolButtonTextOnly);
    EXPECT_EQ(QSettings().value(QStringLiteral("Toolbars/Main/displayMode")).toInt(), int(Qt::ToolButtonTextOnly));
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

#include "ToolbarTest.moc"
