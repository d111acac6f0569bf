#include "RegisterBook.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>

namespace showcase {

RegisterBook::RegisterBook(DateText dateText, MoneyText moneyText, QObject* parent)
    : QObject(parent), _model(0, ColumnCount), _dateText(std::move(dateText)), _moneyText(std::move(moneyText))
{
    _model.setHorizontalHeaderLabels(
        {QStringLiteral("Date"), QStringLiteral("Payee"), QStringLiteral("Amount"), QStringLiteral("Balance")});
    // Rows come and go through the book and through the table's own menu
    // (delete, duplicate, mark cleared): the balance follows either way.
    connect(&_model, &QStandardItemModel::rowsInserted, this, &RegisterBook::_refresh);
    connect(&_model, &QStandardItemModel::rowsRemoved, this, &RegisterBook::_refresh);
    connect(&_model, &QStandardItemModel::rowsMoved, this, &RegisterBook::_refresh);
    connect(&_model, &QStandardItemModel::dataChanged, this, &RegisterBook::_refresh);
}

QColor RegisterBook::negativeColour(const QPalette& palette)
{
    // A red that reads on the theme's base, light or dark.
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0xff, 0x80, 0x80) : QColor(0xb0, 0x00, 0x20);
}

QList<QStandardItem*> RegisterBook::_items(const Transaction& t) const
{
    auto* date = new QStandardItem;
    date->setData(QVariant::fromValue(t.date), kDateRole);
    date->setCheckable(t.cleared);
    if (t.cleared)
        date->setCheckState(Qt::Checked);
    if (_readOnly)
        date->setFlags(date->flags() & ~Qt::ItemIsUserCheckable);
    auto* amount = new QStandardItem(t.amountText);
    amount->setData(t.amount, kAmountRole);
    amount->setData(!t.amountText.isEmpty(), kAmountRole + 1);
    amount->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* balance = new QStandardItem;
    balance->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return {date, new QStandardItem(t.payee), amount, balance};
}

int RegisterBook::add(const Transaction& transaction)
{
    int row = _model.rowCount();
    while (row > 0 && at(row - 1).date > transaction.date)
        --row;
    _model.insertRow(row, _items(transaction));
    return row;
}

Transaction RegisterBook::at(int row) const
{
    Transaction t;
    if (const QStandardItem* date = _model.item(row, DateColumn)) {
        t.date = date->data(kDateRole).value<wq::WQDate>();
        // The state, not the flag: a read-only book's boxes cannot be clicked.
        t.cleared = date->data(Qt::CheckStateRole).isValid() && date->checkState() == Qt::Checked;
    }
    if (const QStandardItem* payee = _model.item(row, PayeeColumn))
        t.payee = payee->text();
    if (const QStandardItem* amount = _model.item(row, AmountColumn)) {
        t.amount = amount->data(kAmountRole).toDouble();
        if (amount->data(kAmountRole + 1).toBool())
            t.amountText = amount->text();
    }
    return t;
}

QList<Transaction> RegisterBook::transactions() const
{
    QList<Transaction> all;
    all.reserve(_model.rowCount());
    for (int row = 0; row < _model.rowCount(); ++row)
        all << at(row);
    return all;
}

void RegisterBook::setTransactions(const QList<Transaction>& transactions)
{
    // One refresh for the lot.
    _refreshing = true;
    _model.removeRows(0, _model.rowCount());
    QList<Transaction> sorted = transactions;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Transaction& a, const Transaction& b) { return a.date < b.date; });
    for (const Transaction& t : sorted)
        _model.appendRow(_items(t));
    _refreshing = false;
    _refresh();
}

void RegisterBook::render()
{
    _refresh();
}

void RegisterBook::setReadOnly(bool readOnly)
{
    _readOnly = readOnly;
    for (int row = 0; row < _model.rowCount(); ++row)
        if (QStandardItem* date = _model.item(row, DateColumn); date && date->data(Qt::CheckStateRole).isValid())
            date->setFlags(readOnly ? date->flags() & ~Qt::ItemIsUserCheckable : date->flags() | Qt::ItemIsUserCheckable);
}

void RegisterBook::_refresh()
{
    if (_refreshing)
        return;
    _refreshing = true;
    const QColor negative = negativeColour(QApplication::palette());
    const auto paint = [&negative](QStandardItem* item, double value) {
        item->setData(value < 0 ? QVariant(negative) : QVariant(), Qt::ForegroundRole);
    };
    double balance = 0;
    for (int row = 0; row < _model.rowCount(); ++row) {
        if (QStandardItem* date = _model.item(row, DateColumn))
            date->setText(_dateText(date->data(kDateRole).value<wq::WQDate>()));
        QStandardItem* amount = _model.item(row, AmountColumn);
        const double value = amount ? amount->data(kAmountRole).toDouble() : 0;
        if (amount) {
            if (!amount->data(kAmountRole + 1).toBool())
                amount->setText(_moneyText(value));
            paint(amount, value);
        }
        balance += value;
        QStandardItem* shown = _model.item(row, BalanceColumn);
        if (!shown) {
            shown = new QStandardItem;
            shown->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            _model.setItem(row, BalanceColumn, shown);
        }
        shown->setText(_moneyText(balance));
        paint(shown, balance);
    }
    _refreshing = false;
    emit changed();
}

} // namespace showcase
