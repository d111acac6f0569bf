// The fixed-width layouts documents store dates in, read by character
// position without any format parsing. The readers accept what the C
// library's integer conversion accepts, so files written by older versions
// with odd separators or padding still load.

#include <WQGeneral/dates/WQDate.h>

#include "WQDateNumbers.h"

#include <cstring>

namespace wq {

using _wq_numbers::appendPadded;
using _wq_numbers::readCInt;

namespace {

qint32 readField(const QString& text, qsizetype from, qsizetype to)
{
    const auto* units = reinterpret_cast<const char16_t*>(text.utf16());
    return readCInt(units + from, units + to);
}

// Month and day are stored in 8 bits: larger numbers wrap before normalising.
WQDate fromFields(qint32 year, qint32 month, qint32 day)
{
    return WQDate(qint64(year), quint8(month), quint8(day));
}

} // namespace

QString WQDate::optimizedStringTovanaFormat() const
{
    QString text;
    text.reserve(12);
    appendPadded(text, _wq_month, 2);
    text.append(u'/');
    appendPadded(text, _wq_day, 2);
    text.append(u'/');
    appendPadded(text, _wq_year, 4);
    return text;
}

std::optional<WQDate> WQDate::optimizedDateWithStringTovanaFormat(const QString& text)
{
    if (text.size() < 10)
        return std::nullopt;
    // Units 2 and 5 are separators and are not looked at; the year runs to the end.
    return fromFields(readField(text, 6, text.size()), readField(text, 0, 2), readField(text, 3, 5));
}

QString WQDate::optimizedStringXMLFormat() const
{
    QString text;
    text.reserve(10);
    appendPadded(text, _wq_year, 4);
    text.append(u'-');
    appendPadded(text, _wq_month, 2);
    text.append(u'-');
    appendPadded(text, _wq_day, 2);
    return text;
}

std::optional<WQDate> WQDate::optimizedDateWithStringXMLFormat(const QString& text)
{
    if (text.size() < 10)
        return std::nullopt;
    // Anything after unit 9 (a time of day, say) is ignored.
    return fromFields(readField(text, 0, 4), readField(text, 5, 7), readField(text, 8, 10));
}

std::optional<WQDate> WQDate::optimizedDateWithCStringXMLFormat(const char* text)
{
    // Only the first byte is checked: raw readers hand over the attribute
    // text as it stands, and a short one reads as far as it goes.
    if (!text || text[0] == '\0')
        return std::nullopt;
    // Copy at most 11 bytes, never past the terminator, padding with NULs.
    char buffer[11] = {};
    for (std::size_t i = 0; i < sizeof buffer && text[i] != '\0'; ++i)
        buffer[i] = text[i];
    buffer[4] = buffer[7] = buffer[10] = '\0';
    auto field = [&buffer](int from) {
        return readCInt(buffer + from, buffer + from + std::strlen(buffer + from));
    };
    return fromFields(field(0), field(5), field(8));
}

} // namespace wq
