#pragma once
/// \file
/// A colour handed to lower-level drawing code.
///
/// There is no separate graphics-library colour object under Qt: QColor is
/// itself the value every drawing call takes. What stands for the conversion
/// is a colour rebuilt component by component in the source's own colour
/// model (RGB, extended RGB, HSV, HSL or CMYK, alpha included), as a
/// lower-level colour would be made from the components read back. It is a
/// value, so the caller owns it and there is nothing to release.

#include <WQGeneral/WQWidgetsExport.h>

#include <QColor>

namespace wq {

/// \addtogroup views
/// @{

/// The components of color, in its own model, made into a new colour of that
/// model. An invalid colour, which has no components, gives an invalid one.
WQ_WIDGETS_EXPORT QColor newCGColorRef(const QColor& color);

/// @}

} // namespace wq
