#pragma once
// The showcase's window: a register of transactions with side panels beside
// it, above an entry row of labelled fields, an Enter button that records the
// row, and a message line for refusals unless a feature shows them another
// way (alert sheets).

#include <WQGeneral/platform/WQNotificationCenter.h>

#include <WQGeneral/views/WQTableView.h>

#include <QLabel>
#include <QStandardItemModel>
#include <QWidget>

#include <functional>
#include <memory>

class QHBoxLayout;

namespace wq {
class WQLineEdit;
class WQDateFormatter;
class WQMoneyFormatter;
} // namespace wq

namespace showcase {

class SidePanels;

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
    // Refusals of the field go to the presenter (the message line when there
    // is none) and to refusalShown.
    void watch(wq::WQLineEdit* field);
    using RefusalPresenter = std::function<void(wq::WQLineEdit& field, const QString& label, const QString& message)>;
    void setRefusalPresenter(RefusalPresenter presenter) { _presenter = std::move(presenter); }

    void showMessage(const QString& message);
    wq::WQTableView& table() { return *_table; }
    // The register's rows: Date, Payee, Amount.
    QStandardItemModel& rows() { return *_rows; }
    // The column of panels beside the register (hidden while it has none).
    SidePanels& sidePanels() { return *_sidePanels; }
    // The text a field shows: line edits and spin boxes alike.
    static QString shownText(const QWidget* field);

public slots:
    // Reads every field and, when all are valid, adds the row.
    bool enterTransaction();

signals:
    void refusalShown(const QString& message);

private:
    void _seed();
    void _renderDates();
    void _refuse(wq::WQLineEdit* field, const QString& message);

    wq::WQTableView* _table = nullptr;
    QStandardItemModel* _rows = nullptr;
    SidePanels* _sidePanels = nullptr;
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
