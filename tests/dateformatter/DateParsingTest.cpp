#include "DateFormatterTesting.h"

using namespace wq;
using test::formatterOn;

namespace {

// "2026-03-07" for a date, the message for a refusal.
QString parsed(const WQDateFormatter& f, const QString& text)
{
    QVariant value;
    QString error;
    if (!f.getObjectValue(&value, text, &error))
        return error;
    EXPECT_TRUE(error.isNull()) << "a success leaves the error place alone";
    return value.value<WQDate>().description();
}

} // namespace

TEST(DateParsing, MonthFirstFormat)
{
    const auto f = formatterOn("M/d/yy");
    EXPECT_EQ(parsed(*f, "7"), "2026-03-07");
    EXPECT_EQ(parsed(*f, "2/29"), "Invalid day entry.");
    EXPECT_EQ(parsed(*f, "2/28"), "2026-02-28");
    EXPECT_EQ(parsed(*f, "13/1"), "Invalid month entry.");
    EXPECT_EQ(parsed(*f, "0/5"), "Invalid month entry.");
    EXPECT_EQ(parsed(*f, "1/2/95"), "1995-01-02");
    EXPECT_EQ(parsed(*f, "1/2/94"), "2094-01-02");
    EXPECT_EQ(parsed(*f, "1/2/2024"), "2024-01-02");
    EXPECT_EQ(parsed(*f, "1/2/0"), "2000-01-02");
    EXPECT_EQ(parsed(*f, "1/2/"), "2000-01-02");
    EXPECT_EQ(parsed(*f, "1/2/3/4"), "Too many numbers for a date.");
    EXPECT_EQ(parsed(*f, "///"), "Too many numbers for a date.");
    EXPECT_EQ(parsed(*f, ""), "You cannot leave the date field blank.");
    EXPECT_EQ(parsed(*f, "1-2-2024"), "2026-03-01");
    EXPECT_EQ(parsed(*f, "12abc/3"), "2026-12-03");
}

TEST(DateParsing, NumbersReadLikeTheCLibrary)
{
    const auto f = formatterOn("M/d/yy");
    // Month and day keep their low 8 bits, the year its low 32.
    EXPECT_EQ(parsed(*f, "257/1/2024"), "2024-01-01");
    EXPECT_EQ(parsed(*f, "1/256/2024"), "Invalid day entry.");
    EXPECT_EQ(parsed(*f, "1/2/4294969320"), "2024-01-02");
    EXPECT_EQ(parsed(*f, "-1/2"), "Invalid month entry.");
    // Blanks and a sign before the digits; letters read as 0.
    EXPECT_EQ(parsed(*f, " 3/\t+4/ 26"), "2026-03-04");
    EXPECT_EQ(parsed(*f, "x/4"), "Invalid month entry.");
    // Negative and zero years are put into today's century.
    EXPECT_EQ(parsed(*f, "1/2/-5"), "1995-01-02");
    // Far too many digits saturate instead of wrapping into a valid date.
    EXPECT_EQ(parsed(*f, "99999999999999999999999999/1/1"), "Invalid month entry.");
    EXPECT_EQ(parsed(*f, "1/1/99999999999999999999999999"), "1999-01-01"); // low 32 bits: -1
    // Arabic-Indic digits are no digits to the C library.
    EXPECT_EQ(parsed(*f, QString::fromUtf8("\u0663/4")), "Invalid month entry.");
}

TEST(DateParsing, DayFirstAndYearFirstOrders)
{
    const auto de = formatterOn("dd.MM.yy");
    EXPECT_EQ(parsed(*de, "3.4"), "2026-04-03");
    EXPECT_EQ(parsed(*de, "3.4.26"), "2026-04-03");
    EXPECT_EQ(parsed(*de, "31.4.26"), "Invalid day entry.");
    EXPECT_EQ(parsed(*de, "29.2.24"), "2024-02-29");

    const auto iso = formatterOn("yyyy-MM-dd");
    EXPECT_EQ(parsed(*iso, "2024-3-5"), "2024-03-05");
    EXPECT_EQ(parsed(*iso, "3-5"), "2026-03-05"); // month before day, as in the format
    EXPECT_EQ(parsed(*iso, "24-12-31"), "2024-12-31");

    const auto percent = formatterOn("%d/%m/%Y");
    EXPECT_EQ(parsed(*percent, "5/3/24"), "2024-03-05");
}

TEST(DateParsing, TodayIsReadOnEveryCallThatNeedsIt)
{
    WQDateFormatter f("M/d/yy");
    int reads = 0;
    WQDate today(2026, 4, 10);
    f.setTodayProvider([&] {
        ++reads;
        return std::optional<WQDate>(today);
    });
    EXPECT_EQ(parsed(f, "31"), "Invalid day entry."); // April has 30 days
    EXPECT_EQ(parsed(f, "30"), "2026-04-30");
    EXPECT_EQ(reads, 2);
    EXPECT_EQ(parsed(f, "1/2/2024"), "2024-01-02");
    EXPECT_EQ(reads, 2);
    today = WQDate(2131, 1, 20);
    EXPECT_EQ(parsed(f, "1/2/3"), "2103-01-02");
    EXPECT_EQ(parsed(f, "5"), "2131-01-05");

    // Without a clock, one or two numbers cannot be completed.
    f.setTodayProvider([] { return std::optional<WQDate>(); });
    EXPECT_EQ(parsed(f, "5"), "Invalid month entry.");
    EXPECT_EQ(parsed(f, "1/2/2024"), "2024-01-02");
}

TEST(DateParsing, OddFormatsNeverReadPastTheNumbers)
{
    // A fourth field puts the month at place 3 of three numbers.
    const auto f = formatterOn("d/yy/M/M");
    EXPECT_EQ(f->monthPosition(), 3);
    EXPECT_EQ(parsed(*f, "1/2/3"), "Invalid month entry.");
    // No separator: the whole text is one number.
    const auto bare = formatterOn("d");
    EXPECT_EQ(parsed(*bare, "12"), "2026-03-12");
    // Absent places are fine.
    EXPECT_FALSE(f->getObjectValue(nullptr, "", nullptr));
    EXPECT_TRUE(bare->getObjectValue(nullptr, "12", nullptr));
}
