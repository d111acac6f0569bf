#include "DateTesting.h"
#include "ReferenceCalendar.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <ctime>
#include <limits>

namespace ref = wq::test::reference;
using wq::WQDate;
using ref::fields;
namespace test = wq::test;
using wq::test::messageOf;

constexpr qint64 kMaxYear = std::numeric_limits<qint64>::max();
constexpr qint64 kMinYear = std::numeric_limits<qint64>::min();

TEST(DateValue, ConstructionNormalisesForward)
{
    struct Row {
        qint64 year;
        quint64 month, day;
        ref::Ymd expected;
    };
    const Row rows[] = {
        {2023, 14, 1, {2024, 2, 1}}, {2023, 1, 32, {2023, 2, 1}}, {2023, 2, 400, {2024, 3, 6}},
        {2023, 0, 5, {2023, 1, 5}},  {2023, 3, 0, {2023, 3, 0}},  {2023, 0, 0, {2023, 0, 0}},
        {2023, 24, 0, {2024, 12, 0}}, {2023, 25, 1, {2025, 1, 1}}, {-1, 2, 30, {-1, 3, 2}},
    };
    for (const Row& r : rows)
        EXPECT_EQ(fields(WQDate::dateWithYear(r.year, r.month, r.day)), r.expected)
            << r.year << " " << r.month << " " << r.day;
    EXPECT_EQ(fields(WQDate()), (ref::Ymd{0, 0, 0}));
    for (quint8 month : {0, 13, 255})
        EXPECT_EQ(WQDate::daysInMonth(month, 2024), 0) << int(month);

    // The fast carry agrees with the month-by-month walk.
    for (qint64 y : {qint64(-401), qint64(-1), qint64(0), qint64(1), qint64(1899), qint64(2000), qint64(2023)})
        for (quint64 m = 0; m <= 30; m += 3)
            for (quint64 d = 0; d <= 1600; d += 7)
                ASSERT_EQ(fields(WQDate(y, m, d)), ref::normalise(y, m, d)) << y << " " << m << " " << d;
}

