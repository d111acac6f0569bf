// Base64 kernels for AVX2: the SSSE3 method on 32 characters at a time,
// handing what is left to the SSSE3 kernel.

#include "WQBase64Kernels.h"

#ifdef WQ_BASE64_X86

#include <immintrin.h>

namespace wq::_wq_base64 {
namespace {

#define WQ_AVX2 __attribute__((target("avx2")))

// Bytes 0-11 in the low lane and 12-23 in the high lane, each spread to
// b1 b0 b2 b1 per 32-bit lane. Reads 28 bytes.
WQ_AVX2 inline __m256i loadGroups(const std::uint8_t* in)
{
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 12));
    const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(low), high, 1);
    return _mm256_shuffle_epi8(both, _mm256_setr_epi8(1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10,
                                                      1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10));
}

WQ_AVX2 inline __m256i encodeLanes(__m256i spread)
{
    const __m256i t0 = _mm256_and_si256(spread, _mm256_set1_epi32(0x0fc0fc00));
    const __m256i t1 = _mm256_mulhi_epu16(t0, _mm256_set1_epi32(0x04000040));
    const __m256i t2 = _mm256_and_si256(spread, _mm256_set1_epi32(0x003f03f0));
    const __m256i t3 = _mm256_mullo_epi16(t2, _mm256_set1_epi32(0x01000010));
    const __m256i values = _mm256_or_si256(t1, t3);
    __m256i range = _mm256_subs_epu8(values, _mm256_set1_epi8(51));
    const __m256i upper = _mm256_cmpgt_epi8(_mm256_set1_epi8(26), values);
    range = _mm256_or_si256(range, _mm256_and_si256(upper, _mm256_set1_epi8(13)));
    const __m256i offsets = _mm256_setr_epi8(71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 65, 0, 0,
                                             71, -4, -4, -4, -4, -4, -4, -4, -4, -4, -4, -19, -16, 65, 0, 0);
    return _mm256_add_epi8(_mm256_shuffle_epi8(offsets, range), values);
}

WQ_AVX2 inline bool decodeLanes(__m256i in, __m256i& values)
{
    const __m256i mask2F = _mm256_set1_epi8(0x2F);
    const __m256i lowTable = _mm256_setr_epi8(0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x13, 0x1A,
                                              0x1B, 0x1B, 0x1B, 0x1A, 0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                              0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A);
    const __m256i highTable = _mm256_setr_epi8(0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08, 0x10, 0x10, 0x10,
                                               0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x01, 0x02, 0x04, 0x08,
                                               0x04, 0x08, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10);
    const __m256i rollTable = _mm256_setr_epi8(0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0,
                                               0, 16, 19, 4, -65, -65, -71, -71, 0, 0, 0, 0, 0, 0, 0, 0);
    const __m256i high = _mm256_and_si256(_mm256_srli_epi32(in, 4), mask2F);
    const __m256i low = _mm256_and_si256(in, mask2F);
    if (!_mm256_testz_si256(_mm256_shuffle_epi8(lowTable, low), _mm256_shuffle_epi8(highTable, high)))
        return false;
    const __m256i roll = _mm256_shuffle_epi8(rollTable, _mm256_add_epi8(_mm256_cmpeq_epi8(in, mask2F), high));
    values = _mm256_add_epi8(in, roll);
    return true;
}

// 32 values to 24 bytes.
WQ_AVX2 inline void storePacked(std::uint8_t* out, __m256i values)
{
    const __m256i pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
    const __m256i quads = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    const __m256i lanes = _mm256_shuffle_epi8(quads, _mm256_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1,
                                                                      -1, -1, 2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12,
                                                                      -1, -1, -1, -1));
    const __m256i packed = _mm256_permutevar8x32_epi32(lanes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm256_castsi256_si128(packed));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 16), _mm256_extracti128_si256(packed, 1));
}

WQ_AVX2 inline __m256i narrow(const char16_t* in)
{
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
    const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 16));
    return _mm256_permute4x64_epi64(_mm256_packus_epi16(a, b), 0xD8);
}

WQ_AVX2 std::size_t encodeBytes(const std::uint8_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 28 <= n; i += 24, out += 32)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), encodeLanes(loadGroups(in + i)));
    return i + kSSSE3.encodeBytes(in + i, n - i, out);
}

WQ_AVX2 std::size_t encodeUnits(const std::uint8_t* in, std::size_t n, char16_t* out)
{
    std::size_t i = 0;
    for (; i + 28 <= n; i += 24, out += 32) {
        const __m256i chars = encodeLanes(loadGroups(in + i));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm256_cvtepu8_epi16(_mm256_castsi256_si128(chars)));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + 16),
                            _mm256_cvtepu8_epi16(_mm256_extracti128_si256(chars, 1)));
    }
    return i + kSSSE3.encodeUnits(in + i, n - i, out);
}

WQ_AVX2 std::size_t decodeBytes(const std::uint8_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 32 <= n; i += 32, out += 24) {
        __m256i values;
        if (!decodeLanes(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + i)), values))
            break;
        storePacked(out, values);
    }
    return i + kSSSE3.decodeBytes(in + i, n - i, out);
}

WQ_AVX2 std::size_t decodeUnits(const char16_t* in, std::size_t n, std::uint8_t* out)
{
    std::size_t i = 0;
    for (; i + 32 <= n; i += 32, out += 24) {
        __m256i values;
        if (!decodeLanes(narrow(in + i), values))
            break;
        storePacked(out, values);
    }
    return i + kSSSE3.decodeUnits(in + i, n - i, out);
}

} // namespace

const Kernels kAVX2 = {"AVX2", encodeBytes, encodeUnits, decodeBytes, decodeUnits};

} // namespace wq::_wq_base64

#endif
