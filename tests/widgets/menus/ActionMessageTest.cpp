#include "FieldTesting.h"

#include <WQGeneral/menus/WQActionMessage.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
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

#include "ActionMessageTest.moc"
