#pragma once
// The register's transactions as the table shows them: kept in date order
// (a new one goes after those of its day), with a running balance and
// negative amounts in the negative colour.

#include <WQGeneral/dates/WQDate.h>

#include <QObject>
#include <QStandardItemModel>

#include <functional>

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

class RegisterBook : public QObject {
    Q_OBJECT
public:
    enum Column { DateColumn, PayeeColumn, AmountColumn, BalanceColumn, ColumnCount };
    static constexpr int kDateRole = Qt::UserRole + 1;
    static constexpr int kAmountRole = Qt::UserRole + 2;

    using DateText = std::function<QString(const wq::WQDate&)>;
    using MoneyText = std::function<QString(double)>;
    RegisterBook(DateText dateText, MoneyText moneyText, QObject* parent = nullptr);

    QStandardItemModel& model() { return _model; }
    const QStandardItemModel& model() const { return _model; }

    // Inserts after the last transaction dated on or before it; the row.
    int add(const Transaction& transaction);
    Transaction at(int row) const;
    QList<Transaction> transactions() const;
    void setTransactions(const QList<Transaction>& transactions);
    // Texts again, after a change of regional settings.
    void render();
    // A read-only book's rows cannot be marked cleared or uncleared in the table.
    void setReadOnly(bool readOnly);
    // The colour of negative amounts against a palette's base.
    static QColor negativeColour(const QPalette& palette);

signals:
    // Any change of the transactions (added, removed, duplicated, cleared).
    void changed();

private:
    QList<QStandardItem*> _items(const Transaction& transaction) const;
    void _refresh();

    QStandardItemModel _model;
    DateText _dateText;
    MoneyText _moneyText;
    bool _refreshing = false;
    bool _readOnly = false;
};

} // namespace showcase
