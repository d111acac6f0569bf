#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <ctime>

using wq::WQSystemDateSettings;

namespace {

class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) : _saved(qgetenv("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~ScopedTimeZone()
    {
        qputenv("TZ", _saved);
        tzset();
    }

private:
    QByteArray _saved;
};

} // namespace

TEST(SystemDateSettings, PatternsFollowTheTimeLocale)
{
    {
        wq::test::ScopedLocale locale("en_US");
        EXPECT_EQ(WQSystemDateSettings::shortDateFormat(), "M/d/yy");
        EXPECT_EQ(WQSystemDateSettings::longDateFormat(), "EEEE, MMMM d, y");
    }
    {
        wq::test::ScopedLocale locale("de_DE");
        EXPECT_EQ(WQSystemDateSettings::shortDateFormat(), "dd.MM.yy");
    }
}

TEST(SystemDateSettings, LocaleDictionaryIsSharedUntilTheLocaleChanges)
{
    wq::test::ScopedLocale locale("en_US");
    const QVariantMap first = WQSystemDateSettings::systemDefinedDateInformation();
    const QVariantMap second = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_TRUE(first.isSharedWith(second));
    EXPECT_EQ(first.size(), 5);
    EXPECT_EQ(first.value(wq::WQDateLocaleKey_TimeDateFormatString), first.value(wq::WQDateLocaleKey_MonthNameArray));
    const QStringList months = first.value(wq::WQDateLocaleKey_MonthNameArray).toStringList();
    ASSERT_EQ(months.size(), 12);
    EXPECT_EQ(months.front(), "January");
    EXPECT_EQ(first.value(wq::WQDateLocaleKey_ShortMonthNameArray).toStringList().at(2), "Mar");
    const QStringList weekdays = first.value(wq::WQDateLocaleKey_WeekDayNameArray).toStringList();
    ASSERT_EQ(weekdays.size(), 7);
    EXPECT_EQ(weekdays.front(), "Sunday");
    EXPECT_EQ(first.value(wq::WQDateLocaleKey_ShortWeekDayNameArray).toStringList().at(6), "Sat");

    // The system's locale-change notification drops the cached dictionary.
    wq::WQNotificationCenter::distributedCenter().postNotificationName(wq::kWQNotif_CurrentLocaleDidChange);
    const QVariantMap rebuilt = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_FALSE(rebuilt.isSharedWith(first));
    EXPECT_EQ(rebuilt, first);

    wq::WQRegionalSettings::setLocale(wq::WQRegionalSettings::Category::Time, "fr_FR");
    const QVariantMap french = WQSystemDateSettings::systemDefinedDateInformation();
    EXPECT_EQ(french.value(wq::WQDateLocaleKey_MonthNameArray).toStringList().front(), "janvier");
    WQSystemDateSettings::_wq_defaultsChanged();
    EXPECT_FALSE(WQSystemDateSettings::systemDefinedDateInformation().isSharedWith(french));
}

TEST(SystemDateSettings, FixedFormatsInLocalTime)
{
    ScopedTimeZone zone("Europe/Berlin");
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(1709640000);   // 2024-03-05 12:00 UTC
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat("%Y-%m-%d %H:%M:%S", moment), "2024-03-05 13:00:00");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat("%Y-%m-%d %H:%M:%S", moment.addMSecs(999)),
              "2024-03-05 13:00:00");
    EXPECT_EQ(WQSystemDateSettings::stringWithFixedFormat(QString(300, u'x'), moment), "");

    const auto parsed = WQSystemDateSettings::nsdateWithFixedFormat("%Y-%m-%d %H:%M:%S", "2024-03-05 13:00:00");
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->toSecsSinceEpoch(), 1709640000);
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
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(1709640000);   // 07:00 in New York
    const QString text = WQSystemDateSettings::shortDateTimeStringWithNSDate(moment);
    EXPECT_TRUE(text.startsWith("3/5/24, 7:00")) << qPrintable(text);
    EXPECT_TRUE(text.endsWith("AM"));
    // Nothing given means now.
    const QString now = WQSystemDateSettings::shortDateTimeStringWithNSDate();
    const QString expected = WQSystemDateSettings::shortDateTimeStringWithNSDate(QDateTime::currentDateTime());
    EXPECT_EQ(now.left(now.indexOf(u',')), expected.left(expected.indexOf(u',')));
    EXPECT_FALSE(now.isEmpty());
}
