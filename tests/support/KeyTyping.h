#pragma once
// Real key events for widget tests, sent where the keyboard would send them:
// to the focused widget.

#include <QApplication>
#include <QString>
#include <QWidget>
#include <QtTest/QTest>

#include <gtest/gtest.h>

namespace wq::test {

// Sends one key to whatever has the focus; '\e' is Escape, '\r' Return, '\t'
// Tab, '\b' Backspace.
inline void press(QChar c, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget* target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr);
    switch (c.unicode()) {
    case 0x1b: QTest::keyClick(target, Qt::Key_Escape, modifiers); break;
    case u'\r': QTest::keyClick(target, Qt::Key_Return, modifiers); break;
    case u'\t': QTest::keyClick(target, Qt::Key_Tab, modifiers); break;
    case u'\b': QTest::keyClick(target, Qt::Key_Backspace, modifiers); break;
    default: QTest::keyClick(target, c.toLatin1(), modifiers);
    }
}

// Types keys with a pass of the event loop after each, as between keystrokes.
inline void type(const QString& keys)
{
    for (QChar c : keys) {
        press(c);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace wq::test
