// Dates written and read through calendar formats.

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "DateTesting.h"
#include "WQDateTesting.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

using wq::WQDate;
using wq::test::messageOf;

namespace {

// A dictionary independent of the system's locale data.
QVariantMap englishNames()
{
    const auto words = [](const char* list) { return QString::fromLatin1(list).split(u' '); };
    const QStringList months = words("January February March April May June July August September October November December");
    return {{wq::WQDateLocaleKey_TimeDateFormatString, months},
            {wq::WQDateLocaleKey_MonthNameArray, months},
            {wq::WQDateLocaleKey_ShortMonthNameArray, words("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec")},
            {wq::WQDateLocaleKey_WeekDayNameArray, words("Sunday Monday Tuesday Wednesday Thursday Friday Saturday")},
            {wq::WQDateLocaleKey_ShortWeekDayNameArray, words("Sun Mon Tue Wed Thu Fri Sat")}};
}

QVariantMap withMonths(const QStringList& months)
{
    QVariantMap names = englishNames();
    names.insert(wq::WQDateLocaleKey_MonthNameArray, months);
    return names;
}

} // namespace

TEST(DateText, DirectivesAndPatternLetters)
{
    const WQDate march5(2024, 3, 5), far(12345, 3, 5), early(33, 3, 5), empty(2024, 0, 0);
    struct Row {
        WQDate date;
        const char* format;
        const char* expected;
    };
    const Row rows[] = {
        {march5, "%Y-%m-%d", "2024-03-05"},
        {march5, "%e.%1m.%y", "5.3.24"},
        {march5, "%M/%d", "03/05"}, // %M is the month
        {march5, "%A, %B %e (%a %b) w%w j%j", "Tuesday, March 5 (Tue Mar) w2 j065"},
        {WQDate(2005, 1, 1), "%y", "05"},
        {WQDate(2024, 12, 31), "%j", "366"},
        {early, "%Y", "0033"},
        {WQDate(-5, 3, 5), "%Y %y", "-005 -5"},
        {far, "%Y", "12345"},
        // "%%" leaves one percent sign, which is not read as a directive.
        {march5, "100%% %%d %d", "100% %d 05"},
        {empty, "[%b]%Y", "[]2024"},
        {march5, "d/M/yy", "5/3/24"},
        {march5, "M/d/yy", "3/5/24"},
        {march5, "yyyy-MM-dd", "2024-03-05"},
        {march5, "dd.MM.yyy", "05.03.2024"},
        {early, "y yyy", "33 033"},
        // A month name's capital M is taken by the later "M" step.
        {march5, "MMMM d", "3arch 5"},
        {march5, "EEEE, MMMM d, y", "Tuesday, 3arch 5, 2024"},
        {march5, "MMMM d, MM", "3arch 5, 03"},
        {march5, "M MMMM", "3 March"},
        {WQDate(2024, 5, 5), "EEE d MMM", "Sun 5 5ay"},
        // Only the first occurrence of each pattern is replaced; others stay.
        {march5, "d d 'G'", "5 d 'G'"},
        {empty, "[MMMM]d", "[]0"},
    };
    const QVariantMap names = englishNames();
    for (const Row& r : rows)
        EXPECT_EQ(r.date.descriptionWithCalendarFormat(r.format, names), r.expected) << r.format;

    // Inserted text is never scanned again; missing names leave nothing behind.
    EXPECT_EQ(march5.descriptionWithCalendarFormat("%B|%d", withMonths({"J", "F", "%d", "A"})), "%d|05");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("[%B][%a]", std::nullopt), "[][]");
    EXPECT_EQ(march5.descriptionWithCalendarFormat("[%B]", withMonths({"Jan", "Feb"})), "[]");
}

TEST(DateText, BadDirectivesRaiseAndCacheNothingEqualNamesShareKeys)
{
    // (How text keys reach the cache is the cache test's.)
    const WQDate date(2024, 3, 5);
    const QVariantMap names = englishNames();
    EXPECT_EQ(messageOf<wq::NSInvalidArgumentException>([&] { (void)date.descriptionWithCalendarFormat("%Y-%Q", names); }),
              "WQDate doesn't understand format: '%Y-%Q'");
    EXPECT_FALSE(WQDate::cachedValueForKey(date.cacheKeyForFormat("%Y-%Q", names)));
    EXPECT_THROW((void)date.descriptionWithCalendarFormat("%1x", names), wq::NSInvalidArgumentException);
    EXPECT_THROW((void)date.descriptionWithCalendarFormat("%d%1", names), wq::NSInvalidArgumentException);
    EXPECT_THROW((void)date.descriptionWithCalendarFormat("%d %", names), wq::NSRangeException);

    const QString key = date.cacheKeyForFormat("%d/%m", names);
    EXPECT_EQ(date.cacheKeyForFormat("%d/%m", englishNames()), key) << "built separately, equal";
    EXPECT_NE(date.cacheKeyForFormat("%d/%m", withMonths({"Jan."})), key);
}

