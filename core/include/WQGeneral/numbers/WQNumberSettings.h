#pragma once
/// \class wq::WQNumberSettings
/// The user's number and currency conventions, read from ICU for the locale
/// that the regional settings give the numeric category (every separator,
/// amounts' included) and the monetary category (currency symbol and
/// patterns). Taking all separators from one category keeps an amount's
/// decimal and grouping separators apart when the two categories differ.
/// The separators are those of ASCII digits, the digits the fields write
/// and read, also where the locale's own digits are others (ar_SA: "." and
/// ","). Values are cached until the regional settings change.

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
    /// Digit grouping separator of amounts, numeric locale; never the same
    /// as decimalSeparator() (the plain grouping stands in if it would be).
    static QString currencyGroupingSeparator();
    /// Decimal separator of amounts, numeric locale.
    static QString currencyDecimalSeparator();
    /// The currency pattern in the legacy form: "$" for the symbol, "-" for
    /// the sign, no-break spaces as plain blanks, no bidirectional marks. en_US: $#,##0.00 and
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
