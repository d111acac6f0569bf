#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQNotificationQueue.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;

namespace {
struct Sender : WQNotificationSender {};
}

TEST(NotificationCenter, FiltersByNameAndSenderAndCarriesUserInfo)
{
    WQNotificationCenter center;
    Sender a, b;
    QStringList seen;
    int token = 0;
    center.addObserver(&token, QStringLiteral("changed"), &a, [&](const WQNotification& n) {
        seen << QStringLiteral("a:") + n.name + (n.userInfo ? QStringLiteral("+info") : QString());
    });
    center.addObserver(&token, QString(), nullptr, [&](const WQNotification& n) { seen << QStringLiteral("any:") + n.name; });

    center.postNotificationName(QStringLiteral("changed"), &b);
    center.postNotificationName(QStringLiteral("changed"), &a, QVariantMap{{QStringLiteral("k"), 1}});
    center.postNotificationName(QStringLiteral("other"), &a);

    EXPECT_EQ(seen, (QStringList{QStringLiteral("any:changed"), QStringLiteral("a:changed+info"),
                                 QStringLiteral("any:changed"), QStringLiteral("any:other")}));
}

TEST(NotificationCenter, RemovalDuringPostAndObserversAddedDuringPost)
{
    WQNotificationCenter center;
    int first = 0, second = 0, late = 0;
    int calls2 = 0, lateCalls = 0;
    center.addObserver(&first, QStringLiteral("n"), nullptr, [&](const WQNotification&) {
        center.removeObserver(&second);
        center.addObserver(&late, QStringLiteral("n"), nullptr, [&](const WQNotification&) { ++lateCalls; });
    });
    center.addObserver(&second, QStringLiteral("n"), nullptr, [&](const WQNotification&) { ++calls2; });

    center.postNotificationName(QStringLiteral("n"));
    EXPECT_EQ(calls2, 0) << "removed before its turn";
    EXPECT_EQ(lateCalls, 0) << "added during the post";
    center.postNotificationName(QStringLiteral("n"));
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
        observation.observe(QStringLiteral("x"), nullptr, [&](const WQNotification&) { ++calls; });
        observation.observe(QStringLiteral("y"), nullptr, [&](const WQNotification&) { ++calls; });
        EXPECT_EQ(center.observationCount(), 2);
        center.postNotificationName(QStringLiteral("x"));
    }
    center.postNotificationName(QStringLiteral("x"));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(center.observationCount(), 0);
}

TEST(NotificationQueue, CoalescesOnNameUntilTheNextLoopPass)
{
    WQNotificationCenter center;
    WQNotificationQueue queue(center);
    Sender a, b;
    QList<const WQNotificationSender*> delivered;
    int token = 0;
    center.addObserver(&token, QStringLiteral("changed"), nullptr,
                       [&](const WQNotification& n) { delivered << n.object; });

    queue.enqueueASAP({QStringLiteral("changed"), &a, std::nullopt});
    queue.enqueueASAP({QStringLiteral("changed"), &b, std::nullopt});
    EXPECT_TRUE(delivered.isEmpty()) << "nothing is posted synchronously";
    ASSERT_TRUE(test::spinUntil([&] { return !delivered.isEmpty(); }));
    test::spinFor(20);
    EXPECT_EQ(delivered, (QList<const WQNotificationSender*>{&a}));

    queue.enqueueASAP({QStringLiteral("changed"), &b, std::nullopt});
    ASSERT_TRUE(test::spinUntil([&] { return delivered.size() == 2; }));
    EXPECT_EQ(delivered.back(), &b);
}
