#pragma once
/// \file
/// The framework's entry formatters by kind, for fields that choose one by
/// name (a form in Qt Designer, a QML property).

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <memory>

namespace wq {

/// \addtogroup fields
/// @{

class WQMoneyFormatterOwner;

/// The kinds of formatter a field can name. ExtendedDate is the user's short
/// date with the year in four digits; Custom is a formatter set from code.
enum class WQFieldKind { NoFormatter, Date, ExtendedDate, WholeNumber, Decimal, Money, CalculatingMoney, Custom };

/// A formatter of the kind: the money kinds with places decimal places (0
/// to 9), the owner's shared formatter when an owner is given, else the one
/// shared under the system's settings; nullptr for NoFormatter and Custom.
WQ_CORE_EXPORT std::shared_ptr<WQFormatter> WQFormatterOfKind(WQFieldKind kind, int places,
                                                             WQMoneyFormatterOwner* owner = nullptr);

/// @}

} // namespace wq
