#include <WQGeneral/log/WQLogClass.h>

#include "LogTestSupport.h"
#include "WQLogReading.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QRegularExpression>
#include <QTimer>

using namespace wq;
using namespace wq::test;

namespace {

const QRegularExpression kRecord(QStringLiteral(R"(^(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d [+-]\d{4}) \| (.*)$)"));

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
