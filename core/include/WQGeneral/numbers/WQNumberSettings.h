#pragma once
/// \class wq::WQNumberSettings
/// The user's number and currency conventions, read from ICU for the locale
/// that the regional settings give the numeric (separators of plain numbers)
/// and monetary (currency symbol, grouping, patterns) categories. Values are
/// cached until the regional settings change.

#include <WQGeneral/WQCoreExport.h>

#include <QString>

namespace wq {

/// \addtogroup numbers
/// @{

class WQ_CORE_EXPORT WQNumberSettings {
public:
    /// Plain numbers, numeric locale. Empty when the locale has none.
    static QString decimalSeparator();
    /// Digit grouping separator of plain numbers.
    static QString groupingSeparator();

    /// Currency, monetary locale. Empty when the locale has none.
    static QString currencySymbol();
    /// Digit grouping separator of amounts.
    static QString currencyGroupingSeparator();
    /// Decimal separator of amounts.
    static QString currencyDecimalSeparator();
    /// The currency pattern in the legacy form: "$" for the symbol, "-" for
    /// the sign, no-break spaces as plain blanks. en_US: $#,##0.00 and
    /// -$#,##0.00; de_DE: #,##0.00 $ and -#,##0.00 $.
    static QString positiveCurrencyFormat();
    /// The negative currency pattern in the legacy form.
    static QString negativeCurrencyFormat();

    /// Converts one ICU currency pattern ("¤#,##0.00;(¤#,##0.00)") to the
    /// legacy positive and negative formats.
    static void legacyCurrencyFormats(const QString& icuPattern, QString* positive, QString* negative);
};

/// @}

} // namespace wq
