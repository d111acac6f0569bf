#pragma once
// Constant-time Gregorian day arithmetic.
//
// Day numbers count from 0001-01-01 = 1 and continue below 1 for earlier
// years (0000-12-31 = 0). The calendar repeats every 400 years (146097 days,
// exactly 20871 weeks). Counted from 1 January of year 1, every grouping ends
// with its leap day: a 4-year block ends with its leap year (1461 days), a
// century with a short 4-year block (36524 days), the 400-year cycle with a
// long century (36525 days). So within a cycle the year offset is
//   (doe - doe/1460 + doe/36524 - doe/146096) / 365
// where each quotient removes one leap day per block already completed.
// Months: January and February are taken directly; from March on the month
// lengths 31,30,31,30,31 repeat every 153 days, which (5*t + 2) / 153 inverts.
//
// Arithmetic on arbitrary 64-bit years first moves the year into one cycle
// and moves the result back with checked multiplication, so no step can wrap.

#include <WQGeneral/platform/WQExceptions.h>

#include <QtGlobal>

#include <array>

namespace wq::_wq_days {

inline constexpr qint64 kDaysPerCycle = 146097;
inline constexpr qint64 kYearsPerCycle = 400;

constexpr bool isLeap(qint64 y) noexcept
{
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

// Days before the first of month m (0 and 1 both give 0).
constexpr int daysBeforeMonth(int m, bool leap) noexcept
{
    constexpr std::array<int, 13> before{0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    return before[std::size_t(m)] + (leap && m > 2 ? 1 : 0);
}

constexpr qint64 floorDiv(qint64 a, qint64 b) noexcept
{
    const qint64 q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}

constexpr qint64 floorMod(qint64 a, qint64 b) noexcept
{
    const qint64 r = a % b;
    return (r != 0 && ((r < 0) != (b < 0))) ? r + b : r;
}

struct Civil {
    qint64 year;
    int month;
    int day;
};

// Day number of a date whose year lies within a few cycles of year 1;
// month 0 counts as January, day 0 as the day before the 1st.
constexpr qint64 dayNumberNear(qint64 y, int m, int d) noexcept
{
    const qint64 y1 = y - 1;
    const qint64 era = floorDiv(y1, kYearsPerCycle);
    const qint64 yoe = y1 - era * kYearsPerCycle;
    return era * kDaysPerCycle + 365 * yoe + yoe / 4 - yoe / 100
        + daysBeforeMonth(m, isLeap(y)) + d;
}

// Inverse of dayNumberNear for day numbers of moderate size.
constexpr Civil civilNear(qint64 n) noexcept
{
    const qint64 z = n - 1;
    const qint64 era = floorDiv(z, kDaysPerCycle);
    const qint64 doe = z - era * kDaysPerCycle;
    const qint64 yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const qint64 year = era * kYearsPerCycle + yoe + 1;
    const int doy = int(doe - (365 * yoe + yoe / 4 - yoe / 100));
    const int leap = isLeap(year) ? 1 : 0;
    if (doy < 31)
        return {year, 1, doy + 1};
    if (doy < 59 + leap)
        return {year, 2, doy - 30};
    const int t = doy - 59 - leap;
    const int mp = (5 * t + 2) / 153;
    return {year, mp + 3, t - (153 * mp + 2) / 5 + 1};
}

// The same count by March-based years for the common case of years from 1
// on, in unsigned arithmetic. With the year starting on 1 March, February's
// leap day is the last day of its year, so the leap rule only ever adds a
// day at the end of a 4-year block, a century or the cycle. Day 0 of that
// count is 0000-03-01, 306 days before 0001-01-01.
//
// Present-day numbers take a 32-bit path: centuries from (4s + 3) / 146097,
// years in the century from (4t + 3) / 1461 (the same "end with the leap
// day" structure, one level down), and the month and day from a table of
// the 366 days of a March-based year. Larger numbers use the 64-bit cycle
// arithmetic above.
inline constexpr quint64 kMarchShift = 306;
// Years up to here have day numbers far inside 64 bits.
inline constexpr qint64 kFastYears = 1'000'000'000'000'000;
// Below these, 4 * (day number + shift) + 3 fits in 32 bits.
inline constexpr qint64 kSmallDays = 1'000'000'000;
inline constexpr qint64 kSmallYears = 2'000'000;

struct MonthDay {
    quint8 month;
    quint8 day;
};

constexpr std::array<MonthDay, 366> makeMarchYear()
{
    std::array<MonthDay, 366> days{};
    constexpr int lengths[12] = {31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 31, 29};   // March ... February
    std::size_t k = 0;
    for (int i = 0; i < 12; ++i)
        for (int d = 1; d <= lengths[i]; ++d)
            days[k++] = {quint8(i < 10 ? i + 3 : i - 9), quint8(d)};
    return days;
}
inline constexpr std::array<MonthDay, 366> kMarchYear = makeMarchYear();

// Days of the March-based year before the 1st of each month (index 0 unused).
inline constexpr std::array<quint16, 13> kMarchDaysBefore = {0, 306, 337, 0, 31, 61, 92, 122, 153, 184, 214, 245, 275};

// y in 1 ... kFastYears; month 0 counts as January, day 0 as the day before the 1st.
constexpr qint64 dayNumberFromYearOne(qint64 y, unsigned m, unsigned d) noexcept
{
    if (m == 0)
        m = 1;
    const quint64 marchYear = quint64(y) - (m <= 2 ? 1 : 0);
    if (y <= kSmallYears) {
        const quint32 my = quint32(marchYear);
        return qint64(quint64(my) * 365 + my / 4 - my / 100 + my / 400 + kMarchDaysBefore[m] + d) - qint64(kMarchShift);
    }
    const quint64 era = marchYear / 400;
    const quint64 yoe = marchYear - era * 400;
    const quint64 doe = yoe * 365 + yoe / 4 - yoe / 100 + kMarchDaysBefore[m] + d;
    return qint64(era * quint64(kDaysPerCycle) + doe - kMarchShift);
}

// n >= 1.
constexpr Civil civilFromDayNumber(qint64 n) noexcept
{
    quint64 years = 0;
    quint32 doy = 0;
    if (n <= kSmallDays) {
        const quint32 c4 = quint32(quint64(n) - 1 + kMarchShift) * 4 + 3;
        const quint32 century = c4 / quint32(kDaysPerCycle);
        const quint32 y4 = (c4 % quint32(kDaysPerCycle)) | 3;
        years = quint64(century) * 100 + y4 / 1461;
        doy = (y4 % 1461) / 4;
    } else {
        const quint64 shifted = quint64(n) - 1 + kMarchShift;
        const quint64 era = shifted / quint64(kDaysPerCycle);
        const quint64 doe = shifted - era * quint64(kDaysPerCycle);
        const quint64 yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
        years = era * 400 + yoe;
        doy = quint32(doe - (365 * yoe + yoe / 4 - yoe / 100));
    }
    const MonthDay md = kMarchYear[doy];
    return {qint64(years) + (md.month <= 2 ? 1 : 0), md.month, md.day};
}

// Weekday (0 = Sunday) for any year: only the year's place in its cycle matters.
constexpr int weekday(qint64 y, int m, int d) noexcept
{
    // Years 400 ... 799 stand for every year of the same place in the cycle.
    const qint64 inCycle = floorMod(y, kYearsPerCycle) + kYearsPerCycle;
    // 0001-01-01 (day 1) was a Monday.
    return int(quint64(dayNumberFromYearOne(inCycle, unsigned(m), unsigned(d))) % 7);
}

[[noreturn]] inline void raiseYearOverflow(const char* operation)
{
    throw NSRangeException(QStringLiteral("WQDate %1: the year is out of range").arg(QLatin1String(operation)));
}

inline qint64 checkedAdd(qint64 a, qint64 b, const char* operation)
{
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        raiseYearOverflow(operation);
    return sum;
}

// (y, m, 1) moved by cycles * 146097 + days days, for any 64-bit year.
// m is 1 ... 12; `days` may be any value.
inline Civil shiftFromFirst(qint64 y, int m, qint64 cycles, qint64 days, const char* operation)
{
    const qint64 era = floorDiv(y, kYearsPerCycle);
    const qint64 inCycle = floorMod(y, kYearsPerCycle);             // 0 ... 399
    cycles = checkedAdd(cycles, floorDiv(days, kDaysPerCycle), operation);
    days = floorMod(days, kDaysPerCycle);
    Civil c = civilNear(dayNumberNear(inCycle, m, 1) + days);      // year 0 ... 799
    qint64 movedCycles = 0, yearShift = 0;
    if (__builtin_add_overflow(era, cycles, &movedCycles)
        || __builtin_mul_overflow(movedCycles, kYearsPerCycle, &yearShift))
        raiseYearOverflow(operation);
    c.year = checkedAdd(c.year, yearShift, operation);
    return c;
}

} // namespace wq::_wq_days
