#pragma once
// Subcommands of the wq tool register themselves with a static Registrar:
//   static wq::tool::Registrar reg{"date", "date make|info|...", kHelp, &runDate};
// run() gets the arguments after the command name and answers the exit status;
// it may throw UsageError, which ends the command with status 2.

#include <QString>
#include <QStringList>

#include <cstdio>
#include <functional>
#include <map>

namespace wq::tool {

using Runner = std::function<int(const QStringList& args)>;

struct CommandInfo {
    QString usage;   // one line, without the leading "wq "
    QString help;    // what `wq help COMMAND` prints after the usage line
    Runner run;
};

std::map<QString, CommandInfo>& commands();

struct Registrar {
    Registrar(const QString& name, const QString& usage, const QString& help, Runner run)
    {
        commands()[name] = CommandInfo{usage, help, std::move(run)};
    }
};

// Output helpers: text goes out as UTF-8.
void out(const QString& line);       // stdout, with a line feed
void err(const QString& line);       // stderr, with a line feed, prefixed "wq: "

// Exit statuses shared by every command. A usage error is anything that
// keeps the command from starting with what it was given: the command line,
// an input file that is missing, unreadable or not what the command takes,
// an output file that cannot be created. A failure is an operation that ran
// and failed: a wrong password, a refused value, an error while writing.
inline constexpr int kExitOK = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

// Thrown for bad arguments; the message is printed as the one-line error.
struct UsageError {
    QString message;
};

// Whether an argument looks like an option: "--name" or "-x" with a letter.
// "-", "-5" and "-0044-03-15" are operands, so negative numbers and years
// pass without "--" too.
bool isOption(const QString& arg);

// The arguments of one command. Options may stand anywhere before a "--",
// which ends them: everything after it is an operand, whatever it looks like.
class Arguments {
public:
    explicit Arguments(const QStringList& args);

    // Takes every "--name"; true when there was one.
    bool flag(const QString& name);
    // Takes "--name VALUE" or "--name=VALUE": the value, or a null QString
    // when the option is absent. A missing value is a usage error.
    QString option(const QString& name);
    // The operands in order, once every known option was taken; an option
    // left over is a usage error.
    QStringList operands() const;

private:
    QString takeOption(const QString& name);

    QStringList _wq_beforeEnd;   // options and operands before "--"
    QStringList _wq_afterEnd;    // operands only
};

} // namespace wq::tool
