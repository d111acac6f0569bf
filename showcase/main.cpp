// wq-showcase: a small register window built from WQGeneral's public API.
//   wq-showcase                 opens the window
//   wq-showcase --tour DIR      runs the scripted tour, screenshots into DIR
//   --locale NAME               pins the regional settings (de_DE, en_US ...)

#include "RegisterWindow.h"
#include "ShowcaseFeature.h"
#include "Tour.h"

#include <WQGeneral/platform/WQLocaleChangeRelay.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    wq::WQInstallLocaleChangeRelay();
    QApplication::setOrganizationName(QStringLiteral("WQGeneral"));
    QApplication::setApplicationName(QStringLiteral("wq-showcase"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A small register window built from WQGeneral."));
    parser.addHelpOption();
    const QCommandLineOption tour(QStringLiteral("tour"), QStringLiteral("Run the scripted tour, saving screenshots in <dir>."),
                                  QStringLiteral("dir"));
    const QCommandLineOption locale(QStringLiteral("locale"), QStringLiteral("Regional settings to use, e.g. de_DE."),
                                    QStringLiteral("name"));
    parser.addOption(tour);
    parser.addOption(locale);
    if (!parser.parse(QApplication::arguments())) {
        std::fprintf(stderr, "wq-showcase: %s\n", qPrintable(parser.errorText()));
        return 2;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        return 0;
    }
    if (parser.isSet(locale))
        wq::WQRegionalSettings::setAllLocales(parser.value(locale));
    // The tour silences warnings and customizes the toolbar: in settings of
    // its own, which start empty and go when it ends.
    QTemporaryDir tourSettings;
    if (parser.isSet(tour))
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, tourSettings.path());

    showcase::RegisterWindow window;
    const auto features = showcase::makeFeatures();
    for (const auto& feature : features)
        feature->build(window);

    if (parser.isSet(tour))
        return showcase::runTour(window, features, parser.value(tour));
    window.resize(1000, 560);
    window.show();
    return app.exec();
}
