#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using namespace wq;
using namespace Qt::StringLiterals;
using Category = WQRegionalSettings::Category;

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
