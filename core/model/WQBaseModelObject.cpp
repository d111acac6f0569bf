#include <WQGeneral/model/WQBaseModelObject.h>

namespace wq {

WQBaseModelObject::~WQBaseModelObject()
{
    WQNotificationCenter::defaultCenter().removeObserver(static_cast<const void*>(this));
}

QUndoStack* WQBaseModelObject::undoManager() const
{
    return _wq_document ? _wq_document->undoManager() : nullptr;
}

void WQBaseModelObject::sendNotification(const QString& name) const
{
    if (_wq_sendNotifications)
        WQNotificationCenter::defaultCenter().postNotificationName(name, this);
}

void WQBaseModelObject::sendNotification(const QString& name, const QVariant& data) const
{
    if (!_wq_sendNotifications)
        return;
    if (!data.isValid()) {
        sendNotification(name);
        return;
    }
    WQNotificationCenter::defaultCenter().postNotificationName(name, this, QVariantMap{{kWQKey_UserData, data}});
}

void WQBaseModelObject::observeNotification(const QString& name, const WQNotificationSender* sender,
                                            WQNotificationCenter::Handler handler)
{
    WQNotificationCenter::defaultCenter().addObserver(static_cast<const void*>(this), name, sender,
                                                      std::move(handler));
}

void WQExtractDataFromNotification(const WQNotification& notification, const WQNotificationSender** sender,
                                   const WQDocument** document, QVariant* data)
{
    const WQNotificationSender* object = notification.object;
    if (sender)
        *sender = object;
    if (document) {
        if (const auto* asDocument = dynamic_cast<const WQDocument*>(object))
            *document = asDocument;
        else if (const auto* holder = dynamic_cast<const WQDocumentHolder*>(object))
            *document = holder->document();
        else
            *document = nullptr;
    }
    if (data) {
        *data = QVariant();
        if (notification.userInfo) {
            const auto it = notification.userInfo->constFind(kWQKey_UserData);
            if (it != notification.userInfo->constEnd())
                *data = *it;
        }
    }
}

} // namespace wq
