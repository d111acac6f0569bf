#include <WQGeneral/platform/WQTranslations.h>

#include "WQTranslationLoading.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QPointer>
#include <QThread>
#include <QTranslator>

#include <atomic>

#include <dlfcn.h>

namespace wq {
namespace {

std::atomic<bool> gAutomatic{true};

// The file for the first language that has one. English, the texts' own
// language, stops the search: with its catalogue (which words a few texts
// for this desktop) or with none.
struct Catalogue {
    QString language;
    QString path;
};

Catalogue catalogueFor(const QStringList& uiLanguages)
{
    const QStringList directories = WQTranslationDirectories();
    for (const QString& entry : uiLanguages) {
        QString language = entry;
        language.replace(u'-', u'_');
        // The C locale's texts are English.
        if (language == u"C" || language == u"POSIX")
            language = QStringLiteral("en");
        const bool english = language == u"en" || language.startsWith(u"en_");
        // de_Latn_DE, then de_Latn, then de.
        for (;;) {
            for (const QString& directory : directories) {
                const QString path = directory + QStringLiteral("/WQGeneral_") + language + QStringLiteral(".qm");
                if (QFileInfo(path).isFile())
                    return {language, path};
            }
            const qsizetype cut = language.lastIndexOf(u'_');
            if (cut <= 0)
                break;
            language.truncate(cut);
        }
        if (english)
            return {};
    }
    return {};
}

// Lives as a child of the application, so that a new application starts over.
// It also watches the application for LanguageChange: an application that
// changes QLocale::setDefault() and swaps its own translators gets the
// framework's catalogue for the new language too.
class Loader : public QObject {
public:
    explicit Loader(QCoreApplication* app) : QObject(app) { app->installEventFilter(this); }

    QString load(const QStringList& uiLanguages, bool automatically)
    {
        const Catalogue wanted = catalogueFor(uiLanguages);
        _wq_automatic = automatically;
        if (wanted.path == _wq_path)
            return _wq_language;
        auto next = wanted.path.isEmpty() ? nullptr : new QTranslator(this);
        if (next && !next->load(wanted.path)) {
            delete next;
            next = nullptr;
        }
        // Installing and removing send LanguageChange, which must not be
        // taken for the application's own.
        _wq_switching = true;
        if (_wq_translator) {
            QCoreApplication::removeTranslator(_wq_translator);
            delete _wq_translator;
        }
        _wq_translator = next;
        if (next)
            QCoreApplication::installTranslator(next);
        _wq_switching = false;
        _wq_path = next ? wanted.path : QString();
        _wq_language = next ? wanted.language : QString();
        return _wq_language;
    }

    QString language() const { return _wq_language; }
    bool loadedAutomatically() const { return _wq_automatic && !_wq_path.isEmpty(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // A filter on the application sees every event: the cheap test first.
        if (event->type() == QEvent::LanguageChange && watched == parent() && !_wq_switching && gAutomatic)
            load(QLocale().uiLanguages(), true);
        return false;
    }

private:
    QPointer<QTranslator> _wq_translator;
    QString _wq_path;
    QString _wq_language;
    bool _wq_switching = false;
    bool _wq_automatic = false;
};

// Only touched on the application's thread.
QPointer<Loader> gLoader;

Loader* loaderOnAppThread()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() != app->thread())
        return nullptr;
    if (!gLoader)
        gLoader = new Loader(app);
    return gLoader;
}

// The folder of the file that holds this code: the shared library wherever it
// was installed or unpacked (an application linking the static archives
// finds its folder beside the application instead).
QString codeDirectory()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&WQTranslationDirectories), &info) || !info.dli_fname
        || !*info.dli_fname)
        return {};
    return QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath();
}

} // namespace

void WQSetAutomaticTranslationsEnabled(bool enabled)
{
    gAutomatic = enabled;
    QCoreApplication* app = QCoreApplication::instance();
    if (!enabled && app && QThread::currentThread() == app->thread() && gLoader && gLoader->loadedAutomatically())
        gLoader->load({}, false);
}

bool WQAutomaticTranslationsEnabled()
{
    return gAutomatic;
}

QString WQLoadTranslations(const QStringList& uiLanguages)
{
    Loader* loader = loaderOnAppThread();
    return loader ? loader->load(uiLanguages, false) : QString();
}

QString WQLoadedTranslationLanguage()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QThread::currentThread() != app->thread() || !gLoader)
        return {};
    return gLoader->language();
}

QStringList WQTranslationDirectories()
{
    QStringList directories;
#ifdef WQ_LIBRARY_TO_TRANSLATIONS_DIR
    if (const QString library = codeDirectory(); !library.isEmpty())
        directories << QDir::cleanPath(library + QStringLiteral("/" WQ_LIBRARY_TO_TRANSLATIONS_DIR));
#endif
#ifdef WQ_BUILD_TRANSLATIONS_DIR
    directories << QStringLiteral(WQ_BUILD_TRANSLATIONS_DIR);
#endif
    if (QCoreApplication::instance())
        directories << QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                       QStringLiteral("/../share/WQGeneral/translations"));
#ifdef WQ_INSTALL_TRANSLATIONS_DIR
    directories << QStringLiteral(WQ_INSTALL_TRANSLATIONS_DIR);
#endif
    directories.removeDuplicates();
    return directories;
}

namespace detail {

void loadTranslationsAtStartup()
{
    if (gAutomatic)
        if (Loader* loader = loaderOnAppThread())
            loader->load(QLocale().uiLanguages(), true);
}

} // namespace detail
} // namespace wq
