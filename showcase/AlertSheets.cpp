// Refusals in the entry row shown as alert sheets on the window: the sheets
// of the whole-number, decimal and amount fields can be silenced with "Don't
// show again" (and brought back from Settings > Warnings…); the date field's
// sheet offers Edit or Cancel; New Transaction with a blank payee says so.

#include "KeyTyping.h"
#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/alerts/WQWarningSettingsPage.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include <QCheckBox>
#include <QDialog>
#include <QMessageBox>
#include <QPushButton>

namespace showcase {
namespace {

// Which sheet explains a field's refusal depends on what the field takes.
void present(ShowcaseController& controller, RegisterWindow& window, wq::WQLineEdit& field, const QString& label,
             const QString& message)
{
    wq::WQFormatter* formatter = field.formatter().get();
    if (const auto* dates = dynamic_cast<const wq::WQDateFormatter*>(formatter))
        controller.sheetForDateField(&field, field.text(), label, dates->localizedSeparator(), message);
    else if (const auto* money = dynamic_cast<const wq::WQMoneyFormatter*>(formatter))
        controller.sheetForDecimalFieldValidationFailure(&field, label, message, money->isATMMode());
    else if (dynamic_cast<const wq::WQPositiveIntegerFormatter*>(formatter))
        controller.sheetForIntegerTextFieldValidationFailure(&field, label, message);
    else if (dynamic_cast<const wq::WQDecimalFormatter*>(formatter))
        controller.sheetForDecimalFieldValidationFailure(&field, label, message, false);
    else
        window.showMessage(message);
}

class AlertSheets : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        ShowcaseController& controller = ShowcaseController::of(window);
        window.setRefusalPresenter([&controller, &window](wq::WQLineEdit& field, const QString& label,
                                                          const QString& message) {
            present(controller, window, field, label, message);
        });
    }

    QList<TourStep> tourSteps(RegisterWindow& window) override
    {
        ShowcaseController* controller = &ShowcaseController::of(window);
        auto* payments = window.findChild<wq::WQLineEdit*>(QStringLiteral("payments"));
        auto* date = window.findChild<wq::WQLineEdit*>(QStringLiteral("date"));
        auto* payee = window.findChild<wq::WQLineEdit*>(QStringLiteral("payee"));
        const auto type = [](wq::WQLineEdit* field, const QString& keys) {
            return [field, keys] {
                field->setFocus();
                typeText(field, keys);
            };
        };
        const auto sheet = [controller] { return controller->attachedSheet(); };
        const auto settings = [&window]() { return window.findChild<QDialog*>(QStringLiteral("warningSettings")); };
        return {
            {QStringLiteral("warnings: start with every warning shown"), payments,
             [] { wq::WQWarningSuppression::showAllAgain(); }},
            {QStringLiteral("payments: type x (a sheet with \"Don't show again\")"), payments,
             type(payments, QStringLiteral("x"))},
            {QStringLiteral("payments: type y, tick \"Don't show again\" (then OK)"), payments,
             [payments, sheet] {
                 payments->setFocus();
                 typeText(payments, QStringLiteral("y"));
                 if (QMessageBox* box = sheet(); box && box->checkBox())
                     box->checkBox()->click();
             }},
            {QStringLiteral("payments: type z (silenced: no sheet)"), payments, type(payments, QStringLiteral("z"))},
            {QStringLiteral("settings: Warnings\u2026 lists the silenced one"), payments,
             [controller] { controller->showWarningSettings(); }},
            {QStringLiteral("settings: Show all warnings again"), payments,
             [settings] {
                 if (QDialog* dialog = settings()) {
                     if (auto* page = dialog->findChild<wq::WQWarningSettingsPage*>())
                         page->showAllButton()->click();
                 }
             }},
            {QStringLiteral("settings: close; payments: type x (the sheet is back)"), payments,
             [settings, payments] {
                 if (QDialog* dialog = settings())
                     dialog->reject();
                 payments->setFocus();
                 typeText(payments, QStringLiteral("x"));
             }},
            {QStringLiteral("date: type q (a sheet with Edit and Cancel)"), date,
             [date] {
                 date->setFocus();
                 date->selectAll();
                 typeText(date, QStringLiteral("3/1"));
                 typeText(date, QStringLiteral("q"));
             }},
            {QStringLiteral("date: type q again and press Cancel (the date comes back)"), date,
             [date, sheet] {
                 date->setFocus();
                 typeText(date, QStringLiteral("q"));
                 if (QMessageBox* box = sheet())
                     if (QAbstractButton* cancel = box->escapeButton())
                         cancel->click();
             }},
            {QStringLiteral("payee: blank, New Transaction (the blank-field sheet)"), payee,
             [payee, controller] {
                 payee->setObjectValue(QString());
                 controller->newTransaction();
             }},
        };
    }
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeAlertSheets()
{
    return std::make_unique<AlertSheets>();
}

} // namespace showcase
