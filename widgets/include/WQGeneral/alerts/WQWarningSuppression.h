#pragma once
// The warnings a user has silenced with "Don't show again". Each is a
// boolean under its key (<WQGeneral/alerts/WQWarningKeys.h>) in the
// application's QSettings, so it is per user and survives restarts; every
// change is written through at once.

#include <WQGeneral/alerts/WQWarningKeys.h>

#include <QObject>
#include <QStringList>

namespace wq {

class WQWarningSuppression : public QObject {
    Q_OBJECT
public:
    // The three warnings a user can silence, in a fixed order.
    static const QStringList& suppressibleKeys();
    // A sentence saying what the warning is about, for a settings page.
    static QString describe(const QString& key);

    static bool isSuppressed(const QString& key);
    static void suppress(const QString& key);
    static void showAgain(const QString& key);
    static void showAllAgain();
    // The silenced ones among suppressibleKeys().
    static QStringList suppressedKeys();

    // Announces every change made through this class.
    static WQWarningSuppression& notifier();

signals:
    void changed();

private:
    WQWarningSuppression() = default;
};

} // namespace wq
