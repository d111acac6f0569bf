// The window controller's alert sheets on a shown window with two fields:
// their texts, buttons and keyboard, what Edit and Cancel do to the field,
// and the warnings a user silences and brings back.

#include "DateFormatterTesting.h"
#include "FieldTesting.h"
#include "KeyTyping.h"

#include <WQGeneral/alerts/WQSuppressibleMessageBox.h>
#include <WQGeneral/alerts/WQWarningSettingsPage.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/alerts/WQWindowController.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/platform/WQTranslations.h>

#include <WQTestSupport.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

using namespace wq;
using namespace wq::test;
using namespace Qt::StringLiterals;

namespace {

class AlertTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        WQWarningSuppression::showAllAgain();
        auto* layout = new QVBoxLayout(&window);
        field = new WQLineEdit(&window);
        other = new WQLineEdit(&window);
        layout->addWidget(field);
        layout->addWidget(other);
        window.resize(400, 300);
        showActive(window);
    }
    void TearDown() override { WQWarningSuppression::showAllAgain(); }

    // The sheet on the window, once it shows.
    QMessageBox* sheet()
    {
        QMessageBox* shown = controller->attachedSheet();
        if (shown && !QTest::qWaitForWindowExposed(shown))
            ADD_FAILURE() << "the sheet did not show";
        return shown;
    }

    // Clicks the button of the sheet with that text (without, the first: OK
    // on a suppressible one) and lets the sheet end.
    void click(QMessageBox* box, const QString& text = QString())
    {
        ASSERT_NE(box, nullptr);
        for (QAbstractButton* button : box->buttons())
            if (text.isEmpty() || button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                ASSERT_TRUE(spinUntil([&] { return controller->attachedSheet() != box; }));
                return;
            }
        FAIL() << "no button " << text.toStdString();
    }

    QWidget window;
    WQWindowController* controller = new WQWindowController(window);
    WQLineEdit* field = nullptr;
    WQLineEdit* other = nullptr;
};

using Sheets = AlertTest;
using Suppression = AlertTest;

// The English catalogue words the date sheet for this desktop.
const QString kDateMessage = QStringLiteral(
    "The Date text field accepts any of the digits \"0\" through \"9\" and the separator \"/\".  You can also use the "
    "\"+\" and \"=\" keys to increment the day; \"-\" key to decrement the day; \"Alt +\" and \"Alt =\" to "
    "increment the month; \"Alt -\" to decrement the month; \"t\" sets the date to today.\n\nThe date must be "
    "entered as a day, month, and year.  The order of the three values depends on the short date format in your "
    "desktop's regional settings.");

TEST_F(Sheets, EachSheetHasItsTextsAndButtonsInEnglishAndGermanAnswersNoAndKeepsTheKeyboard)
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
        ASSERT_NE(box, nullptr) << "shown: sheet() waits until it is exposed";
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
            click(box);
        } else {
            EXPECT_EQ(box->checkBox(), nullptr);
            EXPECT_EQ(box->buttons().size(), 2);
            EXPECT_EQ(box->defaultButton()->text(), u"Edit");
            EXPECT_EQ(box->escapeButton()->text(), u"Cancel");
            click(box, QStringLiteral("Edit"));
        }
        EXPECT_EQ(controller->attachedSheet(), nullptr);
    }
    // Closed with the box unticked: nothing is stored.
    for (const QString& key : WQWarningSuppression::suppressibleKeys())
        EXPECT_FALSE(QSettings().contains(key)) << key.toStdString();

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
    press(u'\t');
    EXPECT_EQ(QApplication::focusWidget(), box->checkBox());
    press(u' ');
    EXPECT_TRUE(box->checkBox()->isChecked());
    press(u'\r');
    ASSERT_TRUE(spinUntil([&] { return !controller->attachedSheet(); }));
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(kDefaultsKey_IntegerWarning));

    // The framework's own catalogues (which language loads which is core's):
    // German fills the names in after translating and translates the buttons.
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
    click(box);

    controller->sheetForNegativeOrZeroTextField(field, QStringLiteral("Betrag"));
    box = sheet();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"Das Feld „Betrag“ ist negativ oder null.");
    EXPECT_EQ(box->defaultButton()->text(), u"Bearbeiten");
    click(box, QStringLiteral("Abbrechen"));
    WQLoadTranslations({QStringLiteral("en")});
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
    click(sheet());

    // A field that is gone by then is simply not there to restore.
    controller->sheetForBlankTextField(other);
    QMessageBox* box = sheet();
    delete other;
    click(box, QStringLiteral("Cancel"));
}

// What another process would read: the settings file itself.
bool storedOnDisk(const QString& key)
{
    QSettings file(QSettings().fileName(), QSettings::IniFormat);
    return file.value(key, false).toBool();
}

