#pragma once
/// \file
/// Drawing a label into a rectangle: the font shrinks a point at a time until
/// the label fits (not below a minimum), and an optional filler string is
/// repeated behind it while there is room, for dotted leaders and the like.

#include <WQGeneral/WQWidgetsExport.h>

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <QString>

class QPainter;
class QPaintDevice;

namespace wq {

/// \addtogroup drawing
/// @{

/// How a string is drawn.
struct WQ_WIDGETS_EXPORT WQTextAttributes {
    /// The font to start from.
    QFont font;
    /// The text colour.
    QColor foregroundColor = Qt::black;
    /// Where the text sits in the rectangle.
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
};

/// What was (or would be) drawn.
struct WQ_WIDGETS_EXPORT WQFittedText {
    QString text;   ///< the receiver and any fillers
    QFont font;     ///< the font after shrinking
    QSizeF size;    ///< the size of text in that font
};

/// The size the text takes in the attributes' font: the advance of its widest
/// line, and its lines' height. Measured for device (the screen when null).
WQ_WIDGETS_EXPORT QSizeF sizeWithAttributes(const QString& receiver, const WQTextAttributes& attributes,
                                            const QPaintDevice* device = nullptr);

/// Chooses font size and fillers as drawInRect does, without drawing.
/// A minimum below 2 points counts as 2; an empty filler counts as none.
WQ_WIDGETS_EXPORT WQFittedText fitInRect(const QString& receiver, const QRectF& rect, const WQTextAttributes& attributes,
                                         qreal minFontSize, const QString& fillString = QString(), const QPaintDevice* device = nullptr);

/// Fits and draws the text into rect (clipped to it); answers what it drew.
WQ_WIDGETS_EXPORT WQFittedText drawInRect(const QString& receiver, QPainter& painter, const QRectF& rect,
                                          const WQTextAttributes& attributes, qreal minFontSize, const QString& fillString = QString());

/// @}

} // namespace wq
