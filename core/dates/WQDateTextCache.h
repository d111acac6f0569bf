#pragma once
// Not public. Rendered date texts by an integer key: a fixed number of
// entries, the least recently used one giving way to a new text. Not
// locked: its owner serialises the calls.

#include <QString>
#include <QtGlobal>

#include <cstdint>
#include <optional>
#include <vector>

namespace wq {

class WQDateTextCache {
public:
    // A date's fields as stored (month 0 and day 0 are dates of their own),
    // the format's number and the locale's index.
    struct Key {
        qint64 year = 0;
        quint32 format = 0;
        quint32 locale = 0;
        quint8 month = 0;
        quint8 day = 0;
        friend bool operator==(const Key&, const Key&) = default;
    };

    explicit WQDateTextCache(qsizetype capacity);

    // The text stored under key, which becomes the most recently used.
    const QString* find(const Key& key);
    // Stores (or replaces) the text under key, making room when full.
    void insert(const Key& key, const QString& text);
    void clear();

    qsizetype size() const { return qsizetype(_entries.size()); }
    qsizetype capacity() const { return _capacity; }

private:
    struct Entry {
        Key key;
        QString text;
        // The use order: a doubly linked list through the entries, most
        // recent first.
        std::int32_t newer = -1;
        std::int32_t older = -1;
    };
    static constexpr std::int32_t kEmpty = -1;

    std::size_t _home(const Key& key) const;
    std::size_t _slotOf(const Key& key) const;
    void _unlink(std::int32_t entry);
    void _pushFront(std::int32_t entry);
    void _eraseSlot(std::size_t hole);

    qsizetype _capacity;
    std::vector<Entry> _entries;
    // Open addressing with linear probing: entry numbers, or kEmpty. At
    // most half full.
    std::vector<std::int32_t> _slots;
    std::size_t _mask = 0;
    std::int32_t _newest = -1;
    std::int32_t _oldest = -1;
};

} // namespace wq
