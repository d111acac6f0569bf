#pragma once
/// \file
/// Passes the toolkit's locale-change event on to the framework, so that
/// date names, separators and money formatters follow it.

#include <WQGeneral/WQWidgetsExport.h>

namespace wq {

/// \addtogroup platform
/// @{

/// Installs, once per application, a filter that turns the toolkit's
/// QEvent::LocaleChange, as the toolkit hands it to each window, into one
/// WQRegionalSettings::noteSystemChange() on the next pass of the event loop.
/// Needs a QApplication; without one it does nothing.
WQ_WIDGETS_EXPORT void WQInstallLocaleChangeRelay();

/// @}

} // namespace wq
