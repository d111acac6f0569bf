// The accounts tree beside the register: Expand All, Collapse All (the
// header shows which was done last) and each account's parent.

#include "AccountsPanel.h"
#include "ShowcaseText.h"
#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"

#include "SidePanels.h"

namespace showcase {
namespace {

class AccountsTree : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        // First of the side panels beside the register.
        _panel = new AccountsPanel;
        window.sidePanels().addPanel(QStringLiteral("Accounts"), Text::tr("Accounts"), _panel);
        ShowcaseController::of(window).setAccountsPanel(_panel);
    }

    QList<TourStep> tourSteps(RegisterWindow&) override
    {
        AccountsPanel* panel = _panel;
        return {
            {QStringLiteral("accounts: Expand All"), nullptr, [panel] { panel->expandAll(); }},
            {QStringLiteral("accounts: select Power (its parent shows below)"), nullptr,
             [panel] { panel->selectAccount(QStringLiteral("Power")); }},
            {QStringLiteral("accounts: Collapse All (the header shows a right arrow)"), nullptr,
             [panel] { panel->collapseAll(); }},
        };
    }

private:
    AccountsPanel* _panel = nullptr;
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeAccountsTree()
{
    return std::make_unique<AccountsTree>();
}

} // namespace showcase
