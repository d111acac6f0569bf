#pragma once
// Runs the wq tool as a separate process and measures it: exit status,
// wall time and peak resident memory. The memory is counted by
// /usr/bin/time: a process started straight from this (large) test
// process would be credited with the test's own peak.

#include <QByteArray>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <chrono>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace wq::test {

struct ToolResult {
    int exitCode = -1;        // -1 when it did not exit normally
    double seconds = 0;
    long peakKiB = 0;
    QByteArray out;
    QByteArray err;
};

// Runs the tool with standard input from inputPath.
inline ToolResult runMeasured(const char* tool, const QStringList& args, const QString& inputPath = QStringLiteral("/dev/null"))
{
    QTemporaryDir dir;
    const QByteArray outPath = QFile::encodeName(dir.filePath(QStringLiteral("out")));
    const QByteArray errPath = QFile::encodeName(dir.filePath(QStringLiteral("err")));
    const QByteArray inPath = QFile::encodeName(inputPath);
    const QByteArray peakPath = QFile::encodeName(dir.filePath(QStringLiteral("peak")));
    std::vector<QByteArray> storage{"/usr/bin/time", "-q", "-f", "%M", "-o", peakPath, QByteArray(tool)};
    for (const QString& arg : args)
        storage.push_back(QFile::encodeName(arg));
    std::vector<char*> argv;
    for (QByteArray& s : storage)
        argv.push_back(s.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, inPath.constData(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, outPath.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, errPath.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ToolResult result;
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = -1;
    const int spawned = posix_spawn(&pid, "/usr/bin/time", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        return result;
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    // time answers 128 and more for a tool that died of a signal.
    result.exitCode = WIFEXITED(status) && WEXITSTATUS(status) < 128 ? WEXITSTATUS(status) : -1;
    QFile peak(dir.filePath(QStringLiteral("peak")));
    if (peak.open(QIODevice::ReadOnly))
        result.peakKiB = peak.readAll().trimmed().toLong();
    QFile out(dir.filePath(QStringLiteral("out"))), err(dir.filePath(QStringLiteral("err")));
    if (out.open(QIODevice::ReadOnly))
        result.out = out.readAll();
    if (err.open(QIODevice::ReadOnly))
        result.err = err.readAll();
    return result;
}

// Sanitized builds take several times the time and memory.
#ifdef WQ_SANITIZED
inline constexpr double kBudgetScale = 8;
#else
inline constexpr double kBudgetScale = 1;
#endif

} // namespace wq::test
