#include <WQGeneral/log/WQLogClass.h>

#include "LogTestSupport.h"
#include "WQLogReading.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTimeZone>

#include <atomic>
#include <thread>
#include <vector>

#include <unistd.h>

using namespace wq;
using namespace wq::test;

namespace {

const QDateTime kStart(QDate(2024, 5, 1), QTime(13, 0), QTimeZone(7200));

QByteArray stamp(int minute)
{
    return kStart.addSecs(60 * minute).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss +0200 | ")).toUtf8();
}

// Records a minute apart, from minute 0 up to but not including end.
QByteArray records(int end, const QByteArray& text = "record")
{
    QByteArray bytes;
    for (int minute = 0; minute < end; ++minute)
        bytes += stamp(minute) + text + ' ' + QByteArray::number(minute) + '\n';
    return bytes;
}

QByteArray fromMinute(const QByteArray& bytes, int minute)
{
    return bytes.mid(bytes.indexOf(stamp(minute)));
}

// What is left of bytes after trimming before cutOff.
QByteArray trimmed(ScratchLog& scratch, const QByteArray& bytes, const QDateTime& cutOff)
{
    writeBytes(scratch.path, bytes);
    scratch.log.clearLogDataBeforeDate(cutOff);
    return readBytes(scratch.path);
}

} // namespace

TEST(LogTrimming, CutsAtTheApproximatePlaceAndReplacesTheFileWhole)
{
    ScratchLog scratch;
    const QByteArray sixteen = records(16);
    // An exact hit: probe 2 (one eighth in) is older, the next probe lands on
    // it. Between two records the search is approximate: a 10:30 cut-off ends
    // on 11:00, but a 9:30 one ends on 9:00, which stays. The same instant in
    // UTC cuts the same. Before the first record, after the last, and an
    // invalid date leave the file untouched (-1).
    const std::pair<QDateTime, int> cases[] = {
        {kStart.addSecs(600), 10},         {kStart.addSecs(630), 11}, {kStart.addSecs(570), 9},
        {kStart.addSecs(600).toUTC(), 10}, {kStart.addSecs(-1), -1},  {kStart.addSecs(3600), -1},
        {QDateTime(), -1},
    };
    for (const auto& [cutOff, minute] : cases)
        EXPECT_EQ(trimmed(scratch, sixteen, cutOff), minute < 0 ? sixteen : fromMinute(sixteen, minute))
            << qPrintable(cutOff.toString(Qt::ISODate));

    // 28 characters or fewer are never trimmed, nor an undated first line.
    EXPECT_EQ(trimmed(scratch, stamp(0).left(28), kStart.addSecs(3600)), stamp(0).left(28));
    EXPECT_EQ(trimmed(scratch, "header without a date\n" + sixteen, kStart.addSecs(600)), "header without a date\n" + sixteen);

    // The new text replaces the file whole (a second name keeps the old
    // text), raw bytes stay raw, and the file stays private.
    scratch.log.cleanLogFile();
    scratch.log.log(QStringLiteral("creates the file with 0600"));
    const QByteArray raw = sixteen + "\xFF raw bytes stay raw\n";
    writeBytes(scratch.path, raw);
    const QString before = scratch.folder.path() + QStringLiteral("/before.log");
    ASSERT_EQ(::link(QFile::encodeName(scratch.path).constData(), QFile::encodeName(before).constData()), 0);
    scratch.log.clearLogDataBeforeDate(kStart.addSecs(600));
    EXPECT_EQ(readBytes(scratch.path), fromMinute(raw, 10));
    EXPECT_EQ(readBytes(before), raw);
    EXPECT_EQ(modeOf(scratch.path), mode_t(0600));

    // No file: nothing happens, nothing is made.
    scratch.log.cleanLogFile();
    scratch.log.clearLogDataBeforeDate(kStart.addSecs(600));
    EXPECT_FALSE(QFile::exists(scratch.path));
}

