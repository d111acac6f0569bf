#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using Category = WQRegionalSettings::Category;

TEST(RegionalSettings, PosixNamesBecomeIcuNames)
{
    EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(QStringLiteral("de_DE.UTF-8")), u"de_DE");
    EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(QStringLiteral("sr_RS.UTF-8@latin")), u"sr_RS");
    EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(QStringLiteral("C")), u"en_US_POSIX");
    EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(QStringLiteral("POSIX")), u"en_US_POSIX");
    EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(QStringLiteral("C.UTF-8")), u"en_US_POSIX");
    EXPECT_EQ(WQRegionalSettings::icuNameFromPosix(QStringLiteral("pt-BR")), u"pt_BR");
}

TEST(RegionalSettings, EnvironmentOrderIsLcAllThenCategoryThenLang)
{
    const QByteArray savedAll = qgetenv("LC_ALL");
    qunsetenv("LC_ALL");
    qputenv("LC_TIME", "de_DE.UTF-8");
    qputenv("LANG", "fr_FR.UTF-8");
    qunsetenv("LC_NUMERIC");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"de_DE");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Numeric), u"fr_FR");
    qputenv("LC_ALL", "ja_JP.UTF-8");
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"ja_JP");
    qunsetenv("LC_TIME");
    qunsetenv("LANG");
    qputenv("LC_ALL", savedAll);
}

TEST(RegionalSettings, DatePatternsAndNamesFollowTheTimeLocale)
{
    {
        test::ScopedLocale pin(QStringLiteral("en_US"));
        EXPECT_EQ(WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Short), u"M/d/yy");
        EXPECT_EQ(WQRegionalSettings::monthNames().front(), u"January");
        EXPECT_EQ(WQRegionalSettings::shortMonthNames().size(), 12);
        EXPECT_EQ(WQRegionalSettings::weekdayNames().front(), u"Sunday");
        EXPECT_EQ(WQRegionalSettings::shortWeekdayNames().at(6), u"Sat");
    }
    {
        test::ScopedLocale pin(QStringLiteral("de_DE"));
        EXPECT_EQ(WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Short), u"dd.MM.yy");
        EXPECT_EQ(WQRegionalSettings::monthNames().at(2), u"März");
        EXPECT_EQ(WQRegionalSettings::weekdayNames().front(), u"Sonntag");
        EXPECT_TRUE(WQRegionalSettings::datePattern(WQRegionalSettings::DateStyle::Full).contains(u"EEEE"));
    }
}

TEST(RegionalSettings, ChangesBumpTheGenerationAndAnnounceThemselves)
{
    auto& center = WQNotificationCenter::distributedCenter();
    int localeChanges = 0, numberChanges = 0;
    int token = 0;
    center.addObserver(&token, kWQNotif_CurrentLocaleDidChange, nullptr, [&](const WQNotification&) { ++localeChanges; });
    center.addObserver(&token, kWQNotif_AppleNumberPreferencesChanged, nullptr, [&](const WQNotification&) { ++numberChanges; });

    const quint64 before = WQRegionalSettings::generation();
    WQRegionalSettings::setLocale(Category::Time, QStringLiteral("fr_FR"));
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"fr_FR");
    EXPECT_EQ(WQRegionalSettings::monthNames().front(), u"janvier");
    EXPECT_EQ(localeChanges, 1);
    EXPECT_EQ(numberChanges, 0) << "a time-only change leaves number preferences alone";
    WQRegionalSettings::setLocale(Category::Monetary, QStringLiteral("de_DE"));
    EXPECT_EQ(numberChanges, 1);
    EXPECT_GT(WQRegionalSettings::generation(), before);

    WQRegionalSettings::resetToEnvironment();
    EXPECT_EQ(WQRegionalSettings::localeName(Category::Time), u"en_US");
    center.removeObserver(&token);
}
