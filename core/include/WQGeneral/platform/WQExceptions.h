#pragma once
/// \file
/// Misuse of the framework's API (comparing a date with a non-date, an unknown
/// format directive, a value out of range) raises one of these. what() is the
/// exact reason text; name() the exception's name as applications log it.

#include <WQGeneral/WQCoreExport.h>

#include <QString>

#include <stdexcept>

namespace wq {

/// \addtogroup platform
/// @{

/// The base of the framework's exceptions: misuse of its API.
class WQ_CORE_EXPORT WQException : public std::runtime_error {
public:
    /// name is the exception's name (a string literal); reason the text of what().
    WQException(const char* name, const QString& reason)
        : std::runtime_error(reason.toStdString()), _wq_name(name) {}

    /// The exception's name, e.g. "NSInvalidArgumentException".
    const char* name() const noexcept { return _wq_name; }
    /// The reason as text.
    QString reason() const { return QString::fromUtf8(what()); }

private:
    const char* _wq_name;
};

/// \cond
#define WQ_DECLARE_EXCEPTION(Name)                                              \
    class WQ_CORE_EXPORT Name : public WQException {                            \
    public:                                                                     \
        explicit Name(const QString& reason) : WQException(#Name, reason) {}    \
    };
/// \endcond

/// An argument the operation cannot take (an unknown format directive, say).
WQ_DECLARE_EXCEPTION(NSInvalidArgumentException)
/// A comparison with a value of another kind (a date with a non-date).
WQ_DECLARE_EXCEPTION(NSBadComparisonException)
/// A value or index out of range (a year past 64 bits, an index past the end).
WQ_DECLARE_EXCEPTION(NSRangeException)
/// A state the operation cannot work from (an invalid moment, a failed allocation).
WQ_DECLARE_EXCEPTION(NSInternalInconsistencyException)

#undef WQ_DECLARE_EXCEPTION

/// @}

} // namespace wq
