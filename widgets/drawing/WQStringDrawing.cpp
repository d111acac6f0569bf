#include <WQGeneral/drawing/WQStringDrawing.h>

#include <QFontMetricsF>
#include <QPainter>

namespace wq {

namespace {

// Fonts set in pixels have no point size; their pixel size stands in.
qreal fontSize(const QFont& font)
{
    return font.pointSizeF() > 0 ? font.pointSizeF() : qreal(font.pixelSize());
}

void setFontSize(QFont& font, qreal size)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(size);
    else
        font.setPixelSize(qMax(1, qRound(size)));
}

QSizeF measure(const QString& text, const QFont& font, const QPaintDevice* device)
{
    // QFontMetricsF's device constructor wants a non-const device.
    const QFontMetricsF metrics = device ? QFontMetricsF(font, const_cast<QPaintDevice*>(device)) : QFontMetricsF(font);
    return metrics.size(0, text);
}

bool fits(const QSizeF& size, const QRectF& rect)
{
    return !(size.width() > rect.width() || size.height() > rect.height());
}

} // namespace

QSizeF sizeWithAttributes(const QString& receiver, const WQTextAttributes& attributes, const QPaintDevice* device)
{
    return measure(receiver, attributes.font, device);
}

WQFittedText fitInRect(const QString& receiver, const QRectF& rect, const WQTextAttributes& attributes,
                       qreal minFontSize, const QString& fillString, const QPaintDevice* device)
{
    WQFittedText fitted{receiver, attributes.font, measure(receiver, attributes.font, device)};

    if (!fits(fitted.size, rect)) {
        minFontSize = qMax(minFontSize, qreal(2.0));
        qreal size = fontSize(fitted.font);
        while (!fits(fitted.size, rect) && size > minFontSize) {
            size = qMax(size - 1.0, minFontSize);
            setFontSize(fitted.font, size);
            fitted.size = measure(receiver, fitted.font, device);
        }
        // Still too big at the minimum: it is drawn anyway.
    }

    // Strictly narrower, but as tall is fine: the leader may touch the bottom, not the right edge.
    if (!fillString.isEmpty()) {
        QString candidate = receiver;
        QSizeF candidateSize = fitted.size;
        while (rect.width() > candidateSize.width() && rect.height() >= candidateSize.height()) {
            fitted.text = candidate;
            fitted.size = candidateSize;
            candidate += fillString;
            candidateSize = measure(candidate, fitted.font, device);
        }
    }
    return fitted;
}

WQFittedText drawInRect(const QString& receiver, QPainter& painter, const QRectF& rect,
                        const WQTextAttributes& attributes, qreal minFontSize, const QString& fillString)
{
    WQFittedText fitted = fitInRect(receiver, rect, attributes, minFontSize, fillString, painter.device());
    painter.save();
    painter.setFont(fitted.font);
    painter.setPen(attributes.foregroundColor);
    painter.drawText(rect, int(attributes.alignment), fitted.text);
    painter.restore();
    return fitted;
}

} // namespace wq