TEST_F(Suppression, TickingTheBoxSilencesThatWarningForGood)
{
    WQWindowController& c = *controller;
    struct Case {
        QString key;
        std::function<bool()> show;
    };
    const Case cases[] = {
        {kDefaultsKey_IntegerWarning, [&] { return c.sheetForIntegerTextFieldValidationFailure(field, "N", "E"); }},
        {kDefaultsKey_DecimalWarning, [&] { return c.sheetForDecimalFieldValidationFailure(field, "N", "E", false); }},
        {kDefaultsKey_DateWarning, [&] { return c.sheetForDateField(nullptr, "x", "N", "/", "E"); }},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.key.toStdString());
        k.show();
        QMessageBox* box = sheet();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->checkBox(), Qt::LeftButton);
        ASSERT_TRUE(box->checkBox()->isChecked());
        // Ticked but not yet closed: not stored yet.
        EXPECT_FALSE(WQWarningSuppression::isSuppressed(k.key));
        click(box);
        EXPECT_TRUE(QSettings().value(k.key).toBool());
        EXPECT_TRUE(storedOnDisk(k.key));

        // Silenced: nothing shows, the answer is still no.
        EXPECT_FALSE(k.show());
        EXPECT_EQ(controller->attachedSheet(), nullptr);
    }
    EXPECT_EQ(WQWarningSuppression::suppressedKeys(), WQWarningSuppression::suppressibleKeys());

    // One key covers both decimal sheets; the date sheet with a field always shows.
    EXPECT_FALSE(c.sheetForDecimalColumnValidationFailure(nullptr, "Rate", "E", true));
    EXPECT_EQ(controller->attachedSheet(), nullptr);
    EXPECT_FALSE(c.sheetForDateField(field, "x", "Date", "/", "Invalid date"));
    QMessageBox* box = sheet();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->checkBox(), nullptr);
    click(box, QStringLiteral("Edit"));

    // A value written by another program as text counts too.
    WQWarningSuppression::showAllAgain();
    QSettings().setValue(kDefaultsKey_IntegerWarning, QStringLiteral("true"));
    EXPECT_FALSE(c.sheetForIntegerTextFieldValidationFailure(field, "N", "E"));
    EXPECT_EQ(controller->attachedSheet(), nullptr);
}

TEST_F(Suppression, TheSettingsPageListsSilencedWarningsTheApplicationsOwnTooAndBringsThemBack)
{
    WQWarningSettingsPage page;
    showActive(page);
    EXPECT_FALSE(page.showAllButton()->isEnabled());
    EXPECT_EQ(page.findChildren<QPushButton*>().size(), 1);

    // Silenced while the page is open: it follows.
    WQWarningSuppression::suppress(kDefaultsKey_IntegerWarning);
    WQWarningSuppression::suppress(kDefaultsKey_DateWarning);

    auto showAgain = [&page](const QString& key) { return page.findChild<QPushButton*>(key); };
    ASSERT_NE(showAgain(kDefaultsKey_IntegerWarning), nullptr);
    ASSERT_NE(showAgain(kDefaultsKey_DateWarning), nullptr);
    EXPECT_EQ(showAgain(kDefaultsKey_DecimalWarning), nullptr);
    EXPECT_EQ(showAgain(kDefaultsKey_DateWarning)->text(), u"Show again");
    EXPECT_TRUE(page.showAllButton()->isEnabled());

    QTest::mouseClick(showAgain(kDefaultsKey_IntegerWarning), Qt::LeftButton);
    EXPECT_FALSE(WQWarningSuppression::isSuppressed(kDefaultsKey_IntegerWarning));
    EXPECT_FALSE(storedOnDisk(kDefaultsKey_IntegerWarning));
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(kDefaultsKey_DateWarning));
    EXPECT_EQ(showAgain(kDefaultsKey_IntegerWarning), nullptr);

    WQWarningSuppression::suppress(kDefaultsKey_DecimalWarning);
    QTest::mouseClick(page.showAllButton(), Qt::LeftButton);
    EXPECT_TRUE(WQWarningSuppression::suppressedKeys().isEmpty());
    EXPECT_FALSE(page.showAllButton()->isEnabled());
    EXPECT_EQ(page.findChildren<QPushButton*>().size(), 1);

    // The application's own warnings, under its own keys.
    const QString key = QStringLiteral("Example Warning: Future Date");
    WQWarningSuppression::registerKey(key, QStringLiteral("A transaction dated in the future"));
    EXPECT_EQ(WQWarningSuppression::suppressibleKeys().last(), key);

    // One call shows a modal box with the check box; ticked, it silences the key.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&poll] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            poll.stop();
            QTest::mouseClick(box->checkBox(), Qt::LeftButton);
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        }
    });
    poll.start(10);
    const auto ask = [&] {
        return WQSuppressibleWarning(&window, key, QStringLiteral("The date lies in the future."),
                                     QStringLiteral("Scheduled ones belong elsewhere."),
                                     QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel);
    };
    EXPECT_EQ(ask(), QMessageBox::Ok);
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(key));
    EXPECT_EQ(ask(), QMessageBox::Cancel) << "silenced: nothing shows, the default answers";

    // Listed on the settings page with its description, and brought back.
    ASSERT_NE(showAgain(key), nullptr);
    EXPECT_NE(showAgain(key)->parentWidget()->findChild<QLabel*>()->text().indexOf("dated in the future"), -1);
    QTest::mouseClick(page.showAllButton(), Qt::LeftButton);
    EXPECT_FALSE(WQWarningSuppression::isSuppressed(key));

    // The same as a sheet on the controller's window.
    EXPECT_FALSE(controller->sheetForSuppressibleWarning(QStringLiteral("The date lies in the future."),
                                                         QStringLiteral("Scheduled ones belong elsewhere."), key));
    QMessageBox* box = sheet();
    ASSERT_NE(box, nullptr);
    QTest::mouseClick(box->checkBox(), Qt::LeftButton);
    click(box);
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(key));
    controller->sheetForSuppressibleWarning(QStringLiteral("Again"), QString(), key);
    EXPECT_EQ(controller->attachedSheet(), nullptr);
}

} // namespace
