#pragma once
// WQQuickCalculator's state, kept out of its public header so that it can change without
// breaking applications.
#include <WQGeneral/quick/WQQuickCalculator.h>

namespace wq {

class WQQuickCalculatorPrivate {
public:
    QPointer<QQuickItem> parent_control;
    std::shared_ptr<WQFormatter> formatter;
    QPointer<QObject> popup;
    QPointer<QQuickItem> editing_field;
    WQCalculatorTape tape;
    bool changing = false;
    bool closing = false;
};

} // namespace wq
