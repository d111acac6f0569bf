#include <WQGeneral/alerts/WQAddDontShowAgainButton.h>
#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QAbstractButton>
#include <QCheckBox>
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

} // namespace

void WQAddDontShowAgainButton(QObject* target, QWidget* panel, const QVariant& attached,
                              const QByteArray& checkBoxAction, const QByteArray& buttonsAction,
                              const QByteArray& cancelAction)
{
    if (!panel)
        return;
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
            QObject::disconnect(button, &QAbstractButton::clicked, nullptr, nullptr);
            sendOnClick(*button, target, buttonsAction);
        } else if (child->geometry().x() > 40) {
            left = child->geometry().x();
        }
    }

    auto* checkBox = new QCheckBox(WQStrings::tr("Don't show again"), panel);
    checkBox->setProperty(kWQRepresentedObjectProperty, attached);
    checkBox->setGeometry(left, reference.y(), 140, reference.height());
    sendOnClick(*checkBox, target, checkBoxAction);
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
