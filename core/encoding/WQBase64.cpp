#include <WQGeneral/encoding/WQBase64.h>
#include <WQGeneral/platform/WQExceptions.h>

#include "WQBase64Kernels.h"
#include "WQBase64Testing.h"
#include "detail/WQBase64Raw.h"

#include <array>
#include <atomic>
#include <cstring>
#include <new>
#include <string_view>

namespace wq {
namespace {

using _wq_base64::Kernels;

const Kernels* kernelsFor(WQBase64Path path)
{
    switch (path) {
    case WQBase64Path::Scalar: return nullptr;
#ifdef WQ_BASE64_X86
    case WQBase64Path::SSSE3: return &_wq_base64::kSSSE3;
    case WQBase64Path::AVX2: return &_wq_base64::kAVX2;
    case WQBase64Path::AVX512: return &_wq_base64::kAVX512;
#else
    default: return nullptr;
#endif
    }
    return nullptr;
}

WQBase64Path detectBestPath()
{
#ifdef WQ_BASE64_X86
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw")
        && __builtin_cpu_supports("avx512vbmi"))
        return WQBase64Path::AVX512;
    if (__builtin_cpu_supports("avx2"))
        return WQBase64Path::AVX2;
    if (__builtin_cpu_supports("ssse3"))
        return WQBase64Path::SSSE3;
#endif
    return WQBase64Path::Scalar;
}

struct PathChoice {
    WQBase64Path best = detectBestPath();
    std::atomic<WQBase64Path> path{best};
};

PathChoice& pathChoice()
{
    static PathChoice choice;
    return choice;
}

const Kernels* activeKernels()
{
    return kernelsFor(pathChoice().path.load(std::memory_order_relaxed));
}

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Per-byte class for the decoder: 0-63 the value, then these markers.
constexpr std::uint8_t kSkip = 0x40;      // outside the alphabet: skipped
constexpr std::uint8_t kPad = 0x41;       // "=": the end
constexpr std::uint8_t kNotASCII = 0x80;  // the whole text is refused
constexpr std::uint8_t kEndMarker = 255;  // the value the end marker leaves in slot 4

constexpr std::array<std::uint8_t, 256> makeClassTable()
{
    std::array<std::uint8_t, 256> table{};
    for (int i = 0; i < 256; ++i)
        table[i] = i < 128 ? kSkip : kNotASCII;
    for (int i = 0; i < 64; ++i)
        table[std::uint8_t(kAlphabet[i])] = std::uint8_t(i);
    table['='] = kPad;
    return table;
}
constexpr auto kClass = makeClassTable();

// Four tables that place a character's six bits where its position in the
// group wants them; a non-alphabet byte sets bit 24, so one OR over a whole
// group tells whether the fast path may take it.
constexpr std::uint32_t kBad = 1u << 24;
constexpr std::array<std::uint32_t, 256> makeShiftedTable(int shift)
{
    std::array<std::uint32_t, 256> table{};
    for (int i = 0; i < 256; ++i)
        table[i] = kClass[i] < 64 ? std::uint32_t(kClass[i]) << shift : kBad;
    return table;
}
constexpr auto kShift18 = makeShiftedTable(18);
constexpr auto kShift12 = makeShiftedTable(12);
constexpr auto kShift6 = makeShiftedTable(6);
constexpr auto kShift0 = makeShiftedTable(0);

// Twelve input bits give two output characters at once.
template <typename Pair, typename Unit>
constexpr std::array<Pair, 4096> makePairTable()
{
    std::array<Pair, 4096> table{};
    for (int i = 0; i < 4096; ++i) {
        const Pair first = Pair(Unit(kAlphabet[i >> 6]));
        const Pair second = Pair(Unit(kAlphabet[i & 63]));
        // Memory order: first character, then second (little-endian hosts).
        table[i] = Pair(first | Pair(second << (8 * sizeof(Unit))));
    }
    return table;
}
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "the pair tables assume a little-endian host");
constexpr auto kBytePairs = makePairTable<std::uint16_t, std::uint8_t>();
constexpr auto kUnitPairs = makePairTable<std::uint32_t, std::uint16_t>();

// The group state of the walk. Slots are cleared once, never between
// groups: a short final group reuses what the previous group left.
struct GroupDecoder {
    std::array<std::uint8_t, 4> slot{};
    int filled = 0;
    char* out = nullptr;

