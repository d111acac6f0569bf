#pragma once
// A process-wide publish/subscribe hub: observers register for a name and,
// optionally, one sender; posting is synchronous on the calling thread.

#include <QString>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <vector>

namespace wq {

// Anything that can be the object of a notification. Polymorphic so that
// receivers can ask what kind of sender they were given (dynamic_cast).
class WQNotificationSender {
public:
    virtual ~WQNotificationSender() = default;
};

struct WQNotification {
    QString name;
    const WQNotificationSender* object = nullptr;
    // Absent and empty differ: a sender that attaches no data posts none.
    std::optional<QVariantMap> userInfo;
};

class WQNotificationCenter {
public:
    using Handler = std::function<void(const WQNotification&)>;

    // The application's centre.
    static WQNotificationCenter& defaultCenter();
    // System-wide announcements (locale and number-preference changes).
    static WQNotificationCenter& distributedCenter();

    WQNotificationCenter() = default;
    WQNotificationCenter(const WQNotificationCenter&) = delete;
    WQNotificationCenter& operator=(const WQNotificationCenter&) = delete;

    // observer: an identity token used only for removal; name: empty matches
    // every name; sender: nullptr matches every sender.
    void addObserver(const void* observer, const QString& name,
                     const WQNotificationSender* sender, Handler handler);
    void removeObserver(const void* observer);
    void removeObserver(const void* observer, const QString& name,
                        const WQNotificationSender* sender = nullptr);

    void post(const WQNotification& notification);
    void postNotificationName(const QString& name, const WQNotificationSender* object = nullptr);
    void postNotificationName(const QString& name, const WQNotificationSender* object,
                              const QVariantMap& userInfo);

    // Number of registrations held for an observer (all of them with nullptr).
    qsizetype observationCount(const void* observer = nullptr) const;

private:
    struct Registration {
        quint64 serial;
        const void* observer;
        QString name;
        const WQNotificationSender* sender;
        Handler handler;
        bool removed;
    };
    std::vector<Registration> _wq_registrations;
    quint64 _wq_nextSerial = 1;
    int _wq_postDepth = 0;
    void _wq_compact();
};

// Removes every registration of an observer when it goes out of scope.
class WQObservation {
public:
    WQObservation() = default;
    explicit WQObservation(WQNotificationCenter& center) : _wq_center(&center) {}
    WQObservation(const WQObservation&) = delete;
    WQObservation& operator=(const WQObservation&) = delete;
    ~WQObservation() { reset(); }

    void observe(const QString& name, const WQNotificationSender* sender,
                 WQNotificationCenter::Handler handler);
    void reset();

private:
    WQNotificationCenter* _wq_center = &WQNotificationCenter::defaultCenter();
};

} // namespace wq
