#include "RegisterWindow.h"
#include "ShowcaseText.h"

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
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/views/WQHideableCells.h>

#include <QAbstractSpinBox>
#include <QApplication>
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
#include <QScrollArea>
#include <QStyle>
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
    : _dates(std::make_shared<wq::WQDateFormatter>(wq::WQDateFormatter::shortDateFormat())),
      _amounts(_document.moneyFormatter(2))
{
    setWindowTitle(Text::tr("WQGeneral showcase: Checking"));
    auto* layout = new QVBoxLayout(this);
    _message = new QLabel(this);
    _message->setObjectName(QStringLiteral("registerMessage"));
    _message->setStyleSheet(QStringLiteral("color: #b00020;"));
    _message->setWordWrap(true);

    _book = new RegisterBook(
        [this](const wq::WQDate& date) { return _dates->stringForObjectValue(QVariant::fromValue(date)).value_or(QString()); },
        [this](double amount) { return _amounts->stringForObjectValue(amount).value_or(QString()); }, this);
    _table = new wq::WQTableView(this);
    _table->setObjectName(QStringLiteral("register"));
    _table->setAccessibleName(Text::tr("Register"));
    _table->setAccessibleDescription(Text::tr("The transactions in date order, with the running balance"));
    _table->setModel(&_book->model());
    _book->setHorizontalHeaderLabels(
        {Text::tr("Date"), Text::tr("Payee"), Text::tr("Amount"), Text::tr("Cleared"), Text::tr("Balance")});
    // The payee takes what the window gives; the others fit their texts.
    QHeaderView* header = _table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(RegisterBook::PayeeColumn, QHeaderView::Stretch);
    // Fitted to the rows in view and a hundred around them: a long register
    // measured whole would take longer than a frame after every change.
    header->setResizeContentsPrecision(100);
    _table->verticalHeader()->hide();
    // A recorded row is corrected in place: double-click, F2 or Return.
    _table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    _table->installEventFilter(this);
    connect(_book, &RegisterBook::editRefused, this, &RegisterWindow::refuseInCell);
    _table->setSelectionBehavior(QAbstractItemView::SelectRows);
    // One tab stop: the arrows walk the rows, Tab leaves the register.
    _table->setTabKeyNavigation(false);
    _table->setMinimumWidth(320);
    // A header fits its columns only when sections come and go; a longer
    // amount or balance needs it as much.
    const auto fitColumns = [header] { QMetaObject::invokeMethod(header, "resizeSections", Qt::QueuedConnection); };
    connect(&_book->model(), &QAbstractItemModel::dataChanged, header, fitColumns);
    connect(&_book->model(), &QAbstractItemModel::rowsInserted, header, fitColumns);

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

    // The panels scroll when the window is too short for all of them.
    _sidePanels = new SidePanels;
    _panelsArea = new QScrollArea(this);
    _panelsArea->setObjectName(QStringLiteral("sidePanelsArea"));
    _panelsArea->setFrameShape(QFrame::NoFrame);
    _panelsArea->setFocusPolicy(Qt::NoFocus);
    _panelsArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    _panelsArea->setWidgetResizable(true);
    _panelsArea->setWidget(_sidePanels);
    _panelsArea->setFixedWidth(SidePanels::kWidth + _panelsArea->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2);
    _panelsArea->hide();
    connect(qApp, &QApplication::focusChanged, _panelsArea, [this](QWidget*, QWidget* now) {
        if (now && _sidePanels->isAncestorOf(now))
            _panelsArea->ensureWidgetVisible(now, 0, 8);
    });
    connect(_sidePanels, &SidePanels::panelMoved, this, &RegisterWindow::updateTabOrder);
    auto* registerRow = new QHBoxLayout;
    registerRow->addWidget(_table, 1);
    registerRow->addWidget(_panelsArea);
    layout->addLayout(registerRow, 1);

    _entryRow = new QWidget(this);
    _entryLayout = new QHBoxLayout(_entryRow);
    _entryLayout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(_entryRow);

    auto* payee = new wq::WQLineEdit(_entryRow);
    payee->setObjectName(QStringLiteral("payee"));
    payee->setPlaceholderText(Text::tr("Payee"));
    payee->setToolTip(Text::tr("Who was paid, or who paid"));
    payee->setMinimumWidth(payee->fontMetrics().horizontalAdvance(QStringLiteral("City Power & Light")) + 12);
    addFieldGroup(Text::tr("Payee"), payee, QStringLiteral("Payee"));

    _buttons = new QHBoxLayout;
    _buttons->addWidget(_message, 1);
    _enter = new QPushButton(Text::tr("&Enter"), this);
    _enter->setObjectName(QStringLiteral("enter"));
    _enter->setAutoDefault(false);
    _enter->setAccessibleDescription(Text::tr("Records the transaction of the entry row"));
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
    // The children go after this: nothing they announce on the way reaches
    // the half-gone window.
    if (auto* toolbar = findChild<wq::WQToolbar*>())
        toolbar->disconnect(this);
    QObject::disconnect(qApp, nullptr, _panelsArea, nullptr);
    _saveBeforeClosing();
    // The fields hold formatters of the register's money owner, which goes
    // before the base class deletes them: they go first, and the table,
    // whose cells ask the window's formatters for their texts, with them.
    delete _entryRow;
    delete _table;
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

namespace {

// The focusable widget a group's field stands for now (a date picker may
// have taken its field's place).
QWidget* shownWidget(QWidget* field)
{
    if (field->isHidden())
        if (auto* picker = qobject_cast<QDateEdit*>(field->parentWidget()))
            return picker;
    return field;
}

// What Tab stops at inside a widget, in its own order: everything that
// takes Tab, and the hideable cells, which take it only while shown.
QList<QWidget*> tabStopsIn(QWidget* region)
{
    QList<QWidget*> stops;
    if (!region)
        return stops;
    const auto isStop = [](QWidget* w) {
        return !w->focusProxy() && !w->isWindow()
               && ((w->focusPolicy() & Qt::TabFocus) || qobject_cast<wq::WQHideableButtonCell*>(w)
                   || qobject_cast<wq::WQHideablePopUpButtonCell*>(w));
    };
    if (isStop(region))
        stops << region;
    // The chain as the widgets were made; a region's own parts follow it.
    for (QWidget* w = region->nextInFocusChain(); w != region; w = w->nextInFocusChain())
        if (region->isAncestorOf(w) && isStop(w) && !stops.contains(w))
            stops << w;
    return stops;
}

} // namespace

void RegisterWindow::finishEntryRow()
{
    QSet<QChar> taken;
    for (const QMenuBar* bar : findChildren<QMenuBar*>())
        for (const QAction* menu : bar->actions())
            takeMnemonics(menu->text(), taken);
    for (const QAbstractButton* button : findChildren<QAbstractButton*>())
        takeMnemonics(button->text(), taken);

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
        // Fields and options say what they are in their tool tips; a field
        // without one is a part of the transaction.
        if (field->accessibleDescription().isEmpty()) {
            QString description = field->toolTip();
            if (description.isEmpty())
                description = group.field->toolTip();
            if (description.isEmpty())
                description = Text::tr("%1 of the transaction; Return records it").arg(group.label);
            field->setAccessibleDescription(description);
        }
    }
    _sidePanels->restoreOrder();
    _panelsArea->setVisible(!_sidePanels->order().isEmpty());
    updateTabOrder();
    // Screen readers take a window's parts in the order they were made;
    // raising each in reading order makes that the order they are read in.
    QList<QWidget*> reading{layout()->menuBar(), findChild<wq::WQToolbar*>()};
    for (int i = 0; i < _options->count(); ++i)
        reading << _options->itemAt(i)->widget();
    reading << _table << _panelsArea << _entryRow;
    for (int i = 0; i < _buttons->count(); ++i)
        reading << _buttons->itemAt(i)->widget();
    for (QWidget* part : std::as_const(reading))
        if (part && part->parentWidget() == this)
            part->raise();
    for (int i = 0; i < _entryLayout->count(); ++i)
        if (QWidget* group = _entryLayout->itemAt(i)->widget())
            group->raise();
    if (auto* toolbar = findChild<wq::WQToolbar*>())
        connect(toolbar, &wq::WQToolbar::itemIdentifiersChanged, this, &RegisterWindow::updateTabOrder,
                Qt::UniqueConnection);
    // A new transaction starts with its date.
    if (QWidget* date = _fieldFor(QStringLiteral("Date")))
        date->setFocus(Qt::OtherFocusReason);
    // Nothing narrower than what the fields need.
    setMinimumSize(layout()->totalMinimumSize());
}

