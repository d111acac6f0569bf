#include <WQGeneral/money/WQMoneyFormatter.h>

#include "WQMoneyFormatter_p.h"
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQNumberSettings.h>
#include <WQGeneral/platform/WQDeferred.h>
#include <WQGeneral/platform/WQNotificationQueue.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

namespace wq {
namespace {

constexpr int kReReadDelayMs = 200;

QString orFallback(const QString& value, const char16_t* fallback)
{
    return value.isEmpty() ? QString::fromUtf16(fallback) : value;
}

// A dictionary value as the string it stores; null when absent.
QString dictionaryString(const QVariantMap& dict, const QString& key)
{
    const auto it = dict.constFind(key);
    if (it == dict.constEnd() || !it->canConvert<QString>())
        return QString();
    QString value = it->toString();
    if (value.isNull())
        value = QStringLiteral("");
    return value;
}

// An unset field is simply set; a set one that differs is replaced and
// counts as a change.
void store(QString& field, const QString& value, bool& changed)
{
    if (field.isNull()) {
        field = value;
    } else if (field != value || value.isNull()) {
        field = value;
        changed = true;
    }
}

} // namespace

QString WQMoneyFormatter::systemCurrencySymbol()
{
    return orFallback(WQNumberSettings::currencySymbol(), u"$");
}

QString WQMoneyFormatter::systemCurrencyThousandsSeparator()
{
    return orFallback(WQNumberSettings::currencyGroupingSeparator(), u",");
}

QString WQMoneyFormatter::systemCurrencyDecimalSeparator()
{
    return orFallback(WQNumberSettings::currencyDecimalSeparator(), u".");
}

QString WQMoneyFormatter::systemPositiveCurrencyFormat()
{
    return orFallback(WQNumberSettings::positiveCurrencyFormat(), u"$");
}

QString WQMoneyFormatter::systemNegativeCurrencyFormat()
{
    return orFallback(WQNumberSettings::negativeCurrencyFormat(), u"$");
}

WQMoneyFormatter::WQMoneyFormatter(WQMoneyFormatterDelegate* delegate)
    : _wq_d(std::make_unique<_wq_Private>(this, delegate))
{
    _wq_setUpInstanceVariables();
    _wq_observe();
}

WQMoneyFormatter::~WQMoneyFormatter()
{
    WQNotificationCenter::defaultCenter().removeObserver(this);
    WQNotificationCenter::distributedCenter().removeObserver(this);
    // A queued change notification must not name a formatter that is gone.
    WQNotificationQueue::defaultQueue().dequeueNotificationsForSender(this);
}

void WQMoneyFormatter::_wq_observe()
{
    if (_wq_d->delegate) {
        auto& center = WQNotificationCenter::defaultCenter();
        center.addObserver(this, kWQNotification_DelegateRemoved, _wq_d->delegate,
                           [this](const WQNotification& n) { _wq_delegateClosed_notification(n); });
        center.addObserver(this, kWQNotification_CurrencyChanged, _wq_d->delegate,
                           [this](const WQNotification& n) { _wq_currencyChanged(n); });
    }
    WQNotificationCenter::distributedCenter().addObserver(
        this, kWQNotif_AppleNumberPreferencesChanged, nullptr,
        [this](const WQNotification& n) { _wq_currencyChanged(n); });
}

QString WQMoneyFormatter::localizedThousandsSeparator() const { return _wq_d->localizedThousandsSeparator; }
QString WQMoneyFormatter::localizedDecimalSeparator() const { return _wq_d->localizedDecimalSeparator; }
QString WQMoneyFormatter::localizedCurrencySymbol() const { return _wq_d->localizedCurrencySymbol; }
QString WQMoneyFormatter::localizedPositiveFormat() const { return _wq_d->localizedPositiveFormat; }
QString WQMoneyFormatter::localizedNegativeFormat() const { return _wq_d->localizedNegativeFormat; }
const WQDigitSet& WQMoneyFormatter::currencySymbolCharSet() const { return _wq_d->currencySymbolCharSet; }

WQMoneyFormatterDelegate* WQMoneyFormatter::delegate() const
{
    return _wq_d->delegate && !_wq_d->delegateLifetime.expired() ? _wq_d->delegate : nullptr;
}

bool WQMoneyFormatter::isATMMode() const
{
    const WQMoneyFormatterDelegate* owner = delegate();
    return owner && owner->user_input_like_ATM();
}

void WQMoneyFormatter::_wq_delegateClosed_notification(const WQNotification& notification)
{
    // May destroy this formatter: nothing may follow.
    _wq_removed_delegate(notification.object);
}

void WQMoneyFormatter::_wq_currencyChanged(const WQNotification&)
{
    // A burst of changes is read once, after it has settled.
    if (_wq_d->reReadPending)
        return;
    _wq_d->reReadPending = WQPerformDeferred<WQMoneyFormatter*>(
        _wq_d->self, [](WQMoneyFormatter*& formatter) {
            formatter->_wq_d->reReadPending = false;
            formatter->_wq_setUpInstanceVariables();
        },
        kReReadDelayMs);
}

void WQMoneyFormatter::_wq_setUpInstanceVariables()
{
    std::optional<QVariantMap> dict;
    if (const WQMoneyFormatterDelegate* owner = delegate())
        dict = owner->currencySymbolDict();
    // A dictionary without the flag counts as custom.
    const bool custom = dict && dict->value(kWQCurrencyKey_UseSystem).toInt() == 0;

    bool changed = false;
    if (custom) {
        store(_wq_d->localizedPositiveFormat, dictionaryString(*dict, kWQCurrencyKey_PositiveCurrencyFormatString), changed);
        store(_wq_d->localizedNegativeFormat, dictionaryString(*dict, kWQCurrencyKey_NegativeCurrencyFormatString), changed);
        store(_wq_d->localizedThousandsSeparator, dictionaryString(*dict, kWQCurrencyKey_ThousandsSeparator), changed);
        store(_wq_d->localizedDecimalSeparator, dictionaryString(*dict, kWQCurrencyKey_DecimalSeparator), changed);
        store(_wq_d->localizedCurrencySymbol, dictionaryString(*dict, kWQCurrencyKey_CurrencySymbol), changed);
    } else {
        store(_wq_d->localizedPositiveFormat, systemPositiveCurrencyFormat(), changed);
        store(_wq_d->localizedNegativeFormat, systemNegativeCurrencyFormat(), changed);
        store(_wq_d->localizedThousandsSeparator, systemCurrencyThousandsSeparator(), changed);
        // The plain-number separator, not the currency one, on purpose.
        store(_wq_d->localizedDecimalSeparator, WQDecimalFormatter::systemDecimalSeparator(), changed);
        // The symbol takes the blank that the pattern puts between it and the number.
        QString symbol = systemCurrencySymbol();
        if (_wq_d->localizedPositiveFormat.endsWith(u" $"))
            symbol.prepend(u' ');
        else if (_wq_d->localizedPositiveFormat.startsWith(u"$ "))
            symbol.append(u' ');
        store(_wq_d->localizedCurrencySymbol, symbol, changed);
    }

    _wq_d->invertedDecimalPlusLocalizedSeparatorsCharSet =
        WQDigitSet::decimalDigitsPlus({_wq_d->localizedThousandsSeparator, _wq_d->localizedDecimalSeparator, u"-"})
            .invertedSet();
    _wq_d->invertedATMStyleCharSet = WQDigitSet::decimalDigitsPlus({_wq_d->localizedDecimalSeparator}).invertedSet();
    _wq_d->currencySymbolCharSet = WQDigitSet::characters({_wq_d->localizedCurrencySymbol});
    _wq_rebuildDisplayPlan();

    if (changed)
        WQNotificationQueue::defaultQueue().enqueueASAP(
            WQNotification{kWQNotif_MoneyFormatterChanged, this, std::nullopt},
            WQNotificationQueue::CoalescingOnName);
}

} // namespace wq
