#pragma once
/// \class wq::WQWarningSuppression
/// The warnings a user has silenced with "Don't show again". Each is a
/// boolean under its key (<WQGeneral/alerts/WQWarningKeys.h>) in the
/// application's QSettings, so it is per user and survives restarts; every
/// change is written through at once.
///
/// The framework's three refusal warnings are known from the start; an
/// application adds its own with registerKey(), so that its warnings are
/// listed on the settings page and shown again with the others.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/alerts/WQWarningKeys.h>

#include <QObject>
#include <QStringList>

namespace wq {

/// \addtogroup alerts
/// @{

class WQ_CORE_EXPORT WQWarningSuppression : public QObject {
    Q_OBJECT
public:
    /// The warnings a user can silence: the framework's three, then the
    /// application's in the order they were registered.
    static const QStringList& suppressibleKeys();
    /// Makes the application's warning under key one the user can silence,
    /// described by description (a translated sentence saying what the
    /// warning is about) on the settings page. Registering a key again only
    /// changes its description; an empty key is ignored. Keys live in the
    /// application's QSettings beside its own settings, so a key names
    /// nothing else there.
    static void registerKey(const QString& key, const QString& description);
    /// A sentence saying what the warning is about, for a settings page; the
    /// key itself for a key nobody registered.
    static QString describe(const QString& key);

    /// True when the user silenced the warning under key.
    static bool isSuppressed(const QString& key);
    /// Silences the warning under key for good.
    static void suppress(const QString& key);
    /// Shows the warning under key again.
    static void showAgain(const QString& key);
    /// Shows every warning of suppressibleKeys() again.
    static void showAllAgain();
    /// The silenced ones among suppressibleKeys().
    static QStringList suppressedKeys();

    /// Announces every change made through this class.
    static WQWarningSuppression& notifier();

signals:
    /// A warning was silenced, shown again or registered.
    void changed();

private:
    WQWarningSuppression() = default;
};

/// @}

} // namespace wq
