// Test entry point shared by every test binary.

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtGlobal>

#if defined(WQ_TEST_GUI)
#include <QApplication>
using TestApplication = QApplication;
#elif defined(WQ_TEST_QUICK)
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#else
#include <QCoreApplication>
using TestApplication = QCoreApplication;
#endif

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);

    // A throw-away home: settings, logs and desktop files land here.
    QTemporaryDir home(QDir::tempPath() + QStringLiteral("/wq-test-home-XXXXXX"));
    if (!home.isValid())
        return 3;
    const QByteArray root = home.path().toLocal8Bit();
    qputenv("HOME", root);
    qputenv("XDG_CONFIG_HOME", root + "/.config");
    qputenv("XDG_DATA_HOME", root + "/.local/share");
    qputenv("XDG_CACHE_HOME", root + "/.cache");
    qputenv("XDG_STATE_HOME", root + "/.local/state");
    qputenv("XDG_DESKTOP_DIR", root + "/Desktop");
    qputenv("XDG_RUNTIME_DIR", root + "/run");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef WQ_TEST_QUICK
    // Offscreen there is no GPU: Qt Quick draws in software, in one style.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("QT_QUICK_CONTROLS_STYLE"))
        qputenv("QT_QUICK_CONTROLS_STYLE", "Basic");
#endif
    // Pin the environment's locale so results do not depend on the machine.
    qputenv("LC_ALL", "en_US.UTF-8");
    qputenv("TZ", qgetenv("WQ_TEST_TZ").isEmpty() ? QByteArray("America/New_York") : qgetenv("WQ_TEST_TZ"));

    TestApplication app(argc, argv);
    TestApplication::setOrganizationName(QStringLiteral("WQGeneralTests"));
    TestApplication::setApplicationName(QStringLiteral("WQGeneralTests"));
    return RUN_ALL_TESTS();
}
