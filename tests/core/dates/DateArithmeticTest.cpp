// Date arithmetic against the stepwise walks, and the constant-time day
// counts against the literal walks for every date of years 1 to 9999 and the
// unnormalised and early-year cases.

#include "DateTesting.h"
#include "ReferenceCalendar.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace ref = wq::test::reference;
using wq::WQDate;
using ref::fields;

namespace {

constexpr qint64 kMax = std::numeric_limits<qint64>::max();
constexpr qint64 kMin = std::numeric_limits<qint64>::min();

qint64 daysOnly(const WQDate& receiver, const WQDate& other)
{
    qint64 days = 99;
    receiver.yearsMonthsDaysSinceDate(nullptr, nullptr, &days, other);
    return days;
}

} // namespace

TEST(DateArithmetic, AddingCarriesRatherThanClamps)
{
    struct Row {
        WQDate start;
        qint64 years, months, days;
        ref::Ymd expected;
    };
    const Row rows[] = {
        {WQDate(2023, 1, 31), 0, 1, 0, {2023, 3, 3}},     {WQDate(2024, 1, 31), 0, 1, 0, {2024, 3, 2}},
        {WQDate(2024, 2, 29), 1, 0, 0, {2025, 3, 1}},     {WQDate(2024, 3, 1), 0, 0, -1, {2024, 2, 29}},
        {WQDate(2023, 3, 31), 0, -1, 0, {2023, 3, 3}},    {WQDate(2024, 1, 1), 0, 0, -1, {2023, 12, 31}},
        {WQDate(2024, 1, 1), 0, 0, 366, {2025, 1, 1}},    {WQDate(2024, 1, 15), 0, -13, 0, {2022, 12, 15}},
        {WQDate(2024, 1, 15), 0, 12, 0, {2025, 1, 15}},   {WQDate(2024, 1, 15), 0, -12, 0, {2023, 1, 15}},
        {WQDate(2024, 5, 10), -3, 2, -40, {2021, 5, 31}},
        // Day 0 is kept when nothing moves it; month 0 borrows like the
        // December before January, and carries like an empty month.
        {WQDate(2024, 3, 0), 0, 0, 0, {2024, 3, 0}},      {WQDate(2024, 0, 0), 0, 0, -1, {2023, 11, 29}},
        {WQDate(2024, 0, 0), 0, 0, 1, {2024, 1, 1}},
        // 146097 days are exactly 400 years, in both directions.
        {WQDate(2024, 3, 5), 0, 0, 146097LL * 1'000'000, {400'002'024, 3, 5}},
        {WQDate(2024, 3, 5), 0, 0, -146097LL * 1'000'000, {-399'997'976, 3, 5}},
        {WQDate(2024, 3, 5), 0, 12'000, 0, {3024, 3, 5}},
    };
    for (const Row& r : rows)
        EXPECT_EQ(fields(r.start.dateByAddingYears(r.years, r.months, r.days)), r.expected)
            << testing::PrintToString(r.start) << " + (" << r.years << ", " << r.months << ", " << r.days << ")";
}

TEST(DateArithmetic, AddingMatchesTheStepwiseWalk)
{
    std::mt19937_64 random(20240305);
    std::uniform_int_distribution<qint64> year(-800, 2800), month(-40, 40), day(-3000, 3000);
    const WQDate starts[] = {WQDate(2024, 1, 31), WQDate(2023, 2, 28), WQDate(2000, 2, 29), WQDate(1, 1, 1),
                             WQDate(0, 12, 31), WQDate(2024, 3, 0), WQDate(2024, 0, 0), WQDate(-5, 7, 14)};
    for (const WQDate& start : starts) {
        for (int i = 0; i < 1500; ++i) {
            const qint64 dy = year(random) % 50, dm = month(random), dd = day(random);
            ASSERT_EQ(fields(start.dateByAddingYears(dy, dm, dd)), ref::add(fields(start), dy, dm, dd))
                << testing::PrintToString(start) << " + (" << dy << ", " << dm << ", " << dd << ")";
        }
    }
}

TEST(DateArithmetic, AddingFarAndOverflowing)
{
    // The extreme day offsets still answer a date.
    EXPECT_GT(WQDate(2024, 1, 1).dateByAddingYears(0, 0, kMax - 31).yearOfCommonEra(), qint64(2.5e16));
    EXPECT_THROW(WQDate(2024, 1, 1).dateByAddingYears(0, 0, kMax), wq::NSRangeException);
    EXPECT_LT(WQDate(2024, 1, 1).dateByAddingYears(0, 0, kMin).yearOfCommonEra(), qint64(-2.5e16));
    EXPECT_LT(WQDate(2024, 0, 0).dateByAddingYears(0, 0, kMin).yearOfCommonEra(), qint64(-2.5e16));
    EXPECT_EQ(WQDate(2024, 1, 1).dateByAddingYears(0, kMin, 0).monthOfYear(), 5u);
    // Past the year range: raised, not wrapped.
    EXPECT_THROW(WQDate(kMax, 1, 1).dateByAddingYears(1, 0, 0), wq::NSRangeException);
    EXPECT_THROW(WQDate(kMax, 12, 1).dateByAddingYears(0, 1, 0), wq::NSRangeException);
    EXPECT_THROW(WQDate(kMax, 12, 31).dateByAddingYears(0, 0, 1), wq::NSRangeException);
    EXPECT_THROW(WQDate(kMin, 1, 1).dateByAddingYears(0, 0, -1), wq::NSRangeException);
    EXPECT_THROW(WQDate(1, 1, 1).dateByAddingYears(0, kMax, 0), wq::NSRangeException);
}

TEST(DateArithmetic, SinceDecomposition)
{
    using Places = WQDate::Difference;
    struct Row {
        WQDate receiver, other;
        bool years, months, days;
        Places expected;
    };
    const WQDate march15(2024, 3, 15), jan10(2023, 1, 10), march1(2024, 3, 1), jan31(2024, 1, 31);
    const Row rows[] = {
        {march15, jan10, true, true, true, {1, 2, 5}},
        {jan10, march15, true, true, true, {-1, -2, -5}}, {march15, jan10, false, false, true, {{}, {}, 430}},
        {jan10, march15, false, false, true, {{}, {}, -430}}, {march15, jan10, true, false, false, {1, {}, {}}},
        // Borrowed days come from the earlier date's month (January: 31 - 31 + 1).
        {march1, jan31, true, true, true, {0, 1, 1}}, {march1, jan31, false, false, true, {{}, {}, 30}},
        // Years and days: the borrowed month goes back in as whole months...
        {march1, jan31, true, false, true, {0, {}, 61}},
        // ...and across a year end, from the months of the year after the earlier date.
        {march15, WQDate(2022, 11, 10), true, false, true, {1, {}, 5 + 30 + 31 + 31 + 28}},
        {WQDate(2025, 2, 15), WQDate(2023, 11, 10), false, true, false, {{}, 15, {}}},
        {WQDate(2023, 11, 10), WQDate(2025, 2, 15), false, true, false, {{}, -15, {}}},
        // Same month, day earlier: a whole year less and eleven months.
        {WQDate(2025, 3, 5), WQDate(2024, 3, 20), true, true, true, {0, 11, 5 + 31 - 20}},
        {march15, march15, true, true, true, {0, 0, 0}}, {march15, march15, false, false, true, {{}, {}, 0}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::PrintToString(r.receiver) + " since " + testing::PrintToString(r.other));
        const Places got = r.receiver.yearsMonthsDaysSinceDate(r.other, r.years, r.months, r.days);
        EXPECT_EQ(got.years, r.expected.years);
        EXPECT_EQ(got.months, r.expected.months);
        EXPECT_EQ(got.days, r.expected.days);
        // The places form says the same; unasked places are left alone.
        qint64 years = 99, months = 99, days = 99;
        r.receiver.yearsMonthsDaysSinceDate(r.years ? &years : nullptr, r.months ? &months : nullptr,
                                            r.days ? &days : nullptr, r.other);
        EXPECT_EQ(years, r.expected.years.value_or(99));
        EXPECT_EQ(months, r.expected.months.value_or(99));
        EXPECT_EQ(days, r.expected.days.value_or(99));
    }
    march15.yearsMonthsDaysSinceDate(nullptr, nullptr, nullptr, jan10); // nothing to fill
}

TEST(DateArithmetic, DaysOnlyIsTheDayCountDifference)
{
    // For normal dates of year 1 on, the plain day count must agree with the
    // day numbers, however far apart the dates are.
    std::mt19937_64 random(7);
    std::uniform_int_distribution<qint64> dayNumber(1, 3'652'059);
    for (int i = 0; i < 3000; ++i) {
        const qint64 a = dayNumber(random), b = i % 3 == 0 ? a + (i % 40) : dayNumber(random);
        const WQDate first = *WQDate::dateWithDayOfCommonEra(a), second = *WQDate::dateWithDayOfCommonEra(b);
        ASSERT_EQ(daysOnly(second, first), b - a)
            << testing::PrintToString(second) << " since " << testing::PrintToString(first);
    }
    // Across year 0 and far years, without overflow.
    EXPECT_EQ(daysOnly(WQDate(1, 1, 1), WQDate(0, 1, 1)), 366);
    EXPECT_EQ(daysOnly(WQDate(400'000'001, 1, 1), WQDate(1, 1, 1)), 146097LL * 1'000'000);
    EXPECT_THROW(daysOnly(WQDate(kMax, 1, 1), WQDate(kMin, 1, 1)), wq::NSRangeException);
}

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
