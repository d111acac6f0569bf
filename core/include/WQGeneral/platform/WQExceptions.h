#pragma once
// Misuse of the framework's API (comparing a date with a non-date, an unknown
// format directive, a value out of range) raises one of these. what() is the
// exact reason text; name() the exception's name as applications log it.

#include <QString>

#include <stdexcept>

namespace wq {

class WQException : public std::runtime_error {
public:
    WQException(const char* name, const QString& reason)
        : std::runtime_error(reason.toStdString()), _wq_name(name) {}

    const char* name() const noexcept { return _wq_name; }
    QString reason() const { return QString::fromUtf8(what()); }

private:
    const char* _wq_name;
};

#define WQ_DECLARE_EXCEPTION(Name)                                              \
    class Name : public WQException {                                           \
    public:                                                                     \
        explicit Name(const QString& reason) : WQException(#Name, reason) {}    \
    };

WQ_DECLARE_EXCEPTION(NSInvalidArgumentException)
WQ_DECLARE_EXCEPTION(NSBadComparisonException)
WQ_DECLARE_EXCEPTION(NSRangeException)
WQ_DECLARE_EXCEPTION(NSInternalInconsistencyException)

#undef WQ_DECLARE_EXCEPTION

} // namespace wq
