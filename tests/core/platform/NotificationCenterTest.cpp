#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQNotificationQueue.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <optional>

using namespace wq;
using namespace Qt::StringLiterals;

namespace {
struct Sender : WQNotificationSender {};
}

TEST(NotificationCenter, FiltersByNameAndSenderAndCarriesUserInfo)
{
    WQNotificationCenter center;
    Sender a, b;
    QStringList seen;
    int token = 0;
    center.addObserver(&token, u"changed"_s, &a,
                       [&](const WQNotification& n) { seen << u"a:"_s + n.name + (n.userInfo ? u"+info"_s : QString()); });
    center.addObserver(&token, QString(), nullptr, [&](const WQNotification& n) { seen << u"any:"_s + n.name; });

    center.postNotificationName(u"changed"_s, &b);
    center.postNotificationName(u"changed"_s, &a, QVariantMap{{u"k"_s, 1}});
    center.postNotificationName(u"other"_s, &a);
    EXPECT_EQ(seen.join(u' '), u"any:changed a:changed+info any:changed any:other");

    center.addObserver(&token, u"changed"_s, nullptr, {}); // no handler, no observation
    EXPECT_EQ(center.observationCount(&token), 2);
    EXPECT_EQ(center.observationCount(&seen), 0);
    // Removal by name or sender takes only the observations that match both.
    center.removeObserver(&token, u"changed"_s, &b);
    center.removeObserver(&token, u"other"_s);
    center.removeObserver(&token, QString(), &b);
    EXPECT_EQ(center.observationCount(&token), 2);
    center.removeObserver(&token, u"changed"_s, &a);
    EXPECT_EQ(center.observationCount(&token), 1);
    center.removeObserver(&token, QString());
    EXPECT_EQ(center.observationCount(), 0);
}

TEST(NotificationCenter, RemovalDuringPostAndObserversAddedDuringPost)
{
    WQNotificationCenter center;
    int first = 0, second = 0, late = 0;
    int secondCalls = 0, lateCalls = 0;
    center.addObserver(&first, u"n"_s, nullptr, [&](const WQNotification&) {
        center.removeObserver(&second);
        center.addObserver(&late, u"n"_s, nullptr, [&](const WQNotification&) { ++lateCalls; });
    });
    center.addObserver(&second, u"n"_s, nullptr, [&](const WQNotification&) { ++secondCalls; });

    center.postNotificationName(u"n"_s);
    EXPECT_EQ(secondCalls, 0) << "removed before its turn";
    EXPECT_EQ(lateCalls, 0) << "added during the post";
    center.postNotificationName(u"n"_s);
    EXPECT_EQ(lateCalls, 1);

    center.removeObserver(&first);
    center.removeObserver(&late);
    EXPECT_EQ(center.observationCount(), 0);
}

TEST(NotificationQueue, CoalescesUntilTheNextLoopPassToAnObservationThatEndsWithItsScope)
{
    WQNotificationCenter center;
    WQNotificationQueue queue(center);
    Sender a, b;
    QStringList delivered;
    std::optional<WQObservation> observation(std::in_place, center);
    observation->observe(QString(), nullptr,
                         [&](const WQNotification& n) { delivered << n.name + (n.object == &a ? u'a' : u'b'); });

    // Each mask against the same five notifications: what is left to post
    // (each pass starts after the last was posted, which coalesces no more).
    const std::pair<int, QString> rows[] = {
        {WQNotificationQueue::CoalescingOnName, u"xa ya"_s},
        {WQNotificationQueue::CoalescingOnSender, u"xa xb"_s},
        {WQNotificationQueue::CoalescingOnName | WQNotificationQueue::CoalescingOnSender, u"xa xb ya yb"_s},
        {WQNotificationQueue::NoCoalescing, u"xa xb xa ya yb"_s},
    };
    for (const auto& [mask, posted] : rows) {
        delivered.clear();
        for (const auto& [name, sender] : {std::pair{u"x"_s, &a}, {u"x"_s, &b}, {u"x"_s, &a}, {u"y"_s, &a}, {u"y"_s, &b}})
            queue.enqueueASAP({name, sender, std::nullopt}, mask);
        EXPECT_TRUE(delivered.isEmpty()) << "nothing is posted synchronously";
        EXPECT_EQ(queue.pendingCount(), posted.count(u' ') + 1);
        ASSERT_TRUE(test::spinUntil([&] { return queue.pendingCount() == 0; }));
        EXPECT_EQ(delivered.join(u' '), posted) << mask;
    }
    observation.reset();
    EXPECT_EQ(center.observationCount(), 0);
}
