#include "RegisterWindow.h"

#include "RegisterPasswordDialog.h"
#include "RegisterStore.h"
#include "SidePanels.h"

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/datefields/WQDateFields.h>
#include <WQGeneral/fields/WQLineEdit.h>
#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/money/WQMoneyConstants.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QAbstractSpinBox>
#include <QCloseEvent>
#include <QDateEdit>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace showcase {
namespace {

// A caption's text with an Alt-letter: its first letter not yet taken.
QString withMnemonic(const QString& label, QSet<QChar>& taken)
{
    for (qsizetype i = 0; i < label.size(); ++i) {
        const QChar c = label[i].toLower();
        if (c.isLetter() && !taken.contains(c)) {
            taken.insert(c);
            return label.left(i) + u'&' + label.mid(i);
        }
    }
    return label;
}

// Letters the window's menus and buttons already answer to.
void takeMnemonics(const QString& text, QSet<QChar>& taken)
{
    const qsizetype at = text.indexOf(u'&');
    if (at >= 0 && at + 1 < text.size())
        taken.insert(text[at + 1].toLower());
}

} // namespace

RegisterWindow::RegisterWindow()
    : _dates(std::make_unique<wq::WQDateFormatter>(wq::WQDateFormatter::shortDateFormat())),
      _amounts(_document.moneyFormatter(2))
{
    setWindowTitle(QStringLiteral("WQGeneral showcase: Checking"));
    auto* layout = new QVBoxLayout(this);
    _message = new QLabel(this);
    _message->setStyleSheet(QStringLiteral("color: #b00020;"));
    _message->setWordWrap(true);

    _book = new RegisterBook(
        [this](const wq::WQDate& date) { return _dates->stringForObjectValue(QVariant::fromValue(date)).value_or(QString()); },
        [this](double amount) { return _amounts->stringForObjectValue(amount).value_or(QString()); }, this);
    _table = new wq::WQTableView(this);
    _table->setObjectName(QStringLiteral("register"));
    _table->setAccessibleName(QStringLiteral("Register"));
    _table->setAccessibleDescription(QStringLiteral("The transactions in date order, with the running balance"));
    _table->setModel(&_book->model());
    // The payee takes what the window gives; the others fit their texts.
    QHeaderView* header = _table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(RegisterBook::PayeeColumn, QHeaderView::Stretch);
    _table->verticalHeader()->hide();
    _table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    _table->setSelectionBehavior(QAbstractItemView::SelectRows);
    _table->setMinimumWidth(320);

    // Stays in view while the register cannot take changes.
    _notice = new QLabel(this);
    _notice->setObjectName(QStringLiteral("registerNotice"));
    _notice->setAccessibleName(QStringLiteral("Register notice"));
    _notice->setWordWrap(true);
    _notice->setStyleSheet(QStringLiteral("background: #fff4ce; color: #3b2f00; padding: 4px;"));
    _notice->hide();
    layout->addWidget(_notice);

    _options = new QHBoxLayout;
    _options->addStretch(1);
    // Opening, saving: at the top, where it is seen whatever the window's height.
    _status = new QLabel(this);
    _status->setObjectName(QStringLiteral("registerStatus"));
    _status->setStyleSheet(QStringLiteral("color: #555;"));
    _options->addWidget(_status);
    layout->addLayout(_options);

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
    payee->setToolTip(QStringLiteral("Who was paid, or who paid"));
    payee->setMinimumWidth(payee->fontMetrics().horizontalAdvance(QStringLiteral("City Power & Light")) + 12);
    addFieldGroup(QStringLiteral("Payee"), payee, QStringLiteral("Payee"));

    _buttons = new QHBoxLayout;
    _buttons->addWidget(_message, 1);
    _enter = new QPushButton(QStringLiteral("&Enter"), this);
    _enter->setObjectName(QStringLiteral("enter"));
    _enter->setAutoDefault(false);
    _enter->setAccessibleDescription(QStringLiteral("Records the transaction of the entry row"));
    connect(_enter, &QPushButton::clicked, this, &RegisterWindow::enterTransaction);
    _buttons->addWidget(_enter);
    layout->addLayout(_buttons);

    _seed();
    // Rows show their dates in the user's current short format.
    _localeObservation.observe(wq::kWQNotif_CurrentLocaleDidChange, nullptr, [this](const wq::WQNotification&) {
        _dates->setDateFormat(wq::WQDateFormatter::shortDateFormat());
        _book->render();
    });
    // The register's money formatter re-reads its settings a moment after a
    // change of the system's (or at once, of the register's) and announces it.
    _moneyObservation.observe(wq::kWQNotif_MoneyFormatterChanged, _amounts.get(),
                              [this](const wq::WQNotification&) { _book->render(); });

    // Changes reach the file in one write, a moment after the last.
    _saveSoon.setSingleShot(true);
    _saveSoon.setInterval(250);
    connect(&_saveSoon, &QTimer::timeout, this, &RegisterWindow::_save);
    connect(_book, &RegisterBook::changed, this, [this] {
        if (_writable)
            _saveSoon.start();
    });
}

