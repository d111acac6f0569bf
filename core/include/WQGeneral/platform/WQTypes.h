#pragma once
// Small shared value types. Text positions count UTF-16 units, as QString does.

#include <QtGlobal>

#include <limits>

namespace wq {

// "Not found", as answered by searches: the largest signed 64-bit value.
inline constexpr qsizetype WQNotFound = std::numeric_limits<qint64>::max();

struct WQRange {
    qsizetype location = 0;
    qsizetype length = 0;

    constexpr qsizetype end() const { return location + length; }
    friend constexpr bool operator==(const WQRange&, const WQRange&) = default;
};

} // namespace wq
