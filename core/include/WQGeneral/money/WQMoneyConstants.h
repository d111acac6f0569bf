#pragma once
/// \file
/// Keys of the currency settings dictionary an owner hands its money
/// formatters, and the notifications around them.

#include <QString>

namespace wq {

/// \addtogroup money
/// @{

/// Number; non-zero means use the system's settings. A dictionary without it
/// counts as custom.
inline const QString kWQCurrencyKey_UseSystem = QStringLiteral("kWQCurrencyKey_UseSystem");
/// Currency code, kept for the applications; the formatters do not read it.
inline const QString kWQCurrencyKey_Code = QStringLiteral("kWQCurrencyKey_Code");
/// The currency symbol, as shown.
inline const QString kWQCurrencyKey_CurrencySymbol = QStringLiteral("NSCurrencySymbol");
/// Legacy patterns: "$" stands for the symbol ($#,##0.00, -$#,##0.00, ($#,##0.00)).
inline const QString kWQCurrencyKey_PositiveCurrencyFormatString = QStringLiteral("NSPositiveCurrencyFormatString");
/// Legacy pattern for negative amounts.
inline const QString kWQCurrencyKey_NegativeCurrencyFormatString = QStringLiteral("NSNegativeCurrencyFormatString");
/// Digit grouping separator of amounts.
inline const QString kWQCurrencyKey_ThousandsSeparator = QStringLiteral("NSThousandsSeparator");
/// Decimal separator of amounts.
inline const QString kWQCurrencyKey_DecimalSeparator = QStringLiteral("NSDecimalSeparator");

/// Posted (queued, coalesced on name) by a formatter whose settings changed;
/// the object is the formatter.
inline const QString kWQNotif_MoneyFormatterChanged = QStringLiteral("kWQNotif_MoneyFormatterChanged");
/// Posted by the application with the owner as object when the owner closes.
inline const QString kWQNotification_DelegateRemoved = QStringLiteral("kWQNotification_DelegateRemoved");
/// Posted by the application with the owner as object when its currency changes.
inline const QString kWQNotification_CurrencyChanged = QStringLiteral("kWQNotification_CurrencyChanged");

/// @}

} // namespace wq
