#include <WQGeneral/platform/WQNotificationCenter.h>

#include <algorithm>

namespace wq {

struct WQNotificationCenter::_wq_Private {
    struct Registration {
        quint64 serial;
        const void* observer;
        QString name;
        const WQNotificationSender* sender;
        Handler handler;
        bool removed;
    };
    std::vector<Registration> registrations;
    quint64 nextSerial = 1;
    int postDepth = 0;
};

WQNotificationCenter::WQNotificationCenter() : _wq_d(std::make_unique<_wq_Private>()) {}
WQNotificationCenter::~WQNotificationCenter() = default;

WQNotificationCenter& WQNotificationCenter::defaultCenter()
{
    static WQNotificationCenter center;
    return center;
}

WQNotificationCenter& WQNotificationCenter::distributedCenter()
{
    static WQNotificationCenter center;
    return center;
}

void WQNotificationCenter::addObserver(const void* observer, const QString& name,
                                       const WQNotificationSender* sender, Handler handler)
{
    if (!handler)
        return;
    _wq_d->registrations.push_back({_wq_d->nextSerial++, observer, name, sender, std::move(handler), false});
}

void WQNotificationCenter::removeObserver(const void* observer)
{
    for (auto& r : _wq_d->registrations)
        if (r.observer == observer)
            r.removed = true;
    _wq_compact();
}

void WQNotificationCenter::removeObserver(const void* observer, const QString& name,
                                          const WQNotificationSender* sender)
{
    for (auto& r : _wq_d->registrations)
        if (r.observer == observer && (name.isEmpty() || r.name == name)
            && (!sender || r.sender == sender))
            r.removed = true;
    _wq_compact();
}

void WQNotificationCenter::post(const WQNotification& notification)
{
    // Observers added while posting wait for the next post; observers removed
    // while posting are not called any more.
    const quint64 lastSerial = _wq_d->nextSerial - 1;
    ++_wq_d->postDepth;
    for (std::size_t i = 0; i < _wq_d->registrations.size(); ++i) {
        const _wq_Private::Registration& r = _wq_d->registrations[i];
        if (r.removed || r.serial > lastSerial)
            continue;
        if (!r.name.isEmpty() && r.name != notification.name)
            continue;
        if (r.sender && r.sender != notification.object)
            continue;
        Handler handler = r.handler; // the vector may grow while it runs
        handler(notification);
    }
    --_wq_d->postDepth;
    _wq_compact();
}

void WQNotificationCenter::postNotificationName(const QString& name, const WQNotificationSender* object)
{
    post(WQNotification{name, object, std::nullopt});
}

void WQNotificationCenter::postNotificationName(const QString& name, const WQNotificationSender* object,
                                                const QVariantMap& userInfo)
{
    post(WQNotification{name, object, userInfo});
}

qsizetype WQNotificationCenter::observationCount(const void* observer) const
{
    return std::count_if(_wq_d->registrations.begin(), _wq_d->registrations.end(),
                         [observer](const _wq_Private::Registration& r) {
                             return !r.removed && (!observer || r.observer == observer);
                         });
}

void WQNotificationCenter::_wq_compact()
{
    if (_wq_d->postDepth > 0)
        return;
    std::erase_if(_wq_d->registrations, [](const _wq_Private::Registration& r) { return r.removed; });
}

void WQObservation::observe(const QString& name, const WQNotificationSender* sender,
                            WQNotificationCenter::Handler handler)
{
    _wq_center->addObserver(this, name, sender, std::move(handler));
}

void WQObservation::reset()
{
    _wq_center->removeObserver(this);
}

} // namespace wq
