#pragma once
/// \class wq::WQMoneyFormatter
/// The entry formatter for money amounts. Its currency settings come from
/// the system (regional settings) or from its owner's currency dictionary;
/// display, rounding and grouping are done by hand so that every system
/// shows the same text. Obtain shared formatters from moneyFormatterForDelegate:
/// the registry keeps one per owner, number of places and kind.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/money/WQMoneyConstants.h>
#include <WQGeneral/money/WQMoneyFormatterDelegate.h>
#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/numbers/WQNumberFormatter.h>

#include <memory>

namespace wq {

/// \addtogroup money
/// @{

class WQ_CORE_EXPORT WQMoneyFormatter : public WQNumberFormatter {
public:
    /// With no delegate: system settings and standard typing, and only the
    /// number-preferences notification is observed.
    explicit WQMoneyFormatter(WQMoneyFormatterDelegate* delegate = nullptr);
    ~WQMoneyFormatter() override;

    /// The system's settings: symbol and patterns from the monetary locale,
    /// both separators from the numeric one (amounts use the decimal
    /// separator of plain numbers, WQDecimalFormatter::systemDecimalSeparator).
    static QString systemCurrencySymbol();
    /// The system's digit grouping separator for amounts (numeric locale).
    static QString systemCurrencyThousandsSeparator();
    /// The system's decimal separator for amounts (numeric locale).
    static QString systemCurrencyDecimalSeparator();
    /// The system's positive currency pattern, in the legacy form ("$" for the symbol).
    static QString systemPositiveCurrencyFormat();
    /// The system's negative currency pattern, in the legacy form.
    static QString systemNegativeCurrencyFormat();

    /// The shared formatter for an owner, number of places and kind, made on
    /// first request; with canCalculate a WQCalculateMoneyFormatter. Posting
    /// kWQNotification_DelegateRemoved with the owner drops its formatters.
    static std::shared_ptr<WQMoneyFormatter> moneyFormatterForDelegate(WQMoneyFormatterDelegate* delegate,
                                                                       qint8 decimalPlaces,
                                                                       bool canCalculate = false);
    /// Entries in the registry; 0 also when the registry does not exist.
    static qsizetype registeredFormatterCount();

    /// The owner, or nullptr when there is none or it is gone.
    WQMoneyFormatterDelegate* delegate() const;
    /// Asked of the owner at every judgement.
    bool isATMMode() const;

    /// Settings in force.
    QString localizedThousandsSeparator() const;
    /// The decimal separator in force.
    QString localizedDecimalSeparator() const;
    /// The currency symbol in force.
    QString localizedCurrencySymbol() const;
    /// The positive pattern in force.
    QString localizedPositiveFormat() const;
    /// The negative pattern in force.
    QString localizedNegativeFormat() const;
    /// The characters of the symbol in force, which typing lets through.
    const WQDigitSet& currencySymbolCharSet() const;

    /// Re-reads the settings now rather than after the settling delay of a
    /// change notification; posts kWQNotif_MoneyFormatterChanged (queued) when
    /// a value differs from the one in force.
    void reloadSettings() { _wq_setUpInstanceVariables(); }

    QString changeNotificationName() const override { return kWQNotif_MoneyFormatterChanged; }

    /// Numbers as amounts, strings unchanged, anything else nullopt.
    std::optional<QString> stringForObjectValue(const QVariant& value) const override;
    /// The display of one amount. Whole parts beyond 64 bits (and infinities)
    /// show as the nearest of -9223372036854775808 and 9223372036854775807
    /// with no fraction; NaN shows as 0.
    QString stringForAmount(double amount) const;
    /// Always fills value with the amount (0 for an absent text); false only
    /// for a second, separate decimal separator. A number too large for a
    /// double reads as the largest double, never as infinity; one too small
    /// reads as 0.
    bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const override;
    /// Standard or ATM typing, as the owner says.
    bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                              const QString& originalString, WQRange originalSelectedRange,
                              QString* errorDescription) override;

protected:
    void _wq_patternsChanged() override { _wq_rebuildDisplayPlan(); }

private:
    /// Drops every registry entry of an owner.
    static void _wq_removed_delegate(const WQNotificationSender* delegate);
    void _wq_setUpInstanceVariables();
    /// The base pattern for a sign, or the localized one when the base has
    /// none (or only a one-character default); localizedFormat receives the
    /// localized format of that sign.
    QString _wq_formatForMoney(bool negative, QString* localizedFormat = nullptr) const;
    /// The forgiving parser; error is written only when the error occurs.
    double _wq_doubleValueForMoneyString(const QString& string, QString* error) const;
    bool _wq_std_isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                      const QString& originalString, WQRange originalSelectedRange,
                                      QString* errorDescription);
    bool _wq_atm_isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                      const QString& originalString, WQRange originalSelectedRange,
                                      QString* errorDescription);

    /// What display needs from the patterns and settings, worked out once per change.
    struct _wq_DisplayPlan;
    void _wq_rebuildDisplayPlan();
    QString _wq_generalStringForAmount(double amount) const;

    void _wq_delegateClosed_notification(const WQNotification& notification);
    void _wq_currencyChanged(const WQNotification& notification);
    void _wq_observe();

    struct _wq_Private;
    std::unique_ptr<_wq_Private> _wq_d;
};

/// @}

} // namespace wq
