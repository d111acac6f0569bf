#include <WQGeneral/dragging/WQDragImage.h>

#include <WQGeneral/views/WQRoundRect.h>

#include <QPainter>
#include <QTextCursor>
#include <QTextDocument>

#include <cmath>
#include <memory>

namespace wq {

namespace {

constexpr qreal kInset = 12;        // from the view's sides, and the text from the image's left
constexpr qreal kExtraHeight = 8;
constexpr qreal kRadius = 10;
constexpr qreal kFillOpacity = 0.7;
constexpr qreal kTextOpacity = 0.85;
// From the top: the black text at 4, its white edge at 5. (Measured from the
// bottom, as the picture was first drawn, they are 4 and 3.)
constexpr qreal kBlackTop = 4;
constexpr qreal kWhiteTop = 5;

std::unique_ptr<QTextDocument> layOut(const QTextDocumentFragment& label, const QFont& font)
{
    auto document = std::make_unique<QTextDocument>();
    document->setDocumentMargin(0);
    document->setDefaultFont(font);
    QTextCursor(document.get()).insertFragment(label);
    return document;
}

void setColour(QTextDocument& document, const QColor& colour)
{
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    QTextCharFormat format;
    format.setForeground(colour);
    all.mergeCharFormat(format);
}

QSizeF sizeOf(const QTextDocument& document)
{
    return QSizeF(document.idealWidth(), document.size().height());
}

} // namespace

QSizeF WQDragLabelSize(const QTextDocumentFragment& label, const QFont& font)
{
    if (label.isEmpty())
        return QSizeF(0, 0);
    return sizeOf(*layOut(label, font));
}

QSizeF WQDragImageSize(qreal boundsWidth, const QSizeF& labelSize)
{
    return QSizeF(boundsWidth - 2 * kInset, labelSize.height() + kExtraHeight);
}

QPointF WQDragImageOrigin(const QSizeF& bounds, const QSizeF& imageSize)
{
    return QPointF(kInset, (bounds.height() - imageSize.height()) / 2);
}

QSizeF WQDragInitialOffset(const QPointF& press, const QPointF& latest)
{
    return QSizeF(std::abs(latest.x() - press.x()) - press.x(), std::abs(latest.y() - press.y()) - press.y());
}

QPixmap WQDrawDragImage(const QTextDocumentFragment& label, const QFont& font, qreal boundsWidth,
                        qreal devicePixelRatio)
{
    const std::unique_ptr<QTextDocument> document = label.isEmpty() ? nullptr : layOut(label, font);
    const QSizeF size = WQDragImageSize(boundsWidth, document ? sizeOf(*document) : QSizeF(0, 0));
    const qreal ratio = devicePixelRatio > 0 ? devicePixelRatio : 1;
    const QSize pixels(int(std::ceil(size.width() * ratio)), int(std::ceil(size.height() * ratio)));
    if (pixels.isEmpty())
        return QPixmap();

    QPixmap image(pixels);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(Qt::NoPen);
    QColor grey(Qt::lightGray);
    grey.setAlphaF(kFillOpacity);
    painter.setBrush(grey);
    fillRoundRectInRect(painter, QRectF(QPointF(0, 0), size), kRadius);

    if (document) {
        const auto drawText = [&](const QColor& colour, qreal top) {
            QColor c = colour;
            c.setAlphaF(kTextOpacity);
            setColour(*document, c);
            painter.save();
            painter.translate(kInset, top);
            document->drawContents(&painter);
            painter.restore();
        };
        drawText(Qt::white, kWhiteTop);
        drawText(Qt::black, kBlackTop);
    }
    return image;
}

} // namespace wq
