#include <WQGeneral/dates/WQDate.h>

#include "DatePrinting.h"

#include "ReferenceCalendar.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace ref = wq::test::reference;
using wq::WQDate;

namespace {

ref::Ymd fields(const WQDate& date)
{
    return {date.yearOfCommonEra(), qint64(date.monthOfYear()), qint64(date.dayOfMonth())};
}

struct Since {
    qint64 years, months, days;
};

Since allPlaces(const WQDate& receiver, const WQDate& other)
{
    Since s{99, 99, 99};
    receiver.yearsMonthsDaysSinceDate(&s.years, &s.months, &s.days, other);
    return s;
}

qint64 daysOnly(const WQDate& receiver, const WQDate& other)
{
    qint64 days = 99;
    receiver.yearsMonthsDaysSinceDate(nullptr, nullptr, &days, other);
    return days;
}

} // namespace

TEST(DateArithmetic, AddingCarriesRatherThanClamps)
{
    EXPECT_EQ(WQDate(2023, 1, 31).dateByAddingYears(0, 1, 0), WQDate(2023, 3, 3));
    EXPECT_EQ(WQDate(2024, 1, 31).dateByAddingYears(0, 1, 0), WQDate(2024, 3, 2));
    EXPECT_EQ(WQDate(2024, 2, 29).dateByAddingYears(1, 0, 0), WQDate(2025, 3, 1));
    EXPECT_EQ(WQDate(2024, 3, 1).dateByAddingYears(0, 0, -1), WQDate(2024, 2, 29));
    EXPECT_EQ(WQDate(2023, 3, 31).dateByAddingYears(0, -1, 0), WQDate(2023, 3, 3));
    EXPECT_EQ(WQDate(2024, 1, 1).dateByAddingYears(0, 0, -1), WQDate(2023, 12, 31));
    EXPECT_EQ(WQDate(2024, 1, 1).dateByAddingYears(0, 0, 366), WQDate(2025, 1, 1));
    EXPECT_EQ(WQDate(2024, 1, 15).dateByAddingYears(0, -13, 0), WQDate(2022, 12, 15));
    EXPECT_EQ(WQDate(2024, 1, 15).dateByAddingYears(0, 12, 0), WQDate(2025, 1, 15));
    EXPECT_EQ(WQDate(2024, 1, 15).dateByAddingYears(0, -12, 0), WQDate(2023, 1, 15));
    EXPECT_EQ(WQDate(2024, 5, 10).dateByAddingYears(-3, 2, -40), WQDate(2021, 5, 31));
    // Day 0 is kept when nothing moves it; month 0 borrows like the December
    // before January, and carries like an empty month.
    EXPECT_TRUE(fields(WQDate(2024, 3, 0).dateByAddingYears(0, 0, 0)) == (ref::Ymd{2024, 3, 0}));
    EXPECT_TRUE(fields(WQDate(2024, 0, 0).dateByAddingYears(0, 0, -1)) == (ref::Ymd{2023, 11, 29}));
    EXPECT_TRUE(fields(WQDate(2024, 0, 0).dateByAddingYears(0, 0, 1)) == (ref::Ymd{2024, 1, 1}));
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
            const ref::Ymd expected = ref::add(fields(start), dy, dm, dd);
            ASSERT_TRUE(fields(start.dateByAddingYears(dy, dm, dd)) == expected)
                << qPrintable(start.debugDescription()) << " + (" << dy << ", " << dm << ", " << dd << ") gave "
                << qPrintable(start.dateByAddingYears(dy, dm, dd).debugDescription()) << ", expected " << expected.year
                << "-" << expected.month << "-" << expected.day;
        }
    }
}

