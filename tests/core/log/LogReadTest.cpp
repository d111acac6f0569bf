#include <WQGeneral/log/WQLogClass.h>

#include "LogTestSupport.h"
#include "WQLogReading.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

using namespace wq;
using namespace wq::test;

namespace {

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
