#pragma once
// The showcase's window: a register of transactions with side panels beside
// it, above an entry row of labelled fields, an Enter button that records the
// row, and a message line for refusals unless a feature shows them another
// way (alert sheets).

#include <WQGeneral/platform/WQNotificationCenter.h>

#include <WQGeneral/views/WQTableView.h>

#include "RegisterBook.h"

#include <QLabel>
#include <QStandardItemModel>
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
class RegisterStore;

class RegisterWindow : public QWidget {
    Q_OBJECT
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
    // Keeps the register in the file at path between runs; asks for the
    // password of an encrypted one. False when it cannot be written (another
    // instance has it, or it could not be read); the window then says so.
    bool keepIn(const QString& path);
    // The password future saves encrypt with (empty: a plain file).
    void setPassword(const QString& password);
    // Refusals of the field go to the presenter (the message line when there
    // is none) and to refusalShown.
    void watch(wq::WQLineEdit* field);
    using RefusalPresenter = std::function<void(wq::WQLineEdit& field, const QString& label, const QString& message)>;
    void setRefusalPresenter(RefusalPresenter presenter) { _presenter = std::move(presenter); }

    void showMessage(const QString& message);
    wq::WQTableView& table() { return *_table; }
    // The register's rows: Date, Payee, Amount, Balance.
    QStandardItemModel& rows() { return _book->model(); }
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

private:
    void _seed();
    void _refuse(wq::WQLineEdit* field, const QString& message);
    QWidget* _fieldFor(const QString& column) const;
    void _save();

    wq::WQTableView* _table = nullptr;
    RegisterBook* _book = nullptr;
    QHBoxLayout* _options = nullptr;
    QPushButton* _enter = nullptr;
    std::unique_ptr<RegisterStore> _store;
    bool _writable = false;
    QString _password;
    QTimer _saveSoon;
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
    std::unique_ptr<wq::WQDateFormatter> _dates;
    std::shared_ptr<wq::WQMoneyFormatter> _amounts;
    wq::WQObservation _localeObservation{wq::WQNotificationCenter::distributedCenter()};
    wq::WQObservation _moneyObservation; // the application's centre
};

} // namespace showcase
