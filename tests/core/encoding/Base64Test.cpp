#include <WQGeneral/encoding/WQBase64.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace wq;
using test::randomBytes;

namespace {

QByteArray decoded(QStringView text)
{
    const auto bytes = dataWithBase64EncodedString(text);
    EXPECT_TRUE(bytes.has_value()) << text.toString().toStdString();
    return bytes.value_or(QByteArray("<nothing>"));
}

} // namespace

TEST(Base64, DecoderQuirks)
{
    const std::pair<const char16_t*, QByteArray> rows[] = {
        {u"QUJD", "ABC"}, {u"QUI=", "AB"}, {u"QQ==", "A"}, {u"QUJD\nRA==", "ABCD"}, {u"=", ""},
        {u"Q-U_J D\t\r\n", "ABC"},               // anything outside the alphabet is skipped
        {u"QUJDRA", "ABC"}, {u"QUJDR", "ABC"},     // the unpadded tail is dropped
        {u"QQ==QUJD", "A"}, {u"QQ=QUJD", "A"},     // nothing after the first "=" counts
        // Text that is not all ASCII gives an empty buffer, even after the "=".
        {u"QUJD\u00e9", ""}, {u"QQ==\u00e9", ""}, {u"\u4e2dQUJD", ""},
        // A short final group reuses the previous group's slots. Alone, "Q="
        // has zeros behind its one value and gives "@" (0x40); behind "QUJD"
        // the second slot still holds U (20), whose top bits add 1.
        {u"Q=", "@"}, {u"QUJDQ=", "ABCA"}, {u"QUJDQ\n=", "ABCA"},
        {u"QUJDQR==", "ABCA"},   // the second value is new, the third slot unused for one byte
        {u"QUJDQUE=", "ABCAA"},  // three values give two bytes
    };
    for (const auto& [text, bytes] : rows) {
        const QString string = QString::fromUtf16(text);
        EXPECT_EQ(decoded(string), bytes) << string.toStdString();
        EXPECT_EQ(dataWithBase64EncodedString(QByteArrayView(string.toUtf8())), bytes) << string.toStdString();
    }
    EXPECT_FALSE(dataWithBase64EncodedString(u"").has_value());
    EXPECT_FALSE(dataWithBase64EncodedString(QString()).has_value());
    EXPECT_FALSE(dataWithBase64EncodedString(QByteArrayView()).has_value());

    // The slots are reused after long clean runs too.
    for (int groups : {49, 50, 51}) {
        const QByteArray text = QByteArray("QUJD").repeated(groups) + "Q=";
        const QByteArray expected = QByteArray("ABC").repeated(groups) + "A";
        EXPECT_EQ(dataWithBase64EncodedString(QByteArrayView(text)), expected) << groups;
        EXPECT_EQ(dataWithBase64EncodedString(QString::fromLatin1(text)), expected) << groups;
    }
}

TEST(Base64, BothEncodersAndDecodersAgreeWithQtForEveryLengthAndBreak)
{
    for (qsizetype n = 0; n < 200; ++n) {
        const QByteArray data = randomBytes(n, quint32(n) + 1);
        const QByteArray reference = data.toBase64();
        EXPECT_EQ(base64EncodingWithLineLength(data, 76), QString::fromLatin1(reference));
        EXPECT_EQ(base64EncodingWithLineLength(data, 0, WQBase64Encoder::Own), QString::fromLatin1(reference));
        EXPECT_EQ(base64EncodedBytes(data), reference);
        if (n == 0)
            continue;
        EXPECT_EQ(decoded(QString::fromLatin1(reference)), data) << n;
        EXPECT_EQ(dataWithBase64EncodedString(QByteArrayView(reference)), data) << n;
        // Line breaks from the own encoder are skipped on the way back.
        EXPECT_EQ(decoded(base64EncodingWithLineLength(data, 8, WQBase64Encoder::Own)), data) << n;
        // Without padding the last incomplete group is lost.
        QByteArray unpadded = reference;
        while (unpadded.endsWith('='))
            unpadded.chop(1);
        if (!unpadded.isEmpty()) {
            EXPECT_EQ(dataWithBase64EncodedString(QByteArrayView(unpadded)), data.first(n - n % 3)) << n;
        }
    }
}

TEST(Base64, LineLengthOnlyCountsForTheOwnEncoder)
{
    const QByteArray data = randomBytes(40, 7);
    EXPECT_EQ(base64EncodingWithLineLength(data, 4), base64EncodingWithLineLength(data, 76));
    EXPECT_FALSE(base64EncodingWithLineLength(data, 4).contains(u'\n'));

    // Line length 6 rounds up to the next multiple of four. 56 characters
    // fill their lines, so a line feed follows the last one.
    for (const auto& [length, width] : {std::pair{4, 4}, std::pair{6, 8}}) {
        const QStringList lines = base64EncodingWithLineLength(data, length, WQBase64Encoder::Own).split(u'\n');
        EXPECT_EQ(lines.size(), 56 / width + 1) << length;
        for (qsizetype i = 0; i + 1 < lines.size(); ++i)
            EXPECT_EQ(lines[i].size(), width) << length;
        EXPECT_EQ(lines.join(QString()), base64EncodingWithLineLength(data)) << length;
    }

    // A line feed ends the text only when the last group completes a line.
    EXPECT_EQ(base64EncodingWithLineLength("abcd", 8, WQBase64Encoder::Own), u"YWJjZA==\n");
    EXPECT_EQ(base64EncodingWithLineLength("abcde", 12, WQBase64Encoder::Own), u"YWJjZGU=");
    EXPECT_EQ(base64EncodingWithLineLength(QByteArray(), 4, WQBase64Encoder::Own), u"");
    EXPECT_TRUE(base64EncodingWithLineLength(QByteArray()).isEmpty());

    QString receiver = QStringLiteral("x:");
    base64AppendEncoding(receiver, "foob");
    EXPECT_EQ(receiver, u"x:Zm9vYg==");
}
