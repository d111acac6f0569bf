#pragma once
// Lets GoogleTest show dates as text in failure messages.

#include <WQGeneral/dates/WQDate.h>

#include <ostream>

namespace wq {

inline void PrintTo(const WQDate& date, std::ostream* os)
{
    *os << date.debugDescription().toStdString();
}

} // namespace wq
