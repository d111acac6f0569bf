#pragma once
// Shared by the field tests: readable QString failures, and a window that
// holds fields and has the keyboard focus.

#include <WQGeneral/platform/WQTypes.h>

#include <QApplication>
#include <QString>
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

} // namespace wq::test
