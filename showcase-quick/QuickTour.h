#pragma once
// wq-showcase-quick --tour DIR: types a short script of real key events
// into the register window, offscreen, prints what each field shows after
// each step (and the calculator's tape while one is open) and saves a
// screenshot per step into DIR.

#include <QString>

class QQuickWindow;

namespace showcase {

// Answers the exit status: 0, or 1 when a step could not be taken.
int runQuickTour(QQuickWindow& window, const QString& directory);

} // namespace showcase
