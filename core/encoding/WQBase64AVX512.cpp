// Base64 kernels for AVX-512 with the byte-permute instructions (VBMI): a
// 128-entry table lookup classifies 64 characters at once and one permute
// packs or spreads a whole register. Shorter rests go to the AVX2 kernel.

#include "WQBase64Kernels.h"

#ifdef WQ_BASE64_X86

// GCC 12's AVX-512 intrinsics start their results from a deliberately
// undefined register (`__Y = __Y`), which its own flow analysis then reports.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <immintrin.h>

#include <array>

namespace wq::_wq_base64 {
namespace {

#define WQ_AVX512 __attribute__((target("avx512f,avx512bw,avx512vbmi")))

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// ASCII to the 6-bit value, 0x80 outside the alphabet.
constexpr std::array<std::uint8_t, 128> makeValues()
{
    std::array<std::uint8_t, 128> values{};
    for (auto& v : values)
        v = 0x80;
    for (int i = 0; i < 64; ++i)
        values[static_cast<unsigned char>(kAlphabet[i])] = std::uint8_t(i);
    return values;
}
alignas(64) constexpr auto kValues = makeValues();

// Byte j of the 48 decoded bytes comes from byte 2 - j % 3 of 32-bit lane j / 3.
constexpr std::array<std::uint8_t, 64> makePack()
{
    std::array<std::uint8_t, 64> pack{};
    for (int j = 0; j < 48; ++j)
        pack[std::size_t(j)] = std::uint8_t(4 * (j / 3) + 2 - j % 3);
    return pack;
}
alignas(64) constexpr auto kPack = makePack();

// Group g's bytes b0 b1 b2 (at 3g) spread to b1 b0 b2 b1 in 32-bit lane g.
constexpr std::array<std::uint8_t, 64> makeSpread()
{
    std::array<std::uint8_t, 64> spread{};
    for (std::size_t g = 0; g < 16; ++g) {
        spread[4 * g] = std::uint8_t(3 * g + 1);
        spread[4 * g + 1] = std::uint8_t(3 * g);
        spread[4 * g + 2] = std::uint8_t(3 * g + 2);
        spread[4 * g + 3] = std::uint8_t(3 * g + 1);
    }
    return spread;
}
alignas(64) constexpr auto kSpread = makeSpread();

constexpr __mmask64 kLow48 = 0x0000FFFFFFFFFFFFull;

// 48 bytes to 64 characters: each character's six bits picked out of the
// spread lane by one multishift, then looked up.
WQ_AVX512 inline __m512i encodeBlock(const std::uint8_t* in)
{
    const __m512i bytes = _mm512_maskz_loadu_epi8(kLow48, in);
    const __m512i spread = _mm512_permutexvar_epi8(_mm512_load_si512(kSpread.data()), bytes);
    const __m512i indices = _mm512_multishift_epi64_epi8(_mm512_set1_epi64(0x3036242a1016040a), spread);
    return _mm512_permutexvar_epi8(indices, _mm512_loadu_si512(kAlphabet));
}

// 64 characters to 48 bytes; false when one is outside the alphabet.
WQ_AVX512 inline bool decodeBlock(__m512i in, std::uint8_t* out)
{
    const __m512i values = _mm512_permutex2var_epi8(_mm512_load_si512(kValues.data()), in,
                                                    _mm512_load_si512(kValues.data() + 64));
    if (_mm512_movepi8_mask(_mm512_or_si512(values, in)) != 0)
        return false;
    const __m512i pairs = _mm512_maddubs_epi16(values, _mm512_set1_epi32(0x01400140));
    const __m512i quads = _mm512_madd_epi16(pairs, _mm512_set1_epi32(0x00011000));
    _mm512_mask_storeu_epi8(out, kLow48, _mm512_permutexvar_epi8(_mm512_load_si512(kPack.data()), quads));
    return true;
}

// 64 units to bytes with unsigned saturation: anything above 255 becomes
// 255, which the lookup refuses.
WQ_AVX512 inline __m512i narrow(const char16_t* in)
{
    const __m256i low = _mm512_cvtusepi16_epi8(_mm512_loadu_si512(in));
    const __m256i high = _mm512_cvtusepi16_epi8(_mm512_loadu_si512(in + 32));
    return _mm512_inserti64x4(_mm512_castsi256_si512(low), high, 1);
}

WQ_AVX512 std::size_t encodeBytes(const std::uint8_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 48 <= n; i += 48, out += 64)
        _mm512_storeu_si512(out, encodeBlock(in + i));
    return i + kAVX2.encodeBytes(in + i, n - i, out);
}

WQ_AVX512 std::size_t encodeUnits(const std::uint8_t* in, std::size_t n, char16_t* out)
{
    std::size_t i = 0;
    for (; i + 48 <= n; i += 48, out += 64) {
        const __m512i chars = encodeBlock(in + i);
        _mm512_storeu_si512(out, _mm512_cvtepu8_epi16(_mm512_castsi512_si256(chars)));
        _mm512_storeu_si512(out + 32, _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(chars, 1)));
    }
    return i + kAVX2.encodeUnits(in + i, n - i, out);
}

WQ_AVX512 std::size_t decodeBytes(const std::uint8_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 64 <= n; i += 64, out += 48) {
        if (!decodeBlock(_mm512_loadu_si512(in + i), out))
            break;
    }
    return i + kAVX2.decodeBytes(in + i, n - i, out);
}

WQ_AVX512 std::size_t decodeUnits(const char16_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 64 <= n; i += 64, out += 48) {
        if (!decodeBlock(narrow(in + i), out))
            break;
    }
    return i + kAVX2.decodeUnits(in + i, n - i, out);
}

} // namespace

const Kernels kAVX512 = {"AVX-512", encodeBytes, encodeUnits, decodeBytes, decodeUnits};

} // namespace wq::_wq_base64

#endif
