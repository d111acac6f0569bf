#pragma once
// A shown window with a controller and a field, and the sheet it shows.

#include "FieldTesting.h"

#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/alerts/WQWindowController.h>
#include <WQGeneral/fields/WQLineEdit.h>

#include <WQTestSupport.h>

#include <QAbstractButton>
#include <QMessageBox>
#include <QVBoxLayout>

namespace wq::test {

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

    static QStringList buttonTexts(const QMessageBox& box)
    {
        QStringList texts;
        for (const QAbstractButton* button : box.buttons())
            texts << button->text();
        texts.sort();
        return texts;
    }

    // Clicks the button of the sheet with that text and lets it end.
    void click(QMessageBox* box, const QString& text)
    {
        ASSERT_NE(box, nullptr);
        for (QAbstractButton* button : box->buttons())
            if (button->text() == text) {
                QTest::mouseClick(button, Qt::LeftButton);
                ASSERT_TRUE(spinUntil([&] { return controller->attachedSheet() != box; }));
                return;
            }
        FAIL() << "no button " << text.toStdString();
    }
    // Closes the sheet with its first button (OK on a suppressible one).
    void dismiss(QMessageBox* box)
    {
        ASSERT_NE(box, nullptr);
        click(box, box->buttons().first()->text());
    }

    QWidget window;
    WQWindowController* controller = new WQWindowController(window);
    WQLineEdit* field = nullptr;
    WQLineEdit* other = nullptr;
};

} // namespace wq::test
