#include "AlertTesting.h"

#include <WQGeneral/alerts/WQSuppressibleMessageBox.h>
#include <WQGeneral/alerts/WQWarningSettingsPage.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

using namespace wq;
using namespace wq::test;

namespace {

using Suppression = AlertTest;

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
        // Closed with the box unticked: nothing is stored, the warning stays.
        k.show();
        dismiss(sheet());
        EXPECT_FALSE(QSettings().contains(k.key));
        EXPECT_FALSE(storedOnDisk(k.key));

        k.show();
        QMessageBox* box = sheet();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->checkBox(), Qt::LeftButton);
        ASSERT_TRUE(box->checkBox()->isChecked());
        // Ticked but not yet closed: not stored yet.
        EXPECT_FALSE(WQWarningSuppression::isSuppressed(k.key));
        dismiss(box);
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

TEST_F(Suppression, TheSettingsPageListsSilencedWarningsAndBringsThemBack)
{
    WQWarningSettingsPage page;
    page.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&page));
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

    // The integer sheet shows again.
    controller->sheetForIntegerTextFieldValidationFailure(field, "N", "E");
    EXPECT_NE(sheet(), nullptr);
}

} // namespace

TEST_F(Suppression, TheApplicationsOwnWarningsUnderItsOwnKeys)
{
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
    WQWarningSettingsPage page;
    auto* showAgain = page.findChild<QPushButton*>(key);
    ASSERT_NE(showAgain, nullptr);
    EXPECT_NE(showAgain->parentWidget()->findChild<QLabel*>()->text().indexOf("dated in the future"), -1);
    QTest::mouseClick(page.showAllButton(), Qt::LeftButton);
    EXPECT_FALSE(WQWarningSuppression::isSuppressed(key));

    // The same as a sheet on the controller's window.
    EXPECT_FALSE(controller->sheetForSuppressibleWarning(QStringLiteral("The date lies in the future."),
                                                         QStringLiteral("Scheduled ones belong elsewhere."), key));
    QMessageBox* box = sheet();
    ASSERT_NE(box, nullptr);
    QTest::mouseClick(box->checkBox(), Qt::LeftButton);
    dismiss(box);
    EXPECT_TRUE(WQWarningSuppression::isSuppressed(key));
    controller->sheetForSuppressibleWarning(QStringLiteral("Again"), QString(), key);
    EXPECT_EQ(controller->attachedSheet(), nullptr);
}
