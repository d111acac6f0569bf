// wq-showcase-quick: the register window in Qt Quick, built from the QML
// module WQGeneral; --tour DIR runs its scripted tour offscreen.

#include "QuickTour.h"

#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("WQGeneral"));
    QGuiApplication::setApplicationName(QStringLiteral("Showcase Quick"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("WQGeneral for Qt Quick"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The register window of WQGeneral's Qt Quick module."));
    parser.addHelpOption();
    const QCommandLineOption tour(QStringLiteral("tour"), QStringLiteral("Types a scripted tour offscreen and saves a screenshot per step into DIR."), QStringLiteral("DIR"));
    const QCommandLineOption locale(QStringLiteral("locale"), QStringLiteral("Regional settings to use (de_DE, en_US...)."), QStringLiteral("NAME"));
    parser.addOptions({tour, locale});
    parser.process(app);
    if (parser.isSet(locale))
        wq::WQRegionalSettings::setAllLocales(parser.value(locale));

    QQmlApplicationEngine engine;
    // The build's module comes first; installed, Qt finds it anyway.
    engine.addImportPath(QStringLiteral(WQ_QML_IMPORT_PATH));
    engine.load(QUrl(QStringLiteral("qrc:/showcase/Register.qml")));
    auto* window = engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (!window)
        return 1;
    if (parser.isSet(tour))
        return showcase::runQuickTour(*window, parser.value(tour));
    return QGuiApplication::exec();
}
