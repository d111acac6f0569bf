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

} // namespace wq::tool

namespace {

using namespace wq::tool;

QString overview()
{
    QString text = QStringLiteral(
        "usage: wq COMMAND [ARGS...]\n"
        "       wq help [COMMAND] | wq --help | wq --version\n"
        "\n"
        "Commands:\n");
    for (const auto& [name, info] : commands())
        text += QStringLiteral("  ") + info.usage + u'\n';
    text += QStringLiteral(
        "\n"
        "Options may stand anywhere before \"--\", which ends them: wq money parse -- --5.\n"
        "\"-\" as a file name means standard input or standard output.\n"
        "Exit status: 0 done; 1 the operation failed (a wrong password, a refused value,\n"
        "an error while writing); 2 a usage error (a bad command line, an input file that\n"
        "is missing or not what the command takes, an output file that cannot be created).\n"
        "\"wq help COMMAND\" or \"wq COMMAND --help\" tells more about one command.");
    return text;
}

int help(const QString& name)
{
    const auto it = commands().find(name);
    if (it == commands().end()) {
        err(QStringLiteral("unknown command \"%1\"; \"wq help\" lists them").arg(name));
        return kExitUsage;
    }
    out(QStringLiteral("usage: wq ") + it->second.usage + QStringLiteral("\n\n") + it->second.help);
    return kExitOK;
}

// Whether a command was asked for its help, before any "--".
bool asksForHelp(const QStringList& args)
{
    for (const QString& arg : args) {
        if (arg == u"--")
            return false;
        if (arg == u"--help" || arg == u"-h")
            return true;
    }
    return false;
}

int dispatch(QStringList args)
{
    if (args.isEmpty()) {
        std::fputs(qUtf8Printable(overview() + u'\n'), stderr);
        return kExitUsage;
    }
    const QString name = args.takeFirst();
    if (name == u"--help" || name == u"-h" || (name == u"help" && args.isEmpty())) {
        out(overview());
        return kExitOK;
    }
    if (name == u"help")
        return args.size() == 1 ? help(args.front())
                                : (err(QStringLiteral("usage: wq help [COMMAND]")), kExitUsage);
    if (name == u"--version") {
        out(QStringLiteral("wq " WQ_VERSION));
        return kExitOK;
    }
    const auto it = commands().find(name);
    if (it == commands().end()) {
        err(QStringLiteral("unknown %1 \"%2\"; \"wq help\" lists the commands")
                .arg(isOption(name) ? QStringLiteral("option") : QStringLiteral("command"), name));
        return kExitUsage;
    }
    if (asksForHelp(args))
        return help(name);
    try {
        return it->second.run(args);
    } catch (const UsageError& error) {
        err(error.message);
        return kExitUsage;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("wq"));
    int status = dispatch(QCoreApplication::arguments().mid(1));
    // Output that never arrived (a full disk, a closed pipe) is a failure,
    // not a silent success.
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        err(QStringLiteral("cannot write to standard output"));
        if (status == kExitOK)
            status = kExitFailure;
    }
    return status;
}
