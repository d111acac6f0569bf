#pragma once
// Runs a program as a user runs it: the wq tool (WQ_TOOL_PATH, defined for
// the suites that use it) or another command, with standard input, on a
// pseudo-terminal, or measured (wall time and peak resident memory).

#include "FileTesting.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QProcess>
#include <QStringList>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <utility>
#include <vector>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wq::test {

struct ToolRun {
    int exitCode = -1; // -1 when it did not exit normally
    QByteArray out;
    QByteArray err;
    double seconds = 0;
    long peakKiB = 0;   // measured runs only
};

struct RunOptions {
    // Each member has an initializer, so that a call names only what it sets.
    QByteArray input{};   // standard input
    QString inputFile{};  // standard input from this file instead
    QString outputFile{}; // standard output to this file instead
    QList<std::pair<QString, QString>> environment{}; // set on top of this process's
    int timeoutMs = 120000;
};

inline ToolRun runProgram(const QString& program, const QStringList& args, const RunOptions& options = {})
{
    QProcess process;
    if (!options.environment.isEmpty()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, value] : options.environment)
            environment.insert(name, value);
        process.setProcessEnvironment(environment);
    }
    if (!options.inputFile.isEmpty())
        process.setStandardInputFile(options.inputFile);
    if (!options.outputFile.isEmpty())
        process.setStandardOutputFile(options.outputFile);
    QElapsedTimer timer;
    timer.start();
    process.start(program, args);
    process.waitForStarted();
    if (options.inputFile.isEmpty()) {
        process.write(options.input);
        process.closeWriteChannel();
    }
    process.waitForFinished(options.timeoutMs);
    ToolRun result;
    result.seconds = double(timer.nsecsElapsed()) / 1e9;
    if (process.exitStatus() == QProcess::NormalExit && process.state() == QProcess::NotRunning)
        result.exitCode = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

#ifdef WQ_TOOL_PATH
inline constexpr char kTool[] = WQ_TOOL_PATH;

// The tool on a pseudo-terminal, typing one answer after each "Password"
// prompt; out is everything the terminal showed.
inline ToolRun runOnTerminal(const QStringList& args, const std::vector<QByteArray>& answers)
{
    std::vector<QByteArray> storage{QByteArray(kTool)};
    for (const QString& a : args)
        storage.push_back(QFile::encodeName(a));
    std::vector<char*> argv;
    for (QByteArray& s : storage)
        argv.push_back(s.data());
    argv.push_back(nullptr);
    int master = -1;
    const pid_t pid = forkpty(&master, nullptr, nullptr, nullptr);
    if (pid == 0) {
        ::execv(kTool, argv.data());
        ::_exit(127);
    }
    ToolRun result;
    if (pid < 0)
        return result;
    size_t answered = 0;
    QByteArray seen;
    for (;;) {
        pollfd fd{master, POLLIN, 0};
        if (::poll(&fd, 1, 20000) <= 0)
            break;
        char buffer[512];
        const ssize_t n = ::read(master, buffer, sizeof buffer);
        if (n <= 0)
            break; // the tool closed the terminal
        seen.append(buffer, n);
        result.out.append(buffer, n);
        if (answered < answers.size() && seen.contains("Password")) {
            seen.clear();
            const QByteArray line = answers[answered++] + "\n";
            if (::write(master, line.constData(), size_t(line.size())) != line.size())
                break;
        }
    }
    ::close(master);
    int status = 0;
    ::waitpid(pid, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

// The tool with standard input from inputPath, timed, its peak memory
// counted by /usr/bin/time for its own child, the tool: counted for a child
// of this (large) test process, the test's own peak would be credited to it.
inline ToolRun runMeasured(const QStringList& args, const QString& inputPath = QStringLiteral("/dev/null"))
{
    QTemporaryDir dir;
    const QString peakPath = dir.filePath(QStringLiteral("peak"));
    ToolRun result = runProgram(QStringLiteral("/usr/bin/time"),
                                QStringList{"-q", "-f", "%M", "-o", peakPath, QString::fromLocal8Bit(kTool)} + args,
                                {.inputFile = inputPath});
    // time answers 128 and more for a tool that died of a signal.
    if (result.exitCode >= 128)
        result.exitCode = -1;
    result.peakKiB = readBytes(peakPath).trimmed().toLong();
    return result;
}
#endif

// A test with a scratch folder for the files it hands the tool.
class ToolScratch : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }
    // Writes the file and answers its path.
    QString written(const char* name, const QByteArray& bytes) const
    {
        EXPECT_TRUE(writeBytes(path(name), bytes)) << name;
        return path(name);
    }
};

// Instrumented builds (sanitizers, coverage) take several times the time and memory.
#ifdef WQ_INSTRUMENTED
inline constexpr double kBudgetScale = 8;
#else
inline constexpr double kBudgetScale = 1;
#endif

} // namespace wq::test
