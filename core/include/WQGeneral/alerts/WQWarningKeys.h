#pragma once
/// \file
/// Keys in the user's settings under which "Don't show again" is remembered:
/// true under a key means the user asked not to see that warning again.

#include <QString>

namespace wq {

/// \addtogroup alerts
/// @{

/// The whole-number field's refusal sheet.
inline const QString kDefaultsKey_IntegerWarning = QStringLiteral("User Warning: Must Be Integer");
/// Both decimal refusal sheets, field and column.
inline const QString kDefaultsKey_DecimalWarning = QStringLiteral("User Warning: Must Be Decimal");
/// The date refusal sheet shown without a field (a table column).
inline const QString kDefaultsKey_DateWarning = QStringLiteral("User Warning: Invalid key for date");

/// @}

} // namespace wq
