// Precompiled for the widget tests.
#include "wq_widgets_pch.h"

#include <QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>
