#pragma once
/// \file
/// Window geometry shared by the views and the pop-up calculator.

#include <WQGeneral/WQWidgetsExport.h>

#include <QPoint>

class QWidget;

namespace wq {

/// \addtogroup views
/// @{

/// A point in the coordinates of `window` (a top-level widget; any widget
/// works, its own coordinates are used) to global screen coordinates. Qt has
/// one conversion for every version of the toolkit, so there is nothing to
/// choose between; the name is kept for code written against the framework.
WQ_WIDGETS_EXPORT QPoint compatibleConvertPointToScreen(const QWidget& window, QPoint point);

/// @}

} // namespace wq
