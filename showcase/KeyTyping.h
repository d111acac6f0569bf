#pragma once
// Real key events for the tour: what a keyboard would send to a widget.

#include <QString>
#include <Qt>

class QWidget;

namespace showcase {

// One press and release per character.
void typeText(QWidget* target, const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
// A single key, such as Return, Backspace or Alt+=.
void pressKey(QWidget* target, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
              const QString& text = QString());

} // namespace showcase
