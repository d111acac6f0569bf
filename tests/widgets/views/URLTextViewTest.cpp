#include <WQGeneral/views/WQURLTextView.h>

#include "FieldTesting.h"

#include <gtest/gtest.h>

#include <QScrollBar>

using namespace wq;

namespace {

struct LinkView {
    WQURLTextView view;

    explicit LinkView(const QString& html, QSize size = QSize(300, 120))
    {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(14);
        view.setFont(font);
        view.setHtml(html);
        view.resize(size);
        test::showActive(view);
    }

    bool handAt(const QPoint& pos)
    {
        QTest::mouseMove(view.viewport(), pos);
        QApplication::processEvents();
        const QCursor cursor = view.viewport()->cursor();
        return cursor.shape() == Qt::BitmapCursor && cursor.hotSpot() == QPoint(5, 0)
               && cursor.pixmap().toImage() == WQURLClickHandImage().toImage();
    }
};

QRect unite(const QList<QRect>& rects)
{
    QRect all;
    for (const QRect& r : rects)
        all |= r;
    return all;
}

} // namespace

TEST(URLTextView, HandOverTheLinkOnly)
{
    LinkView page(QStringLiteral("Pay the <a href=\"https://example.com/bill\">power bill</a> by Friday."));
    const QList<QRect> rects = page.view.linkCursorRects();
    ASSERT_EQ(rects.size(), 1);
    const QRect link = rects.first();
    // The link's own text, not its line: "Pay the " comes before it.
    EXPECT_GT(link.left(), 30);
    EXPECT_LT(link.right(), page.view.viewport()->width() - 40);

    EXPECT_TRUE(page.handAt(link.center()));
    EXPECT_FALSE(page.handAt(QPoint(link.left() - 10, link.center().y())));
    EXPECT_FALSE(page.handAt(QPoint(link.right() + 10, link.center().y())));
    EXPECT_TRUE(page.handAt(QPoint(link.left() + 1, link.top() + 1)));
    EXPECT_FALSE(page.handAt(QPoint(link.center().x(), link.bottom() + 6)));
}

TEST(URLTextView, LinkAreasFollowLinesRunsScrollingAndNewText)
{
    // A link broken over lines gives an area per line; a named anchor and
    // plain runs give none; two links side by side are two areas.
    LinkView page(QStringLiteral("<p>Start <a href=\"a\">one link that is long enough to wrap</a></p>"
                                 "<p><a name=\"target\">not a link</a> then <a href=\"b\">b</a><a href=\"c\">c</a></p>"),
                  QSize(220, 300));
    const QList<QRect> rects = page.view.linkCursorRects();
    ASSERT_EQ(rects.size(), 4);
    EXPECT_LT(rects[0].bottom(), rects[1].top());                  // two lines of the long link
    EXPECT_LT(rects[1].left(), rects[0].left());                   // the second starts at the margin
    EXPECT_EQ(rects[2].top(), rects[3].top());                     // b and c on one line
    EXPECT_LE(std::abs(rects[3].left() - rects[2].right() - 1), 1);
    EXPECT_FALSE(page.handAt(QPoint(5, rects[2].center().y())));   // the named anchor
    EXPECT_TRUE(page.handAt(rects[1].center()));

    // Scrolled: areas move with the text and are cut to what is visible.
    QString lines;
    for (int i = 0; i < 40; ++i)
        lines += QStringLiteral("<p>Line %1</p>").arg(i);
    page.view.setHtml(lines + QStringLiteral("<p><a href=\"end\">the end</a></p>"));
    page.view.resize(200, 100);
    QApplication::processEvents();
    EXPECT_TRUE(page.view.linkCursorRects().isEmpty());
    page.view.verticalScrollBar()->setValue(page.view.verticalScrollBar()->maximum());
    const QList<QRect> bottom = page.view.linkCursorRects();
    ASSERT_EQ(bottom.size(), 1);
    EXPECT_TRUE(page.view.viewport()->rect().contains(unite(bottom)));
    EXPECT_TRUE(page.handAt(bottom.first().center()));

    // New text, new areas.
    page.view.setPlainText(QStringLiteral("no links"));
    EXPECT_TRUE(page.view.linkCursorRects().isEmpty());
}
