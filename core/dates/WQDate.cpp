#include <WQGeneral/dates/WQDate.h>

#include "WQDayCount.h"

#include <QtDebug>

#include <ctime>

namespace wq {

using namespace _wq_days;

namespace {

QString className(const QVariant& value)
{
    return value.isValid() ? QString::fromLatin1(value.typeName()) : QStringLiteral("(null)");
}

bool holdsDate(const QVariant& value) noexcept
{
    return value.metaType() == QMetaType::fromType<WQDate>();
}

} // namespace

WQDate::WQDate(qint64 year, quint64 month, quint64 day)
{
    static constexpr const char* kOperation = "-initWithYear:month:day:";
    if (month > 12) {
        const quint64 carry = (month - 1) / 12;
        year = checkedAdd(year, qint64(carry), kOperation);
        month -= carry * 12;
    }
    if (day > daysInMonth(quint8(month), year)) {
        // Carrying the surplus month by month lands where counting day - 1
        // days on from the 1st does; month 0 is empty and steps to January.
        const quint64 offset = day - 1;
        const Civil c = shiftFromFirst(year, month == 0 ? 1 : int(month), qint64(offset / kDaysPerCycle),
                                       qint64(offset % kDaysPerCycle), kOperation);
        year = c.year;
        month = quint64(c.month);
        day = quint64(c.day);
    }
    _wq_year = year;
    _wq_month = quint8(month);
    _wq_day = quint8(day);
}

bool WQDate::isLeapYear(qint64 year) noexcept
{
    return isLeap(year);
}

quint8 WQDate::daysInMonth(quint8 month, qint64 year) noexcept
{
    static constexpr quint8 lengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month == 0 || month > 12)
        return 0;
    return quint8(lengths[month - 1] + (month == 2 && isLeap(year) ? 1 : 0));
}

std::optional<WQDate> WQDate::date()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    tzset();
    if (now == std::time_t(-1) || !localtime_r(&now, &local))
        return std::nullopt;
    return WQDate(qint64(local.tm_year) + 1900, quint64(local.tm_mon + 1), quint64(local.tm_mday));
}

std::optional<WQDate> WQDate::dateWithDayOfCommonEra(qint64 dayNumber)
{
    if (dayNumber < 1) {
        qWarning("WQDate +dateWithDayOfCommonEra: does not currently support B.C. dates");
        return std::nullopt;
    }
    const Civil c = civilFromDayNumber(dayNumber);
    return WQDate(Raw{}, c.year, quint8(c.month), quint8(c.day));
}

quint8 WQDate::dayOfWeek() const noexcept
{
    return quint8(weekday(_wq_year, _wq_month, _wq_day));
}

quint16 WQDate::dayOfYear() const noexcept
{
    return quint16(daysBeforeMonth(_wq_month, isLeap(_wq_year)) + _wq_day);
}

qint64 WQDate::dayOfCommonEra() const
{
    // Years before 1 add nothing: only the day of the year counts.
    if (_wq_year <= 0)
        return dayOfYear();
    if (_wq_year <= kFastYears)
        return dayNumberFromYearOne(_wq_year, _wq_month, _wq_day);
    const qint64 years = _wq_year - 1;
    qint64 days = 0;
    if (__builtin_mul_overflow(years, qint64(365), &days)
        || __builtin_add_overflow(days, years / 4 - years / 100 + years / 400 + dayOfYear(), &days))
        throw NSRangeException(QStringLiteral("WQDate -dayOfCommonEra: year %1 has too many days to count")
                                   .arg(_wq_year));
    return days;
}

int WQDate::compareWithDate(const WQDate& other) const noexcept
{
    const auto order = *this <=> other;
    return std::is_lt(order) ? -1 : (std::is_gt(order) ? 1 : 0);
}

int WQDate::compare(const QVariant& other) const
{
    if (!holdsDate(other))
        throw NSBadComparisonException(QStringLiteral("%1 object cannot -compare: with object of class %2")
                                           .arg(QStringLiteral("WQDate"), className(other)));
    return compareWithDate(other.value<WQDate>());
}

bool WQDate::isEqual(const QVariant& other) const noexcept
{
    return holdsDate(other) && *this == other.value<WQDate>();
}

bool WQDate::isEqualToDate(const QVariant& other) const
{
    if (!holdsDate(other))
        throw NSBadComparisonException(QStringLiteral("%1 object cannot -isEqualToDate: with object of class %2")
                                           .arg(QStringLiteral("WQDate"), className(other)));
    return *this == other.value<WQDate>();
}

} // namespace wq
