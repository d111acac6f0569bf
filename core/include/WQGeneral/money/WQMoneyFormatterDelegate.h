#pragma once
/// \class wq::WQMoneyFormatterDelegate
/// The owner of money formatters (normally a document): it supplies the
/// currency settings and the typing mode, and is the object of the
/// currency-changed and delegate-removed notifications.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QVariantMap>

#include <memory>
#include <optional>

namespace wq {

/// \addtogroup money
/// @{

class WQ_CORE_EXPORT WQMoneyFormatterDelegate : public WQNotificationSender {
public:
    WQMoneyFormatterDelegate() = default;
    /// A copy is another owner, with its own lifetime.
    WQMoneyFormatterDelegate(const WQMoneyFormatterDelegate&) : WQMoneyFormatterDelegate() {}
    /// Assignment keeps this owner's identity and lifetime token.
    // Nothing is copied, so assigning to itself loses nothing.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    WQMoneyFormatterDelegate& operator=(const WQMoneyFormatterDelegate&) { return *this; }
    ~WQMoneyFormatterDelegate() override = default;

    /// The currency settings dictionary (kWQCurrencyKey_...), or nullopt for
    /// the system's settings.
    virtual std::optional<QVariantMap> currencySymbolDict() const { return std::nullopt; }
    /// true selects ATM typing: digits enter from the right.
    virtual bool user_input_like_ATM() const { return false; }

    /// Formatters hold their owner weakly through this token; it expires
    /// when the owner is destroyed.
    std::weak_ptr<const void> lifetimeToken() const { return _wq_lifetime; }

private:
    std::shared_ptr<const void> _wq_lifetime = std::make_shared<char>(0);
};

/// @}

} // namespace wq
