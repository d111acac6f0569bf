// Base64 kernels for SSSE3: four characters map to three bytes through
// byte shuffles. The classification looks a character's two halves up in
// two 16-entry tables; a character is in the alphabet exactly when the two
// entries share no bit.

#include "WQBase64Kernels.h"

#ifdef WQ_BASE64_X86

#include <immintrin.h>

#include <cstring>

namespace wq::_wq_base64 {
namespace {

#define WQ_SSSE3 __attribute__((target("ssse3")))

// Three bytes, in the order b1 b0 b2 b1, per 32-bit lane.
WQ_SSSE3 inline __m128i spreadGroups(__m128i in)
{
    return _mm_shuffle_epi8(in, _mm_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
}

// Four 6-bit values per lane to their alphabet characters.
WQ_SSSE3 inline __m128i encodeLanes(__m128i spread)
{
    const __m128i t0 = _mm_and_si128(spread, _mm_set1_epi32(0x0fc0fc00));
    const __m128i t1 = _mm_mulhi_epu16(t0, _mm_set1_epi32(0x04000040));
    const __m128i t2 = _mm_and_si128(spread, _mm_set1_epi32(0x003f03f0));
    const __m128i t3 = _mm_mullo_epi16(t2, _mm_set1_epi32(0x01000010));
    const __m128i values = _mm_or_si128(t1, t3);
    // 0 for a-z, 1-10 for digits, 11 "+", 12 "/", 13 A-Z: an offset each.
    __m128i range = _mm_subs_epu8(values, _mm_set1_epi8(51));
    const __m128i upper = _mm_cmpgt_epi8(_mm_set1_epi8(26), values);
    range = _mm_or_si128(range, _mm_and_si128(upper, _mm_set1_epi8(13)));
    const __m128i offsets = _mm_setr_epi8(71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 65, 0, 0);
    return _mm_add_epi8(_mm_shuffle_epi8(offsets, range), values);
}

// Sixteen characters to their 6-bit values; false when one is outside the
// alphabet (or not ASCII).
WQ_SSSE3 inline bool decodeLanes(__m128i in, __m128i& values)
{
    const __m128i mask2F = _mm_set1_epi8(0x2F);
    const __m128i lowTable = _mm_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x13, 0x1A,
                                           0x1B, 0x1B, 0x1B, 0x1A);
    const __m128i highTable = _mm_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10, 0x10, 0x10,
                                            0x10, 0x10, 0x10, 0x10);
    const __m128i rollTable = _mm_setr_epi8(0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i high = _mm_and_si128(_mm_srli_epi32(in, 4), mask2F);
    const __m128i low = _mm_and_si128(in, mask2F);
    const __m128i clash = _mm_and_si128(_mm_shuffle_epi8(lowTable, low), _mm_shuffle_epi8(highTable, high));
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(clash, _mm_setzero_si128())) != 0xFFFF)
        return false;
    const __m128i roll = _mm_shuffle_epi8(rollTable, _mm_add_epi8(_mm_cmpeq_epi8(in, mask2F), high));
    values = _mm_add_epi8(in, roll);
    return true;
}

// Sixteen 6-bit values to twelve bytes at the low end.
WQ_SSSE3 inline __m128i packLanes(__m128i values)
{
    const __m128i pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
    const __m128i quads = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
    return _mm_shuffle_epi8(quads, _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
}

WQ_SSSE3 inline void storeTwelve(std::uint8_t* out, __m128i bytes)
{
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
    const std::uint32_t tail = std::uint32_t(_mm_cvtsi128_si32(_mm_srli_si128(bytes, 8)));
    std::memcpy(out + 8, &tail, 4);
}

// Sixteen units to bytes; a unit above 255 saturates to 0 or 255, which the
// classification then refuses.
WQ_SSSE3 inline __m128i narrow(const char16_t* in)
{
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 8));
    return _mm_packus_epi16(a, b);
}

WQ_SSSE3 std::size_t encodeBytes(const std::uint8_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    // A block reads sixteen bytes and uses twelve.
    for (; i + 16 <= n; i += 12, out += 16) {
        const __m128i chars = encodeLanes(spreadGroups(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i))));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), chars);
    }
    return i;
}

WQ_SSSE3 std::size_t encodeUnits(const std::uint8_t* in, std::size_t n, char16_t* out)
{
    std::size_t i = 0;
    for (; i + 16 <= n; i += 12, out += 16) {
        const __m128i chars = encodeLanes(spreadGroups(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i))));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(chars, _mm_setzero_si128()));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 8), _mm_unpackhi_epi8(chars, _mm_setzero_si128()));
    }
    return i;
}

WQ_SSSE3 std::size_t decodeBytes(const std::uint8_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 16 <= n; i += 16, out += 12) {
        __m128i values;
        if (!decodeLanes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i)), values))
            break;
        storeTwelve(out, packLanes(values));
    }
    return i;
}

WQ_SSSE3 std::size_t decodeUnits(const char16_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 16 <= n; i += 16, out += 12) {
        __m128i values;
        if (!decodeLanes(narrow(in + i), values))
            break;
        storeTwelve(out, packLanes(values));
    }
    return i;
}

} // namespace

const Kernels kSSSE3 = {"SSSE3", encodeBytes, encodeUnits, decodeBytes, decodeUnits};

} // namespace wq::_wq_base64

#endif
