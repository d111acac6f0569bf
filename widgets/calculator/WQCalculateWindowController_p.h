#pragma once
// WQCalculateWindowController's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/calculator/WQCalculateWindowController.h>

namespace wq {

class WQCalculateWindowControllerPrivate {
public:
    QPointer<WQCalcWindow> window;
    QPointer<QLineEdit> parent_control;
    std::shared_ptr<WQFormatter> formatter;
    QPointer<WQLineEdit> editing_field;
    QPointer<WQLineEdit> total_field;
    WQCalculatorTape tape;
    int line_height = 0;
    bool changing = false;
    bool closing = false;
};

} // namespace wq
