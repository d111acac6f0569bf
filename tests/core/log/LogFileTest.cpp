// The log file as written and as read back: where it lives, its records and
// their cut, and the reading-back rule of the last lines.

#include <WQGeneral/log/WQLogClass.h>

#include "LogTestSupport.h"
#include "WQLogReading.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTimer>

using namespace wq;
using namespace wq::test;

namespace {

const QRegularExpression kRecord(QStringLiteral(R"(^(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d [+-]\d{4}) \| (.*)$)"));

// The reading-back rule as written: split at every line feed, keep the last
// maxLines pieces, join them again.
QString splitAndJoin(const QString& text, quint64 maxLines)
{
    if (text.size() <= 28 || maxLines == 0)
        return text;
    const QStringList pieces = text.split(u'\n');
    if (quint64(pieces.size()) <= maxLines)
        return text;
    return pieces.mid(pieces.size() - qsizetype(maxLines)).join(u'\n');
}

const QByteArray kStamp = "2024-05-01 13:45:07 +0200 | ";

} // namespace

TEST(LogFile, FolderAndFileFollowTheApplicationName)
{
    const QString studio = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Veltrano Studio");
    ASSERT_TRUE(studio.startsWith(QDir::tempPath())) << "tests run in a throw-away home";

    const WQLogClass named(QStringLiteral("Budget Book"));
    EXPECT_TRUE(named.isEnabled());
    EXPECT_EQ(named.logFilePath(), studio + QStringLiteral("/Budget Book/Budget Book.log"));
    EXPECT_TRUE(QFileInfo(studio + QStringLiteral("/Budget Book")).isDir());
    const WQLogClass current;
    EXPECT_EQ(current.logFilePath(), studio + QStringLiteral("/%1/%1.log").arg(QCoreApplication::applicationName()));
    EXPECT_EQ(WQLogClass::sharedLog().logFilePath(), current.logFilePath());

    // A name is one path component: nothing is made or written outside the
    // maker's folder, and nothing there is deleted.
    writeBytes(studio + QStringLiteral("/x.log"), "keep");
    for (const QString& name : {QString(), QStringLiteral("."), QStringLiteral(".."), QStringLiteral("../../x"),
                                QStringLiteral("a/b"), QStringLiteral("..\\x"), QStringLiteral("nul\u0000x")}) {
        const WQLogClass refused(name);
        EXPECT_FALSE(refused.isEnabled()) << name.toStdString();
        EXPECT_TRUE(refused.logFilePath().isNull());
        refused.log(QStringLiteral("outside"));
        refused.cleanLogFile();
        EXPECT_FALSE(WQLogClass::isUsableApplicationName(name));
    }
    EXPECT_EQ(readBytes(studio + QStringLiteral("/x.log")), "keep");
    EXPECT_FALSE(QFileInfo::exists(studio + QStringLiteral("/../x")));
    EXPECT_TRUE(WQLogClass::isUsableApplicationName(QStringLiteral("..x")));

    // An ordinary file where the folder should be counts as there: logging is
    // on, and records are lost quietly.
    writeBytes(studio + QStringLiteral("/Blocked"), "not a folder");
    const WQLogClass blocked(QStringLiteral("Blocked"));
    EXPECT_TRUE(blocked.isEnabled());
    blocked.log(QStringLiteral("lost"));
    EXPECT_FALSE(blocked.logDataWithMaxLines(0).has_value());

    // A folder that cannot be made leaves logging off.
    const QString saved = qEnvironmentVariable("XDG_DATA_HOME");
    writeBytes(QDir::homePath() + QStringLiteral("/flat"), "x");
    qputenv("XDG_DATA_HOME", QFile::encodeName(QDir::homePath() + QStringLiteral("/flat/share")));
    const WQLogClass impossible(QStringLiteral("Nowhere"));
    qputenv("XDG_DATA_HOME", QFile::encodeName(saved));
    EXPECT_FALSE(impossible.isEnabled());
    EXPECT_TRUE(impossible.logFilePath().isNull());
    impossible.log(QStringLiteral("dropped"));
}

