#pragma once
// Conversions between Qt and ICU strings, for every ICU-backed service.

#include <QString>
#include <QStringList>

#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <span>

namespace wq::icu_strings {

inline icu::UnicodeString toIcu(const QString& s)
{
    return icu::UnicodeString(reinterpret_cast<const UChar*>(s.utf16()), int32_t(s.size()));
}

inline QString fromIcu(const icu::UnicodeString& s)
{
    return QString(reinterpret_cast<const QChar*>(s.getBuffer()), s.length());
}

// An array ICU hands out (count entries, of exactly this type), at most limit of them.
inline std::span<const icu::UnicodeString> icuArray(const icu::UnicodeString* list, int32_t count, int32_t limit)
{
    return {list, std::size_t(std::max(0, std::min(count, limit)))};
}

inline QStringList fromIcu(std::span<const icu::UnicodeString> list)
{
    QStringList out;
    for (const icu::UnicodeString& item : list)
        out.append(fromIcu(item));
    return out;
}

} // namespace wq::icu_strings
