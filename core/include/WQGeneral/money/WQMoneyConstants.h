#pragma once
// Keys of the currency settings dictionary an owner hands its money
// formatters, and the notifications around them.

#include <QString>

namespace wq {

// Number; non-zero means use the system's settings. A dictionary without it
// counts as custom.
inline const QString kWQCurrencyKey_UseSystem = QStringLiteral("kWQCurrencyKey_UseSystem");
// Currency code, kept for the applications; the formatters do not read it.
inline const QString kWQCurrencyKey_Code = QStringLiteral("kWQCurrencyKey_Code");
inline const QString kWQCurrencyKey_CurrencySymbol = QStringLiteral("NSCurrencySymbol");
// Legacy patterns: "$" stands for the symbol ($#,##0.00, -$#,##0.00, ($#,##0.00)).
inline const QString kWQCurrencyKey_PositiveCurrencyFormatString = QStringLiteral("NSPositiveCurrencyFormatString");
inline const QString kWQCurrencyKey_NegativeCurrencyFormatString = QStringLiteral("NSNegativeCurrencyFormatString");
inline const QString kWQCurrencyKey_ThousandsSeparator = QStringLiteral("NSThousandsSeparator");
inline const QString kWQCurrencyKey_DecimalSeparator = QStringLiteral("NSDecimalSeparator");

// Posted (queued, coalesced on name) by a formatter whose settings changed;
// the object is the formatter.
inline const QString kWQNotif_MoneyFormatterChanged = QStringLiteral("kWQNotif_MoneyFormatterChanged");
// Posted by the application with the owner as object when the owner closes.
inline const QString kWQNotification_DelegateRemoved = QStringLiteral("kWQNotification_DelegateRemoved");
// Posted by the application with the owner as object when its currency changes.
inline const QString kWQNotification_CurrencyChanged = QStringLiteral("kWQNotification_CurrencyChanged");

} // namespace wq
