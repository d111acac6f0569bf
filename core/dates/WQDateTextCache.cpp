#include "WQDateTextCache.h"

#include <bit>

namespace wq {

WQDateTextCache::WQDateTextCache(qsizetype capacity) : _capacity(std::max<qsizetype>(capacity, 1)) {}

std::size_t WQDateTextCache::_home(const Key& key) const
{
    // One multiply-xorshift round over the packed fields.
    std::uint64_t h = std::uint64_t(key.year) * 0x9E3779B97F4A7C15ull;
    h ^= ((std::uint64_t(key.format) << 32) | key.locale) * 0xC2B2AE3D27D4EB4Full;
    h ^= (std::uint64_t(key.month) << 8 | key.day) * 0x165667B19E3779F9ull;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    h ^= h >> 32;
    return std::size_t(h) & _mask;
}

// The slot holding key, or the empty slot where it would go.
std::size_t WQDateTextCache::_slotOf(const Key& key) const
{
    std::size_t slot = _home(key);
    while (_slots[slot] != kEmpty && !(_entries[std::size_t(_slots[slot])].key == key))
        slot = (slot + 1) & _mask;
    return slot;
}

void WQDateTextCache::_unlink(std::int32_t entry)
{
    Entry& e = _entries[std::size_t(entry)];
    (e.newer >= 0 ? _entries[std::size_t(e.newer)].older : _newest) = e.older;
    (e.older >= 0 ? _entries[std::size_t(e.older)].newer : _oldest) = e.newer;
    e.newer = e.older = -1;
}

void WQDateTextCache::_pushFront(std::int32_t entry)
{
    Entry& e = _entries[std::size_t(entry)];
    e.newer = -1;
    e.older = _newest;
    if (_newest >= 0)
        _entries[std::size_t(_newest)].newer = entry;
    _newest = entry;
    if (_oldest < 0)
        _oldest = entry;
}

// Removes a slot's entry number, moving later members of its probe run back
// so that every key stays reachable from its home slot.
void WQDateTextCache::_eraseSlot(std::size_t hole)
{
    std::size_t next = hole;
    for (;;) {
        next = (next + 1) & _mask;
        if (_slots[next] == kEmpty)
            break;
        const std::size_t home = _home(_entries[std::size_t(_slots[next])].key);
        // The member may fill the hole unless its home lies after the hole
        // and at or before its own slot (cyclically).
        const bool homeBetween = hole <= next ? (home > hole && home <= next) : (home > hole || home <= next);
        if (!homeBetween) {
            _slots[hole] = _slots[next];
            hole = next;
        }
    }
    _slots[hole] = kEmpty;
}

const QString* WQDateTextCache::find(const Key& key)
{
    if (_entries.empty())
        return nullptr;
    const std::int32_t entry = _slots[_slotOf(key)];
    if (entry == kEmpty)
        return nullptr;
    if (entry != _newest) {
        _unlink(entry);
        _pushFront(entry);
    }
    return &_entries[std::size_t(entry)].text;
}

void WQDateTextCache::insert(const Key& key, const QString& text)
{
    if (_slots.empty()) {
        _slots.assign(std::bit_ceil(std::size_t(_capacity) * 2), kEmpty);
        _mask = _slots.size() - 1;
        _entries.reserve(std::size_t(_capacity));
    }
    std::size_t slot = _slotOf(key);
    std::int32_t entry = _slots[slot];
    if (entry != kEmpty) {
        _entries[std::size_t(entry)].text = text;
        _unlink(entry);
        _pushFront(entry);
        return;
    }
    if (size() < _capacity) {
        entry = std::int32_t(_entries.size());
        _entries.push_back({key, text});
    } else {
        // The least recently used entry takes the new text.
        entry = _oldest;
        _eraseSlot(_slotOf(_entries[std::size_t(entry)].key));
        _unlink(entry);
        _entries[std::size_t(entry)].key = key;
        _entries[std::size_t(entry)].text = text;
        slot = _slotOf(key);
    }
    _slots[slot] = entry;
    _pushFront(entry);
}

void WQDateTextCache::clear()
{
    _entries.clear();
    _slots.assign(_slots.size(), kEmpty);
    _newest = _oldest = -1;
}

} // namespace wq
