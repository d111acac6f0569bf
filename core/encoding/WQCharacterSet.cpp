#include <WQGeneral/encoding/WQCharacterSet.h>

#include <QList>

#include <algorithm>

namespace wq {

namespace {
constexpr char32_t kLastCodePoint = 0x10FFFF;
}

const WQCharacterSet& WQCharacterSet::whitespaceAndNewlineCharacterSet()
{
    static const WQCharacterSet set = [] {
        WQCharacterSet s;
        s.addCharactersInRange(0x09, 0x0D);
        s.addCharactersInRange(0x20, 0x20);
        s.addCharactersInRange(0x85, 0x85);
        s.addCharactersInRange(0xA0, 0xA0);
        s.addCharactersInRange(0x1680, 0x1680);
        s.addCharactersInRange(0x2000, 0x200A);
        s.addCharactersInRange(0x2028, 0x2029);
        s.addCharactersInRange(0x202F, 0x202F);
        s.addCharactersInRange(0x205F, 0x205F);
        s.addCharactersInRange(0x3000, 0x3000);
        return s;
    }();
    return set;
}

WQCharacterSet WQCharacterSet::characterSetWithRange(char32_t first, char32_t last)
{
    WQCharacterSet set;
    set.addCharactersInRange(first, last);
    return set;
}

WQCharacterSet WQCharacterSet::characterSetWithCharactersInString(QStringView characters)
{
    WQCharacterSet set;
    set.addCharactersInString(characters);
    return set;
}

WQCharacterSet& WQCharacterSet::addCharactersInRange(char32_t first, char32_t last)
{
    last = std::min(last, kLastCodePoint);
    if (first > last)
        return *this;
    // Insert, then merge whatever now overlaps or touches.
    auto it = std::lower_bound(_wq_ranges.begin(), _wq_ranges.end(), std::pair{first, last});
    _wq_ranges.insert(it, {first, last});
    std::vector<std::pair<char32_t, char32_t>> merged;
    merged.reserve(_wq_ranges.size());
    for (const auto& range : _wq_ranges) {
        if (!merged.empty() && range.first <= merged.back().second + 1)
            merged.back().second = std::max(merged.back().second, range.second);
        else
            merged.push_back(range);
    }
    _wq_ranges = std::move(merged);
    _wq_rebuildASCII();
    return *this;
}

WQCharacterSet& WQCharacterSet::addCharactersInString(QStringView characters)
{
    for (const char32_t c : characters.toUcs4())
        addCharactersInRange(c, c);
    return *this;
}

WQCharacterSet WQCharacterSet::invertedSet() const
{
    WQCharacterSet inverted;
    char32_t next = 0;
    for (const auto& [first, last] : _wq_ranges) {
        if (first > next)
            inverted._wq_ranges.emplace_back(next, first - 1);
        next = last + 1;
    }
    if (next <= kLastCodePoint)
        inverted._wq_ranges.emplace_back(next, kLastCodePoint);
    inverted._wq_rebuildASCII();
    return inverted;
}

bool WQCharacterSet::_wq_memberAboveASCII(char32_t c) const
{
    auto it = std::upper_bound(_wq_ranges.begin(), _wq_ranges.end(), c,
                               [](char32_t value, const auto& range) { return value < range.first; });
    return it != _wq_ranges.begin() && c <= std::prev(it)->second;
}

void WQCharacterSet::_wq_rebuildASCII()
{
    _wq_ascii = {};
    for (const auto& [first, last] : _wq_ranges) {
        if (first >= 128)
            break;
        for (char32_t c = first; c <= std::min<char32_t>(last, 127); ++c)
            _wq_ascii[c >> 6] |= std::uint64_t(1) << (c & 63);
    }
}

} // namespace wq
