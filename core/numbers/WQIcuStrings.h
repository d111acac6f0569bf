#pragma once
// Qt <-> ICU strings for the ICU-backed number services.

#include <QString>

#include <unicode/unistr.h>

namespace wq::numbers_icu {

inline icu::UnicodeString toIcu(const QString& s)
{
    return icu::UnicodeString(reinterpret_cast<const UChar*>(s.utf16()), int32_t(s.size()));
}

inline QString fromIcu(const icu::UnicodeString& s)
{
    return QString(reinterpret_cast<const QChar*>(s.getBuffer()), s.length());
}

} // namespace wq::numbers_icu
