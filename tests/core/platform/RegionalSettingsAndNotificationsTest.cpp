// The notification centre and queue, and the regional settings that announce
// their changes through it.

#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQNotificationQueue.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <optional>

using namespace wq;
using namespace Qt::StringLiterals;
using Category = WQRegionalSettings::Category;

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

TEST(RegionalSettings, PosixNamesBecomeIcuNames)
{
    const std::pair<QString, QString> rows[] = {
        {u"de_DE.UTF-8@euro"_s, u"de_DE"_s}, {u"sr_RS.UTF-8@latin"_s, u"sr_Latn_RS"_s}, {u"C"_s, u"en_US"_s},
        {u"POSIX"_s, u"en_US"_s},           {u"C.UTF-8"_s, u"en_US"_s},                {u"pt-BR"_s, u"pt_BR"_s},
    };
    for (const auto& [posix, icu] : rows)
        EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(posix).toStdString(), icu.toStdString());
}

TEST(RegionalSettings, ScriptModifiersChooseTheWriting)
{
    // be_BY@latin: ICU has no Latin Belarusian, the C library's names stand in.
    const std::pair<QString, QString> rows[] = {
        {u"sr_RS"_s, u"јануар"_s},          {u"sr_RS@latin"_s, u"januar"_s}, {u"uz_UZ.UTF-8@cyrillic"_s, u"январ"_s},
        {u"be_BY.UTF-8@latin"_s, u"studzienia"_s}, {u"be_BY@latin"_s, u"studzienia"_s},
        // Neither ICU nor the C library knows it: the names of ICU's default locale.
        {u"xx_YY"_s, u"January"_s},
    };
    for (const auto& [locale, january] : rows) {
        test::ScopedLocale pin(locale);
        EXPECT_EQ(WQRegionalSettings::monthNames().value(0).toStdString(), january.toStdString()) << locale.toStdString();
    }
}

TEST(RegionalSettings, EnvironmentOrderIsLcAllThenCategoryThenLang)
{
    const QByteArray savedAll = qgetenv("LC_ALL");
    qunsetenv("LC_ALL");
    qunsetenv("LC_NUMERIC");
    qputenv("LC_TIME", "de_DE.UTF-8");
    qputenv("LANG", "fr_FR.UTF-8");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"de_DE");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Numeric), u"fr_FR");
    qputenv("LC_MESSAGES", "sv_SE.UTF-8");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Messages), u"sv_SE");
    qputenv("LC_ALL", "ja_JP.UTF-8");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"ja_JP");
    qunsetenv("LC_ALL");
    qunsetenv("LC_TIME");
    qunsetenv("LC_MESSAGES");
    qunsetenv("LANG");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"en_US") << "nothing set: the C locale";
    qputenv("LC_ALL", savedAll);
}

TEST(RegionalSettings, ChangesBumpTheGenerationAndAnnounceThemselves)
{
    int localeChanges = 0, numberChanges = 0;
    WQObservation observation(WQNotificationCenter::distributedCenter());
    observation.observe(kWQNotif_CurrentLocaleDidChange, nullptr, [&](const WQNotification&) { ++localeChanges; });
    observation.observe(kWQNotif_AppleNumberPreferencesChanged, nullptr, [&](const WQNotification&) { ++numberChanges; });

    const quint64 before = WQRegionalSettings::generation();
    WQRegionalSettings::setLocale(Category::Time, u"fr_FR"_s);
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"fr_FR");
    EXPECT_EQ(WQRegionalSettings::monthNames().front(), u"janvier");
    EXPECT_EQ(localeChanges, 1);
    EXPECT_EQ(numberChanges, 0) << "a time-only change leaves number preferences alone";
    WQRegionalSettings::setLocale(Category::Monetary, u"de_DE"_s);
    EXPECT_EQ(numberChanges, 1);
    EXPECT_GT(WQRegionalSettings::generation(), before);

    WQRegionalSettings::noteSystemChange();
    EXPECT_EQ(numberChanges, 2) << "the system may have changed anything";

    // The time locale's date patterns, by style.
    const std::pair<WQRegionalSettings::DateStyle, const char16_t*> patterns[] = {
        {WQRegionalSettings::DateStyle::Short, u"dd/MM/y"}, {WQRegionalSettings::DateStyle::Medium, u"d MMM y"},
        {WQRegionalSettings::DateStyle::Long, u"d MMMM y"}, {WQRegionalSettings::DateStyle::Full, u"EEEE d MMMM y"}};
    for (const auto& [style, pattern] : patterns)
        EXPECT_EQ(WQRegionalSettings::datePattern(style), pattern) << int(style);

    WQRegionalSettings::resetToEnvironment();
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"en_US");
}
