// Bridges to QDateTime and QDate, and WQDate's place in Qt's type system. A
// date is a day in the system time zone: moments convert by their local
// calendar date, and a date converts to the first moment of that day, so a
// round trip keeps the date in every time zone.

#include <WQGeneral/dates/WQDate.h>

#include "WQDayCount.h"

#include <QDate>

#include <limits>

namespace wq {

using namespace _wq_days;

namespace {

// QDate has no year 0: its year -1 is the year before 1, our year 0.
constexpr qint64 kJulianDayOfDayZero = 1721425;     // 0000-12-31

// Beyond this many years from year 1 a day number no longer fits the
// arithmetic; QDate's own range ends long before anyway.
constexpr qint64 kConvertibleYears = std::numeric_limits<qint64>::max() / kDaysPerCycle * kYearsPerCycle / 2;

// QVariant's converters. The no-date value (and any date with a month or day
// of 0) has no QDate and no text: the conversion fails, so a view shows an
// empty cell rather than 0000-00-00.
bool isWholeDate(const WQDate& date) noexcept { return date.monthOfYear() != 0 && date.dayOfMonth() != 0; }

template <typename From, typename To>
void registerConverter(bool (*convert)(const From&, To&))
{
    QMetaType::registerConverterFunction(
        [convert](const void* from, void* to) {
            return convert(*static_cast<const From*>(from), *static_cast<To*>(to));
        },
        QMetaType::fromType<From>(), QMetaType::fromType<To>());
}

template <typename From, typename To>
void unregisterConverter()
{
    QMetaType::unregisterConverterFunction(QMetaType::fromType<From>(), QMetaType::fromType<To>());
}

// Registered as the library starts, so that an application need not call
// anything; gone again before Qt's registry is.
struct QtTypeSystemRegistration {
    QtTypeSystemRegistration()
    {
        qRegisterMetaType<WQDate>();
        registerConverter<WQDate, QDate>(+[](const WQDate& date, QDate& out) {
            out = date.toQDate();
            return out.isValid();
        });
        registerConverter<QDate, WQDate>(+[](const QDate& date, WQDate& out) {
            out = WQDate::fromQDate(date);
            return date.isValid();
        });
        registerConverter<WQDate, QString>(+[](const WQDate& date, QString& out) {
            if (!isWholeDate(date))
                return false;
            out = date.optimizedStringXMLFormat();
            return true;
        });
        registerConverter<QString, WQDate>(+[](const QString& text, WQDate& out) {
            const std::optional<WQDate> date = WQDate::optimizedDateWithStringXMLFormat(text);
            if (!date || !isWholeDate(*date))
                return false;
            out = *date;
            return true;
        });
    }
    ~QtTypeSystemRegistration()
    {
        unregisterConverter<WQDate, QDate>();
        unregisterConverter<QDate, WQDate>();
        unregisterConverter<WQDate, QString>();
        unregisterConverter<QString, WQDate>();
    }
};

const QtTypeSystemRegistration registration;

} // namespace

namespace _wq_metatype {
const bool kWQDateConvertersRegistered = true;
} // namespace _wq_metatype

WQDate WQDate::dateWithNSDate(const QDateTime& moment)
{
    if (!moment.isValid())
        throw NSInternalInconsistencyException(QStringLiteral("WQDate -dateWithNSDate: got nil for the NSCalendarDate!"));
    return fromQDate(moment.toLocalTime().date());
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

QDate WQDate::toQDate() const
{
    if (!isWholeDate(*this))
        return QDate();
    const qint64 year = _wq_year < 1 ? _wq_year - 1 : _wq_year;
    if (year < std::numeric_limits<int>::min() || year > std::numeric_limits<int>::max())
        return QDate();
    return QDate(int(year), _wq_month, _wq_day);
}

WQDate WQDate::fromQDate(const QDate& date)
{
    if (!date.isValid())
        return WQDate();
    const qint64 year = date.year() < 0 ? qint64(date.year()) + 1 : qint64(date.year());
    return WQDate(year, quint64(date.month()), quint64(date.day()));
}

} // namespace wq
