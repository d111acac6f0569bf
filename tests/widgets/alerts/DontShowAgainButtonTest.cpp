#include "FieldTesting.h"

#include <WQGeneral/alerts/WQAddDontShowAgainButton.h>

#include <WQTestSupport.h>

#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace wq;

namespace {

class PanelOwner : public QObject {
    Q_OBJECT
public:
    QStringList calls;
    QVariant attached;
public slots:
    void boxToggled(QObject* sender)
    {
        calls << QStringLiteral("box");
        attached = sender->property(kWQRepresentedObjectProperty);
    }
    void buttonPressed(QAbstractButton* sender) { calls << QStringLiteral("button:") + sender->text(); }
    void cancelled() { calls << QStringLiteral("cancel"); }
};

QPushButton* buttonTitled(const QWidget& panel, const QString& title)
{
    for (QPushButton* button : panel.findChildren<QPushButton*>(QString(), Qt::FindDirectChildrenOnly))
        if (button->text() == title)
            return button;
    return nullptr;
}

TEST(DontShowAgainButton, LinesUpOnAPanelSitsInAMessageBoxAndTheButtonsTheBoxAndCancelSendTheirActions)
{
    // An alert panel laid out by hand: icon, message, two buttons at the
    // bottom right (in Qt's coordinates, y counting down from the top).
    QWidget panel;
    panel.resize(420, 160);
    (new QLabel(QStringLiteral("!"), &panel))->setGeometry(20, 20, 32, 32);
    (new QLabel(QStringLiteral("The message."), &panel))->setGeometry(72, 20, 320, 60);
    auto* ok = new QPushButton(QStringLiteral("OK"), &panel);
    ok->setGeometry(320, 112, 82, 32);
    (new QPushButton(QStringLiteral("Later"), &panel))->setGeometry(236, 114, 90, 30);
    PanelOwner owner;
    int oldConnectionCalls = 0;
    QObject::connect(ok, &QPushButton::clicked, [&oldConnectionCalls] { ++oldConnectionCalls; });
    WQAddDontShowAgainButton(&owner, &panel, QStringLiteral("integer warning"), "boxToggled", "buttonPressed",
                             "cancelled");

    QCheckBox* box = panel.findChild<QCheckBox*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"Don't show again");
    // Left edge from the message (x 72 > 40), top 4 below the last button's
    // top (the "Later" button, last in order), width and height fitted.
    EXPECT_EQ(box->geometry(), QRect(QPoint(72, 114 + 4), box->sizeHint()));

    // Cancel takes the last button's frame moved left by its width less 4.
    QPushButton* cancel = buttonTitled(panel, QStringLiteral("Cancel"));
    ASSERT_NE(cancel, nullptr);
    EXPECT_EQ(cancel->geometry(), QRect(236 - 86, 114, 90, 30));

    test::showActive(panel);
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::mouseClick(ok, Qt::LeftButton);
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_EQ(owner.calls, QStringList({"box", "button:OK", "cancel"}));
    EXPECT_EQ(owner.attached.toString(), u"integer warning");
    // The buttons' earlier connections are replaced.
    EXPECT_EQ(oldConnectionCalls, 0);

    // Escape is Cancel's key.
    QTest::keyClick(&panel, Qt::Key_Escape);
    EXPECT_TRUE(test::spinUntil([&owner] { return owner.calls.size() == 4; }));
    EXPECT_EQ(owner.calls.value(3), u"cancel");

    // Without buttons, from the bottom-left corner.
    QWidget plain;
    plain.resize(300, 120);
    (new QLabel(QStringLiteral("icon"), &plain))->setGeometry(10, 10, 30, 30);
    WQAddDontShowAgainButton(&owner, &plain, QVariant(), "boxToggled", "buttonPressed", "cancelled");

    box = plain.findChild<QCheckBox*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(box, nullptr);
    // Nothing past x = 40: the left edge stays 20. The zero frame is the
    // bottom-left corner, so the box lies 4 below the bottom edge.
    EXPECT_EQ(box->geometry(), QRect(QPoint(20, 120 + 4), box->sizeHint()));
    cancel = buttonTitled(plain, QStringLiteral("Cancel"));
    ASSERT_NE(cancel, nullptr);
    EXPECT_EQ(cancel->geometry(), QRect(0, 120 - 80, 230, 80));

    // Without a cancel action there is no Cancel button.
    QWidget bare;
    bare.resize(300, 120);
    WQAddDontShowAgainButton(&owner, &bare, QVariant(), "boxToggled", "buttonPressed");
    EXPECT_EQ(buttonTitled(bare, QStringLiteral("Cancel")), nullptr);
    ASSERT_NE(bare.findChild<QCheckBox*>(QString(), Qt::FindDirectChildrenOnly), nullptr);

    // Nothing to add to.
    WQAddDontShowAgainButton(&owner, nullptr, QVariant(), "boxToggled", "buttonPressed", "cancelled");

    // Where the check box goes on a message box is the box's own layout.
    QMessageBox message(QMessageBox::Warning, QStringLiteral("Title"), QStringLiteral("A message."), QMessageBox::Ok);
    owner.calls.clear();
    WQAddDontShowAgainButton(&owner, &message, QStringLiteral("key"), "boxToggled", "buttonPressed", "cancelled");
    message.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&message));
    ASSERT_TRUE(message.checkBox() && message.checkBox()->isVisible());
    ASSERT_NE(message.escapeButton(), nullptr);
    EXPECT_EQ(message.escapeButton()->text(), u"Cancel");
    QTest::mouseClick(message.checkBox(), Qt::LeftButton);
    QTest::mouseClick(message.button(QMessageBox::Ok), Qt::LeftButton);
    QTest::mouseClick(message.escapeButton(), Qt::LeftButton);
    EXPECT_EQ(owner.calls, QStringList({"box", "button:OK", "cancel"}));
    EXPECT_EQ(owner.attached.toString(), u"key");
    EXPECT_TRUE(message.isVisible()) << "the target decides when the box closes";
}

} // namespace

#include "DontShowAgainButtonTest.moc"
