#include <WQGeneral/dates/WQDate.h>

#include "DatePrinting.h"
#include <WQGeneral/dates/WQSystemDateSettings.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

using wq::WQDate;

TEST(DateParsing, ReadsWhatTheDirectivesWrite)
{
    wq::test::ScopedLocale locale("en_US");
    const QVariantMap names = wq::WQSystemDateSettings::systemDefinedDateInformation();
    for (const char* format : {"%Y-%m-%d", "%d/%m/%Y", "%A, %B %e, %Y", "%a %b %d %Y", "%e.%1m.%y", "%Y%%%j"}) {
        for (const WQDate& date : {WQDate(2024, 3, 5), WQDate(1999, 12, 31), WQDate(2024, 2, 29), WQDate(2031, 10, 10)}) {
            const QString text = date.descriptionWithCalendarFormat(format, names);
            EXPECT_EQ(WQDate::dateWithString(text, format, names), date) << format << " " << qPrintable(text);
        }
    }
    EXPECT_EQ(WQDate::dateWithString("  5 march 2024 ", "%e %B %Y"), WQDate(2024, 3, 5));
    EXPECT_EQ(WQDate::dateWithString("-44-03-15", "%Y-%m-%d", names), WQDate(-44, 3, 15));
    EXPECT_EQ(WQDate::dateWithString("123456-03-15", "%Y-%m-%d", names), WQDate(123456, 3, 15));
    EXPECT_EQ(WQDate::dateWithString("20240315", "%Y%m%d", names), WQDate(2024, 3, 15));
    // Two-digit years: 69 and later are 19xx, the rest 20xx.
    EXPECT_EQ(WQDate::dateWithString("1/1/69", "%m/%d/%y"), WQDate(1969, 1, 1));
    EXPECT_EQ(WQDate::dateWithString("1/1/68", "%m/%d/%y"), WQDate(2068, 1, 1));
    // Unnamed fields: January, the 1st, this year.
    EXPECT_EQ(WQDate::dateWithString("2024", "%Y"), WQDate(2024, 1, 1));
    EXPECT_EQ(WQDate::dateWithString("7", "%m").yearOfCommonEra(), WQDate::date()->yearOfCommonEra());
    // Day 30 of February carries like any construction.
    EXPECT_EQ(WQDate::dateWithString("2023-02-30", "%Y-%m-%d"), WQDate(2023, 3, 2));
}

TEST(DateParsing, MismatchAnswersTheEmptyDate)
{
    const QVariantMap names = wq::WQSystemDateSettings::systemDefinedDateInformation();
    for (const char* text : {"", "2024-03", "2024/03/05", "2024-13-05", "2024-03-32", "2024-03-05x", "abcd-03-05",
                             "2024-00-05", "99999999999999999999-01-01"}) {
        const WQDate date = WQDate::dateWithString(text, "%Y-%m-%d", names);
        EXPECT_EQ(date, WQDate()) << text;
        EXPECT_EQ(date.monthOfYear(), 0u);
    }
    EXPECT_EQ(WQDate::dateWithString("Funday 5", "%A %d", names), WQDate());
    EXPECT_EQ(WQDate::dateWithString("March 5", "%B %d", std::nullopt), WQDate());
    EXPECT_THROW(WQDate::dateWithString("2024", "%Q"), wq::NSInvalidArgumentException);
    EXPECT_THROW(WQDate::dateWithString("nothing to match", "%d %1"), wq::NSInvalidArgumentException);
    EXPECT_THROW(WQDate::dateWithString("5", "%d %"), wq::NSRangeException);
}
