// Menu items and the messages they send: found and removed by action, sent
// to their target, the focused widget or the window's controller.

#include "FieldTesting.h"

#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/menus/WQMenuExtensions.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QVBoxLayout>

using namespace wq;

namespace {

class Receiver : public QObject {
    Q_OBJECT
public:
    QStringList calls;
    QObject* lastSender = nullptr;

public slots:
    void bare() { calls << QStringLiteral("bare"); }
    void withSender(QObject* sender)
    {
        calls << QStringLiteral("withSender");
        lastSender = sender;
    }
    void typed(QAction* sender)
    {
        calls << QStringLiteral("typed:") + sender->text();
        lastSender = sender;
    }
    // Both forms: the one that takes the sender wins.
    void both() { calls << QStringLiteral("both()"); }
    void both(QObject* sender)
    {
        calls << QStringLiteral("both(sender)");
        lastSender = sender;
    }
    // Takes a class the sender is not: only reachable without a sender.
    void wrongType(QLineEdit*) { calls << QStringLiteral("wrongType"); }

signals:
    void notAnAction();
};

// A field that answers "paste" itself, inside a window whose controller
// answers "save".
class Field : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;
    int pastes = 0;
public slots:
    void pasteHere() { ++pastes; }
};

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

    // The titles found; an empty list (never the answer) reads as nothing.
    static QString names(const std::optional<QList<QAction*>>& items)
    {
        QStringList out;
        for (const QAction* item : items.value_or(QList<QAction*>()))
            out << item->text();
        return items ? out.join(u' ') : QStringLiteral("(nothing)");
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
        EXPECT_EQ(MenuFixture::names(itemsWithAction(g.root, c.action, c.checkSubMenus)), QString::fromLatin1(c.found));
    }
}

TEST(MenuExtensions, RemoveAllGoesIntoSubmenusAndTakesAdjacentMatchesAndWholeSubmenus)
{
    const std::pair<const char*, const char*> cases[] = {
        {"openRecent", "New Open Recent[Clear] - Close Close All Revert"},
        {"close", "New Open Recent[One Two Older[Three] Clear] - Revert"}, // two adjacent matches at the top
        {"", "New Close Close All Revert"},                               // separators and submenu titles
    };
    for (const auto& [action, shape] : cases) {
        MenuFixture f(kFile);
        removeAllItemsWithAction(f.root, action);
        EXPECT_EQ(MenuFixture::shape(f.root), QString::fromLatin1(shape)) << action;
    }

    // A match that holds a submenu goes with it; what it holds is not
    // searched (its own matching item stays in the detached submenu).
    MenuFixture f({QStringLiteral("Window=showWindow>"), QStringLiteral("Inside=showWindow"), QStringLiteral("<"),
                   QStringLiteral("Other=other")});
    QMenu* inner = f.root.actions().first()->menu<QMenu*>();
    removeAllItemsWithAction(f.root, "showWindow");
    EXPECT_EQ(MenuFixture::shape(f.root), u"Other");
    EXPECT_EQ(MenuFixture::shape(*inner), u"Inside");
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

TEST(ActionMessage, FindsTheMethodByNameAndPassesTheSenderWhenItCan)
{
    Receiver receiver;
    QAction item(QStringLiteral("Item"));
    struct Case {
        const char* action;
        bool sent;
        const char* call;
    };
    const Case cases[] = {
        {"bare", true, "bare"},
        {"withSender", true, "withSender"},
        {"typed", true, "typed:Item"},
        {"both", true, "both(sender)"},
        {"wrongType", false, ""},
        {"notAnAction", false, ""},
        {"missing", false, ""},
        {"", false, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.action);
        receiver.calls.clear();
        receiver.lastSender = nullptr;
        EXPECT_EQ(WQSendAction(c.action, &receiver, &item), c.sent);
        EXPECT_EQ(receiver.calls.join(u','), QString::fromLatin1(c.call));
        if (c.sent && QByteArray(c.action) != "bare") {
            EXPECT_EQ(receiver.lastSender, &item);
        }
    }
}

TEST(ActionMessage, ItemsSendTheirMessageToTheirTargetOrTheFocusedWidgetThenTheWindowController)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* toolbar = new QToolBar(&window);
    auto* field = new Field(&window);
    layout->addWidget(toolbar);
    layout->addWidget(field);
    Receiver controller;
    window.setProperty(kWQWindowControllerProperty, QVariant::fromValue<QObject*>(&controller));
    auto receiver = std::make_unique<Receiver>();
    QAction* item = wq_addItemWithTitle(*toolbar, QStringLiteral("New"), "typed", receiver.get(),
                                        QKeySequence(QStringLiteral("Ctrl+N")));
    EXPECT_EQ(wq_action(*item), "typed");
    EXPECT_EQ(wq_target(*item), receiver.get());
    EXPECT_EQ(item->parent(), toolbar);
    EXPECT_EQ(item->shortcut(), QKeySequence(QStringLiteral("Ctrl+N")));
    test::showActive(window);

    QTest::mouseClick(toolbar->widgetForAction(item), Qt::LeftButton);
    EXPECT_EQ(receiver->calls, QStringList{QStringLiteral("typed:New")});
    // A new message replaces the old one.
    wq_setAction(*item, "bare", receiver.get());
    QTest::mouseClick(toolbar->widgetForAction(item), Qt::LeftButton);
    EXPECT_EQ(receiver->calls, QStringList({"typed:New", "bare"}));

    receiver.reset();
    EXPECT_EQ(wq_target(*item), nullptr);
    QAction plain;
    EXPECT_EQ(wq_action(plain), QByteArray());
    EXPECT_EQ(wq_target(plain), nullptr);

    // Without a target: the focused widget, then the window's controller.
    field->setFocus();
    ASSERT_TRUE(field->hasFocus());
    EXPECT_EQ(WQTargetForAction("pasteHere"), field);
    EXPECT_EQ(WQTargetForAction("bare"), &controller);
    EXPECT_EQ(WQTargetForAction("nobodyAnswers"), nullptr);
    EXPECT_FALSE(WQSendAction("nobodyAnswers", nullptr, item));
    QMenu menu;
    wq_addItemWithTitle(menu, QStringLiteral("Paste"), "pasteHere")->trigger();
    wq_addItemWithTitle(menu, QStringLiteral("Bare"), "bare")->trigger();
    EXPECT_EQ(field->pastes, 1);
    EXPECT_EQ(controller.calls, QStringList{QStringLiteral("bare")});
}

} // namespace

#include "MenuExtensionsTest.moc"
