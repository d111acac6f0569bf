#pragma once
// Conversions between Qt and ICU strings, for every ICU-backed service.

#include <QString>
#include <QStringList>

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace wq::icu_strings {

inline icu::UnicodeString toIcu(const QString& s)
{
    return icu::UnicodeString(reinterpret_cast<const UChar*>(s.utf16()), int32_t(s.size()));
}

inline QString fromIcu(const icu::UnicodeString& s)
{
    return QString(reinterpret_cast<const QChar*>(s.getBuffer()), s.length());
}

inline QStringList fromIcu(const icu::UnicodeString* list, int32_t count, int32_t limit)
{
    QStringList out;
    for (int32_t i = 0; i < count && i < limit; ++i)
        out.append(fromIcu(list[i]));
    return out;
}

} // namespace wq::icu_strings
