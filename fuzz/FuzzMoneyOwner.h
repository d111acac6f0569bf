#pragma once
// A money formatters' owner whose typing mode and currency a fuzz input sets:
// bit 0 of the mode byte selects ATM typing, bit 1 a currency of five texts.

#include "FuzzInput.h"

#include <WQGeneral/money/WQMoneyConstants.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>

namespace wq::fuzz {

inline WQMoneyFormatterOwner ownerFrom(std::uint8_t mode, Input& in)
{
    std::optional<QVariantMap> currency;
    if (mode & 2) {
        currency = QVariantMap{
            {kWQCurrencyKey_CurrencySymbol, in.text()},
            {kWQCurrencyKey_PositiveCurrencyFormatString, in.text()},
            {kWQCurrencyKey_NegativeCurrencyFormatString, in.text()},
            {kWQCurrencyKey_ThousandsSeparator, in.text()},
            {kWQCurrencyKey_DecimalSeparator, in.text()},
        };
    }
    return WQMoneyFormatterOwner(std::move(currency), mode & 1);
}

} // namespace wq::fuzz
