#pragma once
// The showcase's window: a register of transactions with side panels beside
// it, above an entry row of labelled fields, an Enter button that records the
// row, and a message line for refusals unless a feature shows them another
// way (alert sheets).

#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <WQGeneral/views/WQTableView.h>

#include "RegisterBook.h"
#include "RegisterStore.h"

#include <QFuture>
#include <QLabel>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class QHBoxLayout;
class QPushButton;
class QScrollArea;

namespace wq {
class WQLineEdit;
class WQDateFormatter;
class WQMoneyFormatter;
} // namespace wq

namespace showcase {

class SidePanels;

class RegisterWindow : public QWidget {
    Q_OBJECT
    // True while the register cannot take changes (another instance holds
    // it, or it was not opened): the entry row and the editing actions are
    // off and a notice above the register says why.
    Q_PROPERTY(bool readOnly READ isReadOnly NOTIFY readOnlyChanged)
public:
    RegisterWindow();
    ~RegisterWindow() override;

    // Parent for the fields of the entry row.
    QWidget* entryRow() const { return _entryRow; }
    // Adds a labelled field at a place of the entry row (-1: at the end,
    // after the payee); with a column (Date, Payee, Amount), Enter copies the
    // field's text (and a date value) into that column of the new row.
    void addFieldGroup(const QString& label, QWidget* field, const QString& column = QString(), int place = -1);
    // Adds a button beside Enter, to its left.
    void addButton(QWidget* button);
    // Adds a labelled control to the typing options above the register.
    void addOption(const QString& label, QWidget* control);
    // Once every feature has added its fields: tab order in visual order,
    // labels with Alt-letter shortcuts tied to their fields, accessible
    // names and descriptions, the focus on the date, and the window's
    // minimum size.
    void finishEntryRow();
    // Keeps the register in the file at path between runs. An encrypted one
    // asks for its password and is opened off the window's thread, the
    // window saying so meanwhile; opened() tells when the register is shown.
    // One that another instance holds, or that could not be opened, is shown
    // read-only.
    void keepIn(const QString& path);
    // True from keepIn() until the register is shown.
    bool isOpening() const { return _opening; }
    bool isReadOnly() const { return _readOnly; }
    // The password future saves encrypt with (empty: a plain file).
    void setPassword(const QString& password);
    // The register's money owner: the currency its amounts are in, kept in
    // its file, and the typing mode of its amount fields.
    wq::WQMoneyFormatterOwner& document() { return _document; }
    // What the register's dates show through, in the user's short date
    // format as the regional settings change.
    const std::shared_ptr<wq::WQDateFormatter>& dateFormatter() const { return _dates; }
    // Changes the register's currency (nothing: the system's settings as
    // they are now, recorded as the register's own) and keeps it.
    void setCurrency(const std::optional<QVariantMap>& currency);
    // Refusals of the field go to the presenter (the message line when there
    // is none) and to refusalShown.
    void watch(wq::WQLineEdit* field);
    using RefusalPresenter = std::function<void(wq::WQLineEdit& field, const QString& label, const QString& message)>;
    void setRefusalPresenter(RefusalPresenter presenter) { _presenter = std::move(presenter); }

    void showMessage(const QString& message);
    // A refusal in a cell of the register, shown as the entry row's are.
    void refuseInCell(const QModelIndex& index, const QString& message);
    // Starts editing the cell, or the row's date where the cell takes no typing.
    void editCell(const QModelIndex& index);
    wq::WQTableView& table() { return *_table; }
    // The register's rows: Date, Payee, Amount, Cleared, Balance.
    RegisterBook& rows() { return *_book; }
    RegisterBook& book() { return *_book; }
    // The column of panels beside the register (hidden while it has none).
    SidePanels& sidePanels() { return *_sidePanels; }
    // The text a field shows: line edits and spin boxes alike.
    static QString shownText(const QWidget* field);

public slots:
    // Tab in the order the window reads (again after the toolbar or the
    // panels change).
    void updateTabOrder();
    // Reads every field and, when all are valid and the date, payee and
    // amount are there, records the transaction in date order, empties the
    // payee and amount and puts the focus back on the date.
    bool enterTransaction();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

signals:
    void refusalShown(const QString& message);
    void readOnlyChanged(bool readOnly);
    // The register of keepIn() is shown (writable or read-only).
    void opened();
    // The register's currency changed (loaded, or chosen).
    void currencyChanged();

private:
    void _seed();
    void _refuse(wq::WQLineEdit* field, const QString& message);
    void _refuse(wq::WQLineEdit* field, const QString& label, const QString& message);
    QWidget* _fieldFor(const QString& column) const;
    void _askPassword(const QString& problem);
    void _open(const QString& password);
    void _show(const RegisterStore::Loaded& loaded);
    void _setReadOnly(const QString& notice);
    void _disableEditing();
    void _setStatus(const QString& status);
    void _save();
    // Waits for a save under way and writes what it did not: nothing is lost
    // when the window goes.
    void _saveBeforeClosing();

    wq::WQTableView* _table = nullptr;
    RegisterBook* _book = nullptr;
    QHBoxLayout* _options = nullptr;
    QPushButton* _enter = nullptr;
    std::unique_ptr<RegisterStore> _store;
    bool _writable = false;
    bool _readOnly = false;
    bool _opening = false;
    QString _password;
    QTimer _saveSoon;
    QFuture<void> _saving;        // the save under way on the thread pool, if any
    bool _saveAgain = false;      // changed while it ran
    QLabel* _notice = nullptr;    // why the register is read-only
    QLabel* _status = nullptr;    // opening, saving
    QList<QWidget*> _tabChain;
    SidePanels* _sidePanels = nullptr;
    QScrollArea* _panelsArea = nullptr;
    QWidget* _entryRow = nullptr;
    QHBoxLayout* _entryLayout = nullptr;
    QHBoxLayout* _buttons = nullptr;
    QLabel* _message = nullptr;
    struct Group {
        QWidget* field;
        QString column;
        QString label;
    };
    QList<Group> _groups;
    RefusalPresenter _presenter;
    // Before the formatters it hands out.
    wq::WQMoneyFormatterOwner _document;
    std::shared_ptr<wq::WQDateFormatter> _dates;
    std::shared_ptr<wq::WQMoneyFormatter> _amounts;
    wq::WQObservation _localeObservation{wq::WQNotificationCenter::distributedCenter()};
    wq::WQObservation _moneyObservation; // the application's centre
};

} // namespace showcase
