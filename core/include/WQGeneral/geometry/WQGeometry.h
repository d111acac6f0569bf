#pragma once
// Points and rectangles of doubles in coordinates whose y axis grows
// upwards, as drawing code written for such a system expects: a rectangle's
// origin is its bottom-left corner. QRectF is not used for this because its
// top() is its origin, the opposite corner.

namespace wq {

struct WQPoint {
    double x = 0;
    double y = 0;
    friend constexpr bool operator==(const WQPoint&, const WQPoint&) = default;
};

struct WQRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    friend constexpr bool operator==(const WQRect&, const WQRect&) = default;
};

// The corners of a rectangle, y growing upwards: the top is y + height.
WQPoint RZTopLeftOfRect(const WQRect& rect);
WQPoint RZTopRightOfRect(const WQRect& rect);
WQPoint RZBottomLeftOfRect(const WQRect& rect);
WQPoint RZBottomRightOfRect(const WQRect& rect);

// The rectangle shrunk by dx on the left and right and dy at the bottom and
// top (grown for negative insets); the size may come out negative.
WQRect WQInsetRect(const WQRect& rect, double dx, double dy);

} // namespace wq