TEST(DateValue, HugeArgumentsAreFastAndNeverWrap)
{
    // A negative month or day arrives as a huge unsigned number; it is still
    // folded forward, in constant time.
    const quint64 huge = std::numeric_limits<quint64>::max();
    const WQDate fromHugeMonth(2023, huge, 1);
    EXPECT_EQ(fromHugeMonth.monthOfYear(), huge % 12 == 0 ? 12u : huge % 12);
    EXPECT_EQ(fromHugeMonth.yearOfCommonEra(), 2023 + qint64((huge - 1) / 12));
    // 146097 days are exactly 400 years.
    EXPECT_EQ(WQDate(2023, 3, 146097ull * 1000 + 5), WQDate(402023, 3, 5));
    const WQDate fromHugeDay(0, 1, huge);
    EXPECT_GT(fromHugeDay.yearOfCommonEra(), qint64(50'000'000'000'000'000));
    EXPECT_THROW((void)fromHugeDay.dayOfCommonEra(), wq::NSRangeException);

    // Past the last representable year: raised, not wrapped.
    EXPECT_THROW(WQDate(kMaxYear, 13, 1), wq::NSRangeException);
    EXPECT_THROW(WQDate(kMaxYear, 12, 32), wq::NSRangeException);
    EXPECT_NO_THROW(WQDate(kMaxYear, 12, 31));
    EXPECT_EQ(messageOf<wq::NSRangeException>([] { (void)WQDate(kMaxYear, 1, 1).dayOfCommonEra(); }),
              QStringLiteral("WQDate -dayOfCommonEra: year %1 has too many days to count").arg(kMaxYear).toStdString());
    // Far years still have weekdays and days of the year.
    EXPECT_EQ(WQDate(kMaxYear, 12, 31).dayOfYear(), WQDate(kMaxYear % 400 + 400, 12, 31).dayOfYear());
    EXPECT_EQ(WQDate(kMaxYear, 6, 1).dayOfWeek(), WQDate(kMaxYear % 400 + 400, 6, 1).dayOfWeek());
    EXPECT_EQ(WQDate(kMinYear, 6, 1).dayOfWeek(), WQDate(kMinYear % 400 + 400, 6, 1).dayOfWeek());
}

TEST(DateValue, DayNumbersAtTheEnds)
{
    // The largest day number has a date, and it counts back to itself.
    const auto last = WQDate::dateWithDayOfCommonEra(std::numeric_limits<qint64>::max());
    ASSERT_TRUE(last);
    EXPECT_EQ(last->dayOfCommonEra(), std::numeric_limits<qint64>::max());

    test::LogCapture log;
    for (qint64 n : {qint64(0), qint64(-5), kMinYear})
        EXPECT_FALSE(WQDate::dateWithDayOfCommonEra(n)) << n;
    ASSERT_EQ(log.lines().size(), 3);
    EXPECT_EQ(log.lines().front(), "WQDate +dateWithDayOfCommonEra: does not currently support B.C. dates");
}

TEST(DateValue, TodayIsTheLocalCalendarDate)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const auto today = WQDate::date();
    ASSERT_TRUE(today);
    // Allow for midnight passing between the two readings.
    const WQDate expected(local.tm_year + 1900, quint64(local.tm_mon + 1), quint64(local.tm_mday));
    EXPECT_TRUE(*today == expected || *today == expected.dateByAddingYears(0, 0, 1));
}

TEST(DateValue, ComparisonAndEquality)
{
    // Years compare signed, then months, then days.
    const std::pair<WQDate, WQDate> ordered[] = {{WQDate(2023, 12, 31), WQDate(2024, 1, 1)},
                                                 {WQDate(2024, 1, 31), WQDate(2024, 2, 1)},
                                                 {WQDate(-5, 1, 1), WQDate(3, 1, 1)}};
    for (const auto& [earlier, later] : ordered) {
        SCOPED_TRACE(testing::PrintToString(earlier));
        EXPECT_EQ(earlier.compare(later), -1);
        EXPECT_EQ(later.compare(QVariant::fromValue(earlier)), 1);
        EXPECT_EQ(later.compare(WQDate(later)), 0);
        EXPECT_TRUE(earlier < later && earlier.comesBefore(later) && later.comesAfter(earlier));
        EXPECT_FALSE(later.comesBefore(earlier) || earlier.comesAfter(later) || later.comesBefore(later));
        EXPECT_FALSE(earlier.isEqual(QVariant::fromValue(later)) || earlier.isSameDayAs(later));
        EXPECT_TRUE(later.isEqual(QVariant::fromValue(WQDate(later))));
        EXPECT_TRUE(later.isEqualToDate(QVariant::fromValue(WQDate(later))) && later.isSameDayAs(WQDate(later)));
    }
    const WQDate a(2023, 12, 31), b(2024, 1, 1), c(2024, 2, 1), d(2024, 1, 31);
    EXPECT_TRUE(b.isSameYearAs(c) && b.isSameMonthAs(d));
    EXPECT_FALSE(a.isSameYearAs(b) || b.isSameMonthAs(WQDate(2023, 1, 1)));
    EXPECT_FALSE(a.isEqual(QVariant(QStringLiteral("2023-12-31"))) || a.isEqual(QVariant()));

    EXPECT_EQ(messageOf<wq::NSBadComparisonException>([&] { (void)a.compare(QVariant(QStringLiteral("x"))); }),
              "WQDate object cannot -compare: with object of class QString");
    EXPECT_EQ(messageOf<wq::NSBadComparisonException>([&] { (void)a.isEqualToDate(QVariant(42)); }),
              "WQDate object cannot -isEqualToDate: with object of class int");
    try {
        (void)a.compare(QVariant());
        ADD_FAILURE() << "comparing with nothing must raise";
    } catch (const wq::NSBadComparisonException& e) {
        EXPECT_STREQ(e.name(), "NSBadComparisonException");
    }
}
