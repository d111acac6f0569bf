#include "KeyTyping.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace showcase {
namespace {

// Qt's key codes for printable ASCII are the upper-case characters.
Qt::Key keyFor(QChar c)
{
    const char16_t u = c.toUpper().unicode();
    return u >= 0x20 && u < 0x7f ? Qt::Key(u) : Qt::Key_unknown;
}

} // namespace

void pressKey(QWidget* target, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    if (!target)
        return;
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

void typeText(QWidget* target, const QString& text, Qt::KeyboardModifiers modifiers)
{
    for (const QChar c : text)
        pressKey(target, keyFor(c), modifiers, QString(c));
}

} // namespace showcase
