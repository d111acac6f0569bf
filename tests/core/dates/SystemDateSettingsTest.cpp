#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "DateTesting.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using wq::WQSystemDateSettings;
using wq::test::ScopedTimeZone;

TEST(SystemDateSettings, PatternsFollowTheTimeLocale)
{
    // The short pattern as a date field shows and reads it: numbers in the
    // locale's order and one separator a user can type.
    const std::pair<const char*, const char*> rows[] = {
        {"en_US", "M/d/yy"},  {"de_DE", "dd.MM.yy"}, {"ko_KR", "yy.M.d"},  {"hu_HU", "y.MM.dd"},
        {"bg_BG", "d.MM.yy"}, {"ar_SA", "d/M/y"},    {"sv_SE", "y/MM/dd"},
    };
    for (const auto& [name, format] : rows) {
        wq::test::ScopedLocale locale(name);
        EXPECT_EQ(WQSystemDateSettings::shortDateFormat(), format) << name;
    }
    wq::test::ScopedLocale locale("en_US");
    EXPECT_EQ(WQSystemDateSettings::longDateFormat(), "EEEE, MMMM d, y");
}

TEST(SystemDateSettings, LocaleDictionaryIsSharedUntilTheLocaleChanges)
{
    wq::test::ScopedLocale locale("en_US");
    const QVariantMap first = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_TRUE(first.isSharedWith(WQSystemDateSettings::systemDefinedDateInformation()));
    EXPECT_EQ(first.size(), 5);
    const auto names = [&first](const QString& key) { return first.value(key).toStringList(); };
    EXPECT_EQ(names(wq::WQDateLocaleKey_TimeDateFormatString), names(wq::WQDateLocaleKey_MonthNameArray));
    ASSERT_EQ(names(wq::WQDateLocaleKey_MonthNameArray).size(), 12);
    EXPECT_EQ(names(wq::WQDateLocaleKey_MonthNameArray).front(), "January");
    EXPECT_EQ(names(wq::WQDateLocaleKey_ShortMonthNameArray).at(2), "Mar");
    ASSERT_EQ(names(wq::WQDateLocaleKey_WeekDayNameArray).size(), 7);
    EXPECT_EQ(names(wq::WQDateLocaleKey_WeekDayNameArray).front(), "Sunday");
    EXPECT_EQ(names(wq::WQDateLocaleKey_ShortWeekDayNameArray).at(6), "Sat");

    // The system's locale-change notification drops the cached dictionary.
    wq::WQNotificationCenter::distributedCenter().postNotificationName(wq::kWQNotif_CurrentLocaleDidChange);
    const QVariantMap rebuilt = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_FALSE(rebuilt.isSharedWith(first));
    EXPECT_EQ(rebuilt, first);

    wq::WQRegionalSettings::setLocale(wq::WQRegionalSettings::Category::Time, "fr_FR");
    const QVariantMap french = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_EQ(french.value(wq::WQDateLocaleKey_MonthNameArray).toStringList().front(), "janvier");
}

TEST(SystemDateSettings, FixedFormatsInLocalTime)
{
    ScopedTimeZone zone("Europe/Berlin");
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(1709640000); // 2024-03-05 12:00 UTC
    const QString format = QStringLiteral("%Y-%m-%d %H:%M:%S");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(format, moment), "2024-03-05 13:00:00");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(format, moment.addMSecs(999)), "2024-03-05 13:00:00");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(QString(300, u'x'), moment), "");

    EXPECT_EQ(WQSystemDateSettings::nsdateWithFixedFormat(format, "2024-03-05 13:00:00"), moment);
    EXPECT_FALSE(WQSystemDateSettings::nsdateWithFixedFormat("%Y-%m-%d", "March"));
    // Parsed as standard time: a summer time of day comes out an hour later.
    const auto summer = WQSystemDateSettings::nsdateWithFixedFormat("%Y-%m-%d %H:%M", "2024-07-01 12:00");
    ASSERT_TRUE(summer);
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat("%H:%M", *summer), "13:00");
}

TEST(SystemDateSettings, ShortDateTime)
{
    wq::test::ScopedLocale locale("en_US");
    ScopedTimeZone zone("America/New_York");
    const QString text = WQSystemDateSettings::shortDateTimeStringWithNSDate(QDateTime::fromSecsSinceEpoch(1709640000));
    EXPECT_TRUE(text.startsWith("3/5/24, 7:00") && text.endsWith("AM")) << qPrintable(text);
    EXPECT_FALSE(WQSystemDateSettings::shortDateTimeStringWithNSDate().isEmpty()) << "nothing given means now";
}
