#pragma once
// Creates an object of one of the module's QML types (CalculatorPopup,
// AlertSheetDialog) for the C++ side that shows it. The component is compiled
// once per engine and kept with the engine.

#include <QObject>

#include <functional>

class QQmlEngine;

namespace wq::detail {

// A new object of the module's type, with QObject parent `parent`; before its
// bindings are complete, `prepare` sets its properties (the object it speaks
// for, its visual parent). nullptr, with a warning, when it cannot be made.
QObject* createModuleObject(QQmlEngine& engine, const char* typeName, QObject* parent,
                            const std::function<void(QObject&)>& prepare);

} // namespace wq::detail