TEST(DateText, RegionalSettingsChangeNeverReusesNames)
{
    const WQDate date(2024, 3, 5);
    const auto inLocale = [&](const char* locale, const char* format) {
        wq::test::ScopedLocale scoped(locale);
        return date.descriptionWithCalendarFormat(format);
    };
    EXPECT_EQ(inLocale("en_US", "%A %B"), "Tuesday March");
    EXPECT_EQ(inLocale("de_DE", "%A %B"), QString::fromUtf8("Dienstag März"));
    EXPECT_EQ(inLocale("de_DE", "EEE d. MMM"), QString::fromUtf8("Di. 5. 3ärz"));
    EXPECT_EQ(inLocale("fr_FR", "%A %e %B"), "mardi 5 mars");
    EXPECT_EQ(inLocale("en_US", "%A %B"), "Tuesday March");

    EXPECT_EQ(date.descriptionWithLocale(englishNames()), "2024-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).description(), "0033-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).debugDescription(), "33-03-05");
    EXPECT_EQ(WQDate(-7, 3, 5).debugDescription(), "-7-03-05");
}

TEST(DateText, ReadsWhatTheDirectivesWrite)
{
    wq::test::ScopedLocale locale("en_US");
    const QVariantMap names = wq::WQSystemDateSettings::systemDefinedDateInformation();
    for (const char* format : {"%Y-%m-%d", "%d/%m/%Y", "%A, %B %e, %Y", "%a %b %d %Y", "%e.%1m.%y", "%Y%%%j"}) {
        for (const WQDate& date : {WQDate(2024, 3, 5), WQDate(1999, 12, 31), WQDate(2024, 2, 29), WQDate(2031, 10, 10)}) {
            const QString text = date.descriptionWithCalendarFormat(format, names);
            EXPECT_EQ(WQDate::dateWithString(text, format, names), date) << format << " " << qPrintable(text);
        }
    }
    struct Row {
        const char* text;
        const char* format;
        WQDate expected;
    };
    const Row rows[] = {
        {"  5 march 2024 ", "%e %B %Y", WQDate(2024, 3, 5)},
        {"-44-03-15", "%Y-%m-%d", WQDate(-44, 3, 15)},
        {"123456-03-15", "%Y-%m-%d", WQDate(123456, 3, 15)},
        {"20240315", "%Y%m%d", WQDate(2024, 3, 15)},
        // Two-digit years: 69 and later are 19xx, the rest 20xx.
        {"1/1/69", "%m/%d/%y", WQDate(1969, 1, 1)},
        {"1/1/68", "%m/%d/%y", WQDate(2068, 1, 1)},
        // Unnamed fields: January, the 1st, this year.
        {"2024", "%Y", WQDate(2024, 1, 1)},
        {"7", "%m", WQDate(WQDate::date()->yearOfCommonEra(), 7, 1)},
        // Day 30 of February carries like any construction.
        {"2023-02-30", "%Y-%m-%d", WQDate(2023, 3, 2)},
        // A mismatch answers the empty date.
        {"Funday 5", "%A %d", WQDate()},
    };
    for (const Row& r : rows)
        EXPECT_EQ(WQDate::dateWithString(r.text, r.format), r.expected) << r.text;
    for (const char* text : {"", "2024-03", "2024/03/05", "2024-13-05", "2024-03-32", "2024-03-05x", "abcd-03-05",
                             "2024-00-05", "99999999999999999999-01-01"})
        EXPECT_EQ(WQDate::dateWithString(text, "%Y-%m-%d", names), WQDate()) << text;
    EXPECT_EQ(WQDate::dateWithString("March 5", "%B %d", std::nullopt), WQDate());
    EXPECT_THROW(WQDate::dateWithString("2024", "%Q"), wq::NSInvalidArgumentException);
    EXPECT_THROW(WQDate::dateWithString("nothing to match", "%d %1"), wq::NSInvalidArgumentException);
    EXPECT_THROW(WQDate::dateWithString("5", "%d %"), wq::NSRangeException);
}
