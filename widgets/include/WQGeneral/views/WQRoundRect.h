#pragma once
/// \file
/// Rounded rectangles as painter paths, with fill and stroke shortcuts.

#include <WQGeneral/WQWidgetsExport.h>

#include <QPainterPath>
#include <QRectF>

class QPainter;

namespace wq {

/// \addtogroup views
/// @{

/// The radius a rounded rectangle of `rect` really gets. A radius of half the
/// height or more becomes the whole half-height less 1; then the same against
/// the width (height first, and the 1 taken off on purpose, so a 10-high
/// rectangle asked for 8 gets 4). Zero or less means square corners. A radius
/// that is not a number means square corners too.
WQ_WIDGETS_EXPORT double roundRectRadius(const QRectF& rect, double radius);

/// The outline of rect with its corners rounded by roundRectRadius: a plain
/// rectangle when that is 0 or less. The path starts on the side at x, a
/// radius in from y, and turns through the corners at (x, y), (x + w, y),
/// (x + w, y + h) and (x, y + h) in that order, each arc going the way of
/// increasing angle with y taken as growing upwards. In a widget's own
/// coordinates (y down) the shape is the same, only traversed the other way.
WQ_WIDGETS_EXPORT QPainterPath bezierPathWithRoundRectInRect(const QRectF& rect, double radius);

/// Fill with the painter's brush, or stroke with its pen, the path above.
WQ_WIDGETS_EXPORT void fillRoundRectInRect(QPainter& painter, const QRectF& rect, double radius);
/// Strokes the rounded-rectangle path with the painter's pen.
WQ_WIDGETS_EXPORT void strokeRoundRectInRect(QPainter& painter, const QRectF& rect, double radius);

/// @}

} // namespace wq
