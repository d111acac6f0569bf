#include <WQGeneral/platform/WQNotificationQueue.h>
#include <WQGeneral/platform/WQDeferred.h>

namespace wq {

WQNotificationQueue& WQNotificationQueue::defaultQueue()
{
    static WQNotificationQueue queue(WQNotificationCenter::defaultCenter());
    return queue;
}

WQNotificationQueue::WQNotificationQueue(WQNotificationCenter& center) : _wq_center(center) {}

void WQNotificationQueue::enqueueASAP(const WQNotification& notification, int coalesceMask)
{
    for (const WQNotification& queued : std::as_const(_wq_pending)) {
        const bool sameName = queued.name == notification.name;
        const bool sameSender = queued.object == notification.object;
        if (coalesceMask == (CoalescingOnName | CoalescingOnSender) && sameName && sameSender)
            return;
        if (coalesceMask == CoalescingOnName && sameName)
            return;
        if (coalesceMask == CoalescingOnSender && sameSender)
            return;
    }
    _wq_pending.append(notification);
    if (!_wq_scheduled) {
        _wq_scheduled = WQPerformDeferred([this] { _wq_flush(); }, 0);
    }
}

void WQNotificationQueue::dequeueNotificationsForSender(const WQNotificationSender* sender)
{
    _wq_pending.removeIf([sender](const WQNotification& n) { return n.object == sender; });
}

void WQNotificationQueue::_wq_flush()
{
    _wq_scheduled = false;
    const QList<WQNotification> batch = std::exchange(_wq_pending, {});
    for (const WQNotification& n : batch)
        _wq_center.post(n);
}

} // namespace wq
