#pragma once
// The one error both directions of the date text give for a format they do
// not understand, so that parsing and rendering word it alike.

#include <WQGeneral/platform/WQExceptions.h>

#include <QString>

namespace wq::_wq_dates {

[[noreturn]] inline void raiseUnknownDirective(const QString& format)
{
    throw NSInvalidArgumentException(QStringLiteral("WQDate doesn't understand format: '%1'").arg(format));
}

} // namespace wq::_wq_dates