TEST(LogTrimming, UndatedContinuationLinesMoveTheProbeOn)
{
    ScratchLog scratch;
    // Lines 1 to 5 continue record 0; the probe starts at line 27 / 8 = 3 and
    // walks to the first dated line after them.
    QByteArray bytes = stamp(0) + "multi-line record\n";
    for (int i = 0; i < 5; ++i)
        bytes += "    continued " + QByteArray::number(i) + '\n';
    bytes += records(21).mid(records(1).size());
    EXPECT_EQ(trimmed(scratch, bytes, kStart.addSecs(60 * 12)), fromMinute(bytes, 12));

    // Only undated lines after the first: the probe walks off the end.
    const QByteArray undated = stamp(0) + "start\n" + QByteArray("  a continuation line that is long enough\n").repeated(12);
    EXPECT_EQ(trimmed(scratch, undated, kStart.addSecs(600)), undated);
}

TEST(LogTrimming, TimeStampsParseOnlyInTheirExactForm)
{
    const auto at = [](const char* text) { return _wq_parseLogTimeStamp(QStringView(QString::fromLatin1(text))); };
    EXPECT_EQ(at("2024-05-01 13:45:07 +0200"), QDateTime(QDate(2024, 5, 1), QTime(13, 45, 7), QTimeZone(7200)).toMSecsSinceEpoch());
    EXPECT_EQ(at("1969-12-31 19:00:00 -0500"), 0);
    EXPECT_EQ(at("2024-02-29 00:00:00 +0000"), QDateTime(QDate(2024, 2, 29), QTime(0, 0), QTimeZone::utc()).toMSecsSinceEpoch());
    EXPECT_EQ(at("0001-01-01 00:00:00 +0000"), QDateTime(QDate(1, 1, 1), QTime(0, 0), QTimeZone::utc()).toMSecsSinceEpoch());
    for (const char* bad : {"2023-02-29 00:00:00 +0000", "2024-13-01 00:00:00 +0000", "2024-05-01 24:00:00 +0000",
                            "2024-05-01T13:45:07 +0200", "2024-05-01 13:45:07 0200", "2024-05-01 13:45:07 +02:0",
                            "2024-05-01 13:45:07 +020", "24-05-01 13:45:07 +0200  ", "2024-05-01 13:45:07 +0200 "})
        EXPECT_FALSE(at(bad).has_value()) << bad;
    EXPECT_FALSE(_wq_parseLogTimeStamp(QByteArrayView("2024-05-01 13:45:07 +02\xC3\xA9")).has_value());
    EXPECT_EQ(_wq_parseLogTimeStamp(QByteArrayView("2024-05-01 13:45:07 +0200")), at("2024-05-01 13:45:07 +0200"));
}

TEST(LogTrimming, WritersLoseNothingToRepeatedTrims)
{
    // Old records to trim away a slice at a time, while writers append new
    // ones throughout; every new record must survive every rewrite.
    ScratchLog scratch;
    constexpr int kOld = 60000;
    constexpr int kRounds = 30;
    writeBytes(scratch.path, records(kOld));
    QFile::setPermissions(scratch.path, QFile::ReadOwner | QFile::WriteOwner);
    std::atomic<bool> trimming{true};
    std::atomic<int> written{0};
    std::vector<std::thread> writers;
    for (int w = 0; w < 3; ++w) {
        writers.emplace_back([&, w] {
            // Each writer its own object, as separate processes would have.
            WQLogClass log(QStringLiteral("Scratch"));
            log.setLogFilePath(scratch.path);
            for (int i = 0; trimming || i < 50; ++i) {
                log.log(QStringLiteral("writer %1 record %2").arg(w).arg(i));
                ++written;
            }
        });
    }
    for (int round = 1; round <= kRounds; ++round)
        scratch.log.clearLogDataBeforeDate(kStart.addSecs(60 * qint64(kOld) * round / (kRounds + 1)));
    trimming = false;
    for (std::thread& writer : writers)
        writer.join();

    const QByteArray bytes = readBytes(scratch.path);
    EXPECT_EQ(bytes.count("| writer "), written.load());
    for (int w = 0; w < 3; ++w)
        EXPECT_EQ(bytes.count(QStringLiteral("| writer %1 record 49\n").arg(w).toUtf8()), 1);
    // The old records were trimmed all the same.
    EXPECT_FALSE(bytes.contains(stamp(kOld / 2)));
    EXPECT_TRUE(bytes.contains(stamp(kOld - 1)));
    EXPECT_EQ(modeOf(scratch.path), mode_t(0600));
    RecordProperty("records_written", written.load());
}
