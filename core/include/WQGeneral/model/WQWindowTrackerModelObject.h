#pragma once
/// \class wq::WQWindowTrackerModelObject
/// A model object that knows the window controllers showing it, so that all of
/// them can be closed together when the object goes away.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/model/WQBaseModelObject.h>

#include <QList>

#include <memory>

namespace wq {

/// \addtogroup model
/// @{

/// What the tracker needs of a window controller; the widgets layer's window
/// controller implements it.
class WQ_CORE_EXPORT WQTrackedWindowController {
public:
    virtual ~WQTrackedWindowController() = default;
    /// Closes the window; the controller may go with it.
    virtual void close() = 0;
};

class WQ_CORE_EXPORT WQWindowTrackerModelObject : public WQBaseModelObject {
public:
    /// The controllers listed, shared with whoever else holds them.
    using ControllerList = QList<std::shared_ptr<WQTrackedWindowController>>;

    WQWindowTrackerModelObject() = default;
    /// Releases the controllers without closing them.
    ~WQWindowTrackerModelObject() override = default;

    /// The live list, or nullptr when no controller is listed: an empty list is
    /// never kept.
    const ControllerList* windowControllers() const { return _wq_windowControllers.get(); }

    /// Appends; the same controller added twice is listed twice.
    void addWindowController(std::shared_ptr<WQTrackedWindowController> controller);
    /// Removes every entry that is this very controller.
    void removeWindowController(const WQTrackedWindowController* controller);

    /// Fixes the count first and then reads the list afresh at each index.
    /// Controllers must not unregister themselves while closing: if one does,
    /// the list shrinks under the loop, every second controller is skipped and
    /// the read past the new end throws NSRangeException.
    void closeAllAssociatedWindows();

private:
    std::unique_ptr<ControllerList> _wq_windowControllers;
};

/// @}

} // namespace wq
