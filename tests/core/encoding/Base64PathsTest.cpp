// Every vector path of the Base64 code against the scalar one, on random
// data and on text built to break the vector blocks: each byte value and odd
// unit at each place of a block. (Spoiled text at large is the fuzz corpus's.)

#include <WQGeneral/encoding/WQBase64.h>

#include "WQBase64Testing.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace wq;

namespace {

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
