// wq-showcase: a small register window built from WQGeneral's public API.
//   wq-showcase                 opens the window
//   wq-showcase --tour DIR      runs the scripted tour, screenshots into DIR
//   wq-showcase --keys FIELD KEYS
//                               types KEYS into a field (offscreen) and prints
//                               what it shows after each key (KeyScript.h)
//   --locale NAME               pins the regional settings (de_DE, en_US ...)

#include "KeyScript.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"
#include "ShowcaseText.h"
#include "Tour.h"

#include <WQGeneral/platform/WQLocaleChangeRelay.h>
#include <WQGeneral/platform/WQRegionalSettings.h>
#include <WQGeneral/platform/WQTranslations.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QScreen>
#include <QStandardPaths>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

namespace {

QtMessageHandler standardHandler = nullptr;

// Offscreen, the platform says at length what it cannot do with windows;
// none of it matters to a terminal user.
void quietOffscreenMessages(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg
        && (message.startsWith(QStringLiteral("This plugin does not support"))
            || message.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR"))))
        return;
    if (standardHandler)
        standardHandler(type, context, message);
    else
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

int main(int argc, char** argv)
{
    // The keys mode is for a terminal: no window needs to appear.
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--keys") == 0 && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        standardHandler = qInstallMessageHandler(quietOffscreenMessages);
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
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("Language of the framework's texts, e.g. de (default: the "
                                                     "user's UI languages)."),
                                      QStringLiteral("code"));
    const QCommandLineOption keys(QStringLiteral("keys"),
                                  QStringLiteral("Type KEYS into <field> (date, amount, payments, rate, payee) and print "
                                                 "what it shows after each key. Named keys: <Esc> <Tab> <Return> <BS> "
                                                 "<Del> <Left> <Right> <Home> <End> <Alt+=> <Ctrl+c> <lt> ..."),
                                  QStringLiteral("field"));
    parser.addPositionalArgument(QStringLiteral("KEYS"), QStringLiteral("With --keys: the keys to type."));
    parser.addOption(tour);
    parser.addOption(keys);
    parser.addOption(locale);
    parser.addOption(language);
    const QCommandLineOption registerFile(QStringLiteral("register"),
                                          QStringLiteral("Keep the register in <file> (default: register.xml in the "
                                                         "application's data folder)."),
                                          QStringLiteral("file"));
    parser.addOption(registerFile);
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
    if (parser.isSet(language) && wq::WQLoadTranslations({parser.value(language)}).isEmpty() &&
        !parser.value(language).startsWith(QStringLiteral("en")))
        std::fprintf(stderr, "wq-showcase: no translation for \"%s\"; the texts stay English\n",
                     qPrintable(parser.value(language)));
    // The showcase's own texts in the same language as the framework's.
    showcase::installShowcaseTranslations(parser.isSet(language) ? QStringList{parser.value(language)}
                                                                 : QLocale().uiLanguages());
    // The tour silences warnings and customizes the toolbar, and both it and
    // the keys mode start from the defaults: in settings of their own, which
    // start empty and go when they end.
    QTemporaryDir tourSettings;
    if (parser.isSet(tour) || parser.isSet(keys))
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, tourSettings.path());

    showcase::RegisterWindow window;
    const auto features = showcase::makeFeatures();
    for (const auto& feature : features)
        feature->build(window);
    window.finishEntryRow();

    if (parser.isSet(tour))
        return showcase::runTour(window, features, parser.value(tour));
    if (parser.isSet(keys)) {
        if (parser.positionalArguments().size() != 1) {
            std::fputs("wq-showcase: --keys FIELD takes the keys to type as one argument\n", stderr);
            return 2;
        }
        window.resize(1000, 560);
        return showcase::runKeys(window, parser.value(keys), parser.positionalArguments().front());
    }
    // The register is kept between runs (the tour and keys modes start from
    // the sample rows and keep nothing). The window shows first: opening an
    // encrypted register asks for its password over it and takes a moment.
    // As large as it was made to be, within the screen it opens on.
    const QSize room = window.screen() ? window.screen()->availableSize() - QSize(24, 64) : QSize(1000, 560);
    window.resize(window.minimumSize().expandedTo(QSize(1000, 560).boundedTo(room)));
    window.show();
    window.keepIn(parser.isSet(registerFile)
                      ? parser.value(registerFile)
                      : QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
                            .filePath(QStringLiteral("register.xml")));
    return app.exec();
}
