#pragma once
// The register's transactions as the table shows them: kept in date order
// (a new one goes after those of its day), with a running balance and
// negative amounts in the negative colour. Every change a user makes goes
// through the book's history, so it can be undone.

#include <WQGeneral/dates/WQDate.h>

#include <QAbstractTableModel>
#include <QColor>
#include <QUndoStack>

#include <functional>
#include <vector>

namespace showcase {

struct Transaction {
    wq::WQDate date;
    QString payee;
    double amount = 0;
    // The text as typed in a document's currency; empty: shown in the
    // system's currency.
    QString amountText;
    bool cleared = false;

    friend bool operator==(const Transaction&, const Transaction&) = default;
};

class RegisterChange;

class RegisterBook : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { DateColumn, PayeeColumn, AmountColumn, ClearedColumn, BalanceColumn, ColumnCount };
    static constexpr int kDateRole = Qt::UserRole + 1;
    static constexpr int kAmountRole = Qt::UserRole + 2;

    using DateText = std::function<QString(const wq::WQDate&)>;
    using MoneyText = std::function<QString(double)>;
    RegisterBook(DateText dateText, MoneyText moneyText, QObject* parent = nullptr);
    ~RegisterBook() override;

    // The table's model is the book itself.
    RegisterBook& model() { return *this; }
    const RegisterBook& model() const { return *this; }

    // Each change below is one step of the history, named for Undo and Redo.
    QUndoStack& history() { return _history; }

    // Records a transaction after the last one dated on or before it; the row.
    int add(const Transaction& transaction);
    // Removes the rows.
    void remove(QList<int> rows);
    // Copies each row below itself; the copies' rows.
    QList<int> duplicate(QList<int> rows);
    void markCleared(const QList<int>& rows);
    // Puts the transaction in the row's place, which moves in date order
    // when the date changed; the row it went to.
    int edit(int row, const Transaction& transaction, const QString& what);

    Transaction at(int row) const { return _rows.value(row); }
    const QList<Transaction>& transactions() const { return _rows; }
    // A new register (opened, or the sample): no history.
    void setTransactions(const QList<Transaction>& transactions);
    // Texts again, after a change of regional settings.
    void render();
    // A read-only book takes no changes from the table.
    void setReadOnly(bool readOnly);
    // The colour of negative amounts against a palette's base.
    static QColor negativeColour(const QPalette& palette);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Date, payee and amount (edit role) and the cleared box (check state),
    // each an undoable edit; a blank payee is refused.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role = Qt::EditRole) override;
    void setHorizontalHeaderLabels(const QStringList& labels);
    // Deletes, undoably.
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;

signals:
    // Any change of the transactions (added, removed, edited, undone).
    void changed();
    // An edit in the table was not taken, and why.
    void editRefused(const QModelIndex& index, const QString& message);

private:
    friend class RegisterChange;
    // The steps a change is made of, without history.
    void _insert(int row, const Transaction& transaction);
    void _remove(int row);
    void _replace(int from, int to, const Transaction& transaction);
    // Where a transaction dated date goes: after those of its day, the row
    // except (if any) taken out first.
    int _placeFor(const wq::WQDate& date, int except = -1) const;
    // The balances from the row down, announced as one range.
    void _rebalance(int from);

    QList<Transaction> _rows;
    std::vector<double> _balances;
    QStringList _headers;
    DateText _dateText;
    MoneyText _moneyText;
    QColor _negative;
    bool _readOnly = false;
    QUndoStack _history;
};

} // namespace showcase
