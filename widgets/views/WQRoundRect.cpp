#include <WQGeneral/views/WQRoundRect.h>

#include <WQGeneral/geometry/WQGeometry.h>

#include <QPainter>

#include <cmath>

namespace wq {

namespace {

QRectF arcBox(const WQPoint& centre, double radius)
{
    return QRectF(centre.x - radius, centre.y - radius, 2 * radius, 2 * radius);
}

// Qt measures angles with y growing downwards; the outline is worked out
// with y growing upwards, so each angle changes sign.
void arcAround(QPainterPath& path, const WQPoint& centre, double radius, double from, double to)
{
    path.arcTo(arcBox(centre, radius), -from, -(to - from));
}

// The plain rectangle path: addRect() leaves a zero-size rectangle out
// altogether (the path stays empty, its bounds at the origin), so that one is
// laid out as addRect() lays out any other and then moved onto its corners.
void addPlainRect(QPainterPath& path, const QRectF& rect)
{
    if (!rect.isNull()) {
        path.addRect(rect);
        return;
    }
    const int first = path.elementCount();
    path.addRect(QRectF(rect.topLeft(), QSizeF(1, 1)));
    for (int i = first; i < path.elementCount(); ++i)
        path.setElementPositionAt(i, rect.x(), rect.y());
}

} // namespace

double roundRectRadius(const QRectF& rect, double radius)
{
    if (std::isnan(radius))
        return 0;
    if (radius >= rect.height() / 2)
        radius = std::trunc(rect.height() / 2) - 1;
    if (radius >= rect.width() / 2)
        radius = std::trunc(rect.width() / 2) - 1;
    return radius;
}

QPainterPath bezierPathWithRoundRectInRect(const QRectF& rect, double radius)
{
    QPainterPath path;
    const double r = roundRectRadius(rect, radius);
    if (!(r > 0)) {
        addPlainRect(path, rect);
        return path;
    }
    const WQRect outer{rect.x(), rect.y(), rect.width(), rect.height()};
    const WQRect inner = WQInsetRect(outer, r, r);

    path.moveTo(outer.x, outer.y + r);
    arcAround(path, RZBottomLeftOfRect(inner), r, 180, 270);
    path.lineTo(path.currentPosition() + QPointF(inner.width, 0));
    arcAround(path, RZBottomRightOfRect(inner), r, 270, 360);
    path.lineTo(path.currentPosition() + QPointF(0, inner.height));
    arcAround(path, RZTopRightOfRect(inner), r, 0, 90);
    path.lineTo(path.currentPosition() + QPointF(-inner.width, 0));
    arcAround(path, RZTopLeftOfRect(inner), r, 90, 180);
    path.closeSubpath();
    return path;
}

void fillRoundRectInRect(QPainter& painter, const QRectF& rect, double radius)
{
    painter.fillPath(bezierPathWithRoundRectInRect(rect, radius), painter.brush());
}

void strokeRoundRectInRect(QPainter& painter, const QRectF& rect, double radius)
{
    painter.strokePath(bezierPathWithRoundRectInRect(rect, radius), painter.pen());
}

} // namespace wq