TEST(DateArithmetic, AddingFarAndOverflowing)
{
    constexpr qint64 kMax = std::numeric_limits<qint64>::max();
    constexpr qint64 kMin = std::numeric_limits<qint64>::min();
    // 146097 days are exactly 400 years, in both directions.
    EXPECT_EQ(WQDate(2024, 3, 5).dateByAddingYears(0, 0, 146097LL * 1'000'000), WQDate(400'002'024, 3, 5));
    EXPECT_EQ(WQDate(2024, 3, 5).dateByAddingYears(0, 0, -146097LL * 1'000'000), WQDate(-399'997'976, 3, 5));
    EXPECT_EQ(WQDate(2024, 3, 5).dateByAddingYears(0, 12'000, 0), WQDate(3024, 3, 5));
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
    const WQDate march15(2024, 3, 15), jan10(2023, 1, 10);
    Since s = allPlaces(march15, jan10);
    EXPECT_EQ(s.years, 1);
    EXPECT_EQ(s.months, 2);
    EXPECT_EQ(s.days, 5);
    EXPECT_EQ(daysOnly(march15, jan10), 430);
    s = allPlaces(jan10, march15);
    EXPECT_EQ(s.years, -1);
    EXPECT_EQ(s.months, -2);
    EXPECT_EQ(s.days, -5);
    EXPECT_EQ(daysOnly(jan10, march15), -430);

    // Borrowed days come from the earlier date's month (January: 31 - 31 + 1).
    s = allPlaces(WQDate(2024, 3, 1), WQDate(2024, 1, 31));
    EXPECT_EQ(s.years, 0);
    EXPECT_EQ(s.months, 1);
    EXPECT_EQ(s.days, 1);

    // Years and days: the borrowed month goes back in as whole months.
    qint64 years = 99, days = 99;
    WQDate(2024, 3, 1).yearsMonthsDaysSinceDate(&years, nullptr, &days, WQDate(2024, 1, 31));
    EXPECT_EQ(years, 0);
    EXPECT_EQ(days, 61);
    EXPECT_EQ(daysOnly(WQDate(2024, 3, 1), WQDate(2024, 1, 31)), 30);
    // ...and across a year end, from the months of the year after the earlier date.
    WQDate(2024, 3, 15).yearsMonthsDaysSinceDate(&years, nullptr, &days, WQDate(2022, 11, 10));
    EXPECT_EQ(years, 1);
    EXPECT_EQ(days, 5 + 30 + 31 + 31 + 28);

    qint64 months = 99;
    WQDate(2025, 2, 15).yearsMonthsDaysSinceDate(nullptr, &months, nullptr, WQDate(2023, 11, 10));
    EXPECT_EQ(months, 15);
    WQDate(2023, 11, 10).yearsMonthsDaysSinceDate(nullptr, &months, nullptr, WQDate(2025, 2, 15));
    EXPECT_EQ(months, -15);

    // Same month, day earlier: a whole year less and eleven months.
    s = allPlaces(WQDate(2025, 3, 5), WQDate(2024, 3, 20));
    EXPECT_EQ(s.years, 0);
    EXPECT_EQ(s.months, 11);
    EXPECT_EQ(s.days, 5 + 31 - 20);

    s = allPlaces(WQDate(2024, 3, 5), WQDate(2024, 3, 5));
    EXPECT_EQ(s.years, 0);
    EXPECT_EQ(s.months, 0);
    EXPECT_EQ(s.days, 0);
    EXPECT_EQ(daysOnly(WQDate(2024, 3, 5), WQDate(2024, 3, 5)), 0);
    WQDate(2024, 3, 5).yearsMonthsDaysSinceDate(nullptr, nullptr, nullptr, WQDate(2020, 1, 1));   // nothing to fill

    const auto difference = WQDate(2024, 3, 15).yearsMonthsDaysSinceDate(jan10, true, false, false);
    EXPECT_EQ(difference.years, 1);
    EXPECT_FALSE(difference.months);
    EXPECT_FALSE(difference.days);
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
        ASSERT_EQ(daysOnly(second, first), b - a) << qPrintable(second.debugDescription()) << " since "
                                                  << qPrintable(first.debugDescription());
    }
    // Across year 0 and far years, without overflow.
    EXPECT_EQ(daysOnly(WQDate(1, 1, 1), WQDate(0, 1, 1)), 366);
    EXPECT_EQ(daysOnly(WQDate(400'000'001, 1, 1), WQDate(1, 1, 1)), 146097LL * 1'000'000);
    EXPECT_THROW(daysOnly(WQDate(std::numeric_limits<qint64>::max(), 1, 1), WQDate(std::numeric_limits<qint64>::min(), 1, 1)),
                 wq::NSRangeException);
}
