#include <WQGeneral/dates/WQDate.h>

#include "DatePrinting.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

using wq::WQDate;

TEST(DateStorage, WritesFixedLayouts)
{
    EXPECT_EQ(WQDate(2024, 3, 5).optimizedStringTovanaFormat(), "03/05/2024");
    EXPECT_EQ(WQDate(2024, 3, 5).optimizedStringXMLFormat(), "2024-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).optimizedStringXMLFormat(), "0033-03-05");
    EXPECT_EQ(WQDate(12345, 11, 25).optimizedStringXMLFormat(), "12345-11-25");
    EXPECT_EQ(WQDate(12345, 11, 25).optimizedStringTovanaFormat(), "11/25/12345");
    EXPECT_EQ(WQDate(-5, 1, 2).optimizedStringXMLFormat(), "-005-01-02");
    EXPECT_EQ(WQDate(2024, 0, 0).optimizedStringXMLFormat(), "2024-00-00");
}

TEST(DateStorage, ReadsTovanaLayout)
{
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("12/31/1999"), WQDate(1999, 12, 31));
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("12-31-1999"), WQDate(1999, 12, 31));
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("03/05/2024"), WQDate(2024, 3, 5));
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("11/25/12345"), WQDate(12345, 11, 25));
    EXPECT_FALSE(WQDate::optimizedDateWithStringTovanaFormat("2/3/2024"));
    EXPECT_FALSE(WQDate::optimizedDateWithStringTovanaFormat(""));
    // Numbers read like the C library: spaces, signs, stray text.
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat(" 3/ 5/ 2024 and more"), WQDate(2024, 3, 5));
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("xx/yy/zzzz"), WQDate(0, 0, 0));
    // Overflowing fields fold forward; month and day wrap at 8 bits first.
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("13/01/2024"), WQDate(2025, 1, 1));
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("-1/01/2024"), WQDate(2024, 255, 1));
    // The year is 32 bits, read as atoi reads it.
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("01/01/2147483647")->yearOfCommonEra(), 2147483647);
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("01/01/-2147483648")->yearOfCommonEra(), -2147483648LL);
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("01/01/4294967297")->yearOfCommonEra(), 1);
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat("01/01/99999999999999999999999")->yearOfCommonEra(), -1);
    // Non-ASCII digits are not digits.
    EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat(QString::fromUtf8("０３/05/2024")), WQDate(2024, 0, 5));
}

TEST(DateStorage, ReadsXMLLayout)
{
    EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat("2024-03-05"), WQDate(2024, 3, 5));
    EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat("0033-03-05"), WQDate(33, 3, 5));
    EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat("2024-03-05T10:00:00"), WQDate(2024, 3, 5));
    EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat("2024-13-05"), WQDate(2025, 1, 5));
    EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat("2024/03/05"), WQDate(2024, 3, 5));
    EXPECT_FALSE(WQDate::optimizedDateWithStringXMLFormat("2024-03-5"));
    // Fixed positions: a five-digit year shifts every field ("-1" is month 255).
    EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat("12345-11-25"), WQDate(1234, 255, 254));
    for (const WQDate& date : {WQDate(2024, 3, 5), WQDate(33, 3, 5), WQDate(1, 1, 1), WQDate(9999, 12, 31)}) {
        EXPECT_EQ(WQDate::optimizedDateWithStringXMLFormat(date.optimizedStringXMLFormat()), date);
        EXPECT_EQ(WQDate::optimizedDateWithStringTovanaFormat(date.optimizedStringTovanaFormat()), date);
        EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat(date.optimizedStringXMLFormat().toLatin1().constData()), date);
    }
}

TEST(DateStorage, ReadsXMLLayoutFromCStrings)
{
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat("2024-03-05"), WQDate(2024, 3, 5));
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat("2024-03-05T10:00:00Z"), WQDate(2024, 3, 5));
    EXPECT_FALSE(WQDate::optimizedDateWithCStringXMLFormat(""));
    EXPECT_FALSE(WQDate::optimizedDateWithCStringXMLFormat(nullptr));
    // Only the first byte is checked: a short string reads as far as it goes.
    const auto yearOnly = WQDate::optimizedDateWithCStringXMLFormat("2024");
    ASSERT_TRUE(yearOnly);
    EXPECT_EQ(yearOnly->yearOfCommonEra(), 2024);
    EXPECT_EQ(yearOnly->monthOfYear(), 0u);
    EXPECT_EQ(yearOnly->dayOfMonth(), 0u);
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat("2024-03"), WQDate(2024, 3, 0));
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat("x"), WQDate(0, 0, 0));

    // Reads never pass the terminator: a 1-byte allocation is enough.
    auto tiny = std::make_unique<char[]>(2);
    std::memcpy(tiny.get(), "7", 2);
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat(tiny.get())->yearOfCommonEra(), 7);
}
