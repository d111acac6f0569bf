#pragma once
// One-line descriptions of what a field shows, shared by the tour and the
// scripted keys mode.

#include <QString>

class QWidget;

namespace showcase {

// name "text" [location,length]: the field's text and selection (a caret is
// a selection of length 0). Spin boxes and pickers show their text only.
QString describeField(const QWidget* field);

// While a calculator is open: "tape: " and its lines joined by " | " (the
// first number, each operator with the number after it, the last with the
// editing field's text as typed, then "= " and the total). Empty otherwise.
QString describeCalculator();

} // namespace showcase
