#include <WQGeneral/encoding/WQBase64.h>

#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <QStringList>

using namespace wq;

namespace {

QByteArray decoded(QStringView text)
{
    const auto bytes = dataWithBase64EncodedString(text);
    EXPECT_TRUE(bytes.has_value()) << text.toString().toStdString();
    return bytes.value_or(QByteArray("<nothing>"));
}

QByteArray randomBytes(qsizetype n, quint32 seed)
{
    QRandomGenerator generator(seed);
    QByteArray bytes(n, Qt::Uninitialized);
    for (char& b : bytes)
        b = char(generator.bounded(256));
    return bytes;
}

} // namespace

TEST(Base64, PublishedVectorsBothWays)
{
    const std::pair<const char*, const char*> vectors[] = {
        {"", ""},         {"f", "Zg=="},         {"fo", "Zm8="},        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
    };
    for (const auto& [plain, encoded] : vectors) {
        const QByteArray data(plain);
        EXPECT_EQ(base64EncodingWithLineLength(data), QString::fromLatin1(encoded)) << plain;
        EXPECT_EQ(base64EncodingWithLineLength(data, 0, WQBase64Encoder::Own), QString::fromLatin1(encoded)) << plain;
        EXPECT_EQ(base64EncodedBytes(data), QByteArray(encoded)) << plain;
        if (*encoded) {
            EXPECT_EQ(decoded(QString::fromLatin1(encoded)), data) << encoded;
            EXPECT_EQ(dataWithBase64EncodedString(QByteArrayView(encoded)), data) << encoded;
        }
    }
    EXPECT_EQ(base64EncodingWithLineLength(QByteArray(1, '\0')), u"AA==");
}

TEST(Base64, DecoderSkipsAndStops)
{
    EXPECT_EQ(decoded(u"QUJD"), "ABC");
    EXPECT_EQ(decoded(u"QUI="), "AB");
    EXPECT_EQ(decoded(u"QQ=="), "A");
    EXPECT_EQ(decoded(u"QUJD\nRA=="), "ABCD");
    EXPECT_EQ(decoded(u"Q-U_J D\t\r\n"), "ABC");   // anything outside the alphabet is skipped
    EXPECT_EQ(decoded(u"QUJDRA"), "ABC");          // the unpadded tail is dropped
    EXPECT_EQ(decoded(u"QUJDR"), "ABC");
    EXPECT_EQ(decoded(u"QQ==QUJD"), "A");          // nothing after the first "=" counts
    EXPECT_EQ(decoded(u"QQ=QUJD"), "A");

    const auto onlyPad = dataWithBase64EncodedString(u"=");
    ASSERT_TRUE(onlyPad.has_value());
    EXPECT_TRUE(onlyPad->isEmpty());
    EXPECT_FALSE(dataWithBase64EncodedString(u"").has_value());
    EXPECT_FALSE(dataWithBase64EncodedString(QString()).has_value());
    EXPECT_FALSE(dataWithBase64EncodedString(QByteArrayView()).has_value());

    // Text that is not all ASCII gives an empty buffer, even after the "=".
    for (const QString& text : {QStringLiteral("QUJD\u00e9"), QStringLiteral("QQ==\u00e9"), QStringLiteral("\u4e2dQUJD")}) {
        const auto bytes = dataWithBase64EncodedString(text);
        ASSERT_TRUE(bytes.has_value());
        EXPECT_TRUE(bytes->isEmpty()) << text.toStdString();
    }
    const auto highByte = dataWithBase64EncodedString(QByteArrayView("QUJD\xC3\xA9"));
    ASSERT_TRUE(highByte.has_value());
    EXPECT_TRUE(highByte->isEmpty());
}

TEST(Base64, ShortFinalGroupReusesThePreviousGroupsSlots)
{
    // Alone, "Q=" has zeros behind its one value and gives "@" (0x40) ...
    EXPECT_EQ(decoded(u"Q="), "@");
    // ... behind "QUJD" the second slot still holds U (20), whose top bits add 1.
    EXPECT_EQ(decoded(u"QUJDQ="), "ABCA");
    EXPECT_EQ(decoded(u"QUJDQ\n="), "ABCA");
    // Two values: the second is new, the third slot is not used for one byte.
    EXPECT_EQ(decoded(u"QUJDQR=="), "ABCA");
    // Three values give two bytes.
    EXPECT_EQ(decoded(u"QUJDQUE="), "ABCAA");
    // The same after long clean runs, through both overloads.
    for (int groups : {49, 50, 51}) {
        const QByteArray text = QByteArray("QUJD").repeated(groups) + "Q=";
        const QByteArray expected = QByteArray("ABC").repeated(groups) + "A";
        EXPECT_EQ(dataWithBase64EncodedString(QByteArrayView(text)), expected) << groups;
        EXPECT_EQ(dataWithBase64EncodedString(QString::fromLatin1(text)), expected) << groups;
    }
}

TEST(Base64, RoundTripsAgainstQtForEveryLengthAndBreak)
{
    for (qsizetype n = 0; n < 200; ++n) {
        const QByteArray data = randomBytes(n, quint32(n) + 1);
        const QByteArray reference = data.toBase64();
        EXPECT_EQ(base64EncodingWithLineLength(data, 76), QString::fromLatin1(reference));
        EXPECT_EQ(base64EncodedBytes(data), reference);
        if (n == 0)
            continue;
        EXPECT_EQ(decoded(QString::fromLatin1(reference)), data) << n;
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

    const QString four = base64EncodingWithLineLength(data, 4, WQBase64Encoder::Own);
    const QStringList fourLines = four.split(u'\n');
    EXPECT_EQ(fourLines.size(), 15);   // 14 full groups, each followed by a line feed
    for (qsizetype i = 0; i + 1 < fourLines.size(); ++i)
        EXPECT_EQ(fourLines[i].size(), 4);

    // Line length 6 rounds up to the next multiple of four.
    const QString six = base64EncodingWithLineLength(data, 6, WQBase64Encoder::Own);
    const QStringList sixLines = six.split(u'\n');
    for (qsizetype i = 0; i + 1 < sixLines.size(); ++i)
        EXPECT_EQ(sixLines[i].size(), 8);
    EXPECT_EQ(sixLines.join(QString()), base64EncodingWithLineLength(data));

    // A line feed ends the text only when the last group completes a line.
    EXPECT_EQ(base64EncodingWithLineLength("abcd", 8, WQBase64Encoder::Own), u"YWJjZA==\n");
    EXPECT_EQ(base64EncodingWithLineLength("abcde", 12, WQBase64Encoder::Own), u"YWJjZGU=");
    EXPECT_EQ(base64EncodingWithLineLength(QByteArray(), 4, WQBase64Encoder::Own), u"");
    EXPECT_TRUE(base64EncodingWithLineLength(QByteArray()).isEmpty());

    QString receiver = QStringLiteral("x:");
    base64AppendEncoding(receiver, "foob");
    EXPECT_EQ(receiver, u"x:Zm9vYg==");
}

TEST(Base64, AlphabetMembership)
{
    int members = 0;
    for (int c = -128; c < 128; ++c) {
        if (isCharacterPartOfBase64Encoding(std::int8_t(c)))
            ++members;
    }
    EXPECT_EQ(members, 64);
    for (char c : {'A', 'Z', 'a', 'z', '0', '9', '+', '/'})
        EXPECT_TRUE(isCharacterPartOfBase64Encoding(std::int8_t(c))) << c;
    for (char c : {'=', ' ', '\n', '-', '_', '\0'})
        EXPECT_FALSE(isCharacterPartOfBase64Encoding(std::int8_t(c))) << int(c);
}