RegisterWindow::~RegisterWindow()
{
    _saveBeforeClosing();
    // The fields hold formatters of the register's money owner, which goes
    // before the base class deletes them: they go first.
    delete _entryRow;
}

void RegisterWindow::_seed()
{
    _book->setTransactions({
        {wq::WQDate(2026, 3, 2), QStringLiteral("Opening balance"), 2500.00, QString(), true},
        {wq::WQDate(2026, 3, 5), QStringLiteral("Corner Grocery"), -84.17, QString(), false},
        {wq::WQDate(2026, 3, 9), QStringLiteral("City Power & Light"), -61.40, QString(), false},
        {wq::WQDate(2026, 3, 12), QStringLiteral("Paycheck"), 1912.55, QString(), false},
    });
}

void RegisterWindow::addFieldGroup(const QString& label, QWidget* field, const QString& column, int place)
{
    auto* group = new QWidget(_entryRow);
    auto* layout = new QVBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto* caption = new QLabel(label, group);
    caption->setObjectName(QStringLiteral("caption"));
    caption->setStyleSheet(QStringLiteral("color: #555; font-size: 11px;"));
    layout->addWidget(caption);
    field->setParent(group);
    layout->addWidget(field);
    _entryLayout->insertWidget(place, group, field->objectName() == QStringLiteral("payee") ? 2 : 1);
    _groups.append({field, column, label});
    field->installEventFilter(this);
    if (auto* lineEdit = qobject_cast<wq::WQLineEdit*>(field))
        watch(lineEdit);
}

void RegisterWindow::addOption(const QString& label, QWidget* control)
{
    auto* caption = new QLabel(label + u':', this);
    caption->setObjectName(QStringLiteral("caption"));
    control->setParent(this);
    // Before the stretch that keeps the status at the right.
    const auto beforeStretch = [this] { return _options->indexOf(_status) - 1; };
    _options->insertWidget(beforeStretch(), caption);
    _options->insertWidget(beforeStretch(), control);
    _options->insertSpacing(beforeStretch(), 12);
    _groups.append({control, QString(), label});
}

void RegisterWindow::addButton(QWidget* button)
{
    // After the message line, before Enter.
    button->setParent(this);
    _buttons->insertWidget(_buttons->count() - 1, button);
}

