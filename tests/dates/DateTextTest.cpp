#include <WQGeneral/dates/WQDate.h>

#include "DatePrinting.h"
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using wq::WQDate;

namespace {

QVariantMap englishNames()
{
    const QStringList months{"January", "February", "March", "April", "May", "June",
                             "July", "August", "September", "October", "November", "December"};
    QVariantMap names;
    names.insert(wq::WQDateLocaleKey_TimeDateFormatString, months);
    names.insert(wq::WQDateLocaleKey_MonthNameArray, months);
    names.insert(wq::WQDateLocaleKey_ShortMonthNameArray,
                 QStringList{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"});
    names.insert(wq::WQDateLocaleKey_WeekDayNameArray,
                 QStringList{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});
    names.insert(wq::WQDateLocaleKey_ShortWeekDayNameArray, QStringList{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"});
    return names;
}

} // namespace

TEST(DateText, Directives)
{
    const QVariantMap names = englishNames();
    const WQDate march5(2024, 3, 5);
    EXPECT_EQ(march5.descriptionWithCalendarFormat("%Y-%m-%d", names), "2024-03-05");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("%e.%1m.%y", names), "5.3.24");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("%M/%d", names), "03/05");    // %M is the month
    EXPECT_EQ(march5.descriptionWithCalendarFormat("%A, %B %e (%a %b) w%w j%j", names),
              "Tuesday, March 5 (Tue Mar) w2 j065");
    EXPECT_EQ(WQDate(2005, 1, 1).descriptionWithCalendarFormat("%y", names), "05");
    EXPECT_EQ(WQDate(2024, 12, 31).descriptionWithCalendarFormat("%j", names), "366");
    EXPECT_EQ(WQDate(2024, 1, 1).descriptionWithCalendarFormat("%w", names), "1");
    EXPECT_EQ(WQDate(33, 3, 5).descriptionWithCalendarFormat("%Y", names), "0033");
    EXPECT_EQ(WQDate(-5, 3, 5).descriptionWithCalendarFormat("%Y %y", names), "-005 -5");
    EXPECT_EQ(WQDate(12345, 3, 5).descriptionWithCalendarFormat("%Y", names), "12345");
    // "%%" leaves one percent sign, which is not read as a directive.
    EXPECT_EQ(march5.descriptionWithCalendarFormat("100%% %%d %d", names), "100% %d 05");
    // Inserted text is never scanned again.
    QVariantMap tricky = names;
    tricky.insert(wq::WQDateLocaleKey_MonthNameArray, QStringList{"J", "F", "%d", "A"});
    EXPECT_EQ(march5.descriptionWithCalendarFormat("%B|%d", tricky), "%d|05");

    // Missing names leave nothing behind.
    EXPECT_EQ(march5.descriptionWithCalendarFormat("[%B][%a]", std::nullopt), "[][]");
    EXPECT_EQ(WQDate(2024, 0, 0).descriptionWithCalendarFormat("[%b]%Y", names), "[]2024");
    QVariantMap short3 = names;
    short3.insert(wq::WQDateLocaleKey_MonthNameArray, QStringList{"Jan", "Feb"});
    EXPECT_EQ(march5.descriptionWithCalendarFormat("[%B]", short3), "[]");
}

TEST(DateText, BadDirectivesRaiseAndCacheNothing)
{
    const WQDate date(2024, 3, 5);
    const QString format = QStringLiteral("%Y-%Q");
    try {
        (void)date.descriptionWithCalendarFormat(format, englishNames());
        ADD_FAILURE() << "%Q must raise";
    } catch (const wq::NSInvalidArgumentException& e) {
        EXPECT_STREQ(e.what(), "WQDate doesn't understand format: '%Y-%Q'");
    }
    EXPECT_FALSE(WQDate::cachedValueForKey(date.cacheKeyForFormat(format, englishNames())));
    EXPECT_THROW((void)date.descriptionWithCalendarFormat("%1x", englishNames()), wq::NSInvalidArgumentException);
    EXPECT_THROW((void)date.descriptionWithCalendarFormat("%d%1", englishNames()), wq::NSInvalidArgumentException);
    EXPECT_THROW((void)date.descriptionWithCalendarFormat("%d %", englishNames()), wq::NSRangeException);
}

TEST(DateText, PatternLetters)
{
    const QVariantMap names = englishNames();
    const WQDate march5(2024, 3, 5);
    EXPECT_EQ(march5.descriptionWithCalendarFormat("d/M/yy", names), "5/3/24");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("M/d/yy", names), "3/5/24");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("yyyy-MM-dd", names), "2024-03-05");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("dd.MM.yyy", names), "05.03.2024");
    EXPECT_EQ(WQDate(33, 3, 5).descriptionWithCalendarFormat("y yyy", names), "33 033");
    // A month name's capital M is taken by the later "M" step.
    EXPECT_EQ(march5.descriptionWithCalendarFormat("MMMM d", names), "3arch 5");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("EEEE, MMMM d, y", names), "Tuesday, 3arch 5, 2024");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("MMMM d, MM", names), "3arch 5, 03");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("M MMMM", names), "3 March");
    EXPECT_EQ(WQDate(2024, 5, 5).descriptionWithCalendarFormat("EEE d MMM", names), "Sun 5 5ay");
    // Only the first occurrence of each pattern is replaced; others stay.
    EXPECT_EQ(march5.descriptionWithCalendarFormat("d d 'G'", names), "5 d 'G'");
    EXPECT_EQ(WQDate(2024, 0, 0).descriptionWithCalendarFormat("[MMMM]d", names), "[]0");
}

