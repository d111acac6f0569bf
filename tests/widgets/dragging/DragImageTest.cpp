#include <WQGeneral/dragging/WQDragAndDropView.h>
#include <WQGeneral/dragging/WQDragImage.h>

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QImage>

using namespace wq;

namespace {

QFont labelFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

struct Labels : WQDragAndDropViewDelegate {
    std::optional<QTextDocumentFragment> attributed;
    std::optional<QString> plain;
    std::optional<QTextDocumentFragment> attributedDragStringForWQDragAndDropView(const WQDragAndDropView&) override
    {
        return attributed;
    }
    std::optional<QString> dragStringForWQDragAndDropView(const WQDragAndDropView&) override { return plain; }
};

bool dark(const QColor& c)
{
    return c.alpha() > 100 && c.lightness() < 90;
}

bool light(const QColor& c)
{
    return c.alpha() > 100 && c.lightness() > 215;
}

// Rows, top to bottom, holding at least one pixel of the kind.
QList<int> rowsWith(const QImage& image, bool (*kind)(const QColor&))
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (kind(image.pixelColor(x, y))) {
                rows.append(y);
                break;
            }
    return rows;
}

} // namespace

TEST(DragImage, RoundedGreyLabelWithEngravedText)
{
    Labels labels;
    labels.plain = QStringLiteral("Groceries");
    WQDragAndDropView view;
    view.setFont(labelFont());
    view.resize(200, 40);
    view.setDelegate(&labels);

    const qreal textHeight = QFontMetricsF(labelFont()).height();
    const QImage image = view.dragImage(1).toImage();
    ASSERT_EQ(image.width(), 176);   // 200 - 24
    EXPECT_NEAR(image.height(), textHeight + 8, 1);

    // Transparent corners, the grey 70% opaque where there is no text.
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(175, image.height() - 1).alpha(), 0);
    const QColor grey = image.pixelColor(170, image.height() / 2);
    EXPECT_NEAR(grey.alpha(), 0.7 * 255, 2);
    EXPECT_NEAR(grey.red(), QColor(Qt::lightGray).red(), 2);

    // The text starts 12 in; black on top, its white edge one row lower.
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < 11; ++x)
            ASSERT_FALSE(dark(image.pixelColor(x, y))) << x << "," << y;
    const QList<int> darkRows = rowsWith(image, dark), lightRows = rowsWith(image, light);
    ASSERT_FALSE(darkRows.isEmpty());
    ASSERT_FALSE(lightRows.isEmpty());
    EXPECT_EQ(lightRows.last(), darkRows.last() + 1);
    EXPECT_GT(lightRows.first(), darkRows.first());
    // Text at 85%, not solid.
    int darkest = 255;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 100)
                darkest = std::min(darkest, image.pixelColor(x, y).lightness());
    EXPECT_GT(darkest, 5);
    EXPECT_LT(darkest, 60);

    // At twice the density: the same label, drawn at that resolution rather
    // than the picture above blown up.
    const QPixmap sharp = view.dragImage(2);
    EXPECT_EQ(sharp.devicePixelRatio(), 2);
    const QImage blownUp = image.scaled(image.size() * 2);
    ASSERT_EQ(sharp.size(), blownUp.size());
    EXPECT_NE(sharp.toImage().convertToFormat(blownUp.format()), blownUp);
}

TEST(DragImage, LabelComesFromTheDelegateInOrderAndNeedsRoom)
{
    Labels labels;
    WQDragAndDropView view;
    view.setFont(labelFont());
    view.resize(120, 30);

    // No delegate, or one that answers nothing: no text, an 8-high label.
    for (WQDragAndDropViewDelegate* delegate : {static_cast<WQDragAndDropViewDelegate*>(nullptr),
                                                static_cast<WQDragAndDropViewDelegate*>(&labels)}) {
        view.setDelegate(delegate);
        EXPECT_TRUE(view.dragLabel().isEmpty());
        const QImage empty = view.dragImage(1).toImage();
        EXPECT_EQ(empty.size(), QSize(96, 8));
        EXPECT_TRUE(rowsWith(empty, dark).isEmpty());
    }

    labels.plain = QStringLiteral("Rent");
    EXPECT_EQ(view.dragLabel().toPlainText(), QStringLiteral("Rent"));
    labels.attributed = QTextDocumentFragment::fromHtml(QStringLiteral("<b>Rent</b> due"));
    EXPECT_EQ(view.dragLabel().toPlainText(), QStringLiteral("Rent due"));
    // Formatted text keeps its font; its colour is the engraving's.
    labels.attributed = QTextDocumentFragment::fromHtml(QStringLiteral("<span style=\"color:#ff0000; font-size:30px\">Rent</span>"));
    const QImage big = view.dragImage(1).toImage();
    EXPECT_GT(big.height(), 30 + 8 - 1);
    for (int y = 0; y < big.height(); ++y)
        for (int x = 0; x < big.width(); ++x) {
            const QColor c = big.pixelColor(x, y);
            ASSERT_LT(c.red() - c.green(), 30) << "red text at " << x << "," << y;
        }

    // The geometry keeps its rules even when narrow: no label at all then.
    EXPECT_EQ(WQDragImageSize(20, QSizeF(80, 15)), QSizeF(-4, 23));   // no guard
    EXPECT_EQ(WQDragImageOrigin(QSizeF(200, 10), QSizeF(176, 23)), QPointF(12, -6.5));
    for (int width : {24, 20, 0}) {
        view.resize(width, 30);
        EXPECT_TRUE(view.dragImage(1).isNull()) << width;
    }
}
