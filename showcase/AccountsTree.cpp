// The accounts tree beside the register: Expand All, Collapse All (the
// header shows which was done last) and each account's parent.

#include "AccountsPanel.h"
#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"

#include <QLayout>
#include <QSplitter>
#include <QTreeView>

namespace showcase {
namespace {

class AccountsTree : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        // The register shares its place with the tree.
        auto* splitter = new QSplitter(Qt::Horizontal, &window);
        splitter->setObjectName(QStringLiteral("registerSplitter"));
        _panel = new AccountsPanel(splitter);
        if (QLayoutItem* replaced = window.layout()->replaceWidget(&window.table(), splitter))
            delete replaced;
        splitter->addWidget(_panel);
        splitter->addWidget(&window.table());
        splitter->setStretchFactor(0, 0);
        splitter->setStretchFactor(1, 1);
        splitter->setSizes({210, 690});
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
