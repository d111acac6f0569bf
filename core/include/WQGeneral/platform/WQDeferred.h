#pragma once
/// \file
/// Work that must not run inside the toolkit's own text handling is deferred to
/// the main event loop. Qt timers also fire inside a modal dialog's loop, which
/// is what the two run-loop modes of the original design ask for.

#include <WQGeneral/WQCoreExport.h>

#include <functional>
#include <memory>

namespace wq {

/// \addtogroup platform
/// @{

/// Runs work on the main thread's event loop after delayMs (0 = next pass).
/// Answers false (and drops the work) when there is no QCoreApplication.
WQ_CORE_EXPORT bool WQPerformDeferred(std::function<void()> work, int delayMs = 0);

/// Same, but skipped when the guarded object has gone away by then.
template <typename T>
bool WQPerformDeferred(const std::weak_ptr<T>& guard, std::function<void(T&)> work, int delayMs = 0)
{
    return WQPerformDeferred([guard, work = std::move(work)] {
        if (auto strong = guard.lock())
            work(*strong);
    }, delayMs);
}

/// @}

} // namespace wq
