#pragma once
/// \class wq::WQQuickMoneyOwner
/// The owner of a form's money fields, for QML (MoneyOwner): its currency
/// settings dictionary and typing mode are properties. Money fields that name
/// it as their owner share its formatters; a new dictionary shows in them at
/// once, and the typing mode is asked at every keystroke.
///
/// \code{.qml}
/// MoneyOwner { id: swissFrancs; userInputLikeATM: atmBox.checked
///              currencySymbolDict: ({ NSCurrencySymbol: "CHF ", NSDecimalSeparator: "." }) }
/// FormattedTextField { formatterKind: FormattedTextField.Money; owner: swissFrancs }
/// \endcode

#include <WQGeneral/WQQuickExport.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>

#include <QObject>
#include <QVariantMap>

namespace wq {

/// \addtogroup quick
/// @{

class WQ_QUICK_EXPORT WQQuickMoneyOwner : public QObject {
    Q_OBJECT
    /// The currency settings (kWQCurrencyKey_... keys); empty for the system's settings.
    Q_PROPERTY(QVariantMap currencySymbolDict READ currencySymbolDict WRITE setCurrencySymbolDict NOTIFY
                   currencySymbolDictChanged)
    /// ATM typing: digits enter from the right and the separator is never typed.
    Q_PROPERTY(bool userInputLikeATM READ userInputLikeATM WRITE setUserInputLikeATM NOTIFY userInputLikeATMChanged)
public:
    /// The system's settings and standard typing.
    explicit WQQuickMoneyOwner(QObject* parent = nullptr);
    ~WQQuickMoneyOwner() override;

    /// The dictionary in force; empty for the system's settings.
    QVariantMap currencySymbolDict() const;
    /// Sets the dictionary (empty: the system's); the owner's formatters re-read it.
    void setCurrencySymbolDict(const QVariantMap& currencySymbolDict);
    /// True for ATM typing.
    bool userInputLikeATM() const { return _wq_owner.user_input_like_ATM(); }
    /// Chooses ATM (true) or standard typing.
    void setUserInputLikeATM(bool atm);

    /// The core owner that the formatters belong to.
    WQMoneyFormatterOwner& owner() noexcept { return _wq_owner; }

signals:
    /// The dictionary changed.
    void currencySymbolDictChanged();
    /// The typing mode changed.
    void userInputLikeATMChanged();

private:
    WQMoneyFormatterOwner _wq_owner;
};

/// @}

} // namespace wq
