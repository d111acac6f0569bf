#include "ShowcaseController.h"
#include "ShowcaseText.h"

#include "AccountsPanel.h"
#include "RegisterWindow.h"

#include <WQGeneral/alerts/WQWarningSettingsPage.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/menus/WQMenuExtensions.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>
#include <WQGeneral/toolbar/WQToolbarKeys.h>

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>

namespace showcase {
namespace {

const QString kCalculatorKey = QStringLiteral("Showcase/calculatorEnabled");

QVariantMap item(const char* label, const char* paletteLabel, const char* toolTip)
{
    return {{wq::kWQToolbarItemKey_Label, QString::fromUtf8(label)},
            {wq::kWQToolbarItemKey_PaletteLabel, QString::fromUtf8(paletteLabel)},
            {wq::kWQToolbarItemKey_ToolTip, QString::fromUtf8(toolTip)}};
}

QVariantMap button(const char* label, const char* paletteLabel, const char* toolTip, const char* image,
                   const char* action)
{
    QVariantMap description = item(label, paletteLabel, toolTip);
    description.insert(wq::kWQToolbarItemKey_ImageName, QString::fromUtf8(image));
    description.insert(wq::kWQToolbarItemKey_Action, QString::fromUtf8(action));
    return description;
}

QVariantMap view(const char* label, const char* paletteLabel, const char* toolTip, const char* property)
{
    QVariantMap description = item(label, paletteLabel, toolTip);
    description.insert(wq::kWQToolbarItemKey_View, QString::fromUtf8(property));
    return description;
}

} // namespace

ShowcaseController& ShowcaseController::of(RegisterWindow& window)
{
    if (auto* existing = qobject_cast<ShowcaseController*>(controllerOf(&window)))
        return *existing;
    return *new ShowcaseController(window);
}

ShowcaseController::ShowcaseController(RegisterWindow& window)
    : wq::WQWindowController(window), _register(window),
      _calculatorEnabled(QSettings().value(kCalculatorKey, true).toBool())
{
    _search = new QLineEdit(&window);
    _search->setObjectName(QStringLiteral("search"));
    _search->setPlaceholderText(Text::tr("Search payees"));
    _search->setClearButtonEnabled(true);
    _search->setAccessibleName(Text::tr("Search payees"));
    _search->setToolTip(Text::tr("Show only the transactions of matching payees"));
    for (QToolButton* clear : _search->findChildren<QToolButton*>()) {
        clear->setAccessibleName(Text::tr("Clear the search"));
        clear->setToolTip(Text::tr("Show every transaction again"));
    }
    _search->resize(180, _search->sizeHint().height());
    _search->hide();
    connect(_search, &QLineEdit::textChanged, this, &ShowcaseController::_filterRegister);

    // The currency pop-up works the currency choice of the entry row.
    _currency = new QToolButton(&window);
    _currency->setObjectName(QStringLiteral("currencyMenu"));
    _currency->setPopupMode(QToolButton::InstantPopup);
    _currency->setToolButtonStyle(Qt::ToolButtonTextOnly);
    _currency->setAccessibleName(Text::tr("Currency"));
    _currency->setToolTip(Text::tr("The currency amounts are typed in"));
    // The text carries its own arrow.
    _currency->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; width: 0px; }"));
    _currency->hide();
    auto* menu = new QMenu(_currency);
    auto* choices = new QActionGroup(menu);
    const QStringList names = {Text::tr("System currency"), Text::tr("Swiss francs")};
    for (int index = 0; index < names.size(); ++index) {
        QAction* choice = menu->addAction(names[index]);
        choice->setCheckable(true);
        choice->setData(index);
        choices->addAction(choice);
    }
    _currency->setMenu(menu);
    auto follow = [this, menu, names](int index) {
        _currency->setText(names.value(index, names.first()) + QStringLiteral(" \u25BE"));
        for (QAction* choice : menu->actions())
            choice->setChecked(choice->data().toInt() == index);
    };
    follow(0);
    connect(menu, &QMenu::triggered, this, [this, follow](QAction* choice) {
        if (auto* combo = _register.findChild<QComboBox*>(QStringLiteral("currency")))
            combo->setCurrentIndex(choice->data().toInt());
        follow(choice->data().toInt());
    });
    // The entry row's own choice may change too.
    if (auto* combo = window.findChild<QComboBox*>(QStringLiteral("currency")))
        connect(combo, &QComboBox::currentIndexChanged, this, follow);
}

