#include "AlertTesting.h"
#include "DateFormatterTesting.h"

#include <QCheckBox>
#include <QWindow>
#include <QPushButton>

#include <WQGeneral/platform/WQTranslations.h>

using namespace wq;
using namespace wq::test;
using namespace Qt::StringLiterals;

namespace {

using Sheets = AlertTest;

// The English catalogue words the date sheet for this desktop.
const QString kDateMessage = QStringLiteral(
    "The Date text field accepts any of the digits \"0\" through \"9\" and the separator \"/\".  You can also use the "
    "\"+\" and \"=\" keys to increment the day; \"-\" key to decrement the day; \"Alt +\" and \"Alt =\" to "
    "increment the month; \"Alt -\" to decrement the month; \"t\" sets the date to today.\n\nThe date must be "
    "entered as a day, month, and year.  The order of the three values depends on the short date format in your "
    "desktop's regional settings.");

// Keys go where the keyboard sends them: to the window that has the focus.
void pressKey(Qt::Key key)
{
    QWindow* focus = QGuiApplication::focusWindow();
    ASSERT_NE(focus, nullptr);
    QTest::keyClick(focus, key);
}

TEST_F(Sheets, EachSheetHasItsTextsAndButtonsAnswersNoAndKeepsTheKeyboard)
{
    // The decimal separator comes from the numeric locale.
    ScopedLocale locale(QStringLiteral("de_DE"));
    WQWindowController& c = *controller;
    struct Case {
        const char* what;
        std::function<bool()> show;
        QString title;
        QString message;
        bool suppressible;
    };
    const QString digits = u"accepts any of the digits \"0\" through \"9\""_s;
    const QString decimal = digits + u", the negative sign \"-\" and the decimal separator \",\"."_s;
    const Case cases[] = {
        {"blank", [&] { return c.sheetForBlankTextField(field, u"Payee"_s); }, u"The Payee field is blank."_s,
         u"This field can not be left empty."_s, false},
        {"blank, no name", [&] { return c.sheetForBlankTextField(field); }, u"The  field is blank."_s,
         u"This field can not be left empty."_s, false},
        {"negative", [&] { return c.sheetForNegativeTextField(field, QString()); }, u"The  field is negative."_s,
         u"This field can not be negative."_s, false},
        {"negative or zero", [&] { return c.sheetForNegativeOrZeroTextField(field, u"Rate"_s); },
         u"The Rate field is negative or zero."_s, u"This field can not be negative or zero."_s, false},
        {"integer", [&] { return c.sheetForIntegerTextFieldValidationFailure(field, u"Payments"_s, "Digits only"); },
         u"Digits only"_s, u"The Payments text field "_s + digits + u"."_s, true},
        {"decimal column", [&] { return c.sheetForDecimalColumnValidationFailure(nullptr, u"Rate"_s, "Bad", false); },
         u"Bad"_s, u"The Rate column "_s + decimal, true},
        {"decimal column, ATM",
         [&] { return c.sheetForDecimalColumnValidationFailure(nullptr, u"Rate"_s, "Bad", true); },
         u"Bad"_s, u"The Rate column "_s + digits + u" and the negative sign \"-\"."_s, true},
        {"decimal field",
         [&] { return c.sheetForDecimalFieldValidationFailure(field, u"Amount"_s, "100% wrong", false); },
         u"100% wrong"_s, u"The Amount text field "_s + decimal, true},
        {"decimal field, ATM",
         [&] { return c.sheetForDecimalFieldValidationFailure(field, u"Amount"_s, "<b>%@</b>", true); },
         u"<b>%@</b>"_s, u"The Amount text field "_s + digits + u" and the negative sign \"-\"."_s, true},
        {"date with field", [&] { return c.sheetForDateField(field, "1/x", u"Date"_s, "/", "Invalid date"); },
         u"Invalid date"_s, kDateMessage, false},
        {"date without field", [&] { return c.sheetForDateField(nullptr, "1/x", u"Date"_s, "/", "Invalid date"); },
         u"Invalid date"_s, kDateMessage, true},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.what);
        // The operation answers at once, while the sheet is still up.
        EXPECT_FALSE(k.show());
        QMessageBox* box = sheet();
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->isVisible());
        EXPECT_EQ(box->parentWidget(), &window);
        EXPECT_EQ(box->windowModality(), Qt::WindowModal);
        EXPECT_EQ(box->text(), k.title);
        EXPECT_EQ(box->informativeText(), k.message);
        // Shown as plain text: no markup, no placeholders interpreted.
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        if (k.suppressible) {
            ASSERT_NE(box->checkBox(), nullptr);
            EXPECT_EQ(box->checkBox()->text(), u"Don't show again");
            ASSERT_EQ(box->buttons().size(), 1);
            dismiss(box);
        } else {
            EXPECT_EQ(box->checkBox(), nullptr);
            EXPECT_EQ(buttonTexts(*box), QStringList({"Cancel", "Edit"}));
            EXPECT_EQ(box->defaultButton()->text(), u"Edit");
            EXPECT_EQ(box->escapeButton()->text(), u"Cancel");
            click(box, QStringLiteral("Edit"));
        }
        EXPECT_EQ(controller->attachedSheet(), nullptr);
    }

    // A sheet keeps the keyboard when the window behind is clicked.
    controller->sheetForIntegerTextFieldValidationFailure(field, QStringLiteral("Payments"), "Digits only");
    QMessageBox* box = sheet();
    ASSERT_NE(box, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(box));
    // A sheet: no title bar of its own to minimise or maximise it by, at
    // the top of its window, named by what it says.
    EXPECT_TRUE(box->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(box->geometry().top(), window.geometry().top());
    EXPECT_EQ(box->windowTitle(), u"Digits only");

    // A click on the window behind: the window manager activates it.
    QTest::mouseClick(field, Qt::LeftButton);
    window.activateWindow();
    spinFor(200);
    ASSERT_EQ(QGuiApplication::focusWindow(), box->windowHandle());

    // The keyboard starts on OK; Tab goes round the sheet's own controls.
    EXPECT_EQ(QApplication::focusWidget(), box->buttons().value(0));
    pressKey(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), box->checkBox());
    pressKey(Qt::Key_Space);
    EXPECT_TRUE(box->checkBox()->isChecked());
    pressKey(Qt::Key_Return);
    ASSERT_TRUE(spinUntil([&] { return !controller->attachedSheet(); }));
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(kDefaultsKey_IntegerWarning));
}

