#pragma once
// The ICU locale of a regional-settings category, for every ICU-backed service.

#include <WQGeneral/platform/WQRegionalSettings.h>

#include <unicode/locid.h>

namespace wq::icu_locale {

inline icu::Locale forCategory(WQRegionalSettings::Category category)
{
    return icu::Locale(WQRegionalSettings::localeName(category).toLatin1().constData());
}

// Number and money fields write and read ASCII digits whatever the locale's
// own digits are, so they take the separators that belong to those digits
// (Arabic locales: "." and "," rather than U+066B and U+066C).
inline icu::Locale forNumbers(WQRegionalSettings::Category category)
{
    icu::Locale locale = forCategory(category);
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("numbers", "latn", status);
    return locale;
}

} // namespace wq::icu_locale
