// Precompiled for the widgets layer, the showcase and the widget tests.
#include "wq_core_pch.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QWidget>
