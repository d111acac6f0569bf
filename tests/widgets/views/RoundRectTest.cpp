#include <WQGeneral/views/WQColorConversion.h>
#include <WQGeneral/views/WQRoundRect.h>

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <limits>

using namespace wq;

TEST(RoundRect, RadiusRulesTestTheHeightFirstAndTakeOneOff)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        QRectF rect;
        double asked, expected;
    };
    const Case cases[] = {
        {{0, 0, 100, 10}, 8, 4},      // 8 >= 5: trunc(5) - 1
        {{0, 0, 100, 3}, 2, 0},       // 2 >= 1.5: trunc(1.5) - 1, square corners
        {{0, 0, 100, 10}, 4.9, 4.9},  // under half the height: kept
        {{0, 0, 10, 100}, 8, 4},      // the width, tested second
        {{0, 0, 5, 100}, 2.5, 1},     // exactly half the width counts
        {{0, 0, 7, 9}, 5, 3},         // height: trunc(4.5) - 1 = 3, then 3 < 3.5
        {{0, 0, 4, 20}, 12, 1},       // height gives 9, the width then 1
        {{0, 0, 0, 0}, 5, -1},        // nothing to round
        {{0, 0, 50, 50}, 0, 0},
        {{0, 0, 50, 50}, -3, -3},
        {{0, 0, 50, 50}, nan, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(roundRectRadius(c.rect, c.asked), c.expected) << c.rect.width() << "x" << c.rect.height() << " r " << c.asked;
}

namespace {

// The points the outline passes through at the ends of its lines and arcs.
QList<QPointF> outlinePoints(const QPainterPath& path)
{
    QList<QPointF> points;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element e = path.elementAt(i);
        const bool curveEnd = e.type == QPainterPath::CurveToDataElement
                              && (i + 1 == path.elementCount() || path.elementAt(i + 1).type != QPainterPath::CurveToDataElement);
        if (e.type == QPainterPath::MoveToElement || e.type == QPainterPath::LineToElement || curveEnd) {
            const QPointF p(e.x, e.y);
            if (points.isEmpty() || QLineF(points.last(), p).length() > 1e-9)
                points.append(p);
        }
    }
    return points;
}

} // namespace

TEST(RoundRect, OutlineRunsThroughTheCornersInOrderAndIsFilledOrStroked)
{
    for (const auto& [rect, r] : {std::pair{QRectF(10, 20, 100, 40), 10.0}, std::pair{QRectF(-5, 0, 30, 13), 8.0}}) {
        const double radius = roundRectRadius(rect, r);
        const double x = rect.x(), y = rect.y(), w = rect.width(), h = rect.height();
        const QList<QPointF> expected = {
            {x, y + radius},     {x + radius, y},         {x + w - radius, y},     {x + w, y + radius},
            {x + w, y + h - radius}, {x + w - radius, y + h}, {x + radius, y + h}, {x, y + h - radius},
            {x, y + radius},  // closed
        };
        const QPainterPath path = bezierPathWithRoundRectInRect(rect, r);
        QList<QPointF> points = outlinePoints(path);
        ASSERT_EQ(points.size(), expected.size()) << rect.width();
        for (qsizetype i = 0; i < expected.size(); ++i)
            EXPECT_LT(QLineF(points[i], expected[i]).length(), 1e-6) << "point " << i;
        EXPECT_EQ(path.boundingRect(), rect);
        // The corner itself is cut off, a point just inside the arc is not.
        EXPECT_FALSE(path.contains(QPointF(x + 0.5, y + 0.5)));
        EXPECT_TRUE(path.contains(QPointF(x + radius, y + radius)));
    }

    // Square corners: the plain rectangle, corner included.
    for (const auto& [rect, r] : {std::pair{QRectF(0, 0, 100, 3), 2.0}, std::pair{QRectF(1, 1, 20, 20), 0.0}}) {
        QPainterPath plain;
        plain.addRect(rect);
        EXPECT_EQ(bezierPathWithRoundRectInRect(rect, r), plain);
    }
    // A zero-size rectangle too, at its own place: Qt's addRect() would
    // leave it out, an empty path whose bounds sit at the origin.
    const QPainterPath point = bezierPathWithRoundRectInRect(QRectF(30, 40, 0, 0), 4);
    EXPECT_FALSE(point.isEmpty());
    EXPECT_EQ(point.boundingRect(), QRectF(30, 40, 0, 0));
    QPainterPath shape;
    shape.addRect(QRectF(30, 40, 1, 1));
    ASSERT_EQ(point.elementCount(), shape.elementCount());
    for (int i = 0; i < point.elementCount(); ++i) {
        EXPECT_EQ(point.elementAt(i).type, shape.elementAt(i).type) << i;
        EXPECT_EQ(QPointF(point.elementAt(i)), QPointF(30, 40)) << i;
    }

    // Filled with the brush, stroked with the pen.
    QImage image(40, 20, QImage::Format_ARGB32);
    const auto draw = [&](auto shortcut) {
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setBrush(Qt::red);
        painter.setPen(QPen(Qt::blue, 1));
        shortcut(painter, QRectF(0.5, 0.5, 39, 19), 6);
    };
    draw(fillRoundRectInRect);
    EXPECT_EQ(image.pixelColor(20, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    draw(strokeRoundRectInRect);
    EXPECT_EQ(image.pixelColor(20, 10).alpha(), 0);
    EXPECT_EQ(image.pixelColor(20, 0), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

TEST(ColorConversion, CopiesEachModelComponentByComponent)
{
    const QColor colours[] = {
        QColor::fromRgb(12, 34, 56, 78),
        QColor::fromRgbF(1.5f, -0.25f, 0.5f, 1.0f),   // extended RGB
        QColor::fromHsv(200, 100, 50, 255),
        QColor::fromHsv(-1, 0, 128),                   // achromatic: no hue
        QColor::fromHsl(30, 255, 64, 10),
        QColor::fromCmyk(1, 2, 3, 4, 5),
    };
    for (const QColor& colour : colours) {
        const QColor copy = newCGColorRef(colour);
        // Equality takes the colour model into account as well.
        EXPECT_EQ(copy, colour) << colour.name(QColor::HexArgb).toStdString();
    }
    EXPECT_FALSE(newCGColorRef(QColor()).isValid());
}