TEST_F(Sheets, EditKeepsTheRejectedTextCancelBringsBackThePreviousValueAndOneShowsAtATime)
{
    field->setObjectValue(QStringLiteral("Corner Grocery"));
    field->setFocus();
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, QStringLiteral(" typed"));
    ASSERT_EQ(field->text(), u"Corner Grocery typed");

    controller->sheetForBlankTextField(field, QStringLiteral("Payee"));
    click(sheet(), QStringLiteral("Edit"));
    EXPECT_EQ(field->text(), u"Corner Grocery typed");
    EXPECT_TRUE(field->hasPendingEdit());

    controller->sheetForNegativeTextField(field, QStringLiteral("Payee"));
    click(sheet(), QStringLiteral("Cancel"));
    EXPECT_EQ(field->text(), u"Corner Grocery");
    EXPECT_EQ(field->selectedText(), u"Corner Grocery");
    EXPECT_FALSE(field->hasPendingEdit());
    // The field takes the focus back when the window is active again.
    EXPECT_EQ(window.focusWidget(), field);

    // From the keyboard: Escape cancels, Return edits.
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, QStringLiteral("!"));
    other->setFocus();
    controller->sheetForDateField(field, QString(), QStringLiteral("Date"), "/", "Invalid date");
    QTest::keyClick(sheet(), Qt::Key_Return);
    ASSERT_TRUE(spinUntil([&] { return !controller->attachedSheet(); }));
    EXPECT_EQ(field->text(), u"Corner Grocery!");
    controller->sheetForDateField(field, QString(), QStringLiteral("Date"), "/", "Invalid date");
    QTest::keyClick(sheet(), Qt::Key_Escape);
    ASSERT_TRUE(spinUntil([&] { return !controller->attachedSheet(); }));
    EXPECT_EQ(field->text(), u"Corner Grocery");
    EXPECT_EQ(window.focusWidget(), field);

    // One sheet shows at a time and the next follows.
    controller->sheetForBlankTextField(field, QStringLiteral("First"));
    controller->sheetForIntegerTextFieldValidationFailure(field, QStringLiteral("Second"), "Second");
    QMessageBox* first = sheet();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->text(), u"The First field is blank.");
    int visible = 0;
    for (const QMessageBox* box : window.findChildren<QMessageBox*>())
        visible += box->isVisible();
    EXPECT_EQ(visible, 1);
    click(first, QStringLiteral("Edit"));
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(sheet()->text(), u"Second");
    dismiss(sheet());

    // A field that is gone by then is simply not there to restore.
    controller->sheetForBlankTextField(other);
    QMessageBox* box = sheet();
    delete other;
    click(box, QStringLiteral("Cancel"));
}

// The framework's own catalogues (which language loads which is core's):
// English words the date sheet for this desktop; German fills the names in
// after translating and translates the buttons.
TEST_F(Sheets, ShowTheShippedCatalogues)
{
    ASSERT_EQ(WQLoadTranslations({QStringLiteral("en-US")}), u"en");
    controller->sheetForDateField(nullptr, QString(), QStringLiteral("Date"), QStringLiteral("/"), "Bad");
    QMessageBox* box = sheet();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->informativeText(), kDateMessage);
    dismiss(box);

    ScopedLocale locale(QStringLiteral("de_DE"));
    ASSERT_EQ(WQLoadTranslations({QStringLiteral("de-DE")}), u"de");
    QString refusal;
    formatterOn(QStringLiteral("dd.MM.yy"))->dateForString(QString(), &refusal);
    controller->sheetForDateField(nullptr, QString(), QStringLiteral("Buchungsdatum"), QStringLiteral("."), refusal);
    box = sheet();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"Das Datumsfeld darf nicht leer bleiben.");
    EXPECT_TRUE(box->informativeText().startsWith(
        u"Das Textfeld „Buchungsdatum“ nimmt die Ziffern „0“ bis „9“ und das Trennzeichen „.“ an.  Mit den Tasten"));
    ASSERT_NE(box->checkBox(), nullptr);
    EXPECT_EQ(box->checkBox()->text(), u"Nicht mehr anzeigen");
    dismiss(box);

    controller->sheetForNegativeOrZeroTextField(field, QStringLiteral("Betrag"));
    box = sheet();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"Das Feld „Betrag“ ist negativ oder null.");
    EXPECT_EQ(buttonTexts(*box), QStringList({"Abbrechen", "Bearbeiten"}));
    click(box, QStringLiteral("Abbrechen"));
    WQLoadTranslations({QStringLiteral("en")});
}

} // namespace
