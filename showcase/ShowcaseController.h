#pragma once
// The register window's controller: its alert sheets, its toolbar (described
// by a dictionary) and the actions its toolbar and menus send by name. Every
// feature reaches the one controller of the window through of().

#include <WQGeneral/alerts/WQWindowController.h>

#include <QPointer>

class QLineEdit;
class QToolButton;

namespace showcase {

class AccountsPanel;
class RegisterWindow;

class ShowcaseController : public wq::WQWindowController {
    Q_OBJECT
    // Widgets the toolbar dictionary names as views.
    Q_PROPERTY(QWidget* searchField READ searchField)
    Q_PROPERTY(QWidget* currencyMenu READ currencyMenu)
    // The calculator switch; the amount field reads it. Kept in the settings.
    Q_PROPERTY(bool calculatorEnabled READ calculatorEnabled WRITE setCalculatorEnabled NOTIFY calculatorEnabledChanged)
public:
    // The window's controller, made on first use; it lives as long as the window.
    static ShowcaseController& of(RegisterWindow& window);

    std::optional<QVariantMap> toolbarDictionary() const override;
    // The dictionary's items; the calculator's is a switch.
    std::unique_ptr<wq::WQToolbarItem> toolbarItemForItemIdentifier(wq::WQToolbar& toolbar,
                                                                    const QString& itemIdentifier,
                                                                    bool willBeInsertedIntoToolbar) override;

    QWidget* searchField() const;
    QWidget* currencyMenu() const;
    bool calculatorEnabled() const { return _calculatorEnabled; }
    void setCalculatorEnabled(bool enabled);

    void setAccountsPanel(AccountsPanel* panel);
    RegisterWindow& registerWindow() const { return _register; }

public slots:
    // Records the entry row as a new transaction (the payee must not be blank).
    void newTransaction();
    void deleteTransaction();
    void toggleCalculator(QObject* sender);
    void expandAllAccounts();
    void collapseAllAccounts();
    void customizeToolbar();
    void showWarningSettings();
    void showAllWarningsAgain();

signals:
    void calculatorEnabledChanged(bool enabled);

private:
    explicit ShowcaseController(RegisterWindow& window);
    void _filterRegister(const QString& text);

    RegisterWindow& _register;
    QLineEdit* _search = nullptr;
    QToolButton* _currency = nullptr;
    bool _calculatorEnabled = false;
    QPointer<AccountsPanel> _accounts;
};

} // namespace showcase
