#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>

#include <algorithm>

namespace wq {

struct WQMoneyFormatterOwner::_wq_Private {
    std::optional<QVariantMap> currency;
    bool atm = false;
    /// The formatters handed out, re-read at once when the currency changes.
    std::vector<std::weak_ptr<WQMoneyFormatter>> handedOut;
};

WQMoneyFormatterOwner::WQMoneyFormatterOwner(std::optional<QVariantMap> currencySymbolDict, bool userInputLikeATM)
    : _wq_d(std::make_unique<_wq_Private>())
{
    _wq_d->currency = std::move(currencySymbolDict);
    _wq_d->atm = userInputLikeATM;
    // The registry and the notification centres the destructor talks to are
    // made first, so that they outlive an owner that lives until the
    // process ends (a static one).
    WQMoneyFormatter::registeredFormatterCount();
}

WQMoneyFormatterOwner::~WQMoneyFormatterOwner()
{
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_DelegateRemoved, this);
}

std::optional<QVariantMap> WQMoneyFormatterOwner::currencySymbolDict() const { return _wq_d->currency; }
bool WQMoneyFormatterOwner::user_input_like_ATM() const { return _wq_d->atm; }
void WQMoneyFormatterOwner::setUserInputLikeATM(bool atm) noexcept { _wq_d->atm = atm; }

void WQMoneyFormatterOwner::setCurrencySymbolDict(std::optional<QVariantMap> currencySymbolDict)
{
    if (currencySymbolDict == _wq_d->currency)
        return;
    _wq_d->currency = std::move(currencySymbolDict);
    // Those handed out here show the new currency before anyone hears of
    // it; the deferred re-read the notification schedules then finds
    // nothing to change.
    std::erase_if(_wq_d->handedOut, [](const std::weak_ptr<WQMoneyFormatter>& f) { return f.expired(); });
    for (const auto& handed : _wq_d->handedOut)
        if (const auto formatter = handed.lock())
            formatter->reloadSettings();
    WQNotificationCenter::defaultCenter().postNotificationName(kWQNotification_CurrencyChanged, this);
}

std::shared_ptr<WQMoneyFormatter> WQMoneyFormatterOwner::moneyFormatter(qint8 decimalPlaces, bool canCalculate)
{
    auto formatter = WQMoneyFormatter::moneyFormatterForDelegate(this, decimalPlaces, canCalculate);
    const bool known = std::any_of(_wq_d->handedOut.begin(), _wq_d->handedOut.end(),
                                   [&](const std::weak_ptr<WQMoneyFormatter>& f) { return f.lock() == formatter; });
    if (!known)
        _wq_d->handedOut.push_back(formatter);
    return formatter;
}

} // namespace wq
