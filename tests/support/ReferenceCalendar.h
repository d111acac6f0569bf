#pragma once
// Slow, literal calendar routines: year-by-year and month-by-month walks,
// written the plain way so the fast day arithmetic can be checked against them.

#include <WQGeneral/dates/WQDate.h>

#include <QtGlobal>

#include <array>
#include <ostream>

namespace wq::test::reference {

inline bool isLeap(qint64 y)
{
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

inline qint64 monthLength(qint64 m, qint64 y)
{
    static constexpr std::array<int, 12> lengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m < 1 || m > 12)
        return 0;
    return lengths[std::size_t(m - 1)] + (m == 2 && isLeap(y) ? 1 : 0);
}

struct Ymd {
    qint64 year;
    qint64 month;
    qint64 day;
    bool operator==(const Ymd&) const = default;
};

inline void PrintTo(const Ymd& date, std::ostream* os)
{
    *os << date.year << '-' << date.month << '-' << date.day;
}

// The fields the date stores.
inline Ymd fields(const WQDate& date)
{
    return {date.yearOfCommonEra(), qint64(date.monthOfYear()), qint64(date.dayOfMonth())};
}

// Counts no years for year 0 and below: the counter starts at 1 and only
// counts up while it is below the year.
inline qint64 dayOfCommonEra(qint64 y, qint64 m, qint64 d)
{
    qint64 total = 0;
    for (qint64 year = 1; year < y; ++year)
        total += isLeap(year) ? 366 : 365;
    for (qint64 month = 1; month < m; ++month)
        total += monthLength(month, y);
    return total + d;
}

// Month-by-month normalisation of a construction (small inputs only).
inline Ymd normalise(qint64 year, quint64 month, quint64 day)
{
    while (month > 12) {
        ++year;
        month -= 12;
    }
    for (;;) {
        const quint64 length = quint64(monthLength(qint64(quint8(month)), year));
        if (day <= length)
            break;
        day -= length;
        ++month;
        if (month > 12) {
            ++year;
            month -= 12;
        }
    }
    return {year, qint64(quint8(month)), qint64(quint8(day))};
}

// Field-by-field addition, step by step (small inputs only).
inline Ymd add(Ymd date, qint64 dy, qint64 dm, qint64 dd)
{
    qint64 y = date.year + dy, m = date.month + dm;
    if (dm > 0)
        while (m > 12) {
            ++y;
            m -= 12;
        }
    if (dm < 0)
        while (m < 1) {
            --y;
            m += 12;
        }
    qint64 d = date.day + dd;
    if (dd < 0)
        while (d < 1) {
            --m;
            if (m < 1) {
                m += 12;
                --y;
            }
            d += monthLength(m, y);
        }
    qint64 length = monthLength(m, y);
    while (d > length) {
        ++m;
        d -= length;
        if (m > 12) {
            m -= 12;
            ++y;
        }
        length = monthLength(m, y);
    }
    return normalise(y, quint64(m), quint64(d));
}

} // namespace wq::test::reference
