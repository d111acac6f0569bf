#pragma once
// Shared by the field tests: readable QString failures, and a window that
// holds fields and has the keyboard focus.

#include <WQGeneral/platform/WQTypes.h>

#include <QApplication>
#include <QString>
#include <QWidget>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <ostream>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace wq {
inline void PrintTo(const WQRange& range, std::ostream* os)
{
    *os << '{' << range.location << ", " << range.length << '}';
}
} // namespace wq

namespace wq::test {

// Shows the window and waits until it can take key focus.
inline void showActive(QWidget& window)
{
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

} // namespace wq::test