TEST(DateText, CacheKeysAndRepeats)
{
    const QVariantMap names = englishNames();
    const WQDate date(1999, 12, 31);
    EXPECT_EQ(date.cacheKeyForFormat("%Y", std::nullopt), "%Y 9223372036854775807 1999 12 31");
    const QString key = date.cacheKeyForFormat("%d/%m", names);
    EXPECT_TRUE(key.startsWith("%d/%m ") && key.endsWith(" 1999 12 31"));
    // An equal dictionary built separately shares the index.
    EXPECT_EQ(date.cacheKeyForFormat("%d/%m", englishNames()), key);
    QVariantMap other = names;
    other.insert(wq::WQDateLocaleKey_MonthNameArray, QStringList{"Jan."});
    EXPECT_NE(date.cacheKeyForFormat("%d/%m", other), key);

    // A stored text is answered as it is: repeats do not render again.
    const WQDate unusual(1777, 7, 17);
    const QString planted = unusual.cacheKeyForFormat("%Y/%m/%d", names);
    EXPECT_FALSE(WQDate::cachedValueForKey(planted));
    WQDate::cacheValue("planted", planted);
    EXPECT_EQ(WQDate::cachedValueForKey(planted), QString("planted"));
    EXPECT_EQ(unusual.descriptionWithCalendarFormat("%Y/%m/%d", names), "planted");
    EXPECT_EQ(unusual._wq_renderWithCalendarFormat("%Y/%m/%d", names), "1777/07/17");

    const QString first = date.descriptionWithCalendarFormat("%A %B", names);
    EXPECT_EQ(WQDate::cachedValueForKey(date.cacheKeyForFormat("%A %B", names)), first);
    EXPECT_EQ(date.descriptionWithCalendarFormat("%A %B", names), first);
    EXPECT_EQ(first, "Friday December");
}

TEST(DateText, RegionalSettingsChangeNeverReusesNames)
{
    const WQDate date(2024, 3, 5);
    QString english, german, englishAgain;
    {
        wq::test::ScopedLocale locale("en_US");
        english = date.descriptionWithCalendarFormat("%A %B");
        EXPECT_EQ(english, "Tuesday March");
    }
    {
        wq::test::ScopedLocale locale("de_DE");
        german = date.descriptionWithCalendarFormat("%A %B");
        EXPECT_EQ(german, QString::fromUtf8("Dienstag März"));
        EXPECT_EQ(date.descriptionWithCalendarFormat("EEE d. MMM"), QString::fromUtf8("Di. 5. 3ärz"));
    }
    {
        wq::test::ScopedLocale locale("fr_FR");
        EXPECT_EQ(date.descriptionWithCalendarFormat("%A %e %B"), "mardi 5 mars");
    }
    {
        wq::test::ScopedLocale locale("en_US");
        englishAgain = date.descriptionWithCalendarFormat("%A %B");
    }
    EXPECT_EQ(englishAgain, english);
    EXPECT_EQ(date.description(), "2024-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).description(), "0033-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).debugDescription(), "33-03-05");
    EXPECT_EQ(WQDate(-7, 3, 5).debugDescription(), "-7-03-05");
    EXPECT_EQ(date.descriptionWithLocale(englishNames()), "2024-03-05");
}
