#include "ScopedTranslations.h"
#include "ToolbarTesting.h"

#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/toolbar/WQToolbarDictionary.h>

#include <QToolButton>

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
    // The application marks an item checkable as it is added.
    QObject::connect(toolbar, &WQToolbar::willAddItem, toolbar, [](WQToolbarItem* item) {
        if (item->itemIdentifier() == u"delete")
            item->setCheckable(true);
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

} // namespace