std::optional<QVariantMap> ShowcaseController::toolbarDictionary() const
{
    // The texts are keys the toolbar looks up in its table, "ToolbarStrings".
    const QVariantMap items{
        {QStringLiteral("NewTransaction"),
         button(QT_TRANSLATE_NOOP("ToolbarStrings", "New"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "New Transaction"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Record the entry row as a new transaction"),
                "NewTransaction", "newTransaction")},
        {QStringLiteral("DeleteTransaction"),
         button(QT_TRANSLATE_NOOP("ToolbarStrings", "Delete"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Delete Transaction"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Delete the selected transactions"),
                "DeleteTransaction", "deleteTransaction")},
        {QStringLiteral("Calculator"),
         button(QT_TRANSLATE_NOOP("ToolbarStrings", "Calculator"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Calculator On/Off"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Open the calculator when an operator is typed in an amount"),
                "Calculator", "toggleCalculator")},
        {QStringLiteral("Search"),
         view(QT_TRANSLATE_NOOP("ToolbarStrings", "Search"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Search Field"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Show only the transactions of matching payees"),
                "searchField")},
        {QStringLiteral("Currency"),
         view(QT_TRANSLATE_NOOP("ToolbarStrings", "Currency"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Currency Menu"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "The currency amounts are typed in"),
                "currencyMenu")},
        {QStringLiteral("ExpandAccounts"),
         button(QT_TRANSLATE_NOOP("ToolbarStrings", "Expand"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Expand All Accounts"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Show every account"),
                "ExpandAccounts", "expandAllAccounts")},
        {QStringLiteral("CollapseAccounts"),
         button(QT_TRANSLATE_NOOP("ToolbarStrings", "Collapse"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Collapse All Accounts"),
                QT_TRANSLATE_NOOP("ToolbarStrings", "Show the top-level accounts only"),
                "CollapseAccounts", "collapseAllAccounts")},
    };
    return QVariantMap{
        {wq::kWQToolbarKey_ItemInfoByIdentifier, items},
        {wq::kWQToolbarKey_DefaultItemIdentifiers,
         QStringList{"NewTransaction", "DeleteTransaction", wq::kWQToolbarSeparatorItemIdentifier, "Calculator",
                     "Currency", wq::kWQToolbarFlexibleSpaceItemIdentifier, "Search"}},
        {wq::kWQToolbarKey_AllowedItemIdentifiers,
         QStringList{"NewTransaction", "DeleteTransaction", "Calculator", "Currency", "Search", "ExpandAccounts",
                     "CollapseAccounts"}},
    };
}

std::unique_ptr<wq::WQToolbarItem> ShowcaseController::toolbarItemForItemIdentifier(wq::WQToolbar& toolbar,
                                                                                    const QString& itemIdentifier,
                                                                                    bool willBeInsertedIntoToolbar)
{
    std::unique_ptr<wq::WQToolbarItem> item =
        wq::WQWindowController::toolbarItemForItemIdentifier(toolbar, itemIdentifier, willBeInsertedIntoToolbar);
    if (item && itemIdentifier == u"Calculator") {
        item->setCheckable(true);
        item->setChecked(_calculatorEnabled);
    }
    // A read-only register takes no changes, from a customized toolbar neither.
    if (item && _register.isReadOnly() && (itemIdentifier == u"NewTransaction" || itemIdentifier == u"DeleteTransaction"))
        item->setEnabled(false);
    return item;
}

QWidget* ShowcaseController::searchField() const
{
    return _search;
}

QWidget* ShowcaseController::currencyMenu() const
{
    return _currency;
}

void ShowcaseController::setCalculatorEnabled(bool enabled)
{
    if (enabled == _calculatorEnabled)
        return;
    _calculatorEnabled = enabled;
    QSettings().setValue(kCalculatorKey, enabled);
    // Every item that switches it, in the menus and in the toolbar.
    for (QWidget* holder : {static_cast<QWidget*>(_register.layout()->menuBar()), static_cast<QWidget*>(toolbar())})
        if (holder)
            if (const auto items = wq::itemsWithAction(*holder, "toggleCalculator", true))
                for (QAction* item : *items)
                    item->setChecked(enabled);
    emit calculatorEnabledChanged(enabled);
}

void ShowcaseController::setAccountsPanel(AccountsPanel* panel)
{
    _accounts = panel;
}

void ShowcaseController::newTransaction()
{
    if (_register.isReadOnly())
        return;
    auto* payee = _register.findChild<wq::WQLineEdit*>(QStringLiteral("payee"));
    if (payee && payee->text().trimmed().isEmpty()) {
        sheetForBlankTextField(payee, Text::tr("Payee"));
        return;
    }
    _register.enterTransaction();
}

void ShowcaseController::deleteTransaction()
{
    if (_register.isReadOnly())
        return;
    QList<int> rows;
    for (const QModelIndex& index : _register.table().selectionModel()->selectedRows())
        rows << index.row();
    _register.book().remove(rows);
}

void ShowcaseController::toggleCalculator(QObject* sender)
{
    const auto* action = qobject_cast<QAction*>(sender);
    setCalculatorEnabled(action && action->isCheckable() ? action->isChecked() : !_calculatorEnabled);
}

void ShowcaseController::expandAllAccounts()
{
    if (_accounts)
        _accounts->expandAll();
}

void ShowcaseController::collapseAllAccounts()
{
    if (_accounts)
        _accounts->collapseAll();
}

void ShowcaseController::customizeToolbar()
{
    if (toolbar())
        toolbar()->runCustomizationPalette();
}

void ShowcaseController::showWarningSettings()
{
    if (auto* open = _register.findChild<QDialog*>(QStringLiteral("warningSettings"))) {
        open->raise();
        return;
    }
    auto* dialog = new QDialog(&_register);
    dialog->setObjectName(QStringLiteral("warningSettings"));
    dialog->setWindowTitle(Text::tr("Warnings"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(new wq::WQWarningSettingsPage(dialog));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog->resize(460, 240);
    dialog->open();
}

void ShowcaseController::showAllWarningsAgain()
{
    wq::WQWarningSuppression::showAllAgain();
}

void ShowcaseController::_filterRegister(const QString& text)
{
    QTableView& table = _register.table();
    const RegisterBook& book = _register.book();
    for (int row = 0; row < book.rowCount(); ++row)
        table.setRowHidden(row, !text.isEmpty() && !book.at(row).payee.contains(text, Qt::CaseInsensitive));
}

} // namespace showcase
