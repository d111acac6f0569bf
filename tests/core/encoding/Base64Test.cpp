// Base64's kept quirks and agreement with Qt; then every vector path against
// the scalar one, on random data and on text built to break the vector
// blocks: each byte value and odd unit at each place of a block. (Spoiled
// text at large is the fuzz corpus's.)

#include <WQGeneral/encoding/WQBase64.h>

#include "WQBase64Testing.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <functional>
#include <vector>

using namespace wq;
using test::randomBytes;

namespace {

QByteArray decoded(QStringView text)
{
    const auto bytes = dataWithBase64EncodedString(text);
    EXPECT_TRUE(bytes.has_value()) << text.toString().toStdString();
    return bytes.value_or(QByteArray("<nothing>"));
}

class ScopedPath {
public:
    explicit ScopedPath(WQBase64Path path) : _previous(_wq_base64Path()) { EXPECT_TRUE(_wq_setBase64Path(path)); }
    ~ScopedPath() { _wq_setBase64Path(_previous); }
    ScopedPath(const ScopedPath&) = delete;
    ScopedPath& operator=(const ScopedPath&) = delete;

private:
    WQBase64Path _previous;
};

struct NamedPath {
    WQBase64Path path;
    const char* name;
};

constexpr NamedPath kVectorPaths[] = {
    {WQBase64Path::SSSE3, "SSSE3"}, {WQBase64Path::AVX2, "AVX2"}, {WQBase64Path::AVX512, "AVX-512"}};

// The vector paths this processor offers.
std::vector<NamedPath> vectorPaths()
{
    std::vector<NamedPath> paths;
    for (const NamedPath& p : kVectorPaths) {
        if (p.path <= _wq_base64BestPath())
            paths.push_back(p);
    }
    return paths;
}

// Answers the result of `work` on the scalar path and on each vector path.
template <typename Result>
void expectSameOnEveryPath(const std::function<Result()>& work, const char* what)
{
    Result reference;
    {
        ScopedPath scalar(WQBase64Path::Scalar);
        reference = work();
    }
    for (const auto& [path, name] : vectorPaths()) {
        ScopedPath scoped(path);
        EXPECT_EQ(work(), reference) << name << ": " << what;
    }
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

TEST(Base64Paths, TheMachineOffersWhatItClaims)
{
    // The current path starts at the best one; the scalar path is always there.
    EXPECT_EQ(_wq_base64Path(), _wq_base64BestPath());
    EXPECT_TRUE(_wq_setBase64Path(WQBase64Path::Scalar));
    EXPECT_EQ(_wq_base64Path(), WQBase64Path::Scalar);
    if (_wq_base64BestPath() != WQBase64Path::AVX512) {
        EXPECT_FALSE(_wq_setBase64Path(WQBase64Path::AVX512));
        EXPECT_EQ(_wq_base64Path(), WQBase64Path::Scalar);
    }
    EXPECT_TRUE(_wq_setBase64Path(_wq_base64BestPath()));
    if (vectorPaths().empty())
        GTEST_SKIP() << "no vector path on this processor";
}

TEST(Base64Paths, EncodingAgreesForEveryLengthAndOffset)
{
    const QByteArray data = test::randomBytes(4096 + 64, 12);
    // Every length up to a few blocks of every kernel, from unaligned starts.
    for (qsizetype n = 0; n <= 400; ++n) {
        const QByteArrayView piece(data.constData() + n % 61, n);
        expectSameOnEveryPath<QByteArray>([&] { return base64EncodedBytes(piece); }, "bytes");
        expectSameOnEveryPath<QString>([&] { return base64EncodingWithLineLength(piece); }, "text");
        expectSameOnEveryPath<QString>([&] {
            QString receiver = QStringLiteral("<");
            base64AppendEncoding(receiver, piece);
            return receiver;
        }, "appended");
    }
    const QByteArray large = test::randomBytes(1 << 20, 13);
    expectSameOnEveryPath<QByteArray>([&] { return base64EncodedBytes(large); }, "1 MiB");
    ScopedPath best(_wq_base64BestPath());
    EXPECT_EQ(base64EncodedBytes(large), large.toBase64());
}

TEST(Base64Paths, EveryByteAtEveryPlaceOfABlock)
{
    // Three AVX-512 blocks of clean text, so each kernel meets the odd
    // character in its first, a middle and its last block.
    const QByteArray clean = test::randomBytes(144, 34).toBase64();
    ASSERT_EQ(clean.size(), 192);
    for (qsizetype at : {qsizetype(0), qsizetype(5), qsizetype(15), qsizetype(16), qsizetype(31), qsizetype(32),
                         qsizetype(47), qsizetype(63), qsizetype(64), qsizetype(100), qsizetype(127),
                         qsizetype(190), qsizetype(191)}) {
        for (int value = 0; value < 256; ++value) {
            QByteArray bytes = clean;
            bytes[at] = char(value);
            const QByteArray what = "byte " + QByteArray::number(value) + " at " + QByteArray::number(at);
            expectSameOnEveryPath<std::optional<QByteArray>>(
                [&] { return dataWithBase64EncodedString(QByteArrayView(bytes)); }, what.constData());
        }
        // Units that narrow or saturate to an alphabet byte or to nothing.
        for (char16_t unit : {u'\u0100', u'\u0141', u'\u012B', u'\u00C1', u'\u00FF', u'\u7F41', u'\u8041',
                              u'\uFF41', u'\uFFFF', u'\u0080', u'\u003D', u'\u000A', char16_t(0xD800)}) {
            QString text = QString::fromLatin1(clean);
            text[at] = QChar(unit);
            const QByteArray what = "unit " + QByteArray::number(unit, 16) + " at " + QByteArray::number(at);
            expectSameOnEveryPath<std::optional<QByteArray>>(
                [&] { return dataWithBase64EncodedString(QStringView(text)); }, what.constData());
        }
    }
}
