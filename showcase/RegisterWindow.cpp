#include "RegisterWindow.h"

#include "SidePanels.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/money/WQMoneyConstants.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QAbstractSpinBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

namespace showcase {
namespace {

constexpr int kDateRole = Qt::UserRole + 1;
constexpr int kAmountRole = Qt::UserRole + 2;
const QStringList kColumns = {QStringLiteral("Date"), QStringLiteral("Payee"), QStringLiteral("Amount")};

} // namespace

RegisterWindow::RegisterWindow()
    : _dates(std::make_unique<wq::WQDateFormatter>(wq::WQDateFormatter::shortDateFormat())),
      _amounts(wq::WQMoneyFormatter::moneyFormatterForDelegate(nullptr, 2))
{
    setWindowTitle(QStringLiteral("WQGeneral showcase: Checking"));
    auto* layout = new QVBoxLayout(this);
    _message = new QLabel(this);
    _message->setStyleSheet(QStringLiteral("color: #b00020;"));

    _rows = new QStandardItemModel(0, int(kColumns.size()), this);
    _rows->setHorizontalHeaderLabels(kColumns);
    _table = new wq::WQTableView(this);
    _table->setModel(_rows);
    _table->horizontalHeader()->setStretchLastSection(true);
    _table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    _table->verticalHeader()->hide();
    _table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    _table->setSelectionBehavior(QAbstractItemView::SelectRows);
    _sidePanels = new SidePanels(this);
    auto* registerRow = new QHBoxLayout;
    registerRow->addWidget(_table, 1);
    registerRow->addWidget(_sidePanels);
    layout->addLayout(registerRow, 1);

    _entryRow = new QWidget(this);
    _entryLayout = new QHBoxLayout(_entryRow);
    _entryLayout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_entryRow);

    auto* payee = new wq::WQLineEdit(_entryRow);
    payee->setObjectName(QStringLiteral("payee"));
    payee->setPlaceholderText(QStringLiteral("Payee"));
    addFieldGroup(QStringLiteral("Payee"), payee, QStringLiteral("Payee"));

    _buttons = new QHBoxLayout;
    auto* buttons = _buttons;
    buttons->addWidget(_message, 1);
    auto* enter = new QPushButton(QStringLiteral("Enter"), this);
    enter->setAutoDefault(false);
    connect(enter, &QPushButton::clicked, this, &RegisterWindow::enterTransaction);
    buttons->addWidget(enter);
    layout->addLayout(buttons);

    _seed();
    // Rows show their dates in the user's current short format.
    _localeObservation.observe(wq::kWQNotif_CurrentLocaleDidChange, nullptr, [this](const wq::WQNotification&) {
        _dates->setDateFormat(wq::WQDateFormatter::shortDateFormat());
        _renderDates();
    });
    // The system money formatter re-reads its settings a moment after a
    // change and then announces it.
    _moneyObservation.observe(wq::kWQNotif_MoneyFormatterChanged, _amounts.get(),
                               [this](const wq::WQNotification&) { _renderDates(); });
}

RegisterWindow::~RegisterWindow() = default;

void RegisterWindow::_seed()
{
    struct Row {
        wq::WQDate date;
        const char* payee;
        double amount;
    };
    const Row rows[] = {
        {wq::WQDate(2026, 3, 2), "Opening balance", 2500.00},
        {wq::WQDate(2026, 3, 5), "Corner Grocery", -84.17},
        {wq::WQDate(2026, 3, 9), "City Power & Light", -61.40},
        {wq::WQDate(2026, 3, 12), "Paycheck", 1912.55},
    };
    for (const Row& row : rows) {
        const int r = _rows->rowCount();
        _rows->insertRow(r);
        auto* date = new QStandardItem;
        date->setData(QVariant::fromValue(row.date), kDateRole);
        _rows->setItem(r, 0, date);
        _rows->setItem(r, 1, new QStandardItem(QString::fromUtf8(row.payee)));
        auto* amount = new QStandardItem;
        amount->setData(row.amount, kAmountRole);
        amount->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        _rows->setItem(r, 2, amount);
    }
    _renderDates();
}

