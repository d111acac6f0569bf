#include <WQGeneral/dates/WQDate.h>

#include "DatePrinting.h"

#include "ReferenceCalendar.h"

#include <gtest/gtest.h>

#include <QtGlobal>

#include <ctime>
#include <limits>

namespace ref = wq::test::reference;
using wq::WQDate;

namespace {

::testing::AssertionResult isDate(const WQDate& date, qint64 y, quint64 m, quint64 d)
{
    if (date.yearOfCommonEra() == y && date.monthOfYear() == m && date.dayOfMonth() == d)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "got " << qPrintable(date.debugDescription()) << ", expected " << y << "-"
                                         << m << "-" << d;
}

// Collects qWarning lines for one scope.
class LogCapture {
public:
    LogCapture() { previous = qInstallMessageHandler(&LogCapture::handler); lines().clear(); }
    ~LogCapture() { qInstallMessageHandler(previous); }
    static QStringList& lines()
    {
        static QStringList captured;
        return captured;
    }

private:
    static void handler(QtMsgType, const QMessageLogContext&, const QString& message) { lines().append(message); }
    QtMessageHandler previous = nullptr;
};

constexpr qint64 kMaxYear = std::numeric_limits<qint64>::max();

} // namespace

TEST(DateValue, MonthLengths)
{
    EXPECT_EQ(WQDate::daysInMonth(2, 2000), 29);
    EXPECT_EQ(WQDate::daysInMonth(2, 1900), 28);
    EXPECT_EQ(WQDate::daysInMonth(2, 2024), 29);
    EXPECT_EQ(WQDate::daysInMonth(2, 2023), 28);
    EXPECT_EQ(WQDate::daysInMonth(0, 2023), 0);
    EXPECT_EQ(WQDate::daysInMonth(13, 2023), 0);
    EXPECT_EQ(WQDate::daysInMonth(255, 2023), 0);
    // Truncating remainders keep the rule for year 0 and before.
    EXPECT_EQ(WQDate::daysInMonth(2, 0), 29);
    EXPECT_EQ(WQDate::daysInMonth(2, -4), 29);
    EXPECT_EQ(WQDate::daysInMonth(2, -400), 29);
    EXPECT_EQ(WQDate::daysInMonth(2, -100), 28);
    EXPECT_EQ(WQDate::daysInMonth(12, 2023), 31);
}