    void put(int yield)
    {
        const std::uint8_t bytes[3] = {
            std::uint8_t((slot[0] << 2) | ((slot[1] & 0x30) >> 4)),
            std::uint8_t(((slot[1] & 0x0F) << 4) | ((slot[2] & 0x3C) >> 2)),
            std::uint8_t(((slot[2] & 0x03) << 6) | slot[3]),
        };
        std::memcpy(out, bytes, size_t(yield));
        out += yield;
    }
    void value(std::uint8_t v)
    {
        slot[size_t(filled++)] = v;
        if (filled == 4) {
            put(3);
            filled = 0;
        }
    }
    // The "=" ends the walk.
    void end()
    {
        if (filled == 0)
            return;
        slot[3] = kEndMarker;
        put(filled == 3 ? 2 : 1);
    }
};

// Whole groups of four alphabet characters from p on, one at a time, up to
// the first group holding anything else; the characters taken.
template <typename Unit>
qsizetype scalarGroups(const Unit* p, const Unit* end, std::uint8_t* out)
{
    const Unit* const start = p;
    for (; end - p >= 4; p += 4) {
        if constexpr (sizeof(Unit) > 1) {
            if ((p[0] | p[1] | p[2] | p[3]) >= 128)
                break;
        }
        const std::uint32_t bits = kShift18[std::uint8_t(p[0])] | kShift12[std::uint8_t(p[1])]
            | kShift6[std::uint8_t(p[2])] | kShift0[std::uint8_t(p[3])];
        if (bits & kBad)
            break;
        out[0] = std::uint8_t(bits >> 16);
        out[1] = std::uint8_t(bits >> 8);
        out[2] = std::uint8_t(bits);
        out += 3;
    }
    return p - start;
}

// Walks the text. Units is either 8-bit or 16-bit code units.
template <typename Unit>
std::optional<QByteArray> decode(const Unit* text, qsizetype n)
{
    if (n <= 0)
        return std::nullopt;
    QByteArray output;
    try {
        output.resize(((n * 3) >> 2) + 3);
    } catch (const std::bad_alloc&) {
        throw NSInternalInconsistencyException(QStringLiteral("Could not allocate memory in NSData -initWithBase64EncodedString:"));
    }
    GroupDecoder group;
    group.out = output.data();
    const Unit* p = text;
    const Unit* const end = text + n;
    auto classOf = [](Unit c) -> std::uint8_t { return c < 256 ? kClass[std::uint8_t(c)] : kNotASCII; };
    const Kernels* const kernels = activeKernels();
    // After a vector attempt that took nothing, the scalar code goes on for
    // a while before the next one.
    const Unit* nextVectorTry = text;
    bool stopped = false;
    while (p < end) {
        // Fast path: whole groups of four alphabet characters at a group boundary.
        if (group.filled == 0) {
            const Unit* lastGroup = nullptr;
            if (kernels && p >= nextVectorTry && end - p >= 16) {
                std::size_t taken;
                if constexpr (sizeof(Unit) == 1)
                    taken = kernels->decodeBytes(p, std::size_t(end - p), reinterpret_cast<std::uint8_t*>(group.out));
                else
                    taken = kernels->decodeUnits(p, std::size_t(end - p), reinterpret_cast<std::uint8_t*>(group.out));
                if (taken > 0) {
                    group.out += taken / 4 * 3;
                    p += taken;
                    lastGroup = p - 4;
                } else {
                    nextVectorTry = p + 64;
                }
            }
            // Two groups at a time, written with one 8-byte store (6 bytes
            // used) while the output has room for it.
            const qsizetype wideRoom = output.size() - 8;
            while (end - p >= 8 && group.out - output.constData() <= wideRoom) {
                if constexpr (sizeof(Unit) > 1) {
                    // Eight UTF-16 units are ASCII when no unit has a bit above the low seven.
                    std::uint64_t w[2];
                    std::memcpy(w, p, sizeof w);
                    if ((w[0] | w[1]) & 0xFF80FF80FF80FF80ull)
                        break;
                }
                const std::uint32_t a = kShift18[std::uint8_t(p[0])] | kShift12[std::uint8_t(p[1])]
                    | kShift6[std::uint8_t(p[2])] | kShift0[std::uint8_t(p[3])];
                const std::uint32_t b = kShift18[std::uint8_t(p[4])] | kShift12[std::uint8_t(p[5])]
                    | kShift6[std::uint8_t(p[6])] | kShift0[std::uint8_t(p[7])];
                if ((a | b) & kBad)
                    break;
                const std::uint64_t bytes = __builtin_bswap64(((std::uint64_t(a) << 24) | b) << 16);
                std::memcpy(group.out, &bytes, 8);
                group.out += 6;
                lastGroup = p + 4;
                p += 8;
            }
            if (const qsizetype taken = scalarGroups(p, end, reinterpret_cast<std::uint8_t*>(group.out))) {
                group.out += taken / 4 * 3;
                p += taken;
                lastGroup = p - 4;
            }
            if (lastGroup) {
                for (int i = 0; i < 4; ++i)
                    group.slot[size_t(i)] = kClass[std::uint8_t(lastGroup[i])];
            }
            if (p == end)
                break;
        }
        const std::uint8_t c = classOf(*p++);
        if (c < 64) {
            group.value(c);
        } else if (c == kPad) {
            group.end();
            stopped = true;
            break;
        } else if (c == kNotASCII) {
            return QByteArray(0, Qt::Uninitialized);
        }
    }
    if (stopped) {
        // The rest is ignored, but it still has to be ASCII text.
        for (; p < end; ++p) {
            if (*p >= 128)
                return QByteArray(0, Qt::Uninitialized);
        }
    }
    output.truncate(group.out - output.constData());
    return output;
}

