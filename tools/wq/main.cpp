// wq: the framework's command-line tool.

#include "Command.h"

#include <QCoreApplication>

namespace wq::tool {

std::map<QString, CommandInfo>& commands()
{
    static std::map<QString, CommandInfo> registry;
    return registry;
}

void out(const QString& line)
{
    const QByteArray bytes = line.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fputc('\n', stdout);
}

void err(const QString& line)
{
    const QByteArray bytes = (QStringLiteral("wq: ") + line).toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fputc('\n', stderr);
}

QString takeOption(QStringList& args, const QString& name)
{
    const qsizetype i = args.indexOf(name);
    if (i < 0 || i + 1 >= args.size())
        return QString();
    const QString value = args.at(i + 1);
    args.remove(i, 2);
    return value;
}

bool takeFlag(QStringList& args, const QString& name)
{
    return args.removeAll(name) > 0;
}

} // namespace wq::tool

static void printUsage()
{
    wq::tool::err(QStringLiteral("usage: wq COMMAND [ARGS...]"));
    for (const auto& [name, info] : wq::tool::commands())
        std::fprintf(stderr, "  %s\n", qUtf8Printable(info.usage));
}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("wq"));
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty() || args.front() == u"--help" || args.front() == u"help") {
        printUsage();
        return args.isEmpty() ? wq::tool::kExitUsage : wq::tool::kExitOK;
    }
    const QString name = args.takeFirst();
    auto& registry = wq::tool::commands();
    const auto it = registry.find(name);
    if (it == registry.end()) {
        wq::tool::err(QStringLiteral("unknown command \"%1\"").arg(name));
        printUsage();
        return wq::tool::kExitUsage;
    }
    return it->second.run(args);
}
