#include <WQGeneral/model/WQWindowTrackerModelObject.h>
#include <WQGeneral/platform/WQExceptions.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;

namespace {

// A controller that logs its closing and, when asked to, unregisters itself
// from the object it shows while closing.
class Controller : public WQTrackedWindowController {
public:
    Controller(QStringList& log, QString name, WQWindowTrackerModelObject* unregisterFrom = nullptr)
        : _log(log), _name(std::move(name)), _owner(unregisterFrom) {}
    void close() override
    {
        _log << _name;
        if (_owner)
            _owner->removeWindowController(this);
        _log << _name + QStringLiteral(" done"); // still alive after its removal
    }

private:
    QStringList& _log;
    QString _name;
    WQWindowTrackerModelObject* _owner;
};

} // namespace

TEST(WindowTracker, ListIsCreatedByTheFirstAddReleasedWithTheLastRemovalAndKeptByClosing)
{
    QStringList log;
    WQWindowTrackerModelObject object;
    EXPECT_EQ(object.windowControllers(), nullptr);
    object.closeAllAssociatedWindows();

    auto a = std::make_shared<Controller>(log, QStringLiteral("a"));
    auto b = std::make_shared<Controller>(log, QStringLiteral("b"));
    object.addWindowController(a);
    object.addWindowController(b);
    object.addWindowController(a);
    ASSERT_NE(object.windowControllers(), nullptr);
    EXPECT_EQ(object.windowControllers()->size(), 3) << "duplicates are listed twice";

    object.removeWindowController(a.get());
    ASSERT_NE(object.windowControllers(), nullptr);
    ASSERT_EQ(object.windowControllers()->size(), 1) << "every entry of that controller goes";
    EXPECT_EQ(object.windowControllers()->front(), b);

    Controller lookalike(log, QStringLiteral("b"));
    object.removeWindowController(&lookalike);
    EXPECT_EQ(object.windowControllers()->size(), 1) << "removal is by identity";

    object.removeWindowController(b.get());
    EXPECT_EQ(object.windowControllers(), nullptr);
    object.removeWindowController(b.get());
    object.addWindowController(b);
    object.addWindowController(a);
    object.addWindowController(std::make_shared<Controller>(log, QStringLiteral("c")));
    EXPECT_TRUE(log.isEmpty()) << "nothing was closed";

    // Closing all closes each listed controller in order, and empties nothing.
    object.closeAllAssociatedWindows();
    EXPECT_EQ(log, (QStringList{"b", "b done", "a", "a done", "c", "c done"}));
    ASSERT_NE(object.windowControllers(), nullptr);
    EXPECT_EQ(object.windowControllers()->size(), 3);
}

TEST(WindowTracker, ControllersThatUnregisterWhileClosingShrinkTheListUnderTheLoop)
{
    {
        // Three: a closes and leaves [b, c]; index 1 is c, which leaves [b];
        // index 2 is past the end.
        QStringList log;
        WQWindowTrackerModelObject object;
        std::vector<std::weak_ptr<Controller>> watch;
        for (const char* name : {"a", "b", "c"}) {
            auto controller = std::make_shared<Controller>(log, QString::fromLatin1(name), &object);
            watch.push_back(controller);
            object.addWindowController(std::move(controller));
        }
        EXPECT_EQ(test::messageOf<NSRangeException>([&] { object.closeAllAssociatedWindows(); }),
                  "index 2 beyond bounds [0 .. 0]");
        EXPECT_EQ(log, (QStringList{"a", "a done", "c", "c done"})) << "b is skipped";
        EXPECT_TRUE(watch[0].expired()) << "the list held the only reference";
        EXPECT_FALSE(watch[1].expired());
        ASSERT_NE(object.windowControllers(), nullptr);
        EXPECT_EQ(object.windowControllers()->size(), 1);
    }
    {
        // The last removal releases the list: the loop then reads nothing.
        QStringList log;
        WQWindowTrackerModelObject object;
        auto a = std::make_shared<Controller>(log, QStringLiteral("a"), &object);
        object.addWindowController(a);
        object.addWindowController(a);
        EXPECT_NO_THROW(object.closeAllAssociatedWindows());
        EXPECT_EQ(log, (QStringList{"a", "a done"}));
        EXPECT_EQ(object.windowControllers(), nullptr);
    }
}
