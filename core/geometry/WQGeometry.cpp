#include <WQGeneral/geometry/WQGeometry.h>

namespace wq {

WQPoint RZTopLeftOfRect(const WQRect& rect)
{
    return {rect.x, rect.y + rect.height};
}

WQPoint RZTopRightOfRect(const WQRect& rect)
{
    return {rect.x + rect.width, rect.y + rect.height};
}

WQPoint RZBottomLeftOfRect(const WQRect& rect)
{
    return {rect.x, rect.y};
}

WQPoint RZBottomRightOfRect(const WQRect& rect)
{
    return {rect.x + rect.width, rect.y};
}

WQRect WQInsetRect(const WQRect& rect, double dx, double dy)
{
    return {rect.x + dx, rect.y + dy, rect.width - 2 * dx, rect.height - 2 * dy};
}

} // namespace wq
