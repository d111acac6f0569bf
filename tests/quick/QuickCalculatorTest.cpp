// The calculator pop-up from a calculating money field in QML.

#include "QuickTesting.h"

#include <WQGeneral/quick/WQQuickCalculator.h>

#include <QClipboard>
#include <QGuiApplication>

using namespace wq;
using test::QuickWindow;

namespace {

class QuickCalculator : public ::testing::Test {
protected:
    QuickWindow window{R"(
        Column {
            y: 200
            FormattedTextField { objectName: "amount"; width: 200; formatterKind: FormattedTextField.CalculatingMoney }
        })"};
    QQuickItem* amount = window.focus("amount");

    WQQuickCalculator* waitForCalculator()
    {
        EXPECT_TRUE(test::spinUntil([] { return WQQuickCalculator::openCalculator() != nullptr; }));
        return WQQuickCalculator::openCalculator();
    }
    bool closed()
    {
        return test::spinUntil([] { return WQQuickCalculator::openCalculator() == nullptr; });
    }
};

} // namespace

TEST_F(QuickCalculator, StrictlyLeftToRightWrittenBackOnEqualsOrReturnAndEscapeLeavesTheField)
{
    window.type("2+");
    WQQuickCalculator* calculator = waitForCalculator();
    ASSERT_NE(calculator, nullptr);
    EXPECT_EQ(QuickWindow::text(amount), "$2");
    EXPECT_TRUE(calculator->editingField()->hasActiveFocus());
    // The pop-up lies over the field, its bottom edge on the field's.
    const auto* popupItem = calculator->editingField()->parentItem()->parentItem();
    const QPointF bottom = popupItem->mapToItem(amount, QPointF(0, popupItem->height()));
    EXPECT_NEAR(bottom.y(), amount->height(), 1.0);

    window.type("3*");
    EXPECT_TRUE(test::spinUntil([&] { return calculator->operators().size() == 2; }));
    window.type("4");
    EXPECT_EQ(calculator->totalText(), "$20.00");
    EXPECT_EQ(calculator->numbers(), (QStringList{"$2.00", "$3.00"}));
    window.type("=");
    EXPECT_TRUE(closed());
    EXPECT_EQ(QuickWindow::text(amount), "$20.00");
    EXPECT_EQ(amount->property("selectedText").toString(), "$20.00");
    window.key(Qt::Key_Return);
    EXPECT_EQ(window.field("amount").value(), QVariant(20.0));

    // Escape leaves the field as it was; the tape copies.
    QMetaObject::invokeMethod(amount, "selectAll");
    window.type("12+");
    ASSERT_NE(waitForCalculator(), nullptr);
    window.type("55");
    window.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "$12.00\n+ $55\n= $67.00\n");
    window.key(Qt::Key_Escape);
    EXPECT_TRUE(closed());
    EXPECT_EQ(QuickWindow::text(amount), "$12");
    EXPECT_TRUE(amount->hasActiveFocus());

    // Return commits on the next pass of the event loop.
    window.key(Qt::Key_End);
    window.type("+");
    ASSERT_NE(waitForCalculator(), nullptr);
    window.type("1");
    window.type("1");
    window.key(Qt::Key_Return);
    EXPECT_TRUE(closed());
    EXPECT_EQ(QuickWindow::text(amount), "$23.00");
}