void RegisterWindow::finishEntryRow()
{
    QSet<QChar> taken;
    for (const QMenuBar* bar : findChildren<QMenuBar*>())
        for (const QAction* menu : bar->actions())
            takeMnemonics(menu->text(), taken);
    for (const QAbstractButton* button : findChildren<QAbstractButton*>())
        takeMnemonics(button->text(), taken);

    // The focusable widget of each group as it stands now (a date picker may
    // have taken its field's place).
    const auto shownWidget = [](QWidget* field) -> QWidget* {
        if (field->isHidden())
            if (auto* picker = qobject_cast<QDateEdit*>(field->parentWidget()))
                return picker;
        return field;
    };

    // The options above the register, then the entry row left to right,
    // then the buttons: the order the eye reads them.
    QList<QWidget*> chain;
    for (int i = 0; i < _options->count(); ++i)
        if (QWidget* w = _options->itemAt(i)->widget(); w && w->focusPolicy() & Qt::TabFocus)
            chain << w;
    for (int i = 0; i < _entryLayout->count(); ++i) {
        QWidget* container = _entryLayout->itemAt(i)->widget();
        for (const Group& group : std::as_const(_groups))
            if (group.field->parentWidget() == container || (group.field->parentWidget()
                                                             && group.field->parentWidget()->parentWidget() == container))
                chain << shownWidget(group.field);
    }
    for (int i = 0; i < _buttons->count(); ++i)
        if (QWidget* w = _buttons->itemAt(i)->widget(); w && w->focusPolicy() & Qt::TabFocus)
            chain << w;
    for (qsizetype i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain[i - 1], chain[i]);
    _tabChain = chain;

    for (const Group& group : std::as_const(_groups)) {
        QWidget* field = shownWidget(group.field);
        QLabel* caption = nullptr;
        for (QLabel* label : findChildren<QLabel*>(QStringLiteral("caption")))
            if (label->text() == group.label || label->text() == group.label + u':')
                caption = label;
        if (caption) {
            caption->setText(withMnemonic(caption->text(), taken));
            caption->setBuddy(field);
        }
        if (field != group.field)
            field->installEventFilter(this);
        field->setAccessibleName(group.label);
        if (field->accessibleDescription().isEmpty())
            field->setAccessibleDescription(!group.field->toolTip().isEmpty()
                                                ? group.field->toolTip()
                                                : QStringLiteral("%1 of the transaction; Return records it").arg(group.label));
    }
    // Nothing narrower than what the fields need.
    setMinimumSize(layout()->totalMinimumSize());
}

