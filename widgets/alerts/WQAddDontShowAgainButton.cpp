#include <WQGeneral/alerts/WQAddDontShowAgainButton.h>
#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

namespace wq {
namespace {

void sendOnClick(QAbstractButton& button, QObject* target, const QByteArray& action)
{
    const QPointer<QObject> receiver(target);
    QObject::connect(&button, &QAbstractButton::clicked, &button, [receiver, action, &button] {
        if (receiver)
            WQSendAction(action, receiver, &button);
    });
}

QCheckBox* newCheckBox(QWidget* panel, QObject* target, const QVariant& attached, const QByteArray& action)
{
    auto* checkBox = new QCheckBox(WQStrings::tr("Don't show again"), panel);
    checkBox->setProperty(kWQRepresentedObjectProperty, attached);
    sendOnClick(*checkBox, target, action);
    return checkBox;
}

// The buttons' clicks send the panel's action instead of what they did.
void redirect(QAbstractButton& button, QObject* target, const QByteArray& action)
{
    QObject::disconnect(&button, &QAbstractButton::clicked, nullptr, nullptr);
    sendOnClick(button, target, action);
}

// A message box lays out its own children, and its buttons sit in a button
// box: the check box goes where the box puts one, below the text, and
// Cancel among the buttons.
void addToMessageBox(QMessageBox& box, QObject* target, const QVariant& attached, const QByteArray& checkBoxAction,
                     const QByteArray& buttonsAction, const QByteArray& cancelAction)
{
    for (QAbstractButton* button : box.buttons())
        redirect(*button, target, buttonsAction);
    box.setCheckBox(newCheckBox(&box, target, attached, checkBoxAction));
    if (!cancelAction.isEmpty()) {
        QPushButton* cancel = box.addButton(WQStrings::tr("Cancel"), QMessageBox::RejectRole);
        box.setEscapeButton(cancel);
        redirect(*cancel, target, cancelAction);
    }
}

} // namespace

void WQAddDontShowAgainButton(QObject* target, QWidget* panel, const QVariant& attached,
                              const QByteArray& checkBoxAction, const QByteArray& buttonsAction,
                              const QByteArray& cancelAction)
{
    if (!panel)
        return;
    if (auto* box = qobject_cast<QMessageBox*>(panel)) {
        addToMessageBox(*box, target, attached, checkBoxAction, buttonsAction, cancelAction);
        return;
    }
    // The reference frames, at first the panel's bottom-left corner.
    int left = 20;
    QRect reference(0, panel->height(), 0, 0);
    QRect cancelFrame(0, panel->height() - 80, 230, 80);

    const QList<QWidget*> children = panel->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* child : children) {
        if (auto* button = qobject_cast<QAbstractButton*>(child)) {
            reference = button->geometry();
            cancelFrame = reference;
            cancelFrame.moveLeft(cancelFrame.x() - (cancelFrame.width() - 4));
            redirect(*button, target, buttonsAction);
        } else if (child->geometry().x() > 40) {
            left = child->geometry().x();
        }
    }

    QCheckBox* checkBox = newCheckBox(panel, target, attached, checkBoxAction);
    checkBox->setGeometry(left, reference.y(), 140, reference.height());
    checkBox->resize(checkBox->sizeHint());
    checkBox->move(left, reference.y() + 4);
    checkBox->show();

    if (!cancelAction.isEmpty()) {
        auto* cancel = new QPushButton(WQStrings::tr("Cancel"), panel);
        cancel->setGeometry(cancelFrame);
        cancel->setShortcut(QKeySequence(Qt::Key_Escape));
        cancel->setAutoDefault(false);
        sendOnClick(*cancel, target, cancelAction);
        cancel->show();
    }
}

} // namespace wq
