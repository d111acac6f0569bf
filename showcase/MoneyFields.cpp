// Amounts and numbers in the entry row: a money field owned by the document
// (standard or ATM typing, system or custom currency), a whole-number field
// and a decimal field.

#include "KeyTyping.h"
#include "ShowcaseText.h"
#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QPointer>

namespace showcase {
namespace {

QVariantMap swissFrancs()
{
    return {{wq::kWQCurrencyKey_UseSystem, 0},
            {wq::kWQCurrencyKey_Code, QStringLiteral("CHF")},
            {wq::kWQCurrencyKey_CurrencySymbol, QStringLiteral("CHF ")},
            {wq::kWQCurrencyKey_PositiveCurrencyFormatString, QStringLiteral("$ #,##0.00")},
            {wq::kWQCurrencyKey_NegativeCurrencyFormatString, QStringLiteral("-$ #,##0.00")},
            {wq::kWQCurrencyKey_ThousandsSeparator, QStringLiteral("'")},
            {wq::kWQCurrencyKey_DecimalSeparator, QStringLiteral(".")}};
}

// The formatter re-reads its settings 0.2 s after a change.
void waitForSettings()
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 300)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
}

class MoneyFields : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        // The register is the document: it owns the currency (kept in its
        // file) and the typing mode.
        wq::WQMoneyFormatterOwner* document = &window.document();
        // A calculating field: + - * / open the calculator, = finishes it.
        _amount = new wq::WQLineEdit(document->moneyFormatter(2, true), window.entryRow());
        _amount->setObjectName(QStringLiteral("amount"));
        _amount->setToolTip(Text::tr("+ - * / open the calculator and = finishes it (without the calculator \"-\" "
                                     "flips the sign); in ATM typing digits enter from the right"));
        // Room for a large amount in the widest currency the showcase offers.
        _amount->setMinimumWidth(_amount->fontMetrics().horizontalAdvance(QStringLiteral("-CHF 000'000'000.00")) + 16);
        _amount->setAlignment(Qt::AlignRight);
        window.addFieldGroup(Text::tr("Amount"), _amount, QStringLiteral("Amount"));

        // Without the calculator "-" after a number flips the sign instead.
        // One switch, shown alike here, in the View menu and in the toolbar.
        _calculate = new QCheckBox(Text::tr("On"), window.entryRow());
        _calculate->setObjectName(QStringLiteral("calculate"));
        _calculate->setToolTip(
            Text::tr("+ - * / in the amount open the calculator; off, \"-\" flips the amount's sign"));
        window.addOption(Text::tr("Calculator"), _calculate);

        _atm = new QCheckBox(Text::tr("ATM typing"), window.entryRow());
        _atm->setObjectName(QStringLiteral("atm"));
        _atm->setToolTip(Text::tr("Digits enter the amount from the right, as at a cash machine; the decimal "
                                  "separator is never typed"));
        QObject::connect(_atm, &QCheckBox::toggled, _atm, [document](bool on) { document->setUserInputLikeATM(on); });
        window.addOption(Text::tr("Typing"), _atm);

        _currency = new QComboBox(window.entryRow());
        _currency->setObjectName(QStringLiteral("currency"));
        _currency->setToolTip(Text::tr("The currency amounts are typed and shown in"));
        _currency->addItems({Text::tr("System settings"), Text::tr("Swiss francs (CHF 1'234.50)")});
        QObject::connect(_currency, &QComboBox::currentIndexChanged, _currency, [this, &window](int index) {
            if (!_following)
                window.setCurrency(index == 1 ? std::optional<QVariantMap>(swissFrancs()) : std::nullopt);
        });
        // The register's own currency, as its file gave it: shown, not chosen again.
        QObject::connect(&window, &RegisterWindow::currencyChanged, _currency, [this, document] {
            _following = true;
            _currency->setCurrentIndex(document->currencySymbolDict() == swissFrancs() ? 1 : 0);
            _following = false;
        });
        window.addOption(Text::tr("Currency"), _currency);

        // Made once the currency choice is there: the toolbar's pop-up follows it.
        ShowcaseController& controller = ShowcaseController::of(window);
        const auto calculate = [this, document](bool on) {
            _calculate->setChecked(on);
            if (_amount->formatter() == document->moneyFormatter(2, on))
                return;
            _amount->validateEditing();
            _amount->setFormatter(document->moneyFormatter(2, on));
        };
        calculate(controller.calculatorEnabled());
        QObject::connect(&controller, &ShowcaseController::calculatorEnabledChanged, _calculate, calculate);
        QObject::connect(_calculate, &QCheckBox::toggled, &controller, &ShowcaseController::setCalculatorEnabled);

        _count = new wq::WQLineEdit(std::make_shared<wq::WQPositiveIntegerFormatter>(), window.entryRow());
        _count->setObjectName(QStringLiteral("payments"));
        _count->setToolTip(Text::tr("How many payments the transaction is split into (a whole number)"));
        _count->setMinimumWidth(_count->fontMetrics().horizontalAdvance(QStringLiteral("0.000.000.000")) + 12);
        window.addFieldGroup(Text::tr("Payments"), _count);
        _rate = new wq::WQLineEdit(std::make_shared<wq::WQDecimalFormatter>(), window.entryRow());
        _rate->setObjectName(QStringLiteral("rate"));
        _rate->setToolTip(Text::tr("The interest rate, in percent (a decimal number)"));
        _rate->setMinimumWidth(_rate->fontMetrics().horizontalAdvance(QStringLiteral("000,0000")) + 12);
        window.addFieldGroup(Text::tr("Rate %"), _rate);

        // Integer and decimal formatters read the numeric locale when made.
        _locale.observe(wq::kWQNotif_AppleNumberPreferencesChanged, nullptr, [this](const wq::WQNotification&) {
            if (!_count || !_rate)
                return;
            // What was typed is read by the formatters it was typed for.
            _count->validateEditing();
            _rate->validateEditing();
            _count->setFormatter(std::make_shared<wq::WQPositiveIntegerFormatter>());
            _rate->setFormatter(std::make_shared<wq::WQDecimalFormatter>());
        });
    }

    QList<TourStep> tourSteps(RegisterWindow&) override
    {
        wq::WQLineEdit* amount = _amount;
        wq::WQLineEdit* count = _count;
        wq::WQLineEdit* rate = _rate;
        const auto fresh = [amount](const QString& keys) {
            return [amount, keys] {
                amount->setFocus();
                amount->selectAll();
                pressKey(amount, Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"));
                typeText(amount, keys);
            };
        };
        // The delete key only drops the last digit in ATM typing: a new
        // amount starts by typing over the whole text.
        const auto freshATM = [amount](const QString& keys) {
            return [amount, keys] {
                amount->setFocus();
                amount->selectAll();
                typeText(amount, keys);
            };
        };
        const auto type = [](wq::WQLineEdit* field, const QString& keys) {
            return [field, keys] {
                field->setFocus();
                typeText(field, keys);
            };
        };
        const auto backspace = [amount] {
            amount->setFocus();
            pressKey(amount, Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"));
        };
        const auto mode = [this](bool atm) { return [this, atm] { _atm->setChecked(atm); }; };
        const auto calculating = [this](bool on) { return [this, on] { _calculate->setChecked(on); }; };
        const auto region = [amount](const QString& name) {
            return [amount, name] {
                // Read what was typed under the settings it was typed in.
                amount->validateEditing();
                if (name.isEmpty())
                    wq::WQRegionalSettings::resetToEnvironment();
                else
                    wq::WQRegionalSettings::setAllLocales(name);
                waitForSettings();
                amount->setFocus();
            };
        };
        const auto currency = [this](int index) {
            return [this, index] {
                _amount->validateEditing();
                _currency->setCurrentIndex(index);
                waitForSettings();
            };
        };
        return {
            {QStringLiteral("regional settings: en_US"), amount, region(QStringLiteral("en_US"))},
            {QStringLiteral("calculator off: \"-\" flips the sign"), amount, calculating(false)},
            {QStringLiteral("amount: type 1"), amount, fresh(QStringLiteral("1"))},
            {QStringLiteral("amount: type 2"), amount, type(amount, QStringLiteral("2"))},
            {QStringLiteral("amount: type 3"), amount, type(amount, QStringLiteral("3"))},
            {QStringLiteral("amount: type 4"), amount, type(amount, QStringLiteral("4"))},
            {QStringLiteral("amount: type - (flips the sign)"), amount, type(amount, QStringLiteral("-"))},
            {QStringLiteral("amount: type - again"), amount, type(amount, QStringLiteral("-"))},
            {QStringLiteral("amount: type .56"), amount, type(amount, QStringLiteral(".56"))},
            {QStringLiteral("amount: type a third decimal (swallowed)"), amount, type(amount, QStringLiteral("7"))},
            {QStringLiteral("amount: type a letter"), amount, type(amount, QStringLiteral("x"))},
            {QStringLiteral("switch to ATM typing"), amount, mode(true)},
            {QStringLiteral("amount (ATM): select all, type 1"), amount, freshATM(QStringLiteral("1"))},
            {QStringLiteral("amount (ATM): type 2"), amount, type(amount, QStringLiteral("2"))},
            {QStringLiteral("amount (ATM): type 3"), amount, type(amount, QStringLiteral("3"))},
            {QStringLiteral("amount (ATM): type 4"), amount, type(amount, QStringLiteral("4"))},
            {QStringLiteral("amount (ATM): delete"), amount, backspace},
            {QStringLiteral("amount (ATM): delete"), amount, backspace},
            {QStringLiteral("amount (ATM): type -"), amount, type(amount, QStringLiteral("-"))},
            {QStringLiteral("amount (ATM): type a separator"), amount, type(amount, QStringLiteral("."))},
            {QStringLiteral("currency: Swiss francs"), amount, currency(1)},
            {QStringLiteral("amount (ATM): type 5678"), amount, type(amount, QStringLiteral("5678"))},
            {QStringLiteral("currency: system settings"), amount, currency(0)},
            {QStringLiteral("switch to standard typing"), amount, mode(false)},
            {QStringLiteral("regional settings: de_DE"), amount, region(QStringLiteral("de_DE"))},
            {QStringLiteral("amount: clear, type 1234,5"), amount, fresh(QStringLiteral("1234,5"))},
            {QStringLiteral("amount: type 6 and a second ,"), amount, type(amount, QStringLiteral("6,"))},
            {QStringLiteral("switch to ATM typing"), amount, mode(true)},
            {QStringLiteral("amount (ATM): select all, type 123456"), amount, freshATM(QStringLiteral("123456"))},
            {QStringLiteral("amount (ATM): delete"), amount, backspace},
            {QStringLiteral("payments: type 12345"), count, type(count, QStringLiteral("12345"))},
            {QStringLiteral("rate: type 4,25"), rate, type(rate, QStringLiteral("4,25"))},
            {QStringLiteral("switch to standard typing"), amount, mode(false)},
            {QStringLiteral("regional settings: back to en_US"), amount, region(QStringLiteral("en_US"))},
            {QStringLiteral("payments: clear, type 1234567"), count,
             [count] {
                 count->setFocus();
                 count->selectAll();
                 pressKey(count, Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b"));
                 typeText(count, QStringLiteral("1234567"));
             }},
            {QStringLiteral("payments: type - (refused)"), count, type(count, QStringLiteral("-"))},
            {QStringLiteral("rate: type a letter"), rate, type(rate, QStringLiteral("q"))},
            {QStringLiteral("regional settings: back to the environment's"), amount, region(QString())},
            {QStringLiteral("calculator on"), amount, calculating(true)},
        };
    }

private:
    // The window owns the widgets; notifications may outlive them.
    QPointer<wq::WQLineEdit> _amount;
    QPointer<wq::WQLineEdit> _count;
    QPointer<wq::WQLineEdit> _rate;
    QCheckBox* _atm = nullptr;
    QCheckBox* _calculate = nullptr;
    QComboBox* _currency = nullptr;
    bool _following = false;
    wq::WQObservation _locale{wq::WQNotificationCenter::distributedCenter()};
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeMoneyFields()
{
    return std::make_unique<MoneyFields>();
}

} // namespace showcase
