#pragma once
/// \class wq::WQNotificationCenter
/// A process-wide publish/subscribe hub: observers register for a name and,
/// optionally, one sender; posting is synchronous on the calling thread.

#include <WQGeneral/WQCoreExport.h>

#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace wq {

/// \addtogroup platform
/// @{

/// Anything that can be the object of a notification. Polymorphic so that
/// receivers can ask what kind of sender they were given (dynamic_cast).
class WQ_CORE_EXPORT WQNotificationSender {
public:
    virtual ~WQNotificationSender() = default;
};

/// One announcement: what happened, who it happened to, and its data.
struct WQ_CORE_EXPORT WQNotification {
    /// What happened; observers match on it.
    QString name;
    /// The sender the notification is about, or nullptr.
    const WQNotificationSender* object = nullptr;
    /// Absent and empty differ: a sender that attaches no data posts none.
    std::optional<QVariantMap> userInfo;
};

class WQ_CORE_EXPORT WQNotificationCenter {
public:
    /// What an observer runs for each notification it matches.
    using Handler = std::function<void(const WQNotification&)>;

    /// The application's centre.
    static WQNotificationCenter& defaultCenter();
    /// System-wide announcements (locale and number-preference changes).
    static WQNotificationCenter& distributedCenter();

    WQNotificationCenter();
    ~WQNotificationCenter();
    WQNotificationCenter(const WQNotificationCenter&) = delete;
    WQNotificationCenter& operator=(const WQNotificationCenter&) = delete;

    /// observer: an identity token used only for removal; name: empty matches
    /// every name; sender: nullptr matches every sender.
    void addObserver(const void* observer, const QString& name,
                     const WQNotificationSender* sender, Handler handler);
    /// Removes every registration of observer.
    void removeObserver(const void* observer);
    /// Removes the observer's registrations for that name (and sender, when given).
    void removeObserver(const void* observer, const QString& name,
                        const WQNotificationSender* sender = nullptr);

    /// Runs the matching handlers now, in registration order; a handler may add or remove observers.
    void post(const WQNotification& notification);
    /// Posts a notification without data.
    void postNotificationName(const QString& name, const WQNotificationSender* object = nullptr);
    /// Posts a notification with data.
    void postNotificationName(const QString& name, const WQNotificationSender* object,
                              const QVariantMap& userInfo);

    /// Number of registrations held for an observer (all of them with nullptr).
    qsizetype observationCount(const void* observer = nullptr) const;

private:
    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
    void _wq_compact();
};

/// Removes every registration of an observer when it goes out of scope.
class WQ_CORE_EXPORT WQObservation {
public:
    WQObservation() = default;
    /// Observes on center (the default centre otherwise).
    explicit WQObservation(WQNotificationCenter& center) : _wq_center(&center) {}
    WQObservation(const WQObservation&) = delete;
    WQObservation& operator=(const WQObservation&) = delete;
    ~WQObservation() { reset(); }

    /// Adds a registration that lives as long as this object.
    void observe(const QString& name, const WQNotificationSender* sender,
                 WQNotificationCenter::Handler handler);
    /// Removes every registration made through this object now.
    void reset();

private:
    WQNotificationCenter* _wq_center = &WQNotificationCenter::defaultCenter();
};

/// @}

} // namespace wq
