#include <WQGeneral/model/WQBaseModelObject.h>

namespace wq {

struct WQBaseModelObject::_wq_Private {
    WQDocument* document = nullptr;
    quint32 uniqueID = 0;
    bool sendNotifications = true;
};

WQBaseModelObject::WQBaseModelObject() : _wq_d(std::make_unique<_wq_Private>()) {}

WQBaseModelObject::~WQBaseModelObject()
{
    WQNotificationCenter::defaultCenter().removeObserver(static_cast<const void*>(this));
}

QUndoStack* WQBaseModelObject::undoManager() const
{
    return _wq_d->document ? _wq_d->document->undoManager() : nullptr;
}

void WQBaseModelObject::sendNotification(const QString& name) const
{
    if (_wq_d->sendNotifications)
        WQNotificationCenter::defaultCenter().postNotificationName(name, this);
}

void WQBaseModelObject::sendNotification(const QString& name, const QVariant& data) const
{
    if (!_wq_d->sendNotifications)
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

void WQBaseModelObject::setDocument(WQDocument* document) { _wq_d->document = document; }
WQDocument* WQBaseModelObject::document() const { return _wq_d->document; }
void WQBaseModelObject::setVeltranoID(quint32 identifier) { _wq_d->uniqueID = identifier; }
quint32 WQBaseModelObject::veltranoID() const { return _wq_d->uniqueID; }
void WQBaseModelObject::disableNotificationSending() { _wq_d->sendNotifications = false; }
void WQBaseModelObject::enableNotificationSending() { _wq_d->sendNotifications = true; }

} // namespace wq
