#pragma once
/// \class wq::WQCharacterSet
/// A set of Unicode code points, kept as sorted, disjoint ranges, with a
/// bitmap for ASCII so the common lookups cost one test.

#include <WQGeneral/WQCoreExport.h>

#include <QStringView>

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace wq {

/// \addtogroup encoding
/// @{

class WQ_CORE_EXPORT WQCharacterSet {
public:
    WQCharacterSet() = default;

    /// Spaces, tabs, line breaks and the other Unicode separators (Z*,
    /// U+0009 to U+000D, U+0085).
    static const WQCharacterSet& whitespaceAndNewlineCharacterSet();
    /// Every code point from first to last, both included.
    static WQCharacterSet characterSetWithRange(char32_t first, char32_t last);
    /// Exactly the code points of characters.
    static WQCharacterSet characterSetWithCharactersInString(QStringView characters);

    /// Both bounds included; first > last adds nothing.
    WQCharacterSet& addCharactersInRange(char32_t first, char32_t last);
    /// Adds the code points of characters and answers this set.
    WQCharacterSet& addCharactersInString(QStringView characters);
    /// Every code point not in this set.
    WQCharacterSet invertedSet() const;

    /// True when c is in the set.
    bool characterIsMember(char32_t c) const
    {
        if (c < 128)
            return (_wq_ascii[c >> 6] >> (c & 63)) & 1u;
        return _wq_memberAboveASCII(c);
    }

    friend bool operator==(const WQCharacterSet&, const WQCharacterSet&) = default;

private:
    bool _wq_memberAboveASCII(char32_t c) const;
    void _wq_rebuildASCII();

    std::vector<std::pair<char32_t, char32_t>> _wq_ranges;   ///< inclusive bounds
    std::array<std::uint64_t, 2> _wq_ascii{};
};

/// @}

} // namespace wq
