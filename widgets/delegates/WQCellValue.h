#pragma once
// The value a formatter delegate hands its formatter for a cell's value.

#include <WQGeneral/dates/WQDate.h>

#include <QDate>
#include <QVariant>

namespace wq::delegates {

// Formatters work with WQDate: a cell's QDate is read as one, and an invalid
// QDate or the no-date value as no value.
inline QVariant formatterValue(const QVariant& value)
{
    if (value.metaType() == QMetaType::fromType<QDate>()) {
        const QDate date = value.toDate();
        return date.isValid() ? QVariant::fromValue(WQDate::fromQDate(date)) : QVariant();
    }
    if (value.metaType() == QMetaType::fromType<WQDate>() && value.value<WQDate>() == WQDate())
        return QVariant();
    return value;
}

} // namespace wq::delegates
