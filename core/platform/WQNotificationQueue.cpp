#include <WQGeneral/platform/WQNotificationQueue.h>
#include <WQGeneral/platform/WQDeferred.h>

namespace wq {

WQNotificationQueue& WQNotificationQueue::defaultQueue()
{
    static WQNotificationQueue queue(WQNotificationCenter::defaultCenter());
    return queue;
}

struct WQNotificationQueue::_wq_Private {
    explicit _wq_Private(WQNotificationCenter& center) : center(center) {}

    WQNotificationCenter& center;
    QList<WQNotification> pending;
    bool scheduled = false;
};

WQNotificationQueue::WQNotificationQueue(WQNotificationCenter& center) : _wq_d(std::make_unique<_wq_Private>(center)) {}
WQNotificationQueue::~WQNotificationQueue() = default;

qsizetype WQNotificationQueue::pendingCount() const { return _wq_d->pending.size(); }

void WQNotificationQueue::enqueueASAP(const WQNotification& notification, int coalesceMask)
{
    for (const WQNotification& queued : std::as_const(_wq_d->pending)) {
        const bool sameName = queued.name == notification.name;
        const bool sameSender = queued.object == notification.object;
        if (coalesceMask == (CoalescingOnName | CoalescingOnSender) && sameName && sameSender)
            return;
        if (coalesceMask == CoalescingOnName && sameName)
            return;
        if (coalesceMask == CoalescingOnSender && sameSender)
            return;
    }
    _wq_d->pending.append(notification);
    if (!_wq_d->scheduled) {
        _wq_d->scheduled = WQPerformDeferred([this] { _wq_flush(); }, 0);
    }
}

void WQNotificationQueue::dequeueNotificationsForSender(const WQNotificationSender* sender)
{
    _wq_d->pending.removeIf([sender](const WQNotification& n) { return n.object == sender; });
}

void WQNotificationQueue::_wq_flush()
{
    _wq_d->scheduled = false;
    const QList<WQNotification> batch = std::exchange(_wq_d->pending, {});
    for (const WQNotification& n : batch)
        _wq_d->center.post(n);
}

} // namespace wq
