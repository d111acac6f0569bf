#include "RegisterBook.h"
#include "RegisterChange.h"
#include "ShowcaseText.h"

#include <QApplication>
#include <QPalette>

#include <algorithm>
#include <memory>

namespace showcase {
namespace {

// Changes that did something become a step of the history.
void keep(QUndoStack& history, std::unique_ptr<RegisterChange> change)
{
    if (!change->isEmpty())
        history.push(change.release());
}

QList<int> ascending(QList<int> rows)
{
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

} // namespace

RegisterBook::RegisterBook(DateText dateText, MoneyText moneyText, QObject* parent)
    : QAbstractTableModel(parent),
      _headers{QStringLiteral("Date"), QStringLiteral("Payee"), QStringLiteral("Amount"), QStringLiteral("Cleared"),
               QStringLiteral("Balance")},
      _dateText(std::move(dateText)), _moneyText(std::move(moneyText)),
      _negative(negativeColour(QApplication::palette()))
{
}

RegisterBook::~RegisterBook()
{
    // Its commands refer to the book.
    _history.clear();
}

QColor RegisterBook::negativeColour(const QPalette& palette)
{
    // A red that reads on the theme's base, light or dark.
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0xff, 0x80, 0x80) : QColor(0xb0, 0x00, 0x20);
}

int RegisterBook::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(_rows.size());
}

int RegisterBook::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant RegisterBook::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= _rows.size())
        return {};
    const Transaction& t = _rows[index.row()];
    const double balance = _balances[size_t(index.row())];
    switch (index.column()) {
    case DateColumn:
        if (role == Qt::DisplayRole)
            return _dateText(t.date);
        if (role == Qt::EditRole || role == kDateRole)
            return QVariant::fromValue(t.date);
        return {};
    case PayeeColumn:
        return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(t.payee) : QVariant();
    case AmountColumn:
        switch (role) {
        case Qt::DisplayRole:
            return t.amountText.isEmpty() ? _moneyText(t.amount) : t.amountText;
        case Qt::EditRole:
        case kAmountRole:
            return t.amount;
        case Qt::ForegroundRole:
            return t.amount < 0 ? QVariant(_negative) : QVariant();
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        default:
            return {};
        }
    case ClearedColumn:
        if (role == Qt::CheckStateRole)
            return t.cleared ? Qt::Checked : Qt::Unchecked;
        if (role == Qt::ToolTipRole)
            return t.cleared ? Text::tr("Cleared") : Text::tr("Not cleared");
        return {};
    case BalanceColumn:
        switch (role) {
        case Qt::DisplayRole:
            return _moneyText(balance);
        case Qt::ForegroundRole:
            return balance < 0 ? QVariant(_negative) : QVariant();
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        default:
            return {};
        }
    default:
        return {};
    }
}

Qt::ItemFlags RegisterBook::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid() || _readOnly)
        return flags;
    if (index.column() == ClearedColumn)
        return flags | Qt::ItemIsUserCheckable;
    if (index.column() != BalanceColumn)
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool RegisterBook::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || _readOnly || index.row() >= _rows.size())
        return false;
    const int row = index.row();
    Transaction t = _rows[row];
    QString what;
    switch (index.column()) {
    case DateColumn:
        if (role != Qt::EditRole)
            return false;
        if (value.metaType() == QMetaType::fromType<QDate>() && value.toDate().isValid())
            t.date = wq::WQDate::fromQDate(value.toDate());
        else if (value.metaType() == QMetaType::fromType<wq::WQDate>() && value.value<wq::WQDate>() != wq::WQDate())
            t.date = value.value<wq::WQDate>();
        else {
            emit editRefused(index, Text::tr("A transaction needs a date."));
            return false;
        }
        what = Text::tr("Edit Date");
        break;
    case PayeeColumn:
        if (role != Qt::EditRole)
            return false;
        t.payee = value.toString().trimmed();
        if (t.payee.isEmpty()) {
            emit editRefused(index, Text::tr("A transaction needs a payee."));
            return false;
        }
        what = Text::tr("Edit Payee");
        break;
    case AmountColumn: {
        bool number = false;
        const double amount = value.toDouble(&number);
        if (role != Qt::EditRole || !value.isValid() || !number) {
            emit editRefused(index, Text::tr("A transaction needs an amount."));
            return false;
        }
        // The same amount keeps the text it was typed in.
        if (amount != t.amount) {
            t.amount = amount;
            t.amountText.clear();
        }
        what = Text::tr("Edit Amount");
        break;
    }
    case ClearedColumn:
        if (role != Qt::CheckStateRole)
            return false;
        t.cleared = value.toInt() == Qt::Checked;
        what = t.cleared ? Text::tr("Mark Cleared") : Text::tr("Mark Uncleared");
        break;
    default:
        return false;
    }
    if (t != _rows[row])
        edit(row, t, what);
    return true;
}

QVariant RegisterBook::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 && section < _headers.size())
        return _headers[section];
    return QAbstractTableModel::headerData(section, orientation, role);
}

bool RegisterBook::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role)
{
    if (orientation != Qt::Horizontal || role != Qt::EditRole || section < 0 || section >= _headers.size())
        return false;
    _headers[section] = value.toString();
    emit headerDataChanged(orientation, section, section);
    return true;
}

void RegisterBook::setHorizontalHeaderLabels(const QStringList& labels)
{
    for (int section = 0; section < labels.size() && section < _headers.size(); ++section)
        setHeaderData(section, Qt::Horizontal, labels[section]);
}

