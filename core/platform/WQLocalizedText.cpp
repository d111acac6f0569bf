#include <WQGeneral/platform/WQLocalizedText.h>

#include "WQTranslationLoading.h"

#include <QCoreApplication>

namespace wq {
namespace {

// Here, beside the lookup, so that static linking keeps it whenever a text
// can be shown. Loading as the application starts puts the framework's
// catalogue under the translators the application installs afterwards,
// which may then override the framework's wording.
void loadAtStartup()
{
    detail::loadTranslationsAtStartup();
}
Q_COREAPP_STARTUP_FUNCTION(loadAtStartup)

} // namespace

QString WQLocalizedString(const char* english)
{
    return WQLocalizedStringFromTable(english, "WQGeneral");
}

QString WQLocalizedStringFromTable(const char* english, const char* table)
{
    return QCoreApplication::translate(table, english);
}

QString WQFormatTemplate(const QString& templ, const QStringList& arguments)
{
    QString out;
    out.reserve(templ.size() + 16);
    qsizetype next = 0;
    for (qsizetype i = 0; i < templ.size(); ++i) {
        if (templ[i] == u'%' && i + 1 < templ.size() && templ[i + 1] == u'@') {
            if (next < arguments.size())
                out += arguments[next];
            ++next;
            ++i;
        } else {
            out += templ[i];
        }
    }
    return out;
}

} // namespace wq
