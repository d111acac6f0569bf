// Calendar arithmetic works field by field, never through a day count, so a
// month added to the 31st carries the surplus days into the following month.
// Long walks (thousands of days) are replaced by the equivalent jump through
// WQDayCount, which gives the same date in constant time.

#include <WQGeneral/dates/WQDate.h>

#include "WQDayCount.h"

namespace wq {

using namespace _wq_days;

namespace {

constexpr const char* kAdding = "-dateByAddingYears:months:days:";
constexpr const char* kSince = "-years:months:days:sinceDate:";

qint64 length(qint64 month, qint64 year)
{
    return WQDate::daysInMonth(quint8(month), year);
}

// Sum of the lengths of months first ... last (inclusive) of one year.
qint64 monthsLength(qint64 first, qint64 last, qint64 year)
{
    qint64 sum = 0;
    for (qint64 m = first; m <= last; ++m)
        sum += length(m, year);
    return sum;
}

[[noreturn]] void raiseOverflow(const char* operation)
{
    throw NSRangeException(QStringLiteral("WQDate %1: the result is out of range").arg(QLatin1String(operation)));
}

qint64 add(qint64 a, qint64 b, const char* operation)
{
    qint64 r = 0;
    if (__builtin_add_overflow(a, b, &r))
        raiseOverflow(operation);
    return r;
}

qint64 sub(qint64 a, qint64 b, const char* operation)
{
    qint64 r = 0;
    if (__builtin_sub_overflow(a, b, &r))
        raiseOverflow(operation);
    return r;
}

qint64 mul(qint64 a, qint64 b, const char* operation)
{
    qint64 r = 0;
    if (__builtin_mul_overflow(a, b, &r))
        raiseOverflow(operation);
    return r;
}

// Multiples of k among the years first ... last - 1.
qint64 multiplesBetween(qint64 first, qint64 last, qint64 k)
{
    return floorDiv(last - 1, k) - floorDiv(first - 1, k);
}

// Days of the whole years first ... last - 1.
qint64 daysOfYears(qint64 first, qint64 last)
{
    const qint64 count = sub(last, first, kSince);
    const qint64 leaps = multiplesBetween(first, last, 4) - multiplesBetween(first, last, 100)
        + multiplesBetween(first, last, 400);
    return add(mul(count, 365, kSince), leaps, kSince);
}

// Plain number of days from `early` to `late` (early <= late).
qint64 daysBetween(const WQDate& early, const WQDate& late)
{
    const qint64 ey = early.yearOfCommonEra(), ly = late.yearOfCommonEra();
    const qint64 em = qint64(early.monthOfYear()), lm = qint64(late.monthOfYear());
    const qint64 ed = qint64(early.dayOfMonth()), ld = qint64(late.dayOfMonth());
    if (ey == ly && em == lm)
        return ld - ed;
    if (ey == ly)
        return (length(em, ey) - ed) + monthsLength(em + 1, lm - 1, ey) + ld;
    qint64 days = (length(em, ey) - ed) + monthsLength(em + 1, 12, ey);
    days = add(days, daysOfYears(ey + 1, ly), kSince);
    return add(days, monthsLength(1, lm - 1, ly) + ld, kSince);
}

} // namespace

WQDate WQDate::dateByAddingYears(qint64 years, qint64 months, qint64 days) const
{
    qint64 y = add(_wq_year, years, kAdding);
    qint64 m = add(qint64(_wq_month), months, kAdding);
    if (months != 0 && (m > 12 || m < 1)) {
        qint64 carry = floorDiv(m, 12);
        m = floorMod(m, 12);
        if (m == 0) {
            m = 12;
            --carry;
        }
        y = add(y, carry, kAdding);
    }
    qint64 d = add(qint64(_wq_day), days, kAdding);
    if (days < 0 && d < 1) {
        // Borrowing month lengths backwards: day d of month m is d - 1 days
        // after the 1st. Month 0 borrows from November, so it acts as the
        // December before January.
        if (m == 0) {
            y = add(y, -1, kAdding);
            m = 12;
        }
        const Civil c = shiftFromFirst(y, int(m), floorDiv(d, kDaysPerCycle), floorMod(d, kDaysPerCycle) - 1, kAdding);
        y = c.year;
        m = c.month;
        d = c.day;
    } else if (d >= 1 && d > length(m, y)) {
        const Civil c = shiftFromFirst(y, m == 0 ? 1 : int(m), floorDiv(d, kDaysPerCycle),
                                       floorMod(d, kDaysPerCycle) - 1, kAdding);
        y = c.year;
        m = c.month;
        d = c.day;
    }
    return WQDate(y, quint64(m), quint64(d));
}

void WQDate::yearsMonthsDaysSinceDate(qint64* years, qint64* months, qint64* days, const WQDate& other) const
{
    const int order = compareWithDate(other);
    if (order == 0) {
        for (qint64* place : {years, months, days})
            if (place)
                *place = 0;
        return;
    }
    const WQDate& early = order < 0 ? *this : other;
    const WQDate& late = order < 0 ? other : *this;
    const qint64 sign = order < 0 ? -1 : 1;

    if (days && !years && !months) {
        *days = sign * daysBetween(early, late);
        return;
    }

    const qint64 ey = early._wq_year, em = early._wq_month, ed = early._wq_day;
    const qint64 ly = late._wq_year, lm = late._wq_month, ld = late._wq_day;
    qint64 a = sub(ly, ey, kSince);
    qint64 b = lm - em;
    qint64 c = ld - ed;
    // Borrowed days always come from the earlier date's month.
    const qint64 borrowed = ld + (length(em, ey) - ed);
    if (b < 0) {
        a -= 1;
        b += 12;
        if (c < 0) {
            b -= 1;
            c = borrowed;
        }
    } else if (b > 0) {
        if (c < 0) {
            b -= 1;
            c = borrowed;
        }
    } else if (c < 0) {
        a -= 1;
        c = borrowed;
        b = 11;
    }

    if (years)
        *years = sign * a;
    if (months)
        *months = sign * (years ? b : add(b, mul(a, 12, kSince), kSince));
    if (days) {
        qint64 total = c;
        if (!months && b >= 1) {
            if (ey == ly)
                total += monthsLength(em, lm - 1, ey);
            else
                total += monthsLength(em, 12, ey) + monthsLength(1, lm - 1, ey + 1);
        }
        *days = sign * total;
    }
}

WQDate::Difference WQDate::yearsMonthsDaysSinceDate(const WQDate& other, bool wantYears, bool wantMonths,
                                                    bool wantDays) const
{
    qint64 y = 0, m = 0, d = 0;
    yearsMonthsDaysSinceDate(wantYears ? &y : nullptr, wantMonths ? &m : nullptr, wantDays ? &d : nullptr, other);
    Difference out;
    if (wantYears)
        out.years = y;
    if (wantMonths)
        out.months = m;
    if (wantDays)
        out.days = d;
    return out;
}

} // namespace wq
