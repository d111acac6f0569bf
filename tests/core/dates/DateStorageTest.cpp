#include <WQGeneral/dates/WQDate.h>

#include "DateTesting.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

using wq::WQDate;

namespace {

std::optional<WQDate> tovana(const QString& text) { return WQDate::optimizedDateWithStringTovanaFormat(text); }
std::optional<WQDate> xml(const QString& text) { return WQDate::optimizedDateWithStringXMLFormat(text); }
std::optional<WQDate> cxml(const QString& text)
{
    return WQDate::optimizedDateWithCStringXMLFormat(text.toLatin1().constData());
}

} // namespace

TEST(DateStorage, WritesFixedLayouts)
{
    EXPECT_EQ(WQDate(2024, 3, 5).optimizedStringTovanaFormat(), "03/05/2024");
    EXPECT_EQ(WQDate(12345, 11, 25).optimizedStringTovanaFormat(), "11/25/12345");
    EXPECT_EQ(WQDate(2024, 3, 5).optimizedStringXMLFormat(), "2024-03-05");
    EXPECT_EQ(WQDate(33, 3, 5).optimizedStringXMLFormat(), "0033-03-05");
    EXPECT_EQ(WQDate(12345, 11, 25).optimizedStringXMLFormat(), "12345-11-25");
    EXPECT_EQ(WQDate(-5, 1, 2).optimizedStringXMLFormat(), "-005-01-02");
    EXPECT_EQ(WQDate(2024, 0, 0).optimizedStringXMLFormat(), "2024-00-00");
    for (const WQDate& date : {WQDate(2024, 3, 5), WQDate(33, 3, 5), WQDate(1, 1, 1), WQDate(9999, 12, 31)}) {
        EXPECT_EQ(xml(date.optimizedStringXMLFormat()), date);
        EXPECT_EQ(cxml(date.optimizedStringXMLFormat()), date);
        EXPECT_EQ(tovana(date.optimizedStringTovanaFormat()), date);
    }
}

TEST(DateStorage, ReadersAtTheirBoundaries)
{
    EXPECT_EQ(tovana("12/31/1999"), WQDate(1999, 12, 31));
    EXPECT_EQ(tovana("12-31-1999"), WQDate(1999, 12, 31));
    EXPECT_EQ(tovana("11/25/12345"), WQDate(12345, 11, 25));
    EXPECT_FALSE(tovana("2/3/2024"));
    EXPECT_FALSE(tovana(""));
    // Numbers read like the C library: spaces, signs, stray text.
    EXPECT_EQ(tovana(" 3/ 5/ 2024 and more"), WQDate(2024, 3, 5));
    EXPECT_EQ(tovana("xx/yy/zzzz"), WQDate(0, 0, 0));
    // Overflowing fields fold forward; month and day wrap at 8 bits first.
    EXPECT_EQ(tovana("13/01/2024"), WQDate(2025, 1, 1));
    EXPECT_EQ(tovana("-1/01/2024"), WQDate(2024, 255, 1));
    // The year is 32 bits, read as atoi reads it.
    EXPECT_EQ(tovana("01/01/2147483647"), WQDate(2147483647, 1, 1));
    EXPECT_EQ(tovana("01/01/-2147483648"), WQDate(-2147483648LL, 1, 1));
    EXPECT_EQ(tovana("01/01/4294967297"), WQDate(1, 1, 1));
    EXPECT_EQ(tovana("01/01/99999999999999999999999"), WQDate(-1, 1, 1));
    // Non-ASCII digits are not digits.
    EXPECT_EQ(tovana(QString::fromUtf8("０３/05/2024")), WQDate(2024, 0, 5));
    EXPECT_EQ(xml("0033-03-05"), WQDate(33, 3, 5));
    EXPECT_EQ(xml("2024-03-05T10:00:00"), WQDate(2024, 3, 5));
    EXPECT_EQ(xml("2024-13-05"), WQDate(2025, 1, 5));
    EXPECT_EQ(xml("2024/03/05"), WQDate(2024, 3, 5));
    EXPECT_FALSE(xml("2024-03-5"));
    // Fixed positions: a five-digit year shifts every field ("-1" is month 255).
    EXPECT_EQ(xml("12345-11-25"), WQDate(1234, 255, 254));
    EXPECT_EQ(cxml("2024-03-05T10:00:00Z"), WQDate(2024, 3, 5));
    EXPECT_FALSE(cxml(""));
    // Only the first byte is checked: a short string reads as far as it goes.
    EXPECT_EQ(cxml("2024"), WQDate(2024, 0, 0));
    EXPECT_EQ(cxml("2024-03"), WQDate(2024, 3, 0));
    EXPECT_EQ(cxml("x"), WQDate(0, 0, 0));
    EXPECT_FALSE(WQDate::optimizedDateWithCStringXMLFormat(nullptr));
    // Reads never pass the terminator: a 1-byte allocation is enough.
    auto tiny = std::make_unique<char[]>(2);
    std::memcpy(tiny.get(), "7", 2);
    EXPECT_EQ(WQDate::optimizedDateWithCStringXMLFormat(tiny.get()), WQDate(7, 0, 0));
}
