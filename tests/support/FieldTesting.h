#pragma once
// Shared by the field tests: readable QString failures, a window that holds
// fields and has the keyboard focus, and the context menu's Undo.

#include <WQGeneral/platform/WQTypes.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <QtTest/QTest>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <ostream>

namespace wq::test {

// Shows the window and waits until it can take key focus.
inline void showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

// Opens the field's context menu as the menu key does and picks its Undo;
// answers whether Undo was there to pick (present and enabled).
inline bool undoFromContextMenu(QLineEdit& field)
{
    bool offered = false;
    QTimer::singleShot(0, &field, [&offered] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        if (QAction* undo = menu->findChild<QAction*>(QStringLiteral("edit-undo")); undo && undo->isEnabled()) {
            offered = true;
            undo->trigger();
        }
        menu->close();
    });
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(4, 4), field.mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(&field, &menuKey);
    return offered;
}

} // namespace wq::test