bool RegisterWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    // A date picker steps through its sections with Tab; in the entry row
    // Tab goes to the next field, as everywhere else (arrows pick sections).
    if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) && qobject_cast<QDateEdit*>(watched)) {
        const bool back = key->key() == Qt::Key_Backtab || (key->modifiers() & Qt::ShiftModifier);
        const qsizetype at = _tabChain.indexOf(static_cast<QWidget*>(watched));
        for (qsizetype i = at + (back ? -1 : 1); at >= 0 && i >= 0 && i < _tabChain.size(); i += back ? -1 : 1)
            if (_tabChain[i]->isVisible() && _tabChain[i]->isEnabled()) {
                _tabChain[i]->setFocus(back ? Qt::BacktabFocusReason : Qt::TabFocusReason);
                return true;
            }
        return QWidget::eventFilter(watched, event);
    }
    if ((key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
        || (key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return QWidget::eventFilter(watched, event);
    // Return records the row, as Enter does (a refused field keeps it).
    enterTransaction();
    return true;
}

QWidget* RegisterWindow::_fieldFor(const QString& column) const
{
    for (const Group& group : _groups)
        if (group.column == column)
            return group.field;
    return nullptr;
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
    if (_readOnly || _opening)
        return false;
    auto* dateField = qobject_cast<wq::WQLineEdit*>(_fieldFor(QStringLiteral("Date")));
    auto* payeeField = qobject_cast<wq::WQLineEdit*>(_fieldFor(QStringLiteral("Payee")));
    auto* amountField = qobject_cast<wq::WQLineEdit*>(_fieldFor(QStringLiteral("Amount")));
    // Judged before the fields commit, which would turn a blank amount (or
    // a lone currency symbol) into 0.
    const bool noAmount = !amountField
                          || std::none_of(amountField->text().cbegin(), amountField->text().cend(),
                                          [](QChar c) { return c.isDigit(); });
    for (const Group& group : _groups) {
        if (auto* lineEdit = qobject_cast<wq::WQLineEdit*>(group.field); lineEdit && !lineEdit->validateEditing()) {
            lineEdit->setFocus();
            return false;
        }
    }
    const std::optional<wq::WQDate> date = dateField ? wq::WQDateValue(*dateField) : std::nullopt;
    const QString payee = payeeField ? payeeField->text().trimmed() : QString();
    const QVariant amount = amountField ? amountField->objectValue() : QVariant();

    QStringList missing;
    if (!date)
        missing << QStringLiteral("date");
    if (payee.isEmpty())
        missing << QStringLiteral("payee");
    // A zero amount records nothing either.
    if (noAmount || !amount.isValid() || amount.toDouble() == 0)
        missing << QStringLiteral("amount");
    if (!missing.isEmpty()) {
        showMessage(QStringLiteral("To record a transaction, fill in the %1.").arg(missing.join(QStringLiteral(" and "))));
        return false;
    }

    // Amounts typed in a document's currency keep the text they were typed in.
    const QString typed = amountField->text();
    const QString system = _amounts->stringForObjectValue(amount.toDouble()).value_or(QString());
    const int row = _book->add({*date, payee, amount.toDouble(), typed == system ? QString() : typed, false});
    _table->selectRow(row);
    _table->scrollTo(_book->model().index(row, 0));
    _message->clear();

    payeeField->setObjectValue(QString());
    amountField->setObjectValue(QVariant());
    dateField->setFocus();
    dateField->selectAll();
    return true;
}

void RegisterWindow::keepIn(const QString& path)
{
    _store = std::make_unique<RegisterStore>(path);
    _writable = _store->lock();
    // The sample rows are no part of a register that exists: none are shown
    // while it opens (or if it is not opened at all).
    if (QFile::exists(path))
        _book->setTransactions({});
    _saveSoon.stop();   // nothing to keep from that
    if (_store->isEncrypted())
        _askPassword(QString());
    else
        _open(QString());
}

void RegisterWindow::_askPassword(const QString& problem)
{
    _opening = true;
    _entryRow->setEnabled(false);
    _setStatus(QStringLiteral("Opening the register\u2026"));
    auto* dialog = new RegisterPasswordDialog(RegisterPasswordDialog::Purpose::Open, problem, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { _open(dialog->password()); });
    connect(dialog, &QDialog::rejected, this, [this] {
        _opening = false;
        _setStatus(QString());
        // Never write over a file that could not be read.
        _writable = false;
        _setReadOnly(QStringLiteral("The register was not opened; the file was left as it is, and changes here "
                                    "are not kept."));
        emit opened();
    });
    dialog->open();
}

void RegisterWindow::_open(const QString& password)
{
    _opening = true;
    _entryRow->setEnabled(false);
    _setStatus(QStringLiteral("Opening the register\u2026"));
    // An encrypted register is opened on the thread pool: the window stays
    // alive while the key is derived.
    _store->loadAsync(password).then(this, [this, password](const RegisterStore::Loaded& loaded) {
        if (!loaded.ok && loaded.wrongPassword)
            return _askPassword(loaded.error);
        if (loaded.ok)
            _password = password;
        _show(loaded);
    });
}

void RegisterWindow::_show(const RegisterStore::Loaded& loaded)
{
    _opening = false;
    _setStatus(QString());
    _entryRow->setEnabled(true);
    if (!loaded.ok) {
        // Never write over a file that could not be read.
        _writable = false;
        _setReadOnly(loaded.error + QStringLiteral(" Changes here are not kept."));
        emit opened();
        return;
    }
    // The register keeps its currency; one written before it did opens in
    // the currency of the day, recorded with the next save.
    const bool recordCurrency = !loaded.contents.currency;
    _document.setCurrencySymbolDict(loaded.contents.currency.value_or(RegisterStore::systemCurrency()));
    emit currencyChanged();
    if (loaded.exists)
        _book->setTransactions(loaded.contents.transactions);
    else
        _book->render();
    // What was just read needs no writing back (unless said below).
    _saveSoon.stop();
    if (!_writable) {
        _setReadOnly(QStringLiteral("The register is open in another window: this one shows it, and takes no "
                                    "changes."));
        emit opened();
        return;
    }
    if (!loaded.exists || recordCurrency)
        _save();

    // Settings > Register Password…, when the window has menus.
    if (QMenuBar* bar = findChild<QMenuBar*>()) {
        QMenu* settings = nullptr;
        for (QAction* action : bar->actions())
            if (action->menu() && action->text().remove(u'&') == QStringLiteral("Settings"))
                settings = action->menu();
        if (!settings)
            settings = bar->addMenu(QStringLiteral("&Settings"));
        settings->addSeparator();
        QAction* password = settings->addAction(QStringLiteral("Register &Password\u2026"));
        password->setObjectName(QStringLiteral("registerPassword"));
        connect(password, &QAction::triggered, this, [this] {
            auto* dialog = new RegisterPasswordDialog(RegisterPasswordDialog::Purpose::Choose, QString(), this);
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            connect(dialog, &QDialog::accepted, this, [this, dialog] { setPassword(dialog->password()); });
            dialog->open();
        });
    }
    emit opened();
}

void RegisterWindow::_setReadOnly(const QString& notice)
{
    _notice->setText(notice);
    _notice->show();
    if (_readOnly)
        return;
    _readOnly = true;
    _disableEditing();
    // Other features enable their items again as the selection changes.
    connect(_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, &RegisterWindow::_disableEditing);
    emit readOnlyChanged(true);
}

void RegisterWindow::_disableEditing()
{
    _entryRow->setEnabled(false);
    for (int i = 0; i < _buttons->count(); ++i)
        if (QWidget* button = qobject_cast<QAbstractButton*>(_buttons->itemAt(i)->widget()))
            button->setEnabled(false);
    _book->setReadOnly(true);
    // What changes the rows, wherever it is: the menus, the toolbar, the
    // table's own menu.
    for (QAction* action : findChildren<QAction*>()) {
        const QByteArray message = wq::wq_action(*action);
        if (message == "newTransaction" || message == "deleteTransaction" || action->objectName() == u"registerPassword")
            action->setEnabled(false);
    }
    if (QMenu* menu = _table->menu())
        for (QAction* action : menu->actions())
            action->setEnabled(false);
    // The currency is the register's too: the choice and the toolbar's menu.
    for (const char* name : {"currency", "currencyMenu"})
        if (QWidget* choice = findChild<QWidget*>(QString::fromLatin1(name)))
            choice->setEnabled(false);
}

void RegisterWindow::_setStatus(const QString& status)
{
    _status->setText(status);
}

void RegisterWindow::setPassword(const QString& password)
{
    _password = password;
    if (_writable)
        _save();
}

void RegisterWindow::setCurrency(const std::optional<QVariantMap>& currency)
{
    if (_readOnly)
        return;
    _document.setCurrencySymbolDict(currency.value_or(RegisterStore::systemCurrency()));
    emit currencyChanged();
    if (_writable && !_opening)
        _save();
}

void RegisterWindow::_save()
{
    _saveSoon.stop();
    if (!_store || !_writable || _opening)
        return;
    if (_saving.isRunning()) {
        _saveAgain = true;
        return;
    }
    _setStatus(QStringLiteral("Saving\u2026"));
    const RegisterStore::Contents contents{_book->transactions(), _document.currencySymbolDict()};
    // Waited for on its own: the continuation below runs on this thread.
    QFuture<QString> saving = _store->saveAsync(contents, _password);
    _saving = QFuture<void>(saving);
    saving.then(this, [this](const QString& error) {
        _setStatus(QString());
        if (!error.isEmpty())
            showMessage(error);
        if (std::exchange(_saveAgain, false))
            _save();
    });
}

void RegisterWindow::_saveBeforeClosing()
{
    // The final save may wait for the one under way; what changed since is
    // written here, on this thread.
    _saving.waitForFinished();
    if (!_store || !_writable || _opening || (!_saveSoon.isActive() && !_saveAgain))
        return;
    _saveSoon.stop();
    _saveAgain = false;
    QString error;
    _store->save({_book->transactions(), _document.currencySymbolDict()}, _password, &error);
}

void RegisterWindow::closeEvent(QCloseEvent* event)
{
    _saveBeforeClosing();
    QWidget::closeEvent(event);
}

} // namespace showcase
