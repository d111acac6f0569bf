#pragma once
/// \file
/// Small shared value types. Text positions count UTF-16 units, as QString does.

#include <WQGeneral/WQCoreExport.h>

#include <QtGlobal>

#include <limits>

namespace wq {

/// \addtogroup platform
/// @{

/// "Not found", as answered by searches: the largest signed 64-bit value.
inline constexpr qsizetype WQNotFound = std::numeric_limits<qint64>::max();

/// A selection or a run of text: a location and a length in UTF-16 units.
struct WQ_CORE_EXPORT WQRange {
    /// Position of the first unit.
    qsizetype location = 0;
    /// Number of units; 0 for a caret.
    qsizetype length = 0;

    /// The position just past the range.
    constexpr qsizetype end() const { return location + length; }
    friend constexpr bool operator==(const WQRange&, const WQRange&) = default;
};

/// @}

} // namespace wq
