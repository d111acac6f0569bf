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
