// The line edit's value as Qt's machinery sees it: the user property that
// item delegates and QDataWidgetMapper use, the value as a number or a date,
// and the range of date fields.
#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/numbers/WQNumberFormatter.h>

#include "WQLineEdit_p.h"

#include <limits>
#include <optional>

namespace wq {
namespace {

// Dates cross between WQDate and QDate only here. QDate has no year 0: the
// year before 1 is -1, where WQDate counts 0.
QDate toQDate(const WQDate& date)
{
    const qint64 year = date.yearOfCommonEra() <= 0 ? date.yearOfCommonEra() - 1 : date.yearOfCommonEra();
    if (date.monthOfYear() == 0 || date.dayOfMonth() == 0 || year < std::numeric_limits<int>::min()
        || year > std::numeric_limits<int>::max())
        return QDate();
    return QDate(int(year), int(date.monthOfYear()), int(date.dayOfMonth()));
}

std::optional<WQDate> toWQDate(QDate date)
{
    if (!date.isValid())
        return std::nullopt;
    return WQDate(date.year() < 0 ? date.year() + 1 : date.year(), quint64(date.month()), quint64(date.day()));
}

std::optional<double> numberIn(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
        return value.toDouble();
    default:
        return std::nullopt;
    }
}

std::optional<WQDate> dateIn(const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<WQDate>())
        return value.value<WQDate>();
    return std::nullopt;
}

} // namespace

void WQLineEditPrivate::emitTypedValue(const QVariant& value)
{
    Q_Q(WQLineEdit);
    // A number or date field also tells when its value goes (emptied, say).
    const std::shared_ptr<WQFormatter>& formatter = session.formatter();
    const std::optional<double> number = numberIn(value);
    if (number || std::dynamic_pointer_cast<WQNumberFormatter>(formatter))
        emit q->valueChanged(number.value_or(0.0));
    const std::optional<WQDate> date = dateIn(value);
    if (date || std::dynamic_pointer_cast<WQDateFormatter>(formatter))
        emit q->dateChanged(date ? toQDate(*date) : QDate());
}

double WQLineEdit::value() const
{
    return numberIn(currentObjectValue()).value_or(0.0);
}

void WQLineEdit::setValue(double value)
{
    setObjectValue(value);
}

QDate WQLineEdit::date() const
{
    const std::optional<WQDate> date = dateIn(currentObjectValue());
    return date ? toQDate(*date) : QDate();
}

void WQLineEdit::setDate(QDate date)
{
    const std::optional<WQDate> value = toWQDate(date);
    setObjectValue(value ? QVariant::fromValue(*value) : QVariant());
}

QDate WQLineEdit::minimumDate() const
{
    Q_D(const WQLineEdit);
    if (const auto dates = std::dynamic_pointer_cast<WQDateFormatter>(formatter()))
        return dates->minimumDate() ? toQDate(*dates->minimumDate()) : QDate();
    return d->minimumDate;
}

QDate WQLineEdit::maximumDate() const
{
    Q_D(const WQLineEdit);
    if (const auto dates = std::dynamic_pointer_cast<WQDateFormatter>(formatter()))
        return dates->maximumDate() ? toQDate(*dates->maximumDate()) : QDate();
    return d->maximumDate;
}

void WQLineEdit::setMinimumDate(QDate minimum)
{
    setDateRange(minimum, maximumDate());
}

void WQLineEdit::setMaximumDate(QDate maximum)
{
    const QDate minimum = minimumDate();
    setDateRange(maximum.isValid() && minimum.isValid() && maximum < minimum ? maximum : minimum, maximum);
}

void WQLineEdit::setDateRange(QDate minimum, QDate maximum)
{
    Q_D(WQLineEdit);
    const QDate minimumBefore = minimumDate();
    const QDate maximumBefore = maximumDate();
    d->hasDateRange = true;
    d->minimumDate = minimum;
    d->maximumDate = minimum.isValid() && maximum.isValid() && maximum < minimum ? minimum : maximum;
    d->applyDateRange(formatter());
    if (minimumDate() != minimumBefore || maximumDate() != maximumBefore)
        emit dateRangeChanged(minimumDate(), maximumDate());
}

void WQLineEditPrivate::applyDateRange(const std::shared_ptr<WQFormatter>& formatter) const
{
    // A formatter the application set keeps its own range until the field is given one.
    if (!hasDateRange)
        return;
    if (const auto dates = std::dynamic_pointer_cast<WQDateFormatter>(formatter))
        dates->setDateRange(toWQDate(minimumDate), toWQDate(maximumDate));
}

} // namespace wq
