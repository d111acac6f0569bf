#pragma once
/// \class wq::WQCaptureInvocation
/// Records one call (an operation and its arguments) now and performs it later,
/// as often as wanted, against a target that can be replaced in between:
///
/// \code
///     WQCaptureInvocation<Account> recorder(account);
///     recorder.capture(&Account::setBalance, 12.5);
///     recorder.setTarget(otherAccount);
///     recorder.invoke();                       // otherAccount->setBalance(12.5)
/// \endcode
///
/// The arguments are copied into the record, so an object argument passed as a
/// shared_ptr stays alive until the next capture or the recorder's destruction.
/// Only the last captured call is kept.

#include <QtGlobal>

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

namespace wq {

/// \addtogroup model
/// @{

template <typename Target>
class WQCaptureInvocation {
public:
    WQCaptureInvocation() = default;
    /// A recorder that calls target.
    explicit WQCaptureInvocation(std::shared_ptr<Target> target) : mTarget(std::move(target)) {}

    /// Replaces the object the captured call is performed on.
    void setTarget(std::shared_ptr<Target> target) { mTarget = std::move(target); }
    /// The object the captured call is performed on, or nullptr.
    const std::shared_ptr<Target>& target() const { return mTarget; }

    /// operation is a member function pointer of Target, or any callable taking
    /// Target& first. The target is not called now.
    template <typename Operation, typename... Args>
        requires std::invocable<std::decay_t<Operation>&, Target&, std::decay_t<Args>&...>
    void capture(Operation&& operation, Args&&... args)
    {
        mInvocation = [operation = std::forward<Operation>(operation),
                       ... bound = std::forward<Args>(args)](Target& target) mutable {
            std::invoke(operation, target, bound...);
        };
    }

    /// True once a call has been captured.
    bool hasInvocation() const { return static_cast<bool>(mInvocation); }

    /// Performs the captured call on the current target; does nothing without
    /// a captured call or without a target. The call stays captured.
    void invoke()
    {
        if (mInvocation && mTarget)
            mInvocation(*mTarget);
    }

private:
    std::function<void(Target&)> mInvocation;
    std::shared_ptr<Target> mTarget;
};

/// @}

} // namespace wq
