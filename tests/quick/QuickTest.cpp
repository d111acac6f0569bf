// The QML module, typed into with real keys: the formatted text field, the
// calculator pop-up and the alert sheets.

#include "QuickTesting.h"

#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/quick/WQQuickAlertSheets.h>
#include <WQGeneral/quick/WQQuickCalculator.h>

#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QSignalSpy>

using namespace wq;
using test::QuickWindow;

// The formatted text field: kinds typed with real keys (which formatter each
// kind makes is core's), the value read on Return, refusals, undo, redo and
// Escape.
TEST(QuickField, TypingInEachKindReadingTheValueRefusalUndoRedoAndEscape)
{
    QuickWindow window(R"(
        Column {
            MoneyOwner { id: atm; objectName: "atm"; userInputLikeATM: true }
            FormattedTextField { objectName: "date"; value: new Date(2026, 2, 15); formatterKind: FormattedTextField.Date }
            FormattedTextField { objectName: "money"; formatterKind: FormattedTextField.Money }
            FormattedTextField { objectName: "atmMoney"; formatterKind: FormattedTextField.Money; owner: atm }
            FormattedTextField { objectName: "amount"; formatterKind: FormattedTextField.Money }
        })");
    struct Row {
        const char* field;
        const char* keys;
        QString shows;
        QVariant value;
    };
    const Row rows[] = {
        {"date", "+", "3/16/26", QDateTime(QDate(2026, 3, 16), QTime(0, 0))}, // a date given before the kind
        {"money", "1234", "$1,234", 1234.0},
        {"atmMoney", "1234", "$12.34", 12.34},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.field);
        QQuickItem* item = window.focus(row.field);
        window.type(QString::fromLatin1(row.keys));
        EXPECT_EQ(QuickWindow::text(item), row.shows);
        EXPECT_EQ(WQToolkit::shared().keyFieldEditor(), &window.field(row.field).session())
            << "core asks the focused QML field";
        window.key(Qt::Key_Return);
        EXPECT_EQ(window.field(row.field).value(), row.value);
    }

    WQQuickFormattedField& amount = window.field("amount");
    QQuickItem* item = window.find("amount");
    QSignalSpy refused(item, SIGNAL(editRefused(QString)));
    amount.setValue(7);
    EXPECT_EQ(QuickWindow::text(item), "$7.00");
    window.key(Qt::Key_Tab);
    EXPECT_EQ(item->property("selectedText").toString(), "$7.00") << "tabbing in selects the text";
    window.type("12a");
    EXPECT_EQ(QuickWindow::text(item), "$12");
    ASSERT_EQ(refused.count(), 1);
    EXPECT_EQ(refused.at(0).at(0).toString(), "\"a\" is not valid here");

    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(QuickWindow::text(item), "$1");
    window.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QuickWindow::text(item), "$12");

    window.key(Qt::Key_Escape);
    EXPECT_EQ(QuickWindow::text(item), "$7.00");
    EXPECT_EQ(item->property("selectedText").toString(), "$7.00");
    EXPECT_EQ(amount.value(), QVariant(7.0));
    EXPECT_FALSE(amount.hasPendingEdit());
}

// The calculator pop-up from a calculating money field.
TEST(QuickCalculator, StrictlyLeftToRightWrittenBackOnEqualsOrReturnAndEscapeLeavesTheField)
{
    QuickWindow window(R"(
        Column {
            y: 200
            FormattedTextField { objectName: "amount"; width: 200; formatterKind: FormattedTextField.CalculatingMoney }
        })");
    QQuickItem* amount = window.focus("amount");
    const auto waitForCalculator = [] {
        EXPECT_TRUE(test::spinUntil([] { return WQQuickCalculator::openCalculator() != nullptr; }));
        return WQQuickCalculator::openCalculator();
    };
    const auto closed = [] { return test::spinUntil([] { return WQQuickCalculator::openCalculator() == nullptr; }); };
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
    window.type("11");
    window.key(Qt::Key_Return);
    EXPECT_TRUE(closed());
    EXPECT_EQ(QuickWindow::text(amount), "$23.00");
}

// The alert sheets of a QML window: "Don't show again" shared with the
// widgets' settings, and Cancel giving a field its value back.
TEST(QuickSheets, SilencedOnceForEveryToolkitShownAgainAndCancelGivesTheValueBack)
{
    WQWarningSuppression::showAllAgain();
    QuickWindow window(R"(
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
        })");
    WQQuickAlertSheets* sheets = window.find<WQQuickAlertSheets>("sheets");
    // The dialog's part named name, once the sheet shows.
    const auto part = [sheets](const char* name) {
        EXPECT_TRUE(test::spinUntil([&] { return sheets->dialog() && sheets->dialog()->property("opened").toBool(); }));
        return sheets->dialog() ? sheets->dialog()->findChild<QQuickItem*>(QString::fromLatin1(name)) : nullptr;
    };
    const auto click = [&window](QQuickItem* button) {
        ASSERT_NE(button, nullptr);
        const QPointF center = button->mapToScene(QPointF(button->width() / 2, button->height() / 2));
        QTest::mouseClick(&window.view, Qt::LeftButton, {}, center.toPoint());
    };
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
