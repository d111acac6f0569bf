#include <WQGeneral/drawing/WQStringDrawing.h>

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

using namespace wq;

namespace {

WQTextAttributes attributesAt(qreal points, QFont font = QFont(QStringLiteral("DejaVu Sans")))
{
    font.setPointSizeF(points);
    return WQTextAttributes{font};
}

double widthIn(const QString& text, const QFont& font, qreal points = 0)
{
    return sizeWithAttributes(text, attributesAt(points > 0 ? points : font.pointSizeF(), font)).width();
}

} // namespace

TEST(StringDrawing, ShrinksAPointAtATimeUntilItFits)
{
    const QString label = QStringLiteral("Opening balance");
    const WQTextAttributes attributes = attributesAt(24);
    const QSizeF full = sizeWithAttributes(label, attributes);

    // Room for the whole label: nothing changes.
    WQFittedText fitted = fitInRect(label, QRectF(0, 0, full.width() + 1, full.height() + 1), attributes, 8);
    EXPECT_EQ(fitted.font.pointSizeF(), 24);
    EXPECT_EQ(fitted.text, label);

    // Half the width: the largest whole-point step down from 24 that fits.
    const QRectF half(0, 0, full.width() / 2, full.height());
    fitted = fitInRect(label, half, attributes, 4);
    const qreal chosen = fitted.font.pointSizeF();
    EXPECT_TRUE(chosen > 4 && chosen < 24 && chosen == std::floor(chosen)) << chosen;
    EXPECT_LE(widthIn(label, fitted.font), half.width());
    EXPECT_GT(widthIn(label, fitted.font, chosen + 1), half.width());
    EXPECT_EQ(fitted.size, sizeWithAttributes(label, attributesAt(chosen, fitted.font)));

    // Too little room even at the minimum: the minimum it is; below 2 it is 2.
    for (const auto& [minimum, expected] : {std::pair{9.0, 9.0}, std::pair{0.5, 2.0}})
        EXPECT_EQ(fitInRect(label, QRectF(0, 0, 5, full.height()), attributes, minimum).font.pointSizeF(), expected);

    // Height counts as well as width.
    fitted = fitInRect(label, QRectF(0, 0, full.width() * 4, full.height() / 2), attributes, 4);
    EXPECT_LE(fitted.size.height(), full.height() / 2);
    EXPECT_LT(fitted.font.pointSizeF(), 14);
}

TEST(StringDrawing, RepeatsTheFillerWhileThereIsRoomAndDrawsInsideTheRectangle)
{
    const QString label = QStringLiteral("Groceries");
    const WQTextAttributes attributes = attributesAt(12);
    const QSizeF labelSize = sizeWithAttributes(label, attributes);
    const QRectF row(0, 0, labelSize.width() * 3, labelSize.height());   // exactly as tall: still filled

    const WQFittedText fitted = fitInRect(label, row, attributes, 8, QStringLiteral("."));
    const qsizetype dots = fitted.text.size() - label.size();
    EXPECT_GT(dots, 5);
    EXPECT_EQ(fitted.text, label + QString(dots, u'.'));
    EXPECT_EQ(fitted.font.pointSizeF(), 12);
    // As many as fit strictly inside the width, and not one more.
    EXPECT_LT(widthIn(fitted.text, fitted.font), row.width());
    EXPECT_GE(widthIn(fitted.text + u'.', fitted.font), row.width());

    // No filler behind a label too wide or a little too tall for the row
    // (shrinking to fit leaves no room).
    EXPECT_EQ(fitInRect(label, QRectF(0, 0, labelSize.width() / 3, labelSize.height()), attributes, 10, QStringLiteral(".")).text, label);
    EXPECT_EQ(fitInRect(label, QRectF(0, 0, row.width(), labelSize.height() - 1), attributes, 12, QStringLiteral(".")).text, label);

    // Drawn, it stays inside the rectangle.
    QImage image(300, 60, QImage::Format_ARGB32);
    image.fill(Qt::white);
    const QRectF rect(20, 10, 150, 30);
    WQFittedText drawn;
    {
        QPainter painter(&image);
        drawn = drawInRect(QStringLiteral("Electricity bill, March"), painter, rect, attributesAt(30), 6, QStringLiteral("."));
    }
    EXPECT_LT(drawn.font.pointSizeF(), 30);
    int inside = 0, outside = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                (rect.contains(QPointF(x + 0.5, y + 0.5)) ? inside : outside)++;
    EXPECT_GT(inside, 50);
    EXPECT_EQ(outside, 0);
}
