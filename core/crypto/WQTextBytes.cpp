#include "WQTextBytes.h"
#include "WQLargeBuffers.h"

#include <algorithm>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace wq {

QByteArray _wq_toUTF8(QStringView text)
{
    const char16_t* in = text.utf16();
    const char16_t* const end = in + text.size();
    // Three bytes a unit at most; only what is written is ever touched.
    QByteArray out = _wq_largeBuffer<QByteArray>(text.size() * 3, false);
    auto* to = reinterpret_cast<unsigned char*>(out.data());
    while (in < end) {
#if defined(__SSE2__)
        while (end - in >= 16) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 8));
            const __m128i high = _mm_and_si128(_mm_or_si128(a, b), _mm_set1_epi16(short(0xFF80)));
            if (_mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128())) != 0xFFFF)
                break;
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(a, b));
            in += 16;
            to += 16;
        }
#endif
        // One unit (or surrogate pair) at a time up to the next ASCII run.
        const char16_t* stop = std::min(end, in + 16);
        while (in < stop) {
            const char32_t c = *in++;
            if (c < 0x80) {
                *to++ = static_cast<unsigned char>(c);
            } else if (c < 0x800) {
                *to++ = static_cast<unsigned char>(0xC0 | (c >> 6));
                *to++ = static_cast<unsigned char>(0x80 | (c & 0x3F));
            } else if (c >= 0xD800 && c <= 0xDFFF) {
                if (c <= 0xDBFF && in < end && *in >= 0xDC00 && *in <= 0xDFFF) {
                    const char32_t u = 0x10000 + ((c - 0xD800) << 10) + (char32_t(*in++) - 0xDC00);
                    *to++ = static_cast<unsigned char>(0xF0 | (u >> 18));
                    *to++ = static_cast<unsigned char>(0x80 | ((u >> 12) & 0x3F));
                    *to++ = static_cast<unsigned char>(0x80 | ((u >> 6) & 0x3F));
                    *to++ = static_cast<unsigned char>(0x80 | (u & 0x3F));
                } else {
                    *to++ = '?';   // what toUtf8() writes for a lone surrogate
                }
            } else {
                *to++ = static_cast<unsigned char>(0xE0 | (c >> 12));
                *to++ = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
                *to++ = static_cast<unsigned char>(0x80 | (c & 0x3F));
            }
        }
    }
    out.truncate(reinterpret_cast<char*>(to) - out.constData());
    return out;
}

} // namespace wq
