#pragma once
// Subcommands of the wq tool register themselves with a static Registrar:
//   static wq::tool::Registrar reg{"date", "date make|info|...", &runDate};
// run() gets the arguments after the command name and answers the exit status.

#include <QString>
#include <QStringList>

#include <cstdio>
#include <functional>
#include <map>

namespace wq::tool {

using Runner = std::function<int(const QStringList& args)>;

struct CommandInfo {
    QString usage;
    Runner run;
};

std::map<QString, CommandInfo>& commands();

struct Registrar {
    Registrar(const QString& name, const QString& usage, Runner run)
    {
        commands()[name] = CommandInfo{usage, std::move(run)};
    }
};

// Output helpers: text goes out as UTF-8.
void out(const QString& line);       // stdout, with a line feed
void err(const QString& line);       // stderr, with a line feed, prefixed "wq: "

// Exit statuses shared by every command.
inline constexpr int kExitOK = 0;
inline constexpr int kExitFailure = 1;   // the operation answered a failure
inline constexpr int kExitUsage = 2;     // bad arguments or unreadable input

// Takes "--name VALUE" out of args; answers the value or a null QString.
QString takeOption(QStringList& args, const QString& name);
// Takes a bare "--flag" out of args.
bool takeFlag(QStringList& args, const QString& name);

} // namespace wq::tool
