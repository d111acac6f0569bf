#pragma once
/// \file
/// The picture a WQDragAndDropView drags: a light grey rounded label (radius
/// 10, 70% opaque) as wide as the view less 24 and as tall as the label text
/// plus 8, the text engraved on it at 12 from the left: black, and a white
/// copy one below it showing as an edge, both 85% opaque. Nothing guards
/// against a view narrower than 24: the width comes out zero or negative and
/// the image is then empty.

#include <WQGeneral/WQWidgetsExport.h>

#include <QFont>
#include <QPixmap>
#include <QPointF>
#include <QSizeF>
#include <QTextDocumentFragment>

namespace wq {

/// \addtogroup dragging
/// @{

/// The size the text takes: (0, 0) for no text.
WQ_WIDGETS_EXPORT QSizeF WQDragLabelSize(const QTextDocumentFragment& label, const QFont& font);
/// (boundsWidth - 24, label height + 8), whatever the signs.
WQ_WIDGETS_EXPORT QSizeF WQDragImageSize(qreal boundsWidth, const QSizeF& labelSize);
/// Where the image sits in the view: 12 from the left, centred vertically.
WQ_WIDGETS_EXPORT QPointF WQDragImageOrigin(const QSizeF& bounds, const QSizeF& imageSize);
/// The offset the press handling gives a drag: the distances moved on each
/// axis less the press location, (|dx| - press.x, |dy| - press.y). It is what
/// the drag is started with; Qt places the image by the hot spot instead.
WQ_WIDGETS_EXPORT QSizeF WQDragInitialOffset(const QPointF& press, const QPointF& latest);

/// Draws the image at devicePixelRatio (the pixmap then has that many device
/// pixels per point and says so); the text's own font and styles are kept,
/// its colours replaced. Null when the size is empty.
WQ_WIDGETS_EXPORT QPixmap WQDrawDragImage(const QTextDocumentFragment& label, const QFont& font, qreal boundsWidth,
                                          qreal devicePixelRatio = 1);

/// @}

} // namespace wq
