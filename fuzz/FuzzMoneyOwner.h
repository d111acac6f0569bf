#pragma once
// A money formatter's owner whose currency and typing mode a fuzz input sets.

#include <WQGeneral/money/WQMoneyFormatterDelegate.h>

namespace wq::fuzz {

class MoneyOwner : public WQMoneyFormatterDelegate {
public:
    std::optional<QVariantMap> currencySymbolDict() const override { return dict; }
    bool user_input_like_ATM() const override { return atm; }
    std::optional<QVariantMap> dict;
    bool atm = false;
};

} // namespace wq::fuzz
