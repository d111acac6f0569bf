#pragma once
/// \file
/// Points and rectangles of doubles in coordinates whose y axis grows
/// upwards, as drawing code written for such a system expects: a rectangle's
/// origin is its bottom-left corner. QRectF is not used for this because its
/// top() is its origin, the opposite corner.

#include <WQGeneral/WQCoreExport.h>

namespace wq {

/// \addtogroup geometry
/// @{

/// A point with y growing upwards.
struct WQ_CORE_EXPORT WQPoint {
    /// Horizontal position.
    double x = 0;
    /// Vertical position, growing upwards.
    double y = 0;
    friend constexpr bool operator==(const WQPoint&, const WQPoint&) = default;
};

/// A rectangle whose origin is its bottom-left corner, y growing upwards.
struct WQ_CORE_EXPORT WQRect {
    /// Left edge.
    double x = 0;
    /// Bottom edge.
    double y = 0;
    /// Width; may be negative.
    double width = 0;
    /// Height; may be negative.
    double height = 0;
    friend constexpr bool operator==(const WQRect&, const WQRect&) = default;
};

/// The corners of a rectangle, y growing upwards: the top is y + height.
WQ_CORE_EXPORT WQPoint RZTopLeftOfRect(const WQRect& rect);
/// The top-right corner (x + width, y + height).
WQ_CORE_EXPORT WQPoint RZTopRightOfRect(const WQRect& rect);
/// The bottom-left corner: the origin.
WQ_CORE_EXPORT WQPoint RZBottomLeftOfRect(const WQRect& rect);
/// The bottom-right corner (x + width, y).
WQ_CORE_EXPORT WQPoint RZBottomRightOfRect(const WQRect& rect);

/// The rectangle shrunk by dx on the left and right and dy at the bottom and
/// top (grown for negative insets); the size may come out negative.
WQ_CORE_EXPORT WQRect WQInsetRect(const WQRect& rect, double dx, double dy);

/// @}

} // namespace wq
