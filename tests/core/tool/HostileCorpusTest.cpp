// The hostile-envelope corpus (made by hostile_envelopes.py beside this
// file) through the wq tool: each file is opened or refused as the corpus
// says, within a time and a memory budget, and nothing is written for a
// refused one.

#include "ToolRunner.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <cstdio>

using namespace wq::test;

namespace {

// Per file: a second of wall time, and no more than three times the
// envelope's size (or nothing, for a file refused unread) on top of what the
// process takes to start.
constexpr double kSeconds = 1.0;
constexpr qint64 kSlackKiB = 4 * 1024;
constexpr qint64 kLimit = qint64(64) * 1024 * 1024;

} // namespace

TEST(HostileCorpus, EveryEnvelopeIsOpenedOrRefusedWithinBudget)
{
    const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
    ASSERT_FALSE(python.isEmpty()) << "python3 makes the corpus";
    QTemporaryDir dir;
    const ToolRun maker = runProgram(python, {QStringLiteral(WQ_CORPUS_SCRIPT), dir.path(), QString::fromLocal8Bit(kTool)},
                                     {.timeoutMs = 300000});
    ASSERT_EQ(maker.exitCode, 0) << maker.err.toStdString();
    QFile manifest(dir.filePath(QStringLiteral("manifest.txt")));
    ASSERT_TRUE(manifest.open(QIODevice::ReadOnly));
    const QString password = dir.filePath(QStringLiteral("password"));
    const QString output = dir.filePath(QStringLiteral("opened.xml"));
    const long baseline = runMeasured({QStringLiteral("inspect"), QStringLiteral("/dev/null")}).peakKiB;

    // Whatever broke after the key, a classic envelope fails as a wrong
    // password does: no answer tells a padding from a document.
    const QString classic = dir.filePath(QStringLiteral("control-classic.enc"));
    const QString guess = dir.filePath(QStringLiteral("guess"));
    ASSERT_TRUE(writeBytes(guess, "not pw\n"));
    const ToolRun guessed = runMeasured({QStringLiteral("decrypt"), QStringLiteral("--password-file"), guess, classic, output});
    EXPECT_EQ(guessed.exitCode, 1);
    EXPECT_EQ(guessed.err.count("not protected against tampering"), 1);
    QSet<QByteArray> classicFailures{QByteArray(guessed.err).replace(QFile::encodeName(classic), "FILE")};

    int files = 0;
    double slowest = 0;
    qint64 mostOverBaseline = 0;
    std::printf("%-36s %10s %8s %9s\n", "file", "bytes", "seconds", "peak KiB");
    while (!manifest.atEnd()) {
        const QList<QByteArray> line = manifest.readLine().trimmed().split(' ');
        if (line.size() != 2)
            continue;
        const QString file = dir.filePath(QString::fromUtf8(line[0]));
        const bool opens = line[1] == "opens";
        // A sound shape with a bad cipher text: inspected fine, refused on opening.
        const bool wrong = line[1] == "wrong";
        const qint64 size = QFileInfo(file).size();
        const qint64 budgetKiB = qint64((3 * (size > kLimit ? 0 : size) / 1024 + kSlackKiB) * kBudgetScale);
        SCOPED_TRACE(line[0].toStdString());
        ++files;

        const ToolRun inspected = runMeasured({QStringLiteral("inspect"), file});
        const ToolRun opened =
            runMeasured({QStringLiteral("decrypt"), QStringLiteral("--password-file"), password, file, output});
        EXPECT_EQ(inspected.exitCode, opens || wrong ? 0 : 2) << inspected.err.toStdString();
        EXPECT_EQ(opened.exitCode, opens ? 0 : wrong ? 1 : 2) << opened.err.toStdString();
        for (const ToolRun* r : {&inspected, &opened}) {
            EXPECT_LT(r->seconds, kSeconds * kBudgetScale);
            EXPECT_LT(r->peakKiB - baseline, budgetKiB);
            slowest = std::max(slowest, r->seconds);
            mostOverBaseline = std::max<qint64>(mostOverBaseline, r->peakKiB - baseline);
        }
        EXPECT_EQ(QFile::exists(output), opens);
        if (line[0].startsWith("tampered-cbc"))
            classicFailures.insert(QByteArray(opened.err).replace(QFile::encodeName(file), "FILE"));
        QFile::remove(output);
        std::printf("%-36s %10lld %8.3f %9ld\n", line[0].constData(), size, std::max(inspected.seconds, opened.seconds),
                    std::max(inspected.peakKiB, opened.peakKiB));
    }
    EXPECT_EQ(classicFailures.size(), 1u) << QList<QByteArray>(classicFailures.begin(), classicFailures.end()).join('\n').toStdString();
    EXPECT_GE(files, 60);
    std::printf("%d files; slowest run %.3f s; most memory above the tool's start-up (%ld KiB): %lld KiB\n", files,
                slowest, baseline, mostOverBaseline);
    RecordProperty("files", files);
}
