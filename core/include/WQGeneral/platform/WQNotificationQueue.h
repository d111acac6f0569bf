#pragma once
/// \class wq::WQNotificationQueue
/// Posting "as soon as possible": a queued notification is delivered on the
/// next pass of the main event loop, and a second one of the same name queued
/// before that pass is dropped (coalescing on name).

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QList>

#include <memory>

namespace wq {

/// \addtogroup platform
/// @{

class WQ_CORE_EXPORT WQNotificationQueue {
public:
    /// What makes two queued notifications the same; flags to combine.
    enum Coalescing { NoCoalescing = 0, CoalescingOnName = 1, CoalescingOnSender = 2 };

    /// The queue of the default centre.
    static WQNotificationQueue& defaultQueue();

    /// A queue that posts on center.
    explicit WQNotificationQueue(WQNotificationCenter& center);
    ~WQNotificationQueue();
    WQNotificationQueue(const WQNotificationQueue&) = delete;
    WQNotificationQueue& operator=(const WQNotificationQueue&) = delete;

    /// Needs a QCoreApplication for delivery; without one, nothing is posted
    /// until one exists and its loop runs.
    void enqueueASAP(const WQNotification& notification, int coalesceMask = CoalescingOnName);
    /// Drops queued notifications (for instance of a sender about to be destroyed).
    void dequeueNotificationsForSender(const WQNotificationSender* sender);
    /// Notifications waiting for the next pass of the event loop.
    qsizetype pendingCount() const;

private:
    void _wq_flush();
    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
};

/// @}

} // namespace wq