void RegisterWindow::updateTabOrder()
{
    // The order the eye reads the window: the toolbar, the options above
    // the register, the register and the panels beside it, the entry row
    // left to right, the buttons.
    QList<QWidget*> chain;
    if (auto* toolbar = findChild<wq::WQToolbar*>())
        for (QAction* item : toolbar->actions())
            chain << tabStopsIn(toolbar->widgetForAction(item));
    for (int i = 0; i < _options->count(); ++i)
        chain << tabStopsIn(_options->itemAt(i)->widget());
    chain << _table;
    for (const QString& key : _sidePanels->order())
        chain << tabStopsIn(_sidePanels->panel(key));
    for (int i = 0; i < _entryLayout->count(); ++i) {
        QWidget* container = _entryLayout->itemAt(i)->widget();
        for (const Group& group : std::as_const(_groups))
            if (group.field->parentWidget() == container
                || (group.field->parentWidget() && group.field->parentWidget()->parentWidget() == container))
                chain << shownWidget(group.field);
    }
    for (int i = 0; i < _buttons->count(); ++i)
        chain << tabStopsIn(_buttons->itemAt(i)->widget());
    chain.removeAll(nullptr);
    for (qsizetype i = 1; i < chain.size(); ++i)
        QWidget::setTabOrder(chain[i - 1], chain[i]);
    _tabChain = chain;
}