template <typename Pair, typename Unit>
void encodeUnbroken(const std::uint8_t* in, qsizetype n, Unit* out)
{
    if (const Kernels* kernels = activeKernels()) {
        std::size_t taken;
        if constexpr (sizeof(Unit) == 1)
            taken = kernels->encodeBytes(in, std::size_t(n), out);
        else
            taken = kernels->encodeUnits(in, std::size_t(n), out);
        in += taken;
        n -= qsizetype(taken);
        out += taken / 3 * 4;
    }
    const auto& pairs = []() -> const auto& {
        if constexpr (sizeof(Unit) == 1)
            return kBytePairs;
        else
            return kUnitPairs;
    }();
    qsizetype i = 0;
    for (; i + 3 <= n; i += 3) {
        const std::uint32_t bits = (std::uint32_t(in[i]) << 16) | (std::uint32_t(in[i + 1]) << 8) | in[i + 2];
        const Pair a = pairs[bits >> 12];
        const Pair b = pairs[bits & 0xFFF];
        std::memcpy(out, &a, sizeof a);
        std::memcpy(out + 2, &b, sizeof b);
        out += 4;
    }
    const qsizetype rest = n - i;
    if (rest > 0) {
        const std::uint32_t b0 = in[i];
        const std::uint32_t b1 = rest > 1 ? in[i + 1] : 0;
        out[0] = Unit(kAlphabet[b0 >> 2]);
        out[1] = Unit(kAlphabet[((b0 & 0x03) << 4) | (b1 >> 4)]);
        out[2] = rest > 1 ? Unit(kAlphabet[(b1 & 0x0F) << 2]) : Unit('=');
        out[3] = Unit('=');
    }
}

// Whole groups only: the vector kernel while it takes blocks, then four
// characters at a time.
template <typename Unit>
qsizetype decodeGroups(const Unit* text, qsizetype n, std::uint8_t* out)
{
    const Unit* p = text;
    const Unit* const end = text + n;
    if (const Kernels* kernels = activeKernels(); kernels && n >= 16) {
        std::size_t taken;
        if constexpr (sizeof(Unit) == 1)
            taken = kernels->decodeBytes(reinterpret_cast<const std::uint8_t*>(p), std::size_t(n), out);
        else
            taken = kernels->decodeUnits(p, std::size_t(n), out);
        p += taken;
        out += taken / 4 * 3;
    }
    return p - text + scalarGroups(p, end, out);
}

qsizetype unbrokenLength(qsizetype n)
{
    return (n + 2) / 3 * 4;
}