TEST(DateValue, ConstructionNormalisesForward)
{
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 14, 1), 2024, 2, 1));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 1, 32), 2023, 2, 1));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 2, 400), 2024, 3, 6));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 0, 5), 2023, 1, 5));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 3, 0), 2023, 3, 0));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 0, 0), 2023, 0, 0));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 24, 0), 2024, 12, 0));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(2023, 25, 1), 2025, 1, 1));
    EXPECT_TRUE(isDate(WQDate::dateWithYear(-1, 2, 30), -1, 3, 2));
    EXPECT_TRUE(isDate(WQDate(), 0, 0, 0));

    // The fast carry agrees with the month-by-month walk.
    for (qint64 y : {qint64(-401), qint64(-1), qint64(0), qint64(1), qint64(1899), qint64(2000), qint64(2023)})
        for (quint64 m = 0; m <= 30; m += 3)
            for (quint64 d = 0; d <= 1600; d += 7) {
                const ref::Ymd expected = ref::normalise(y, m, d);
                ASSERT_TRUE(isDate(WQDate(y, m, d), expected.year, quint64(expected.month), quint64(expected.day)));
            }
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
    EXPECT_TRUE(isDate(WQDate(2023, 3, 146097ull * 1000 + 5), 402023, 3, 5));
    const WQDate fromHugeDay(0, 1, huge);
    EXPECT_GT(fromHugeDay.yearOfCommonEra(), qint64(50'000'000'000'000'000));
    EXPECT_THROW((void)fromHugeDay.dayOfCommonEra(), wq::NSRangeException);

    // Past the last representable year: raised, not wrapped.
    EXPECT_THROW(WQDate(kMaxYear, 13, 1), wq::NSRangeException);
    EXPECT_THROW(WQDate(kMaxYear, 12, 32), wq::NSRangeException);
    EXPECT_NO_THROW(WQDate(kMaxYear, 12, 31));
    try {
        (void)WQDate(kMaxYear, 1, 1).dayOfCommonEra();
        ADD_FAILURE() << "a day count past 64 bits must raise";
    } catch (const wq::NSRangeException& e) {
        EXPECT_EQ(QString::fromUtf8(e.what()),
                  QStringLiteral("WQDate -dayOfCommonEra: year %1 has too many days to count").arg(kMaxYear));
    }
    // Far years still have weekdays and days of the year.
    EXPECT_EQ(WQDate(kMaxYear, 12, 31).dayOfYear(), WQDate(kMaxYear % 400 + 400, 12, 31).dayOfYear());
    EXPECT_EQ(WQDate(kMaxYear, 6, 1).dayOfWeek(), WQDate(kMaxYear % 400 + 400, 6, 1).dayOfWeek());
    EXPECT_EQ(WQDate(std::numeric_limits<qint64>::min(), 6, 1).dayOfWeek(),
              WQDate(std::numeric_limits<qint64>::min() % 400 + 400, 6, 1).dayOfWeek());
}

TEST(DateValue, DayOfCommonEraBothWays)
{
    EXPECT_EQ(WQDate(1, 1, 1).dayOfCommonEra(), 1);
    EXPECT_EQ(WQDate(1, 12, 31).dayOfCommonEra(), 365);
    EXPECT_EQ(WQDate(2, 1, 1).dayOfCommonEra(), 366);
    EXPECT_TRUE(isDate(*WQDate::dateWithDayOfCommonEra(1), 1, 1, 1));
    EXPECT_TRUE(isDate(*WQDate::dateWithDayOfCommonEra(366), 2, 1, 1));
    EXPECT_TRUE(isDate(*WQDate::dateWithDayOfCommonEra(738886), 2024, 1, 1));

    // The largest day number has a date, and it counts back to itself.
    const auto last = WQDate::dateWithDayOfCommonEra(std::numeric_limits<qint64>::max());
    ASSERT_TRUE(last);
    EXPECT_EQ(last->dayOfCommonEra(), std::numeric_limits<qint64>::max());

    LogCapture log;
    EXPECT_FALSE(WQDate::dateWithDayOfCommonEra(0));
    EXPECT_FALSE(WQDate::dateWithDayOfCommonEra(-5));
    EXPECT_FALSE(WQDate::dateWithDayOfCommonEra(std::numeric_limits<qint64>::min()));
    ASSERT_EQ(LogCapture::lines().size(), 3);
    EXPECT_EQ(LogCapture::lines().front(), QStringLiteral("WQDate +dateWithDayOfCommonEra: does not currently support B.C. dates"));
}

TEST(DateValue, WeekdayAndDayOfYear)
{
    EXPECT_EQ(WQDate(2024, 1, 1).dayOfWeek(), 1);
    EXPECT_EQ(WQDate(2000, 2, 29).dayOfWeek(), 2);
    EXPECT_EQ(WQDate(1900, 1, 1).dayOfWeek(), 1);
    EXPECT_EQ(WQDate(2023, 12, 25).dayOfWeek(), 1);
    EXPECT_EQ(WQDate(2024, 12, 31).dayOfYear(), 366);
    EXPECT_EQ(WQDate(2023, 12, 31).dayOfYear(), 365);
    // 2024-00-00 counts as January 0, the Sunday 2023-12-31.
    EXPECT_EQ(WQDate(2024, 0, 0).dayOfWeek(), 0);
    EXPECT_EQ(WQDate(2024, 0, 0).dayOfYear(), 0);
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
    const WQDate a(2023, 12, 31), b(2024, 1, 1), c(2024, 2, 1), d(2024, 1, 31);
    EXPECT_EQ(a.compare(b), -1);
    EXPECT_EQ(c.compare(d), 1);
    EXPECT_EQ(b.compare(WQDate(2024, 1, 1)), 0);
    EXPECT_EQ(b.compare(QVariant::fromValue(a)), 1);
    EXPECT_EQ(WQDate(-5, 1, 1).compare(WQDate(3, 1, 1)), -1);    // years compare signed
    EXPECT_TRUE(a < b && b > a && b == WQDate(2024, 1, 1));

    try {
        (void)a.compare(QVariant(QStringLiteral("2023-12-31")));
        ADD_FAILURE() << "comparing with a string must raise";
    } catch (const wq::NSBadComparisonException& e) {
        EXPECT_STREQ(e.what(), "WQDate object cannot -compare: with object of class QString");
        EXPECT_STREQ(e.name(), "NSBadComparisonException");
    }
    EXPECT_THROW((void)a.compare(QVariant()), wq::NSBadComparisonException);

    EXPECT_TRUE(a.isEqual(QVariant::fromValue(WQDate(2023, 12, 31))));
    EXPECT_FALSE(a.isEqual(QVariant::fromValue(b)));
    EXPECT_FALSE(a.isEqual(QVariant(QStringLiteral("2023-12-31"))));
    EXPECT_FALSE(a.isEqual(QVariant()));
    EXPECT_TRUE(a.isEqualToDate(QVariant::fromValue(WQDate(2023, 12, 31))));
    try {
        (void)a.isEqualToDate(QVariant(42));
        ADD_FAILURE() << "isEqualToDate with a number must raise";
    } catch (const wq::NSBadComparisonException& e) {
        EXPECT_STREQ(e.what(), "WQDate object cannot -isEqualToDate: with object of class int");
    }

    EXPECT_TRUE(b.isSameYearAs(c));
    EXPECT_FALSE(a.isSameYearAs(b));
    EXPECT_TRUE(b.isSameMonthAs(d));
    EXPECT_FALSE(b.isSameMonthAs(WQDate(2023, 1, 1)));
    EXPECT_TRUE(b.isSameDayAs(WQDate(2024, 1, 1)));
    EXPECT_FALSE(b.isSameDayAs(d));
    EXPECT_TRUE(a.comesBefore(b));
    EXPECT_FALSE(b.comesBefore(a));
    EXPECT_TRUE(c.comesAfter(d));
    EXPECT_FALSE(b.comesBefore(b));
    EXPECT_FALSE(b.comesAfter(b));

    // Copies are field-for-field equal, and dates travel in a QVariant.
    const WQDate copy = c;
    EXPECT_TRUE(copy.isEqual(c));
    const QVariant boxed = QVariant::fromValue(c);
    EXPECT_EQ(boxed.value<WQDate>(), c);
}
