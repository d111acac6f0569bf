#include <WQGeneral/quick/WQQuickMoneyOwner.h>

namespace wq {

WQQuickMoneyOwner::WQQuickMoneyOwner(QObject* parent) : QObject(parent) {}

WQQuickMoneyOwner::~WQQuickMoneyOwner() = default;

QVariantMap WQQuickMoneyOwner::currencySymbolDict() const
{
    return _wq_owner.currencySymbolDict().value_or(QVariantMap());
}

void WQQuickMoneyOwner::setCurrencySymbolDict(const QVariantMap& currencySymbolDict)
{
    if (currencySymbolDict == this->currencySymbolDict())
        return;
    _wq_owner.setCurrencySymbolDict(currencySymbolDict.isEmpty() ? std::nullopt
                                                                 : std::optional<QVariantMap>(currencySymbolDict));
    emit currencySymbolDictChanged();
}

void WQQuickMoneyOwner::setUserInputLikeATM(bool atm)
{
    if (atm == userInputLikeATM())
        return;
    _wq_owner.setUserInputLikeATM(atm);
    emit userInputLikeATMChanged();
}

} // namespace wq