bool RegisterWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (watched == _table) {
        // Return edits the row where the view has no use for it (one that
        // comes from a cell's editor is that editor's).
        if ((key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter)
            || (key->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier || QApplication::focusWidget() != _table)
            return QWidget::eventFilter(watched, event);
        editCell(_table->currentIndex());
        return true;
    }
    // A date picker steps through its sections with Tab; in the entry row
    // Tab goes to the next field, as everywhere else (arrows pick sections).
    if ((key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) && qobject_cast<QDateEdit*>(watched)) {
        const bool back = key->key() == Qt::Key_Backtab || (key->modifiers() & Qt::ShiftModifier);
        const qsizetype at = _tabChain.indexOf(static_cast<QWidget*>(watched));
        for (qsizetype i = at + (back ? -1 : 1); at >= 0 && i >= 0 && i < _tabChain.size(); i += back ? -1 : 1)
            if (_tabChain[i]->isVisible() && _tabChain[i]->isEnabled() && (_tabChain[i]->focusPolicy() & Qt::TabFocus)) {
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
    QString label = field->objectName();
    for (const Group& group : std::as_const(_groups))
        if (group.field == field)
            label = group.label;
    _refuse(field, label, message);
}

void RegisterWindow::_refuse(wq::WQLineEdit* field, const QString& label, const QString& message)
{
    if (!_presenter || message.isEmpty() || !field) {
        showMessage(message);
        return;
    }
    emit refusalShown(message);
    _presenter(*field, label, message);
}

void RegisterWindow::refuseInCell(const QModelIndex& index, const QString& message)
{
    auto* editor = qobject_cast<wq::WQLineEdit*>(_table->indexWidget(index));
    // The complaint goes once the cell takes an edit again.
    if (editor)
        connect(editor, &wq::WQLineEdit::refusalCleared, _message, &QLabel::clear, Qt::UniqueConnection);
    _refuse(editor, _book->headerData(index.column(), Qt::Horizontal).toString(), message);
}

void RegisterWindow::editCell(const QModelIndex& index)
{
    if (!index.isValid() || _readOnly)
        return;
    const QModelIndex cell =
        index.flags().testFlag(Qt::ItemIsEditable) ? index : index.siblingAtColumn(RegisterBook::DateColumn);
    _table->setCurrentIndex(cell);
    _table->edit(cell);
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
    // A blank amount stays blank (committing it would show $0.00).
    if (noAmount && amountField)
        amountField->setObjectValue(QVariant());
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
        missing << Text::tr("date");
    if (payee.isEmpty())
        missing << Text::tr("payee");
    // A typed $0.00 is an amount (a note in the register, say); a blank one is not.
    if (noAmount || !amount.isValid())
        missing << Text::tr("amount");
    if (!missing.isEmpty()) {
        showMessage(Text::tr("To record a transaction, fill in the %1.").arg(missing.join(Text::tr(" and "))));
        return false;
    }

    // Amounts typed in a document's currency keep the text they were typed in.
    const QString typed = amountField->text();
    const QString system = _amounts->stringForObjectValue(amount.toDouble()).value_or(QString());
    const int row = _book->add({*date, payee, amount.toDouble(), typed == system ? QString() : typed, false});
    _table->selectRow(row);
    _table->scrollTo(_book->index(row, 0));
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
            if (action->menu() && action->text() == Text::tr("&Settings"))
                settings = action->menu();
        if (!settings)
            settings = bar->addMenu(Text::tr("&Settings"));
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
