// The constant-time day arithmetic against the literal walks, for every date
// of years 1 to 9999 and for the unnormalised and early-year cases.

#include <WQGeneral/dates/WQDate.h>

#include "DatePrinting.h"

#include "ReferenceCalendar.h"

#include <gtest/gtest.h>

namespace ref = wq::test::reference;
using wq::WQDate;

namespace {

// Stops a run after the first few mismatches instead of flooding the log.
struct MismatchBudget {
    int left = 5;
    bool spend() { return --left >= 0; }
};

} // namespace

TEST(DayCountEquivalence, EveryDateFromYear1To9999)
{
    // Walking the days in order, each date's count is the previous one + 1
    // and its weekday the next one; the literal walks are sampled below.
    qint64 expectedCount = 0;
    int expectedWeekday = 0;   // 0000-12-31 was a Sunday
    int mismatches = 0;
    MismatchBudget budget;
    for (qint64 y = 1; y <= 9999; ++y) {
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
                const bool ok = date.yearOfCommonEra() == y && date.monthOfYear() == m && date.dayOfMonth() == d
                    && date.dayOfCommonEra() == expectedCount && back && *back == date
                    && date.dayOfYear() == expectedDayOfYear && date.dayOfWeek() == expectedWeekday
                    && (y < 1500 || date.dayOfWeek() == ref::doomsdayWeekday(y, qint64(m), qint64(d)));
                if (!ok) {
                    ++mismatches;
                    if (budget.spend())
                        ADD_FAILURE() << "mismatch at " << y << "-" << m << "-" << d << ": count "
                                      << date.dayOfCommonEra() << " (expected " << expectedCount << "), weekday "
                                      << int(date.dayOfWeek()) << " (expected " << expectedWeekday << ")";
                }
            }
        }
    }
    EXPECT_EQ(mismatches, 0);
    EXPECT_EQ(expectedCount, 3652059);
    EXPECT_EQ(WQDate(9999, 12, 31).dayOfCommonEra(), 3652059);
}

TEST(DayCountEquivalence, LiteralWalksAgreeOnSampledDates)
{
    // The walks are quadratic over the whole range, so every 37th year.
    for (qint64 y = 1; y <= 9999; y += 37) {
        for (qint64 m = 1; m <= 12; m += 5) {
            for (qint64 d : {qint64(1), qint64(15), ref::monthLength(m, y)}) {
                const WQDate date(y, quint64(m), quint64(d));
                const qint64 count = ref::dayOfCommonEra(y, m, d);
                ASSERT_EQ(date.dayOfCommonEra(), count) << y << "-" << m << "-" << d;
                const ref::Ymd walked = ref::dateWithDayOfCommonEra(count);
                ASSERT_EQ((ref::Ymd{y, m, d}), walked);
            }
        }
    }
}

TEST(DayCountEquivalence, DayZeroMonthZeroAndEarlyYears)
{
    for (qint64 y = 1; y <= 9999; ++y) {
        // Day 0 is kept and counts as the day before the 1st.
        for (quint64 m = 1; m <= 12; ++m) {
            const WQDate dayZero(y, m, 0);
            ASSERT_EQ(dayZero.dayOfMonth(), 0u);
            const WQDate first(y, m, 1);
            ASSERT_EQ(dayZero.dayOfCommonEra(), first.dayOfCommonEra() - 1);
            ASSERT_EQ(dayZero.dayOfYear(), first.dayOfYear() - 1);
            ASSERT_EQ(dayZero.dayOfWeek(), (first.dayOfWeek() + 6) % 7) << y << "-" << m;
            if (y >= 1500) {
                ASSERT_EQ(dayZero.dayOfWeek(), ref::doomsdayWeekday(y, qint64(m), 0));
            }
        }
        // Month 0 with day 0 is stored as is and counts like January 0.
        const WQDate empty(y, 0, 0);
        ASSERT_EQ(empty.monthOfYear(), 0u);
        ASSERT_EQ(empty.dayOfCommonEra(), WQDate(y, 1, 1).dayOfCommonEra() - 1);
        if (y % 101 == 0) {
            ASSERT_EQ(empty.dayOfCommonEra(), ref::dayOfCommonEra(y, 0, 0));
        }
        ASSERT_EQ(empty.dayOfWeek(), WQDate(y, 1, 0).dayOfWeek());
    }
    // Years of 0 and below count no years, only the day of the year.
    for (qint64 y = -2400; y <= 0; ++y) {
        for (quint64 m = 1; m <= 12; ++m) {
            const quint64 last = WQDate::daysInMonth(quint8(m), y);
            for (quint64 d : {quint64(0), quint64(1), last}) {
                const WQDate date(y, m, d);
                ASSERT_EQ(date.dayOfCommonEra(), ref::dayOfCommonEra(y, qint64(m), qint64(d))) << y << "-" << m;
                ASSERT_EQ(date.dayOfYear(), ref::dayOfYear(y, qint64(m), qint64(d)));
            }
        }
    }
    EXPECT_EQ(WQDate(0, 3, 1).dayOfCommonEra(), 61);
    EXPECT_EQ(WQDate(-400, 12, 31).dayOfCommonEra(), 366);
    EXPECT_EQ(WQDate(-100, 12, 31).dayOfCommonEra(), 365);
}

TEST(DayCountEquivalence, WeekdaysBefore1500ContinueTheCycle)
{
    // The 400-year cycle is exactly 20871 weeks, so early dates share the
    // weekday of the same date 400 years later, even before year 1.
    for (qint64 y = -1200; y < 1500; y += 7) {
        for (quint64 m = 1; m <= 12; m += 3) {
            const WQDate early(y, m, 13);
            const WQDate later(y + 1600, m, 13);
            ASSERT_EQ(early.dayOfWeek(), later.dayOfWeek()) << y << "-" << m;
        }
    }
    EXPECT_EQ(WQDate(1, 1, 1).dayOfWeek(), 1);      // a Monday
    EXPECT_EQ(WQDate(0, 12, 31).dayOfWeek(), 0);
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
            const qint64 length = WQDate(year + 1, 1, 1).dayOfCommonEra() - WQDate(year, 1, 1).dayOfCommonEra();
            ASSERT_EQ(length, WQDate::isLeapYear(year) ? 366 : 365) << year;
            ASSERT_EQ(WQDate(year, 3, 1).dayOfCommonEra() - WQDate(year, 2, 28).dayOfCommonEra(),
                      WQDate::isLeapYear(year) ? 2 : 1);
            ASSERT_EQ(WQDate(year, 1, 1).dayOfWeek(), (WQDate(year - 1, 1, 1).dayOfWeek() + (WQDate::isLeapYear(year - 1) ? 366 : 365)) % 7);
        }
    }
}
