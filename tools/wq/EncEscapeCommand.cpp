// wq escape xml|csv|url [TEXT...]   and   wq unescape xml|csv [TEXT...]
// Without TEXT, standard input is escaped as a whole.

#include "EncToolSupport.h"

#include <WQGeneral/encoding/WQEscaping.h>

namespace {

using namespace wq::tool;

using Transform = QString (*)(const QString&);

int runTransform(const QStringList& list, bool escape)
{
    QStringList args = Arguments(list).operands();
    const QString family = args.isEmpty() ? QString() : args.takeFirst();
    Transform transform = nullptr;
    if (family == u"xml")
        transform = escape ? &wq::xml_encodedForXML : &wq::xml_decodedFromXML;
    else if (family == u"csv")
        transform = escape ? &wq::csv_encodedForCSV : &wq::csv_decodedFromCSV;
    else if (family == u"url" && escape)
        transform = &wq::url_encodedForURL;
    if (!transform) {
        err(escape ? QStringLiteral("usage: wq escape xml|csv|url [TEXT...]")
                   : QStringLiteral("usage: wq unescape xml|csv [TEXT...]"));
        return kExitUsage;
    }
    if (!args.isEmpty()) {
        for (const QString& text : args)
            out(transform(text));
        return kExitOK;
    }
    const std::optional<QByteArray> input = readAll(QStringLiteral("-"));
    if (!input)
        return kExitUsage;
    const std::optional<QString> text = utf8Text(*input, QStringLiteral("standard input"));
    if (!text)
        return kExitUsage;
    return writeAll(QStringLiteral("-"), transform(*text).toUtf8()) ? kExitOK : kExitFailure;
}

const Registrar escapeRegistrar{
    QStringLiteral("escape"), QStringLiteral("escape xml|csv|url [TEXT...]"),
    QStringLiteral("Each TEXT escaped for XML, a CSV field or a URL, one a line; without TEXT,\n"
                   "the whole of standard input (UTF-8), escaped as one text.\n"
                   "\n"
                   "  wq escape xml -- '--<a>'"),
    [](const QStringList& args) { return runTransform(args, true); }};
const Registrar unescapeRegistrar{
    QStringLiteral("unescape"), QStringLiteral("unescape xml|csv [TEXT...]"),
    QStringLiteral("Each TEXT with its XML entities or CSV quoting undone, one a line; without\n"
                   "TEXT, the whole of standard input (UTF-8)."),
    [](const QStringList& args) { return runTransform(args, false); }};

} // namespace
