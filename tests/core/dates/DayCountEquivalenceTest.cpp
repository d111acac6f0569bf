// The constant-time day arithmetic against the literal walks, for every date
// of years 1 to 9999 and for the unnormalised and early-year cases.

#include "DateTesting.h"
#include "ReferenceCalendar.h"

#include <gtest/gtest.h>

namespace ref = wq::test::reference;
using wq::WQDate;

TEST(DayCountEquivalence, EveryDateFromYear1To9999)
{
    // Walking the days in order, each date's count is the previous one + 1
    // and its weekday the next one; each new year starts where the literal
    // year-by-year walk says it does.
    qint64 expectedCount = 0;
    int expectedWeekday = 0; // 0000-12-31 was a Sunday
    for (qint64 y = 1; y <= 9999; ++y) {
        ASSERT_EQ(WQDate::isLeapYear(y), ref::isLeap(y)) << y;
        ASSERT_EQ(expectedCount, ref::dayOfCommonEra(y, 1, 0)) << y;
        qint64 expectedDayOfYear = 0;
        for (quint64 m = 1; m <= 12; ++m) {
            const quint8 length = WQDate::daysInMonth(quint8(m), y);
            ASSERT_EQ(length, ref::monthLength(qint64(m), y));
            for (quint64 d = 1; d <= length; ++d) {
                ++expectedCount;
                ++expectedDayOfYear;
                expectedWeekday = (expectedWeekday + 1) % 7;
                const WQDate date(y, m, d);
                const auto back = WQDate::dateWithDayOfCommonEra(expectedCount);
                ASSERT_TRUE(date.yearOfCommonEra() == y && date.monthOfYear() == m && date.dayOfMonth() == d
                            && date.dayOfCommonEra() == expectedCount && back && *back == date
                            && date.dayOfYear() == expectedDayOfYear && date.dayOfWeek() == expectedWeekday)
                    << y << "-" << m << "-" << d << ": count " << date.dayOfCommonEra() << " (expected " << expectedCount
                    << "), weekday " << int(date.dayOfWeek()) << " (expected " << expectedWeekday << ")";
            }
        }
    }
    EXPECT_EQ(expectedCount, 3652059);
}

TEST(DayCountEquivalence, DayZeroMonthZeroAndEarlyYears)
{
    for (qint64 y = 1; y <= 9999; ++y) {
        // Day 0 is kept and counts as the day before the 1st.
        for (quint64 m = 1; m <= 12; ++m) {
            const WQDate dayZero(y, m, 0), first(y, m, 1);
            ASSERT_EQ(dayZero.dayOfMonth(), 0u);
            ASSERT_EQ(dayZero.dayOfCommonEra(), first.dayOfCommonEra() - 1);
            ASSERT_EQ(dayZero.dayOfYear(), first.dayOfYear() - 1);
            ASSERT_EQ(dayZero.dayOfWeek(), (first.dayOfWeek() + 6) % 7) << y << "-" << m;
        }
        // Month 0 with day 0 is stored as is and counts like January 0.
        const WQDate empty(y, 0, 0), januaryZero(y, 1, 0);
        ASSERT_EQ(empty.monthOfYear(), 0u);
        ASSERT_EQ(empty.dayOfCommonEra(), januaryZero.dayOfCommonEra());
        ASSERT_EQ(empty.dayOfYear(), 0);
        ASSERT_EQ(empty.dayOfWeek(), januaryZero.dayOfWeek()) << y;
    }
    // Years of 0 and below count no years, only the day of the year; the
    // leap rule still holds with truncating remainders (-100 is no leap year).
    // Weekdays go on with the 400-year cycle (20871 weeks) all the same.
    for (qint64 y = -2400; y <= 0; ++y) {
        ASSERT_EQ(WQDate::isLeapYear(y), ref::isLeap(y)) << y;
        for (quint64 m = 1; m <= 12; ++m) {
            const quint64 last = quint64(ref::monthLength(qint64(m), y));
            ASSERT_EQ(WQDate::daysInMonth(quint8(m), y), last) << y << "-" << m;
            for (quint64 d : {quint64(0), quint64(1), last}) {
                const WQDate date(y, m, d);
                ASSERT_EQ(date.dayOfCommonEra(), ref::dayOfCommonEra(y, qint64(m), qint64(d))) << y << "-" << m;
                ASSERT_EQ(date.dayOfYear(), date.dayOfCommonEra());
                ASSERT_EQ(date.dayOfWeek(), WQDate(y + 2400, m, d).dayOfWeek()) << y << "-" << m;
            }
        }
    }
    EXPECT_EQ(WQDate(0, 3, 1).dayOfCommonEra(), 61);
}

TEST(DayCountEquivalence, FarDatesAgreeAcrossArithmeticPaths)
{
    // Present-day numbers and far ones are computed differently; around each
    // switch, consecutive day numbers must be consecutive dates, and counting
    // must agree with stepping by dateByAddingYears.
    for (qint64 centre : {qint64(1'000'000'000), qint64(730'485'000), qint64(365'242'500'000'000'000)}) {
        std::optional<WQDate> previous;
        for (qint64 n = centre - 800; n <= centre + 800; ++n) {
            const auto date = WQDate::dateWithDayOfCommonEra(n);
            ASSERT_TRUE(date);
            ASSERT_EQ(date->dayOfCommonEra(), n);
            if (previous) {
                ASSERT_EQ(previous->dateByAddingYears(0, 0, 1), *date) << n;
            }
            previous = date;
        }
    }
    for (qint64 y : {qint64(2'000'000), qint64(1'000'000'000'000'000)}) {
        for (qint64 year = y - 30; year <= y + 30; ++year) {
            const qint64 length = WQDate::isLeapYear(year) ? 366 : 365;
            const WQDate newYear(year, 1, 1);
            ASSERT_EQ(WQDate(year + 1, 1, 1).dayOfCommonEra() - newYear.dayOfCommonEra(), length) << year;
            ASSERT_EQ(WQDate(year, 3, 1).dayOfCommonEra() - WQDate(year, 2, 28).dayOfCommonEra(), length - 364);
            ASSERT_EQ(WQDate(year + 1, 1, 1).dayOfWeek(), (newYear.dayOfWeek() + length) % 7);
        }
    }
}
