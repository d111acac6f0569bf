#pragma once
// WQWindowController's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/alerts/WQWindowController.h>

namespace wq {

class WQWindowControllerPrivate {
public:
    WQWindowControllerPrivate(QWidget* window, bool ownsWindow) : window(window), ownsWindow(ownsWindow) {}

    QPointer<QWidget> window;
    bool ownsWindow;
    QPointer<QMessageBox> sheet;
    std::deque<QPointer<QMessageBox>> waitingSheets;
    QPointer<WQToolbar> toolbar;
};

} // namespace wq
