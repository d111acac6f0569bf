// The formatted text field in QML: kinds typed with real keys (which
// formatter each kind makes is core's), the value read on Return, refusals,
// undo, redo and Escape.

#include "QuickTesting.h"

#include <WQGeneral/formatters/WQToolkit.h>

#include <QDateTime>
#include <QSignalSpy>

using namespace wq;
using test::QuickWindow;

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
