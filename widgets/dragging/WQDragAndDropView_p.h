#pragma once
// WQDragAndDropView's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/dragging/WQDragAndDropView.h>

namespace wq {

class WQDragAndDropViewPrivate {
public:
    enum class PressState { None, Tracking, WaitingForRelease };

    WQDragAndDropViewDelegate* delegate = nullptr;
    qintptr tag = 0;
    bool canDrag = false;
    PressState press = PressState::None;
    QPointF pressLocation;
    bool dragging = false;
    bool deleteAfterDrag = false;
};

} // namespace wq
