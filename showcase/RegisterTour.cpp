// The register in the tour: a transaction typed and recorded with Return
// lands in date order with its balance; an incomplete row records nothing;
// its amount corrected in place and the correction undone; the window at its
// minimum size.

#include "KeyTyping.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/fields/WQLineEdit.h>

#include <QAction>
#include <QApplication>

namespace showcase {
namespace {

class RegisterTour : public ShowcaseFeature {
public:
    void build(RegisterWindow&) override {}

    QList<TourStep> tourSteps(RegisterWindow& window) override
    {
        auto* date = window.findChild<wq::WQLineEdit*>(QStringLiteral("date"));
        auto* payee = window.findChild<wq::WQLineEdit*>(QStringLiteral("payee"));
        auto* amount = window.findChild<wq::WQLineEdit*>(QStringLiteral("amount"));
        if (!date || !payee || !amount)
            return {};
        const auto fill = [](wq::WQLineEdit* field, const QString& text) {
            field->setFocus();
            field->selectAll();
            pressKey(field, Qt::Key_Backspace, Qt::NoModifier, QString());
            typeText(field, text);
        };
        const auto returnIn = [](QWidget* field) { pressKey(field, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")); };
        RegisterWindow* w = &window;
        return {
            {QStringLiteral("register: type 3/7/26, Bakery, 12.50"), amount,
             [=] {
                 fill(date, QStringLiteral("3/7/26"));
                 fill(payee, QStringLiteral("Bakery"));
                 fill(amount, QStringLiteral("12.50"));
             }},
            {QStringLiteral("register: Return records it between the 5th and the 9th, with its balance"), date,
             [=] { returnIn(amount); }},
            {QStringLiteral("register: Return with no payee records nothing"), date, [=] { returnIn(date); }},
            {QStringLiteral("register: F2 on the Bakery's amount, 15 and Return (the balances below follow)"), nullptr,
             [=] {
                 RegisterBook& book = w->book();
                 int row = 0;
                 while (row < book.rowCount() && book.at(row).payee != QStringLiteral("Bakery"))
                     ++row;
                 wq::WQTableView& table = w->table();
                 table.setFocus();
                 table.setCurrentIndex(book.index(row, RegisterBook::AmountColumn));
                 pressKey(&table, Qt::Key_F2, Qt::NoModifier, QString());
                 typeText(QApplication::focusWidget(), QStringLiteral("15"));
                 returnIn(QApplication::focusWidget());
             }},
            {QStringLiteral("register: Edit > Undo Edit Amount (back to $12.50)"), nullptr,
             [w] {
                 if (auto* undo = w->findChild<QAction*>(QStringLiteral("undo")))
                     undo->trigger();
             }},
            {QStringLiteral("window: at its minimum size nothing is clipped"), date,
             [w] { w->resize(w->minimumSize()); }},
            {QStringLiteral("window: back to its usual size"), date, [w] { w->resize(1000, 560); }},
        };
    }
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeRegisterTour()
{
    return std::make_unique<RegisterTour>();
}

} // namespace showcase
