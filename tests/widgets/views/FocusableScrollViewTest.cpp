#include <WQGeneral/views/WQFocusableScrollView.h>

#include "FieldTesting.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace wq;

namespace {

struct Form {
    QWidget window;
    QLineEdit* outside = new QLineEdit(&window);
    WQFocusableScrollView* area = new WQFocusableScrollView(&window);
    QWidget* content = new QWidget;
    QLineEdit* inside = new QLineEdit(content);
    QLineEdit* deeper = nullptr;

    Form()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(outside);
        layout->addWidget(area);
        auto* inner = new QVBoxLayout(content);
        inner->addWidget(inside);
        auto* nested = new QWidget(content);
        deeper = new QLineEdit(nested);
        inner->addWidget(nested);
        area->setWidget(content);
        area->setWidgetResizable(true);
        window.resize(240, 200);
    }

    QImage frame() { return area->grab().toImage(); }
};

} // namespace

TEST(FocusableScrollView, RingFollowsTheFocusInAndOutAndTheWindowsActivation)
{
    Form form;
    test::showActive(form.window);
    const QImage plain = form.frame();
    EXPECT_FALSE(form.area->shouldDrawFocusRing());

    QTest::mouseClick(form.inside, Qt::LeftButton);
    ASSERT_TRUE(form.inside->hasFocus()) << QApplication::focusWidget();
    EXPECT_TRUE(form.area->shouldDrawFocusRing());
    const QImage ringed = form.frame();
    EXPECT_NE(ringed, plain);
    // The ring is drawn on the view's border, not over its content.
    EXPECT_NE(ringed.copy(0, 0, ringed.width(), 3), plain.copy(0, 0, plain.width(), 3));

    // Focus moving inside the view keeps the ring; nothing new to redraw.
    form.deeper->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(form.area->shouldDrawFocusRing());
    EXPECT_FALSE(form.area->needsDisplay());

    QTest::mouseClick(form.outside, Qt::LeftButton);
    EXPECT_FALSE(form.area->shouldDrawFocusRing());
    EXPECT_EQ(form.frame(), plain);

    // Tabbing in, to the view itself or to what it holds.
    QTest::keyClick(form.outside, Qt::Key_Tab);
    QWidget* focus = QApplication::focusWidget();
    ASSERT_TRUE(focus == form.area || form.area->isAncestorOf(focus));
    EXPECT_TRUE(form.area->shouldDrawFocusRing());
    form.area->setFocus();
    EXPECT_TRUE(form.area->shouldDrawFocusRing());

    // The ring goes with the window's activation.
    form.inside->setFocus(Qt::MouseFocusReason);
    ASSERT_TRUE(form.area->shouldDrawFocusRing());

    QWidget other;
    other.resize(50, 50);
    test::showActive(other);
    EXPECT_FALSE(form.area->shouldDrawFocusRing());
    // Inactive with nothing remembered: no change.
    EXPECT_FALSE(form.area->needsDisplay());

    test::showActive(form.window);
    EXPECT_TRUE(form.area->shouldDrawFocusRing());

    // The focused widget going away moves the focus and takes the ring along.
    delete form.inside;
    form.inside = nullptr;
    focus = QApplication::focusWidget();
    EXPECT_EQ(form.area->shouldDrawFocusRing(), focus && form.area->isAncestorOf(focus));
}
