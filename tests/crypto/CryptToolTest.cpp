// The wq tool's encoding and envelope commands, run as a user would run them.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

namespace {

const char* const kTool = WQ_TOOL_PATH;

struct ToolRun {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

ToolRun run(const QStringList& args, const QByteArray& input = QByteArray())
{
    QProcess process;
    process.start(QString::fromLocal8Bit(kTool), args);
    process.waitForStarted();
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(120000);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

// Runs the tool on a pseudo-terminal, typing one answer after each
// "Password" prompt. Answers everything the terminal showed.
ToolRun runOnTerminal(const QStringList& args, const std::vector<QByteArray>& answers)
{
    std::vector<QByteArray> storage{QByteArray(kTool)};
    for (const QString& a : args)
        storage.push_back(a.toLocal8Bit());
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
            break;   // the tool closed the terminal
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

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST(CryptTool, PromptedPasswordRoundTrip)
{
    QTemporaryDir dir;
    const QString plain = dir.filePath(QStringLiteral("ledger.xml"));
    const QString sealed = dir.filePath(QStringLiteral("ledger.enc"));
    const QString opened = dir.filePath(QStringLiteral("opened.xml"));
    const QByteArray document = "<?xml version=\"1.0\"?>\n<ledger><payee>Caf\xc3\xa9 \xe6\x97\xa5</payee></ledger>\n";
    write(plain, document);
    const QByteArray password = "gr\xc3\xbcn tea";

    ToolRun r = runOnTerminal({QStringLiteral("encrypt"), plain, sealed}, {password, password});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString();
    EXPECT_FALSE(r.out.contains(password));   // nothing echoed
    r = runOnTerminal({QStringLiteral("decrypt"), sealed, opened}, {password});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString();
    EXPECT_EQ(contents(opened), document);

    // Two different answers are refused and nothing is written.
    const QString other = dir.filePath(QStringLiteral("other.enc"));
    r = runOnTerminal({QStringLiteral("encrypt"), plain, other}, {password, "green tea"});
    EXPECT_NE(r.exitCode, 0);
    EXPECT_FALSE(QFile::exists(other));
}

TEST(CryptTool, WrongPasswordOrDamageLeavesNoOutput)
{
    QTemporaryDir dir;
    const QString plain = dir.filePath(QStringLiteral("a.xml"));
    const QString sealed = dir.filePath(QStringLiteral("a.enc"));
    const QString passwordFile = dir.filePath(QStringLiteral("pw"));
    const QString output = dir.filePath(QStringLiteral("out.xml"));
    write(plain, "<a>1</a>");
    write(passwordFile, "right\n");

    ToolRun r = run({QStringLiteral("encrypt"), QStringLiteral("--authenticated"), QStringLiteral("--iterations"),
                 QStringLiteral("1000"), QStringLiteral("--password-file"), passwordFile, plain, sealed});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    r = run({QStringLiteral("decrypt"), QStringLiteral("--password-stdin"), sealed, QStringLiteral("-")}, "right\n");
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, "<a>1</a>");

    r = run({QStringLiteral("decrypt"), QStringLiteral("--password-stdin"), sealed, output}, "wrong\n");
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err.count('\n'), 1);
    EXPECT_TRUE(r.err.contains("password is wrong"));
    EXPECT_FALSE(QFile::exists(output));

    QByteArray damaged = contents(sealed);
    damaged[damaged.indexOf("</CipherValue>") - 5] = 'Q';
    write(sealed, damaged);
    r = run({QStringLiteral("decrypt"), QStringLiteral("--password-file"), passwordFile, sealed, output});
    EXPECT_NE(r.exitCode, 0);
    EXPECT_FALSE(QFile::exists(output));

    // The password is never taken from where the document comes from.
    r = run({QStringLiteral("decrypt"), QStringLiteral("--password-stdin"), QStringLiteral("-"), output});
    EXPECT_EQ(r.exitCode, 2);
    r = run({QStringLiteral("inspect"), plain});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_TRUE(r.err.startsWith("wq: "));
}

TEST(CryptTool, InspectAndTheSmallCommands)
{
    QTemporaryDir dir;
    const QString plain = dir.filePath(QStringLiteral("a.xml"));
    const QString sealed = dir.filePath(QStringLiteral("a.enc"));
    write(plain, "<a/>");
    ASSERT_EQ(run({QStringLiteral("encrypt"), QStringLiteral("--password-stdin"), plain, sealed}, "pw\n").exitCode, 0);
    const ToolRun inspected = run({QStringLiteral("inspect"), sealed});
    EXPECT_EQ(inspected.exitCode, 0);
    EXPECT_TRUE(inspected.out.contains("aes128-cbc"));
    EXPECT_TRUE(inspected.out.contains("iterations:      1000\n"));
    EXPECT_TRUE(inspected.out.contains("IV length:       16 bytes"));

    EXPECT_EQ(run({QStringLiteral("base64"), QStringLiteral("encode")}, "foobar").out, "Zm9vYmFy\n");
    EXPECT_EQ(run({QStringLiteral("base64"), QStringLiteral("decode")}, "Zm9v\nYmFy\n").out, "foobar");
    EXPECT_EQ(run({QStringLiteral("base64"), QStringLiteral("encode"), QStringLiteral("--line-length"), QStringLiteral("4")},
                  "foobar").out,
              "Zm9v\nYmFy\n");
    EXPECT_EQ(run({QStringLiteral("base64"), QStringLiteral("decode")}, "Zm9v\xc3\xa9").exitCode, 2);
    EXPECT_EQ(run({QStringLiteral("escape"), QStringLiteral("xml"), QStringLiteral("a<'b'>")}).out, "a&lt;&apos;b&apos;&gt;\n");
    EXPECT_EQ(run({QStringLiteral("escape"), QStringLiteral("csv")}, "1,5").out, "\"1,5\"");
    EXPECT_EQ(run({QStringLiteral("escape"), QStringLiteral("url"), QStringLiteral("a b")}).out, "a%20b\n");
    EXPECT_EQ(run({QStringLiteral("unescape"), QStringLiteral("xml"), QStringLiteral("&amp;lt;")}).out, "&lt;\n");
    EXPECT_EQ(run({QStringLiteral("unescape"), QStringLiteral("url"), QStringLiteral("x")}).exitCode, 2);
    EXPECT_EQ(run({QStringLiteral("round"), QStringLiteral("2"), QStringLiteral("2.675")}).out, "2.68\n");
    EXPECT_EQ(run({QStringLiteral("round"), QStringLiteral("2"), QStringLiteral("-0.125")}).out, "-0.12\n");
    EXPECT_EQ(run({QStringLiteral("round"), QStringLiteral("7"), QStringLiteral("-1.5"), QStringLiteral("--split")}).out,
              "-1.5000000 -1 -5000000\n");
    EXPECT_EQ(run({QStringLiteral("round"), QStringLiteral("2"), QStringLiteral("lots")}).exitCode, 2);
}
