#pragma once
// Shared by the date tests: dates as text in failure messages, and a time
// zone switched for one scope.

#include <WQGeneral/dates/WQDate.h>

#include <QByteArray>

#include <ctime>
#include <ostream>

namespace wq {

inline void PrintTo(const WQDate& date, std::ostream* os)
{
    *os << date.debugDescription().toStdString();
}

} // namespace wq

namespace wq::test {

class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) : _saved(qgetenv("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~ScopedTimeZone()
    {
        qputenv("TZ", _saved);
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    QByteArray _saved;
};

} // namespace wq::test
