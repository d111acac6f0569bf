#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQNotificationQueue.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

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

TEST(NotificationCenter, ObservationRemovesEverythingWhenDestroyed)
{
    WQNotificationCenter center;
    int calls = 0;
    {
        WQObservation observation(center);
        observation.observe(u"x"_s, nullptr, [&](const WQNotification&) { ++calls; });
        observation.observe(u"y"_s, nullptr, [&](const WQNotification&) { ++calls; });
        EXPECT_EQ(center.observationCount(), 2);
        center.postNotificationName(u"x"_s);
    }
    center.postNotificationName(u"x"_s);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(center.observationCount(), 0);
}

TEST(NotificationQueue, CoalescesOnNameUntilTheNextLoopPass)
{
    WQNotificationCenter center;
    WQNotificationQueue queue(center);
    Sender a, b;
    QList<const WQNotificationSender*> delivered;
    WQObservation observation(center);
    observation.observe(u"changed"_s, nullptr, [&](const WQNotification& n) { delivered << n.object; });

    queue.enqueueASAP({u"changed"_s, &a, std::nullopt});
    queue.enqueueASAP({u"changed"_s, &b, std::nullopt});
    EXPECT_TRUE(delivered.isEmpty()) << "nothing is posted synchronously";
    ASSERT_TRUE(test::spinUntil([&] { return !delivered.isEmpty(); }));
    test::spinFor(20);
    EXPECT_EQ(delivered, (QList<const WQNotificationSender*>{&a}));

    queue.enqueueASAP({u"changed"_s, &b, std::nullopt});
    ASSERT_TRUE(test::spinUntil([&] { return delivered.size() == 2; }));
    EXPECT_EQ(delivered.back(), &b);
}
