#include <WQGeneral/model/WQWindowTrackerModelObject.h>
#include <WQGeneral/platform/WQExceptions.h>

namespace wq {

void WQWindowTrackerModelObject::addWindowController(std::shared_ptr<WQTrackedWindowController> controller)
{
    if (!controller)
        return;
    if (!_wq_windowControllers)
        _wq_windowControllers = std::make_unique<ControllerList>();
    _wq_windowControllers->append(std::move(controller));
}

void WQWindowTrackerModelObject::removeWindowController(const WQTrackedWindowController* controller)
{
    if (!_wq_windowControllers)
        return;
    _wq_windowControllers->removeIf([controller](const auto& entry) { return entry.get() == controller; });
    if (_wq_windowControllers->isEmpty())
        _wq_windowControllers.reset();
}

void WQWindowTrackerModelObject::closeAllAssociatedWindows()
{
    const qsizetype count = _wq_windowControllers ? _wq_windowControllers->size() : 0;
    for (qsizetype index = 0; index < count; ++index) {
        // The last removal released the list: there is nothing left to read.
        if (!_wq_windowControllers)
            continue;
        const qsizetype size = _wq_windowControllers->size();
        if (index >= size)
            throw NSRangeException(QStringLiteral("index %1 beyond bounds [0 .. %2]").arg(index).arg(size - 1));
        // Held here so that a controller the list lets go of while closing
        // lives until its close() returns.
        const std::shared_ptr<WQTrackedWindowController> controller = _wq_windowControllers->at(index);
        controller->close();
    }
}

} // namespace wq
