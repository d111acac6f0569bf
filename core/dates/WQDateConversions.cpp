// Bridges to QDateTime. A date is a day in the system time zone: moments
// convert by their local calendar date, and a date converts to the first
// moment of that day, so a round trip keeps the date in every time zone.

#include <WQGeneral/dates/WQDate.h>

#include "WQDayCount.h"

#include <QDate>

namespace wq {

using namespace _wq_days;

namespace {

// QDate has no year 0: its year -1 is the year before 1, our year 0.
constexpr qint64 kJulianDayOfDayZero = 1721425;     // 0000-12-31

// Beyond this many years from year 1 a day number no longer fits the
// arithmetic; QDate's own range ends long before anyway.
constexpr qint64 kConvertibleYears = std::numeric_limits<qint64>::max() / kDaysPerCycle * kYearsPerCycle / 2;

} // namespace

WQDate WQDate::dateWithNSDate(const QDateTime& moment)
{
    if (!moment.isValid())
        throw NSInternalInconsistencyException(QStringLiteral("WQDate -dateWithNSDate: got nil for the NSCalendarDate!"));
    const QDate local = moment.toLocalTime().date();
    const qint64 year = local.year() < 0 ? qint64(local.year()) + 1 : qint64(local.year());
    return WQDate(year, quint64(local.month()), quint64(local.day()));
}

QDateTime WQDate::nsDate() const
{
    if (_wq_year > kConvertibleYears || _wq_year < -kConvertibleYears)
        return QDateTime();
    // Month 0 counts as January and day 0 as the day before the 1st, as in
    // the day count.
    const QDate day = QDate::fromJulianDay(dayNumberNear(_wq_year, _wq_month, _wq_day) + kJulianDayOfDayZero);
    if (!day.isValid())
        return QDateTime();
    return day.startOfDay(Qt::LocalTime);
}

} // namespace wq
