#pragma once
/// \class wq::WQWarningSuppression
/// The warnings a user has silenced with "Don't show again". Each is a
/// boolean under its key (<WQGeneral/alerts/WQWarningKeys.h>) in the
/// application's QSettings, so it is per user and survives restarts; every
/// change is written through at once.

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
    /// The three warnings a user can silence, in a fixed order.
    static const QStringList& suppressibleKeys();
    /// A sentence saying what the warning is about, for a settings page.
    static QString describe(const QString& key);

    /// True when the user silenced the warning under key.
    static bool isSuppressed(const QString& key);
    /// Silences the warning under key for good.
    static void suppress(const QString& key);
    /// Shows the warning under key again.
    static void showAgain(const QString& key);
    /// Shows every warning again.
    static void showAllAgain();
    /// The silenced ones among suppressibleKeys().
    static QStringList suppressedKeys();

    /// Announces every change made through this class.
    static WQWarningSuppression& notifier();

signals:
    /// A warning was silenced or shown again.
    void changed();

private:
    WQWarningSuppression() = default;
};

/// @}

} // namespace wq
