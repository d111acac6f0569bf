#include <WQGeneral/platform/WQLocalizedText.h>

#include <QCoreApplication>

namespace wq {

QString WQLocalizedString(const char* english)
{
    return QCoreApplication::translate("WQGeneral", english);
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
