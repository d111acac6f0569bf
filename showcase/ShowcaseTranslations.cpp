#include "ShowcaseText.h"

#include <QPointer>
#include <QTranslator>

#include <memory>

namespace showcase {

QString installShowcaseTranslations(const QStringList& uiLanguages)
{
    // A child of the application: it goes with it.
    static QPointer<QTranslator> installed;
    delete installed.data();
    for (QString language : uiLanguages) {
        language.replace(u'-', u'_');
        if (language == u"C" || language == u"POSIX" || language == u"en" || language.startsWith(u"en_"))
            break;
        // The loader falls back by itself: de_DE, then de.
        auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
        if (!translator->load(QStringLiteral(":/translations/wq-showcase_") + language))
            continue;
        installed = translator.release();
        QCoreApplication::installTranslator(installed);
        return installed->language();
    }
    return QString();
}

} // namespace showcase