// The framework's own encoder, with line breaks.
QString encodeWithLineBreaks(QByteArrayView data, std::uint32_t lineLength)
{
    const qsizetype n = data.size();
    qsizetype capacity = (n / 3 + 1) * 4 + 1;
    if (lineLength != 0)
        capacity += capacity / lineLength + 1;
    QString text;
    try {
        text.resize(capacity);
    } catch (const std::bad_alloc&) {
        throw NSInternalInconsistencyException(QStringLiteral("Could not allocate memory in NSData -base64EncodingWithLineLength:"));
    }
    const auto* in = reinterpret_cast<const std::uint8_t*>(data.data());
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    char16_t* const start = out;
    std::uint32_t column = 0;
    for (qsizetype i = 0; i < n; i += 3) {
        const qsizetype taken = std::min<qsizetype>(3, n - i);
        const std::uint8_t b0 = in[i];
        const std::uint8_t b1 = taken > 1 ? in[i + 1] : 0;
        const std::uint8_t b2 = taken > 2 ? in[i + 2] : 0;
        *out++ = char16_t(kAlphabet[b0 >> 2]);
        *out++ = char16_t(kAlphabet[((b0 & 0x03) << 4) | (b1 >> 4)]);
        *out++ = taken > 1 ? char16_t(kAlphabet[((b1 & 0x0F) << 2) | (b2 >> 6)]) : u'=';
        *out++ = taken > 2 ? char16_t(kAlphabet[b2 & 0x3F]) : u'=';
        if (lineLength != 0) {
            column += 4;
            if (column >= lineLength) {
                *out++ = u'\n';
                column = 0;
            }
        }
    }
    text.truncate(out - start);
    return text;
}

} // namespace

bool isCharacterPartOfBase64Encoding(std::int8_t character)
{
    for (const char entry : std::string_view(kAlphabet)) {
        if (std::int8_t(entry) == character)
            return true;
    }
    return false;
}

std::optional<QByteArray> dataWithBase64EncodedString(QStringView string)
{
    return decode(string.utf16(), string.size());
}

std::optional<QByteArray> dataWithBase64EncodedString(QByteArrayView ascii)
{
    return decode(reinterpret_cast<const std::uint8_t*>(ascii.data()), ascii.size());
}

QString base64EncodingWithLineLength(QByteArrayView data, std::uint32_t /*lineLength*/)
{
    const qsizetype length = unbrokenLength(data.size());
    QString text(length, Qt::Uninitialized);
    encodeUnbroken<std::uint32_t>(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(),
                                  reinterpret_cast<char16_t*>(text.data()));
    return text;
}

QString base64EncodingWithLineLength(QByteArrayView data, std::uint32_t lineLength, WQBase64Encoder encoder)
{
    if (encoder == WQBase64Encoder::BuiltIn)
        return base64EncodingWithLineLength(data, lineLength);
    return encodeWithLineBreaks(data, lineLength);
}

void base64AppendEncoding(QString& receiver, QByteArrayView data)
{
    const qsizetype start = receiver.size();
    receiver.resize(start + unbrokenLength(data.size()));
    encodeUnbroken<std::uint32_t>(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(),
                                  reinterpret_cast<char16_t*>(receiver.data()) + start);
}

QByteArray base64EncodedBytes(QByteArrayView data)
{
    QByteArray bytes(unbrokenLength(data.size()), Qt::Uninitialized);
    encodeUnbroken<std::uint16_t>(reinterpret_cast<const std::uint8_t*>(data.data()), data.size(),
                                  reinterpret_cast<std::uint8_t*>(bytes.data()));
    return bytes;
}

qsizetype _wq_base64DecodeGroups(const char* text, qsizetype n, std::uint8_t* out)
{
    return decodeGroups(text, n, out);
}

qsizetype _wq_base64DecodeGroups(const char16_t* text, qsizetype n, std::uint8_t* out)
{
    return decodeGroups(text, n, out);
}

void _wq_base64Encode(const std::uint8_t* in, qsizetype n, char* out)
{
    encodeUnbroken<std::uint16_t>(in, n, reinterpret_cast<std::uint8_t*>(out));
}

void _wq_base64Encode(const std::uint8_t* in, qsizetype n, char16_t* out)
{
    encodeUnbroken<std::uint32_t>(in, n, out);
}

WQBase64Path _wq_base64Path()
{
    return pathChoice().path.load(std::memory_order_relaxed);
}

WQBase64Path _wq_base64BestPath()
{
    return pathChoice().best;
}

bool _wq_setBase64Path(WQBase64Path path)
{
    PathChoice& choice = pathChoice();
    if (path > choice.best)
        return false;
    choice.path.store(path, std::memory_order_relaxed);
    return true;
}

} // namespace wq
