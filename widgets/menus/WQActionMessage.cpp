#include <WQGeneral/menus/WQActionMessage.h>

#include <QAction>
#include <QApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QWidget>

namespace wq {
namespace {

// What an item sends and to whom, kept as a child of the item so that it
// goes with it.
class ActionMessage : public QObject {
    Q_OBJECT
public:
    explicit ActionMessage(QAction& item) : QObject(&item)
    {
        connect(&item, &QAction::triggered, this, [this, &item] { WQSendAction(action, target, &item); });
    }
    QByteArray action;
    QPointer<QObject> target;
};

ActionMessage* messageOf(const QAction& item)
{
    return item.findChild<ActionMessage*>(QString(), Qt::FindDirectChildrenOnly);
}

// The method of `target` named `action` that can take `sender`, else the one
// that takes nothing.
QMetaMethod methodFor(const QObject& target, const QByteArray& action, const QObject* sender, bool* takesSender)
{
    const QMetaObject* meta = target.metaObject();
    QMetaMethod bare;
    for (int i = meta->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Slot && method.methodType() != QMetaMethod::Method)
            continue;
        if (method.name() != action)
            continue;
        if (method.parameterCount() == 1) {
            const QMetaType type = method.parameterMetaType(0);
            const QMetaObject* wanted = type.metaObject();
            if ((type.flags() & QMetaType::PointerToQObject) && wanted
                && (!sender || sender->metaObject()->inherits(wanted))) {
                *takesSender = true;
                return method;
            }
        } else if (method.parameterCount() == 0 && !bare.isValid()) {
            bare = method;
        }
    }
    *takesSender = false;
    return bare;
}

bool answers(const QObject* object, const QByteArray& action)
{
    bool takesSender = false;
    return object && methodFor(*object, action, nullptr, &takesSender).isValid();
}

} // namespace

void wq_setAction(QAction& item, const QByteArray& action, QObject* target)
{
    ActionMessage* message = messageOf(item);
    if (!message)
        message = new ActionMessage(item);
    message->action = action;
    message->target = target;
}

QByteArray wq_action(const QAction& item)
{
    const ActionMessage* message = messageOf(item);
    return message ? message->action : QByteArray();
}

QObject* wq_target(const QAction& item)
{
    const ActionMessage* message = messageOf(item);
    return message ? message->target.data() : nullptr;
}

QAction* wq_addItemWithTitle(QWidget& menu, const QString& title, const QByteArray& action, QObject* target,
                             const QKeySequence& keyEquivalent)
{
    auto* item = new QAction(title, &menu);
    if (!keyEquivalent.isEmpty())
        item->setShortcut(keyEquivalent);
    wq_setAction(*item, action, target);
    menu.addAction(item);
    return item;
}

bool WQAnswersAction(const QObject& target, const QByteArray& action)
{
    return !action.isEmpty() && answers(&target, action);
}

QObject* WQTargetForAction(const QByteArray& action)
{
    if (action.isEmpty())
        return nullptr;
    QWidget* widget = QApplication::focusWidget();
    if (!widget)
        widget = QApplication::activeWindow();
    for (; widget; widget = widget->parentWidget()) {
        if (answers(widget, action))
            return widget;
        if (widget->isWindow()) {
            QObject* controller = widget->property(kWQWindowControllerProperty).value<QObject*>();
            if (answers(controller, action))
                return controller;
            break;
        }
    }
    return answers(QCoreApplication::instance(), action) ? QCoreApplication::instance() : nullptr;
}

bool WQSendAction(const QByteArray& action, QObject* target, QObject* sender)
{
    if (action.isEmpty())
        return false;
    if (!target)
        target = WQTargetForAction(action);
    if (!target)
        return false;
    bool takesSender = false;
    const QMetaMethod method = methodFor(*target, action, sender, &takesSender);
    if (!method.isValid())
        return false;
    if (!takesSender)
        return method.invoke(target, Qt::DirectConnection);
    // moc puts QObject first in every class it knows, so the sender's address
    // is also its address as the parameter's class.
    return method.invoke(target, Qt::DirectConnection,
                         QGenericArgument(method.parameterTypeName(0).constData(), static_cast<const void*>(&sender)));
}

} // namespace wq

#include "WQActionMessage.moc"
