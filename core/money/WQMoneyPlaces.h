#pragma once
// Decimal places of a legacy pattern and the integer conversions the money
// arithmetic needs, shared by display and both typing modes.

#include <QStringView>
#include <QtGlobal>

#include <cmath>
#include <limits>

namespace wq {

// More than 18 places do not fit a 64-bit count of the smallest unit.
inline constexpr quint8 kWQMaximumMoneyPlaces = 18;

// Counts the "0"s after the first "." of a pattern, the way the legacy
// patterns are read (a zero can count twice when other characters stand
// between the point and it); answers 10 to that count.
quint64 _local_decimal_place_multiplier(QStringView pattern, bool hasPattern, quint8* count = nullptr);

// Truncation toward zero that saturates instead of overflowing; NaN is 0.
inline qint64 _wq_truncToInt64(double d)
{
    if (std::isnan(d))
        return 0;
    if (d >= 9223372036854775807.0)
        return std::numeric_limits<qint64>::max();
    if (d <= -9223372036854775808.0)
        return std::numeric_limits<qint64>::min();
    return qint64(d);
}

// The same toward zero for non-negative amounts of the smallest unit.
inline quint64 _wq_truncToUInt64(double d)
{
    if (!(d > 0))
        return 0;
    if (d >= 18446744073709551615.0)
        return std::numeric_limits<quint64>::max();
    return quint64(d);
}

} // namespace wq
