#pragma once
// Helpers shared by the test binaries.

#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

// Readable failures for the framework's text and range types.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace wq {
inline void PrintTo(const WQRange& range, std::ostream* os)
{
    *os << '{' << range.location << ", " << range.length << '}';
}
} // namespace wq

namespace wq::test {

// Pins every regional-settings category for one scope.
class ScopedLocale {
public:
    explicit ScopedLocale(const QString& name) { WQRegionalSettings::setAllLocales(name); }
    ~ScopedLocale() { WQRegionalSettings::resetToEnvironment(); }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
};

// Collects the qWarning (and other message) lines of one scope.
class LogCapture {
public:
    LogCapture() : _previous(qInstallMessageHandler(&LogCapture::handler)) { lines().clear(); }
    ~LogCapture() { qInstallMessageHandler(_previous); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    static QStringList& lines()
    {
        static QStringList captured;
        return captured;
    }

private:
    static void handler(QtMsgType, const QMessageLogContext&, const QString& message) { lines().append(message); }
    QtMessageHandler _previous;
};

// The notifications of one name that reach the default centre, in order.
struct Heard {
    explicit Heard(const QString& name)
    {
        observation.observe(name, nullptr, [this](const WQNotification& n) {
            seen.push_back(n);
            objects.push_back(n.object);
        });
    }
    std::vector<WQNotification> seen;
    std::vector<const WQNotificationSender*> objects; // the senders of seen
    WQObservation observation;
};

// n bytes the generator seeded with seed makes; the same on every run.
inline QByteArray randomBytes(qsizetype n, quint32 seed)
{
    QRandomGenerator generator(seed);
    QByteArray bytes(n, Qt::Uninitialized);
    for (char& b : bytes)
        b = char(generator.bounded(256));
    return bytes;
}

// what() of the E that work() raises; any other exception fails the test.
template <class E, class Work>
std::string messageOf(Work&& work)
{
    try {
        work();
    } catch (const E& e) {
        return e.what();
    }
    return "(nothing raised)";
}

// Runs the event loop until done() holds or timeoutMs passes; answers done().
inline bool spinUntil(const std::function<bool()>& done, int timeoutMs = 2000)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < timeoutMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
    return done();
}

// Runs the event loop for a while, whatever happens.
inline void spinFor(int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
}

} // namespace wq::test
