#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

TEST(Resources, TheLinkHandImageComesWithTheLibrary)
{
    const QImage hand(QStringLiteral(":/WQGeneral/URLClickHand.png"));
    ASSERT_FALSE(hand.isNull());
    EXPECT_EQ(hand.size(), QSize(16, 16));
    // The fingertip, the cursor's hot spot, is drawn; the corner is clear.
    EXPECT_EQ(qAlpha(hand.pixel(5, 0)), 255);
    EXPECT_EQ(qAlpha(hand.pixel(0, 0)), 0);

    const QImage sharp(QStringLiteral(":/WQGeneral/URLClickHand@2x.png"));
    EXPECT_EQ(sharp.size(), QSize(32, 32));
}