TEST(LogFile, RecordsHaveALocalTimeStampAndTheFileIsPrivate)
{
    ScratchLog scratch;
    const mode_t previousMask = ::umask(0);
    const qint64 before = QDateTime::currentSecsSinceEpoch() * 1000;
    scratch.log.log(QStringLiteral("Opened \"Household\" – 3 accounts"));
    scratch.log.log(QString());
    ::umask(previousMask);
    EXPECT_EQ(modeOf(scratch.path), mode_t(0600)) << "exactly 0600, whatever the umask";

    const QStringList lines = QString::fromUtf8(readBytes(scratch.path)).split(u'\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[2].isEmpty()) << "every record ends with a line feed";
    const auto match = kRecord.match(lines[0]);
    ASSERT_TRUE(match.hasMatch()) << qPrintable(lines[0]);
    EXPECT_EQ(match.captured(2), QStringLiteral("Opened \"Household\" – 3 accounts"));
    // The instant is now, and the wall-clock part is local time (the tests
    // run away from UTC), so the offset is the local one.
    const std::optional<qint64> stamp = _wq_parseLogTimeStamp(QStringView(match.captured(1)));
    ASSERT_TRUE(stamp.has_value());
    EXPECT_TRUE(before <= *stamp && *stamp <= QDateTime::currentMSecsSinceEpoch());
    EXPECT_EQ(match.captured(1).left(19), QDateTime::fromMSecsSinceEpoch(*stamp).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    EXPECT_TRUE(lines[1].size() == 28 && kRecord.match(lines[1]).hasMatch()) << "an empty message keeps the separator";

    // Disabled: nothing is written. Cleaned: the next record makes a new 0600 file.
    scratch.log.setEnabled(false);
    scratch.log.log(QStringLiteral("ignored"));
    EXPECT_EQ(readBytes(scratch.path).count('\n'), 2);
    scratch.log.setEnabled(true);
    scratch.log.cleanLogFile();
    EXPECT_FALSE(QFile::exists(scratch.path));
    scratch.log.cleanLogFile();
    scratch.log.log(QStringLiteral("again"));
    EXPECT_EQ(modeOf(scratch.path), mode_t(0600));
    EXPECT_TRUE(readBytes(scratch.path).endsWith(" | again\n"));

    // The shared log, through the free function.
    WQLogClass::sharedLog().cleanLogFile();
    WQLogNoFormat(QStringLiteral("%@ and %d stay as written"));
    EXPECT_TRUE(readBytes(WQLogClass::sharedLog().logFilePath()).endsWith(" | %@ and %d stay as written\n"));
}

TEST(LogFile, OverlongRecordsAreCutAt4095BytesWithAZeroByte)
{
    ScratchLog scratch;
    // 28 bytes of stamp and separator; 4066 more bytes of message still fit
    // with the line feed, one more does not.
    scratch.log.log(QString(4066, u'a'));
    QByteArray bytes = readBytes(scratch.path);
    EXPECT_EQ(bytes.size(), 4095);
    EXPECT_TRUE(bytes.endsWith("a\n"));

    scratch.log.cleanLogFile();
    scratch.log.log(QString(4067, u'b'));
    EXPECT_TRUE(readBytes(scratch.path).endsWith(QByteArray("b\0", 2))) << "cut, no line feed, one zero byte";
    EXPECT_EQ(readBytes(scratch.path).size(), 4096);

    scratch.log.cleanLogFile();
    scratch.log.log(QString(10000, u'é')); // two bytes each: the cut splits a character
    scratch.log.log(QStringLiteral("next"));
    bytes = readBytes(scratch.path);
    EXPECT_EQ(bytes.at(4095), '\0');
    EXPECT_EQ(bytes.count('\n'), 1) << "the next record continues on the same line";
    EXPECT_TRUE(kRecord.match(QString::fromUtf8(bytes.mid(4096))).hasMatch());
    EXPECT_TRUE(bytes.endsWith(" | next\n"));
    // The split character reads back as a replacement, not as a failure.
    EXPECT_TRUE(scratch.log.logDataWithMaxLines(0).value_or(QString()).contains(QChar::ReplacementCharacter));
}

TEST(LogFile, TerminatingIsLoggedWhenTheApplicationQuits)
{
    ScratchLog scratch;
    QTimer::singleShot(0, QCoreApplication::instance(), [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    EXPECT_TRUE(readBytes(scratch.path).endsWith(" | Terminating...\n"));
}


TEST(LogReading, CountingRuleKeepsMaxLinesMinusOneRecords)
{
    ScratchLog scratch;
    EXPECT_FALSE(scratch.log.logDataWithMaxLines(2).has_value()) << "no file, nothing";

    // 1 keeps only the empty piece after the last line feed. Files of 28
    // characters or fewer come back whole, whatever the maximum.
    const QByteArray three = kStamp + "a\n" + kStamp + "b\n" + kStamp + "c\n";
    const QByteArray shortText = "one\ntwo\nthree\nfour\nfive\nsix\n";
    ASSERT_EQ(shortText.size(), 28);
    const std::tuple<QByteArray, quint64, QByteArray> cases[] = {
        {three, 2, kStamp + "c\n"}, {three, 3, kStamp + "b\n" + kStamp + "c\n"}, {three, 0, three},
        {three, 4, three},          {three, 5, three},                         {three, ~quint64(0), three},
        {three, 1, ""},             {shortText, 2, shortText},                 {shortText + "7", 2, "six\n7"},
        {"", 3, ""},
    };
    for (const auto& [bytes, maxLines, expected] : cases) {
        writeBytes(scratch.path, bytes);
        EXPECT_EQ(scratch.log.logDataWithMaxLines(maxLines), QString::fromUtf8(expected)) << bytes.constData() << maxLines;
    }

    scratch.log.setLogFilePath(scratch.folder.path());
    EXPECT_FALSE(scratch.log.logDataWithMaxLines(3).has_value()) << "a folder cannot be read";
}

TEST(LogReading, ReadingBackwardsGivesTheWholeFileAnswer)
{
    // Files around and well past the size where reading turns backwards, with
    // long lines across read boundaries, undated lines, a cut record's zero
    // byte, split characters, byte order marks, carriage returns, emoji.
    const QByteArray pieces[] = {"plain ascii record", "", "continuation line", "grüße", "\xF0\x9F\x92\xB6 money",
                                 QByteArray("zero\0byte", 9), "\xE2\x82", "\xEF\xBB\xBFmid-file mark", "crlf\r",
                                 "\xFF\xFE bad bytes", QByteArray(70000, 'L'), QByteArray(3000, 'm')};
    QRandomGenerator random(7);
    QTemporaryDir folder;
    const QString path = folder.path() + QStringLiteral("/tail.log");
    for (const qsizetype target : {0, 20, 500, 65535, 65536, 65537, 70000, 140000, 300000}) {
        for (int variant = 0; variant < 4; ++variant) {
            QByteArray bytes;
            while (bytes.size() < target) {
                if (random.bounded(3))
                    bytes += kStamp;
                bytes += pieces[random.bounded(int(std::size(pieces)))];
                if (variant == 3 && random.bounded(8) == 0)
                    bytes += QByteArray(int(random.bounded(1, 5)), '\n'); // runs of empty lines
                bytes += '\n';
            }
            if (variant == 1 && !bytes.isEmpty())
                bytes.chop(1); // no final line feed
            if (variant == 2)
                bytes.prepend("\xEF\xBB\xBF");
            writeBytes(path, bytes);

            const std::optional<QString> whole = _wq_readWholeLog(path);
            ASSERT_TRUE(whole.has_value());
            const qsizetype lineFeeds = bytes.count('\n');
            for (quint64 maxLines : {quint64(0), quint64(1), quint64(2), quint64(3), quint64(7), quint64(100),
                                     quint64(lineFeeds), quint64(lineFeeds + 1), quint64(lineFeeds + 2), ~quint64(0)}) {
                const QString expected = splitAndJoin(*whole, maxLines);
                EXPECT_EQ(_wq_lastLinesOfText(*whole, maxLines), expected);
                const std::optional<QString> tail = _wq_readLastLines(path, maxLines);
                ASSERT_TRUE(tail.has_value());
                EXPECT_EQ(*tail, expected) << "size " << bytes.size() << " variant " << variant << " max " << maxLines;
            }
        }
    }
}
