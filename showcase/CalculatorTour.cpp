// The calculator in the tour: the amount field calculates, its tape grows
// with each operator, and it closes by "=", Escape and a click elsewhere.

#include "KeyTyping.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/fields/WQLineEdit.h>

#include <QApplication>
#include <QtTest/QTest>

namespace showcase {
namespace {

class CalculatorTour : public ShowcaseFeature {
public:
    void build(RegisterWindow&) override {}

    QList<TourStep> tourSteps(RegisterWindow& window) override
    {
        auto* amount = window.findChild<wq::WQLineEdit*>(QStringLiteral("amount"));
        if (!amount)
            return {};
        // Keys go where a keyboard sends them: to the calculator once open.
        const auto keys = [amount](const QString& text, bool fresh = false) {
            return [amount, text, fresh] {
                if (fresh) {
                    amount->setFocus();
                    amount->selectAll();
                }
                for (const QChar c : text) {
                    typeText(QApplication::focusWidget(), QString(c));
                    QApplication::processEvents();
                }
            };
        };
        const auto escape = [] { pressKey(QApplication::focusWidget(), Qt::Key_Escape, Qt::NoModifier, "\x1b"); };
        const auto clickPayee = [&window] {
            // Through the window system, as a real click arrives.
            QWidget* payee = window.findChild<QWidget*>(QStringLiteral("payee"));
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, payee->mapTo(&window, payee->rect().center()));
        };
        return {
            {QStringLiteral("calculator: type 2 over the amount"), amount, keys(QStringLiteral("2"), true)},
            {QStringLiteral("calculator: type + (opens the tape)"), amount, keys(QStringLiteral("+"))},
            {QStringLiteral("calculator: type 3"), amount, keys(QStringLiteral("3"))},
            {QStringLiteral("calculator: type * (left to right: 2 + 3 first)"), amount, keys(QStringLiteral("*"))},
            {QStringLiteral("calculator: type 4"), amount, keys(QStringLiteral("4"))},
            {QStringLiteral("calculator: type = (20, written back)"), amount, keys(QStringLiteral("="))},
            {QStringLiteral("calculator: type 10 /"), amount, keys(QStringLiteral("10/"), true)},
            {QStringLiteral("calculator: type 0"), amount, keys(QStringLiteral("0"))},
            {QStringLiteral("calculator: type = (division by zero gives 0)"), amount, keys(QStringLiteral("="))},
            {QStringLiteral("calculator: type 12 +"), amount, keys(QStringLiteral("12+"), true)},
            {QStringLiteral("calculator: Escape (the field as it was)"), amount, escape},
            {QStringLiteral("calculator: type 5 * 3"), amount, keys(QStringLiteral("5*3"), true)},
            {QStringLiteral("calculator: click the payee (commits)"), amount, clickPayee},
        };
    }
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeCalculatorTour()
{
    return std::make_unique<CalculatorTour>();
}

} // namespace showcase
