#pragma once
// The characters that step a date field instead of being typed into it.

namespace wq::dateformatter {

inline constexpr char16_t kEnDash = 0x2013;     // Alt+minus on some layouts
inline constexpr char16_t kNotEqual = 0x2260;   // Alt+equals
inline constexpr char16_t kPlusMinus = 0x00B1;  // Alt+shift+equals

inline bool isIncrementKey(char32_t c) noexcept
{
    switch (c) {
    case u'+': case u'=': case u'-': case u't': case u'T':
    case kEnDash: case kNotEqual: case kPlusMinus:
        return true;
    default:
        return false;
    }
}

} // namespace wq::dateformatter
