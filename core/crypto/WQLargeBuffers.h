#pragma once
// Envelopes, documents and cipher texts of megabytes are written front to
// back once into fresh memory. Page by page, each first write is a fault of
// its own (on virtual machines a costly one); huge pages mapped in one call
// cost a fraction of that. A huge page needs a whole aligned 2 MiB of the
// mapping, and malloc's mappings start anywhere: so a large buffer is
// allocated with room to spare, and its data begins on the first boundary
// inside (Qt drops elements from the front by moving the data pointer), so
// that every page it writes can be huge. Both hints are only hints: without
// them the buffer is faulted in as usual.

#include <QtGlobal>

#include <cstdint>
#include <type_traits>
#include <utility>

#include <sys/mman.h>

namespace wq {

inline constexpr qsizetype kLargeBufferBytes = qsizetype(1) << 20;
inline constexpr std::uintptr_t kHugePage = std::uintptr_t(2) << 20;
// glibc maps an allocation of 32 MiB or more afresh every time, and serves a
// smaller one from memory freed before, already mapped: spare room must not
// push a buffer over that line.
inline constexpr qsizetype kFreshMappingBytes = qsizetype(32) << 20;

inline void _wq_prepareForWriting(void* data, qsizetype size, bool populate)
{
    if (size < kLargeBufferBytes)
        return;
    const std::uintptr_t page = 4096;
    const auto address = reinterpret_cast<std::uintptr_t>(data);
    const std::uintptr_t begin = (address + page - 1) & ~(page - 1);
    const std::uintptr_t end = (address + std::uintptr_t(size)) & ~(page - 1);
    if (end <= begin)
        return;
    // The whole pages inside the buffer, reached from the buffer's own pointer.
    void* const firstPage = static_cast<char*>(data) + (begin - address);
#ifdef MADV_HUGEPAGE
    ::madvise(firstPage, end - begin, MADV_HUGEPAGE);
#endif
#ifdef MADV_POPULATE_WRITE
    if (populate)
        ::madvise(firstPage, end - begin, MADV_POPULATE_WRITE);
#else
    Q_UNUSED(populate);
#endif
}

// A QByteArray or QString of size elements, uninitialised, about to be
// written front to back. A large one (unless the spare room would take it
// over the line above) starts on a huge-page boundary, and its pages up to
// the next boundary past its end (and its terminator) are hinted huge;
// populate maps them all at once, for a buffer that will be written whole.
// The spare room before and after is address space, never touched.
template <typename Array>
Array _wq_largeBuffer(qsizetype size, bool populate = true)
{
    using Unit = std::remove_reference_t<decltype(*std::declval<Array&>().data())>;
    const qsizetype bytes = (size + 1) * qsizetype(sizeof(Unit));
    const qsizetype spareBytes = 2 * qsizetype(kHugePage);
    if (bytes < kLargeBufferBytes || (bytes < kFreshMappingBytes && bytes + spareBytes >= kFreshMappingBytes)) {
        Array out(size, Qt::Uninitialized);
        _wq_prepareForWriting(out.data(), bytes, populate);
        return out;
    }
    Array out(size + spareBytes / qsizetype(sizeof(Unit)), Qt::Uninitialized);
    const auto address = reinterpret_cast<std::uintptr_t>(out.data());
    const std::uintptr_t aligned = (address + kHugePage - 1) & ~(kHugePage - 1);
    out.remove(0, qsizetype((aligned - address) / sizeof(Unit)));
    out.truncate(size);
    const auto start = reinterpret_cast<std::uintptr_t>(out.data());
    const std::uintptr_t end = (start + std::uintptr_t(bytes) + kHugePage - 1) & ~(kHugePage - 1);
    _wq_prepareForWriting(out.data(), qsizetype(end - start), populate);
    return out;
}

} // namespace wq
