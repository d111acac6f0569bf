#pragma once
// Number writing and reading for the date texts, without printf or
// QString::arg: dates are rendered for every visible table row.

#include <QString>
#include <QStringView>

#include <limits>

namespace wq::_wq_numbers {

// Appends value as printf's "%0<width>ld" would (the sign counts in the width).
inline void appendPadded(QString& out, qint64 value, int width = 0)
{
    char16_t buffer[24];
    char16_t* end = buffer + 24;
    char16_t* p = end;
    const bool negative = value < 0;
    // Work on the magnitude as unsigned so the smallest value has one too.
    quint64 magnitude = negative ? quint64(0) - quint64(value) : quint64(value);
    do {
        *--p = char16_t(u'0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    const int digitWidth = negative ? width - 1 : width;
    if (negative)
        out.append(u'-');
    for (int pad = digitWidth - int(end - p); pad > 0; --pad)
        out.append(u'0');
    out.append(QStringView(p, end - p));
}

inline void appendUnsigned(QString& out, quint64 value)
{
    char16_t buffer[24];
    char16_t* end = buffer + 24;
    char16_t* p = end;
    do {
        *--p = char16_t(u'0' + value % 10);
        value /= 10;
    } while (value != 0);
    out.append(QStringView(p, end - p));
}

constexpr bool isCSpace(char16_t c) noexcept
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// Reads an int the way the C library's atoi does on this platform: leading
// white space, an optional sign, the leading digits, 0 without digits; the
// value saturates at the 64-bit limits and is then cut to 32 bits.
template <typename Char>
qint32 readCInt(const Char* p, const Char* end) noexcept
{
    while (p != end && isCSpace(char16_t(p[0])))
        ++p;
    bool negative = false;
    if (p != end && (p[0] == '+' || p[0] == '-')) {
        negative = p[0] == '-';
        ++p;
    }
    constexpr quint64 kLimit = quint64(1) << 63;      // magnitude of the smallest qint64
    quint64 magnitude = 0;
    for (; p != end && p[0] >= '0' && p[0] <= '9'; ++p) {
        if (magnitude > kLimit / 10) {
            magnitude = kLimit + 1;                      // saturated: any further digit only grows it
            continue;
        }
        magnitude = magnitude * 10 + quint64(p[0] - '0');
        if (magnitude > kLimit)
            magnitude = kLimit + 1;
    }
    qint64 value = 0;
    if (negative)
        value = magnitude >= kLimit ? std::numeric_limits<qint64>::min() : -qint64(magnitude);
    else
        value = magnitude >= kLimit ? std::numeric_limits<qint64>::max() : qint64(magnitude);
    return qint32(value);
}

} // namespace wq::_wq_numbers
