#pragma once
/// \class wq::WQMoneyFormatterOwner
/// A money formatters' owner whose currency settings and typing mode are set
/// from code: what a document, a tool or a test holds when it needs no owner
/// of its own. It posts the notifications an owner owes its formatters
/// itself: kWQNotification_CurrencyChanged when its currency settings change
/// (the formatters it handed out re-read them at once, the others after the
/// usual settling delay) and kWQNotification_DelegateRemoved when it is
/// destroyed, so its formatters leave the registry with it.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/money/WQMoneyFormatterDelegate.h>

#include <QVariantMap>

#include <memory>
#include <optional>
#include <vector>

namespace wq {

/// \addtogroup money
/// @{

class WQMoneyFormatter;

class WQ_CORE_EXPORT WQMoneyFormatterOwner : public WQMoneyFormatterDelegate {
public:
    /// System settings and standard typing unless told otherwise.
    explicit WQMoneyFormatterOwner(std::optional<QVariantMap> currencySymbolDict = std::nullopt,
                                   bool userInputLikeATM = false);
    /// Posts kWQNotification_DelegateRemoved with this owner.
    ~WQMoneyFormatterOwner() override;
    WQMoneyFormatterOwner(const WQMoneyFormatterOwner&) = delete;
    WQMoneyFormatterOwner& operator=(const WQMoneyFormatterOwner&) = delete;

    /// The currency settings dictionary, or nullopt for the system's settings.
    std::optional<QVariantMap> currencySymbolDict() const override;
    /// True for ATM typing.
    bool user_input_like_ATM() const override;

    /// Sets the currency settings (nullopt: the system's). A different value
    /// posts kWQNotification_CurrencyChanged.
    void setCurrencySymbolDict(std::optional<QVariantMap> currencySymbolDict);
    /// Chooses ATM (true) or standard typing; formatters ask at every keystroke.
    void setUserInputLikeATM(bool atm) noexcept;

    /// The shared formatter of this owner for places and kind (see
    /// WQMoneyFormatter::moneyFormatterForDelegate).
    std::shared_ptr<WQMoneyFormatter> moneyFormatter(qint8 decimalPlaces = 2, bool canCalculate = false);

private:
    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
};

/// @}

} // namespace wq
