#include <gtest/gtest.h>

#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/menus/WQMenuExtensions.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>

using namespace wq;

namespace {

// A menu described by lines: "Title=action" adds an item, "-" a separator,
// "Title=action>" opens a submenu for the items that follow, "<" closes it.
// An item's object name is its title.
class MenuFixture {
public:
    explicit MenuFixture(const QStringList& lines)
    {
        QList<QMenu*> open{&root};
        for (const QString& line : lines) {
            if (line == u"-") {
                open.last()->addSeparator();
            } else if (line == u"<") {
                open.removeLast();
            } else {
                const QString title = line.section(u'=', 0, 0);
                QString action = line.section(u'=', 1);
                const bool opens = action.endsWith(u'>');
                if (opens)
                    action.chop(1);
                QAction* item = wq_addItemWithTitle(*open.last(), title, action.toUtf8());
                item->setObjectName(title);
                if (opens) {
                    auto* submenu = new QMenu(title, open.last());
                    item->setMenu(submenu);
                    open.append(submenu);
                }
            }
        }
    }

    // The titles, submenus in brackets: "New Recent[A B] Close".
    static QString shape(const QWidget& menu)
    {
        QStringList parts;
        for (const QAction* item : menu.actions()) {
            QString part = item->isSeparator() ? QStringLiteral("-") : item->text();
            if (const QMenu* submenu = item->menu<QMenu*>())
                part += u'[' + shape(*submenu) + u']';
            parts << part;
        }
        return parts.join(u' ');
    }

    static QString names(const std::optional<QList<QAction*>>& items)
    {
        if (!items)
            return QStringLiteral("(nothing)");
        QStringList out;
        for (const QAction* item : *items)
            out << item->text();
        return out.join(u' ');
    }

    QMenu root;
};

const QStringList kFile = {
    QStringLiteral("New=newDocument"),
    QStringLiteral("Open Recent=>"),
    QStringLiteral("One=openRecent"),
    QStringLiteral("Two=openRecent"),
    QStringLiteral("Older=openRecent>"),
    QStringLiteral("Three=openRecent"),
    QStringLiteral("<"),
    QStringLiteral("Clear=clearRecent"),
    QStringLiteral("<"),
    QStringLiteral("-"),
    QStringLiteral("Close=close"),
    QStringLiteral("Close All=close"),
    QStringLiteral("Revert=revert"),
};

TEST(MenuExtensions, ItemWithActionLooksAtTheMenuItselfOnlyItemsWithActionDepthFirst)
{
    MenuFixture f(kFile);
    EXPECT_EQ(itemWithAction(f.root, "newDocument")->text(), u"New");
    EXPECT_EQ(itemWithAction(f.root, "close")->text(), u"Close");
    EXPECT_EQ(itemWithAction(f.root, "openRecent"), nullptr);
    EXPECT_EQ(itemWithAction(f.root, "missing"), nullptr);
    // "Sends nothing" finds the submenu's title item first.
    EXPECT_EQ(itemWithAction(f.root, ""), f.root.findChild<QAction*>(QStringLiteral("Open Recent")));

    removeItemWithAction(f.root, "close");
    removeItemWithAction(f.root, "openRecent");
    removeItemWithAction(f.root, "missing");
    EXPECT_EQ(MenuFixture::shape(f.root),
              u"New Open Recent[One Two Older[Three] Clear] - Close All Revert");

    // Items with an action are found depth first, or not at all.
    MenuFixture g(kFile);
    // An item that matches and holds matches comes before them.
    g.root.findChild<QAction*>(QStringLiteral("Open Recent"))->setText(QStringLiteral("Recent"));
    wq_setAction(*g.root.findChild<QAction*>(QStringLiteral("Open Recent")), "openRecent");
    struct Case {
        const char* action;
        bool checkSubMenus;
        const char* found;
    };
    const Case cases[] = {
        {"openRecent", false, "Recent"},
        {"openRecent", true, "Recent One Two Older Three"},
        {"close", false, "Close Close All"},
        {"close", true, "Close Close All"},
        {"clearRecent", false, "(nothing)"},
        {"clearRecent", true, "Clear"},
        {"missing", true, "(nothing)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.action) + (c.checkSubMenus ? " deep" : " flat"));
        const auto found = itemsWithAction(g.root, c.action, c.checkSubMenus);
        EXPECT_EQ(MenuFixture::names(found), QString::fromLatin1(c.found));
        if (found) {
            EXPECT_FALSE(found->isEmpty());
        }
    }
}

TEST(MenuExtensions, RemoveAllGoesIntoSubmenusAndTakesAdjacentMatchesAndWholeSubmenus)
{
    {
        MenuFixture f(kFile);
        removeAllItemsWithAction(f.root, "openRecent");
        EXPECT_EQ(MenuFixture::shape(f.root), u"New Open Recent[Clear] - Close Close All Revert");
    }
    {
        // Two adjacent matches at the top both go.
        MenuFixture f(kFile);
        removeAllItemsWithAction(f.root, "close");
        EXPECT_EQ(MenuFixture::shape(f.root), u"New Open Recent[One Two Older[Three] Clear] - Revert");
    }
    {
        // A match that holds a submenu goes with it; what it holds is not
        // searched (its own matching item stays in the detached submenu).
        MenuFixture f({QStringLiteral("Window=showWindow>"), QStringLiteral("Inside=showWindow"), QStringLiteral("<"),
                       QStringLiteral("Other=other")});
        QMenu* inner = f.root.actions().first()->menu<QMenu*>();
        removeAllItemsWithAction(f.root, "showWindow");
        EXPECT_EQ(MenuFixture::shape(f.root), u"Other");
        EXPECT_EQ(MenuFixture::shape(*inner), u"Inside");
    }
    {
        // "Sends nothing" takes separators and submenu titles.
        MenuFixture f(kFile);
        removeAllItemsWithAction(f.root, "");
        EXPECT_EQ(MenuFixture::shape(f.root), u"New Close Close All Revert");
    }
}

TEST(MenuExtensions, AMenuThatHoldsItselfIsSearchedOnceAndAMenuBarLikeAMenu)
{
    MenuFixture f({QStringLiteral("Loop=>"), QStringLiteral("Leaf=leaf"), QStringLiteral("<")});
    QMenu* loop = f.root.actions().first()->menu<QMenu*>();
    loop->addAction(f.root.actions().first());
    EXPECT_EQ(MenuFixture::names(itemsWithAction(f.root, "leaf", true)), u"Leaf");
    removeAllItemsWithAction(f.root, "leaf");
    EXPECT_EQ(loop->actions().size(), 1);

    // A menu bar is searched as a menu is.
    QMenuBar bar;
    QMenu* file = bar.addMenu(QStringLiteral("File"));
    wq_addItemWithTitle(*file, QStringLiteral("Count"), "count1");
    EXPECT_EQ(MenuFixture::names(itemsWithAction(bar, "count1", true)), u"Count");
    EXPECT_EQ(itemWithAction(bar, "count1"), nullptr);
    removeAllItemsWithAction(bar, "count1");
    EXPECT_EQ(MenuFixture::shape(bar), u"File[]");
}

} // namespace
