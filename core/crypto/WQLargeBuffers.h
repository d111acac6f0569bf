#pragma once
// Envelopes, documents and cipher texts of megabytes are written front to
// back once into fresh memory. Page by page, each first write is a fault of
// its own (on virtual machines a costly one); asking for huge pages and
// mapping the whole buffer in one call costs a fraction of that. Both are
// only hints: without them the buffer is faulted in as usual.

#include <QtGlobal>

#include <cstdint>

#include <sys/mman.h>

namespace wq {

inline void _wq_prepareForWriting(void* data, qsizetype size, bool populate = true)
{
    constexpr qsizetype kWorthIt = qsizetype(1) << 20;
    if (size < kWorthIt)
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

} // namespace wq