void RegisterWindow::_renderDates()
{
    for (int r = 0; r < _rows->rowCount(); ++r) {
        QStandardItem* item = _rows->item(r, 0);
        if (item && item->data(kDateRole).isValid())
            item->setText(_dates->stringForObjectValue(item->data(kDateRole)).value_or(QString()));
        // Seeded amounts are in the system's currency; entered ones keep the
        // text of the document's currency they were typed in.
        QStandardItem* amount = _rows->item(r, 2);
        if (amount && amount->data(kAmountRole).isValid())
            amount->setText(_amounts->stringForObjectValue(amount->data(kAmountRole)).value_or(QString()));
    }
}

void RegisterWindow::addFieldGroup(const QString& label, QWidget* field, const QString& column, int place)
{
    auto* group = new QWidget(_entryRow);
    auto* layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto* caption = new QLabel(label, group);
    caption->setStyleSheet(QStringLiteral("color: #555; font-size: 11px;"));
    layout->addWidget(caption);
    field->setParent(group);
    layout->addWidget(field);
    _entryLayout->insertWidget(place, group, field->objectName() == QStringLiteral("payee") ? 2 : 1);
    _groups.append({field, column, label});
    if (auto* lineEdit = qobject_cast<wq::WQLineEdit*>(field))
        watch(lineEdit);
}

void RegisterWindow::addButton(QWidget* button)
{
    // After the message line, before Enter.
    button->setParent(this);
    _buttons->insertWidget(_buttons->count() - 1, button);
}

void RegisterWindow::watch(wq::WQLineEdit* field)
{
    if (field->property("showcaseWatched").toBool())
        return;
    field->setProperty("showcaseWatched", true);
    connect(field, &wq::WQLineEdit::editRefused, this, [this, field](const QString& m) { _refuse(field, m); });
    connect(field, &wq::WQLineEdit::valueRefused, this, [this, field](const QString& m) { _refuse(field, m); });
    // The complaint goes once the field takes an edit or a value again.
    connect(field, &wq::WQLineEdit::refusalCleared, _message, &QLabel::clear);
}

void RegisterWindow::_refuse(wq::WQLineEdit* field, const QString& message)
{
    if (!_presenter || message.isEmpty()) {
        showMessage(message);
        return;
    }
    QString label = field->objectName();
    for (const Group& group : std::as_const(_groups))
        if (group.field == field)
            label = group.label;
    emit refusalShown(message);
    _presenter(*field, label, message);
}

void RegisterWindow::showMessage(const QString& message)
{
    _message->setText(message);
    if (!message.isEmpty())
        emit refusalShown(message);
}

QString RegisterWindow::shownText(const QWidget* field)
{
    if (const auto* lineEdit = qobject_cast<const QLineEdit*>(field))
        return lineEdit->text();
    if (const auto* spin = qobject_cast<const QAbstractSpinBox*>(field))
        return spin->text();
    return QString();
}

bool RegisterWindow::enterTransaction()
{
    for (const Group& group : _groups) {
        if (auto* lineEdit = qobject_cast<wq::WQLineEdit*>(group.field); lineEdit && !lineEdit->validateEditing()) {
            lineEdit->setFocus();
            return false;
        }
    }
    const int r = _rows->rowCount();
    _rows->insertRow(r);
    for (const Group& group : _groups) {
        const int column = int(kColumns.indexOf(group.column));
        if (column < 0)
            continue;
        auto* item = new QStandardItem(shownText(group.field));
        if (const auto* lineEdit = qobject_cast<const wq::WQLineEdit*>(group.field))
            if (const std::optional<wq::WQDate> date = wq::WQDateValue(*lineEdit))
                item->setData(QVariant::fromValue(*date), kDateRole);
        if (column == 2)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        _rows->setItem(r, column, item);
    }
    _table->scrollToBottom();
    _message->clear();
    return true;
}

} // namespace showcase