bool RegisterBook::removeRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || _readOnly || row < 0 || count <= 0 || row + count > _rows.size())
        return false;
    QList<int> rows;
    for (int r = row; r < row + count; ++r)
        rows << r;
    remove(rows);
    return true;
}

int RegisterBook::add(const Transaction& transaction)
{
    auto change = std::make_unique<RegisterChange>(*this, Text::tr("Record Transaction"));
    const int row = _placeFor(transaction.date);
    change->insert(row, transaction);
    keep(_history, std::move(change));
    return row;
}

void RegisterBook::remove(QList<int> rows)
{
    rows = ascending(rows);
    auto change = std::make_unique<RegisterChange>(*this, Text::tr("Delete"));
    // From the bottom: the rows above keep their numbers.
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        if (*row >= 0 && *row < _rows.size())
            change->remove(*row);
    keep(_history, std::move(change));
}

QList<int> RegisterBook::duplicate(QList<int> rows)
{
    rows = ascending(rows);
    auto change = std::make_unique<RegisterChange>(*this, Text::tr("Duplicate"));
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        if (*row >= 0 && *row < _rows.size())
            change->insert(*row + 1, _rows[*row]);
    keep(_history, std::move(change));
    // Each copy sits below its original, pushed down by the copies above it.
    QList<int> copies;
    for (qsizetype k = 0; k < rows.size(); ++k)
        copies << rows[k] + int(k) + 1;
    return copies;
}

void RegisterBook::markCleared(const QList<int>& rows)
{
    auto change = std::make_unique<RegisterChange>(*this, Text::tr("Mark Cleared"));
    for (int row : ascending(rows))
        if (row >= 0 && row < _rows.size() && !_rows[row].cleared) {
            Transaction t = _rows[row];
            t.cleared = true;
            change->replace(row, t);
        }
    keep(_history, std::move(change));
}

int RegisterBook::edit(int row, const Transaction& transaction, const QString& what)
{
    auto change = std::make_unique<RegisterChange>(*this, what);
    const int to = change->replace(row, transaction);
    keep(_history, std::move(change));
    return to;
}

void RegisterBook::setTransactions(const QList<Transaction>& transactions)
{
    _history.clear();
    beginResetModel();
    const auto earlier = [](const Transaction& a, const Transaction& b) { return a.date < b.date; };
    // A saved register is in order already; any other is sorted by its
    // positions, which move cheaper than transactions.
    if (std::is_sorted(transactions.cbegin(), transactions.cend(), earlier)) {
        _rows = transactions;
    } else {
        // Day keys in date order (months and days below 32 each), the
        // position breaking ties as a stable sort would.
        std::vector<std::pair<qint64, qsizetype>> order;
        order.reserve(size_t(transactions.size()));
        for (qsizetype at = 0; at < transactions.size(); ++at) {
            const wq::WQDate& d = transactions[at].date;
            order.emplace_back(d.yearOfCommonEra() * 1024 + qint64(d.monthOfYear()) * 32 + qint64(d.dayOfMonth()), at);
        }
        std::sort(order.begin(), order.end());
        _rows.clear();
        _rows.reserve(transactions.size());
        for (const auto& [day, at] : order)
            _rows.append(transactions[at]);
    }
    _balances.assign(size_t(_rows.size()), 0);
    endResetModel();
    _rebalance(0);
}

void RegisterBook::render()
{
    _negative = negativeColour(QApplication::palette());
    if (!_rows.isEmpty())
        emit dataChanged(index(0, 0), index(int(_rows.size()) - 1, ColumnCount - 1));
}

void RegisterBook::setReadOnly(bool readOnly)
{
    if (readOnly == _readOnly)
        return;
    _readOnly = readOnly;
    _history.clear();
    if (!_rows.isEmpty())
        emit dataChanged(index(0, 0), index(int(_rows.size()) - 1, ColumnCount - 1));
}

void RegisterBook::_insert(int row, const Transaction& transaction)
{
    beginInsertRows(QModelIndex(), row, row);
    _rows.insert(row, transaction);
    _balances.insert(_balances.begin() + row, 0);
    endInsertRows();
    _rebalance(row);
}

void RegisterBook::_remove(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    _rows.removeAt(row);
    _balances.erase(_balances.begin() + row);
    endRemoveRows();
    _rebalance(row);
}

void RegisterBook::_replace(int from, int to, const Transaction& transaction)
{
    if (from != to) {
        beginMoveRows(QModelIndex(), from, from, QModelIndex(), to > from ? to + 1 : to);
        _rows.move(from, to);
        endMoveRows();
    }
    _rows[to] = transaction;
    emit dataChanged(index(to, 0), index(to, ClearedColumn));
    _rebalance(std::min(from, to));
}

int RegisterBook::_placeFor(const wq::WQDate& date, int except) const
{
    const auto after = std::upper_bound(_rows.cbegin(), _rows.cend(), date,
                                        [](const wq::WQDate& d, const Transaction& t) { return d < t.date; });
    const int place = int(after - _rows.cbegin());
    // Taking the row out first moves those below it up by one.
    return except >= 0 && except < place ? place - 1 : place;
}

void RegisterBook::_rebalance(int from)
{
    const int rows = int(_rows.size());
    double balance = from > 0 && from <= rows ? _balances[size_t(from - 1)] : 0;
    for (int row = std::max(from, 0); row < rows; ++row) {
        balance += _rows[row].amount;
        _balances[size_t(row)] = balance;
    }
    if (from < rows)
        emit dataChanged(index(std::max(from, 0), BalanceColumn), index(rows - 1, BalanceColumn),
                         {Qt::DisplayRole, Qt::ForegroundRole});
    emit changed();
}

} // namespace showcase
