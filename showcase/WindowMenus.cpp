// The window's menus, built from items that send their message by name to
// the controller; Delete is enabled only with a selection.

#include "RegisterWindow.h"
#include "ShowcaseText.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/menus/WQMenuExtensions.h>

#include <QAction>
#include <QItemSelectionModel>
#include <QLayout>
#include <QMenuBar>

namespace showcase {
namespace {

class WindowMenus : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        ShowcaseController& controller = ShowcaseController::of(window);
        auto* bar = new QMenuBar(&window);
        bar->setObjectName(QStringLiteral("menuBar"));
        // A plain window keeps its menu bar in its layout's menu-bar place.
        window.layout()->setMenuBar(bar);

        QMenu* transactions = bar->addMenu(Text::tr("&Transactions"));
        wq::wq_addItemWithTitle(*transactions, Text::tr("&New Transaction"), "newTransaction", &controller,
                            QKeySequence(QStringLiteral("Ctrl+N")));
        wq::wq_addItemWithTitle(*transactions, Text::tr("&Delete Transaction"), "deleteTransaction", &controller,
                            QKeySequence(QStringLiteral("Ctrl+Backspace")));
        transactions->addSeparator();
        wq::wq_addItemWithTitle(*transactions, Text::tr("&Close Window"), "close", &window,
                            QKeySequence(QKeySequence::Close));

        QMenu* view = bar->addMenu(Text::tr("&View"));
        QAction* calculator =
            wq::wq_addItemWithTitle(*view, Text::tr("&Calculator in Amounts"), "toggleCalculator", &controller);
        calculator->setCheckable(true);
        calculator->setChecked(controller.calculatorEnabled());
        view->addSeparator();
        QMenu* accounts = view->addMenu(Text::tr("&Accounts"));
        wq::wq_addItemWithTitle(*accounts, Text::tr("&Expand All"), "expandAllAccounts", &controller);
        wq::wq_addItemWithTitle(*accounts, Text::tr("&Collapse All"), "collapseAllAccounts", &controller);
        view->addSeparator();
        wq::wq_addItemWithTitle(*view, Text::tr("Customize &Toolbar\u2026"), "customizeToolbar", &controller);

        QMenu* settings = bar->addMenu(Text::tr("&Settings"));
        wq::wq_addItemWithTitle(*settings, Text::tr("&Warnings\u2026"), "showWarningSettings", &controller);
        wq::wq_addItemWithTitle(*settings, Text::tr("&Show All Warnings Again"), "showAllWarningsAgain",
                            &controller);

        // Found by what it sends, wherever it sits.
        QAction* remove = wq::itemWithAction(*transactions, "deleteTransaction");
        QItemSelectionModel* selection = window.table().selectionModel();
        const auto follow = [remove, selection] { remove->setEnabled(selection->hasSelection()); };
        QObject::connect(selection, &QItemSelectionModel::selectionChanged, remove, follow);
        follow();
        // Without an accounts tree the accounts items would do nothing.
        if (!window.findChild<QWidget*>(QStringLiteral("accounts"))) {
            wq::removeAllItemsWithAction(*bar, "expandAllAccounts");
            wq::removeAllItemsWithAction(*bar, "collapseAllAccounts");
        }
        _bar = bar;
    }

    QList<TourStep> tourSteps(RegisterWindow&) override
    {
        QMenuBar* bar = _bar;
        return {
            {QStringLiteral("menus: the View menu"), nullptr,
             [bar] {
                 if (QAction* view = bar->actions().value(1))
                     bar->setActiveAction(view);
             }},
            {QStringLiteral("menus: close it"), nullptr,
             [bar] {
                 for (QMenu* menu : bar->findChildren<QMenu*>())
                     menu->close();
             }},
        };
    }

private:
    QMenuBar* _bar = nullptr;
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeWindowMenus()
{
    return std::make_unique<WindowMenus>();
}

} // namespace showcase
