// Recorded transactions corrected in place and every change undoable: the
// register's date and amount cells edit through the framework's formatter
// delegate (the amount in the register's own currency and typing mode,
// calculating while the calculator is on), and an Edit menu undoes and redoes
// the register's history.

#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"
#include "ShowcaseText.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/delegates/WQFormatterDelegate.h>
#include <WQGeneral/money/WQMoneyFormatter.h>

#include <QAction>
#include <QMenuBar>
#include <QUndoStack>

namespace showcase {
namespace {

class RegisterEditing : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        wq::WQTableView& table = window.table();
        wq::WQMoneyFormatterOwner* document = &window.document();
        auto* dates = new wq::WQFormatterDelegate(window.dateFormatter(), &table);
        auto* amounts = new wq::WQFormatterDelegate(document->moneyFormatter(2), &table);
        amounts->setNegativeBrush(RegisterBook::negativeColour(table.palette()));
        table.setItemDelegateForColumn(RegisterBook::DateColumn, dates);
        table.setItemDelegateForColumn(RegisterBook::AmountColumn, amounts);
        for (wq::WQFormatterDelegate* cells : {dates, amounts}) {
            QObject::connect(cells, &wq::WQFormatterDelegate::editRefused, &window, &RegisterWindow::refuseInCell);
            QObject::connect(cells, &wq::WQFormatterDelegate::valueRefused, &window, &RegisterWindow::refuseInCell);
        }
        // The amount cells calculate as the entry row's amount does.
        ShowcaseController& controller = ShowcaseController::of(window);
        const auto calculate = [amounts, document](bool on) { amounts->setFormatter(document->moneyFormatter(2, on)); };
        calculate(controller.calculatorEnabled());
        QObject::connect(&controller, &ShowcaseController::calculatorEnabledChanged, amounts, calculate);

        QUndoStack& history = window.book().history();
        QMenuBar* bar = window.findChild<QMenuBar*>(QStringLiteral("menuBar"));
        if (!bar)
            return;
        auto* edit = new QMenu(Text::tr("&Edit"), bar);
        edit->setObjectName(QStringLiteral("editMenu"));
        // Beside the first menu, where an Edit menu is looked for.
        const QList<QAction*> menus = bar->actions();
        bar->insertMenu(menus.value(1), edit);
        QAction* undo = history.createUndoAction(edit, Text::tr("Undo"));
        undo->setObjectName(QStringLiteral("undo"));
        undo->setShortcuts(QKeySequence::Undo);
        QAction* redo = history.createRedoAction(edit, Text::tr("Redo"));
        redo->setObjectName(QStringLiteral("redo"));
        redo->setShortcuts(QKeySequence::Redo);
        edit->addAction(undo);
        edit->addAction(redo);
        // A change undone or redone is shown where it is.
        QObject::connect(&history, &QUndoStack::indexChanged, &table, [&table] {
            if (table.currentIndex().isValid())
                table.scrollTo(table.currentIndex());
        });
    }

    QList<TourStep> tourSteps(RegisterWindow&) override { return {}; }
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeRegisterEditing()
{
    return std::make_unique<RegisterEditing>();
}

} // namespace showcase
