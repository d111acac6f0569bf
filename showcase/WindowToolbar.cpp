// The window's toolbar, described by the controller's dictionary: New and
// Delete, the calculator switch, the currency pop-up and the search field.
// Its context menu customizes it; the choice survives a restart.

#include "RegisterWindow.h"
#include "ShowcaseController.h"
#include "ShowcaseFeature.h"
#include "ShowcaseText.h"

#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace showcase {
namespace {

class WindowToolbar : public ShowcaseFeature {
public:
    void build(RegisterWindow& window) override
    {
        wq::WQToolbar* toolbar = ShowcaseController::of(window).setUpToolbar(QStringLiteral("RegisterToolbar"));
        if (!toolbar)
            return;
        toolbar->setAccessibleName(Text::tr("Toolbar"));
        // The button that shows the items a narrow window has no room for.
        if (auto* more = toolbar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
            more->setAccessibleName(Text::tr("More toolbar items"));
            more->setToolTip(Text::tr("The toolbar items the window is too narrow for"));
        }
    }

    QList<TourStep> tourSteps(RegisterWindow& window) override
    {
        ShowcaseController* controller = &ShowcaseController::of(window);
        wq::WQToolbar* toolbar = controller->toolbar();
        const auto palette = [toolbar] { return toolbar->customizationPalette(); };
        const auto list = [palette](const char* name) {
            return palette() ? palette()->findChild<QListWidget*>(QString::fromLatin1(name)) : nullptr;
        };
        const auto row = [](QListWidget* in, const QString& text) {
            for (int i = 0; in && i < in->count(); ++i)
                if (in->item(i)->text() == text)
                    return i;
            return -1;
        };
        return {
            {QStringLiteral("toolbar: calculator off (the check box and the View menu follow)"), nullptr,
             [toolbar] {
                 if (wq::WQToolbarItem* item = toolbar->itemWithIdentifier(QStringLiteral("Calculator")))
                     item->trigger();
             }},
            {QStringLiteral("toolbar: calculator on again"), nullptr,
             [toolbar] {
                 if (wq::WQToolbarItem* item = toolbar->itemWithIdentifier(QStringLiteral("Calculator")))
                     item->trigger();
             }},
            {QStringLiteral("toolbar: search for \"grocery\""), controller->searchField(),
             [controller] {
                 if (auto* search = qobject_cast<QLineEdit*>(controller->searchField()))
                     search->setText(QStringLiteral("grocery"));
             }},
            {QStringLiteral("toolbar: right click, Customize Toolbar\u2026"), nullptr,
             [toolbar] {
                 if (auto* search = toolbar->findChild<QLineEdit*>())
                     search->clear();
                 QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(6, 6), toolbar->mapToGlobal(QPoint(6, 6)));
                 QApplication::sendEvent(toolbar, &event);
                 if (auto* menu = toolbar->findChild<QMenu*>())
                     for (QAction* action : menu->actions())
                         if (action->text().startsWith(QStringLiteral("Customize")))
                             action->trigger();
                 for (QMenu* menu : toolbar->findChildren<QMenu*>())
                     menu->close();
             }},
            {QStringLiteral("customize: add Expand All Accounts after Delete"), nullptr,
             [list, row] {
                 QListWidget* items = list("toolbarItems");
                 QListWidget* available = list("palette");
                 if (!items || !available)
                     return;
                 items->setCurrentRow(row(items, QStringLiteral("Delete Transaction")));
                 available->setCurrentRow(row(available, QStringLiteral("Expand All Accounts")));
                 available->setFocus();
                 QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
                 QApplication::sendEvent(available, &enter);
             }},
            {QStringLiteral("customize: remove the flexible space, Done"), nullptr,
             [list, row, palette] {
                 QListWidget* items = list("toolbarItems");
                 if (!items)
                     return;
                 items->setCurrentRow(row(items, QStringLiteral("Flexible Space")));
                 items->setFocus();
                 QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
                 QApplication::sendEvent(items, &remove);
                 if (auto* done = palette()->findChild<QPushButton*>(QStringLiteral("done")))
                     done->click();
             }},
        };
    }
};

} // namespace

std::unique_ptr<ShowcaseFeature> makeWindowToolbar()
{
    return std::make_unique<WindowToolbar>();
}

} // namespace showcase
