#pragma once
/// \file
/// The C++ types of the QML module WQGeneral. The module's plugin registers
/// them when a QML document imports WQGeneral; a program that links the
/// quick layer statically and loads no plugin calls WQRegisterQmlTypes() itself.

#include <WQGeneral/WQQuickExport.h>

namespace wq {

/// \addtogroup quick
/// @{

/// Registers FormattedField, MoneyOwner, AlertSheets and Calculator under
/// the URI WQGeneral (version 1.0). Calling it again does nothing.
WQ_QUICK_EXPORT void WQRegisterQmlTypes();

/// @}

} // namespace wq
