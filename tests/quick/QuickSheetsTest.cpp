// The alert sheets of a QML window: "Don't show again" shared with the
// widgets' settings, and Cancel giving a field its value back.

#include "QuickTesting.h"

#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/quick/WQQuickAlertSheets.h>

using namespace wq;
using test::QuickWindow;

namespace {

class QuickSheets : public ::testing::Test {
protected:
    void SetUp() override { WQWarningSuppression::showAllAgain(); }

    QuickWindow window{R"(
        Column {
            AlertSheets { id: sheets; objectName: "sheets" }
            FormattedTextField {
                id: payments; objectName: "payments"; formatterKind: FormattedTextField.WholeNumber
                onEditRefused: (description) => sheets.presentRefusal(payments, "Payments", description)
            }
            FormattedTextField {
                id: date; objectName: "date"; formatterKind: FormattedTextField.Date
                onEditRefused: (description) => sheets.presentRefusal(date, "Date", description)
            }
        })"};
    WQQuickAlertSheets* sheets = window.find<WQQuickAlertSheets>("sheets");

    // The dialog's part named name, once the sheet shows.
    QQuickItem* part(const char* name) const
    {
        EXPECT_TRUE(test::spinUntil([this] { return sheets->dialog() && sheets->dialog()->property("opened").toBool(); }));
        return sheets->dialog() ? sheets->dialog()->findChild<QQuickItem*>(QString::fromLatin1(name)) : nullptr;
    }
    void click(QQuickItem* button)
    {
        ASSERT_NE(button, nullptr);
        const QPointF center = button->mapToScene(QPointF(button->width() / 2, button->height() / 2));
        QTest::mouseClick(&window.view, Qt::LeftButton, {}, center.toPoint());
    }
};

} // namespace

TEST_F(QuickSheets, SilencedOnceForEveryToolkitShownAgainAndCancelGivesTheValueBack)
{
    window.focus("payments");
    window.type("x");
    ASSERT_TRUE(sheets->isShowing());
    EXPECT_EQ(sheets->title(), "\"x\" is not valid here");
    EXPECT_EQ(sheets->message(), "The Payments text field accepts any of the digits \"0\" through \"9\".");
    QQuickItem* dontShowAgain = part("dontShowAgain");
    ASSERT_NE(dontShowAgain, nullptr);
    EXPECT_TRUE(dontShowAgain->isVisible());
    EXPECT_EQ(dontShowAgain->property("text").toString(), "Don't show again");
    click(dontShowAgain);
    click(part("defaultButton"));
    EXPECT_FALSE(sheets->isShowing());
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(kDefaultsKey_IntegerWarning)) << "the store the widgets read";
    EXPECT_EQ(sheets->suppressedKeys(), QStringList{kDefaultsKey_IntegerWarning});

    window.focus("payments");
    window.type("y");
    EXPECT_FALSE(sheets->isShowing()) << "silenced";
    sheets->showAllWarningsAgain();
    window.type("z");
    EXPECT_TRUE(sheets->isShowing());
    click(part("defaultButton"));
    EXPECT_FALSE(WQWarningSuppression::isSuppressed(kDefaultsKey_IntegerWarning)) << "closed with the box unticked";

    // Cancel gives the date field its value back.
    WQQuickFormattedField& date = window.field("date");
    date.setValue(QDateTime(QDate(2026, 3, 1), QTime(0, 0)));
    QQuickItem* item = window.focus("date");
    QMetaObject::invokeMethod(item, "selectAll");
    window.type("4/2q");
    ASSERT_TRUE(sheets->isShowing());
    EXPECT_TRUE(sheets->isEditCancel());
    EXPECT_FALSE(part("dontShowAgain")->isVisible());
    EXPECT_EQ(QuickWindow::text(item), "4/2");
    click(part("cancelButton"));
    EXPECT_EQ(QuickWindow::text(item), "3/1/26");
    EXPECT_EQ(item->property("selectedText").toString(), "3/1/26");
    EXPECT_TRUE(item->hasActiveFocus());
}
