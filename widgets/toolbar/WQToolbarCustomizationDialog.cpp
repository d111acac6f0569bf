#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>

#include "WQToolbarCustomizationDialog_p.h"
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include "WQToolbarItemList.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace wq {
namespace {

// Pictures for the standard items, drawn in the palette's colours.
QIcon standardItemIcon(const QString& identifier, const QPalette& palette)
{
    QPixmap picture(48, 48);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(palette.color(QPalette::Text), 2);
    if (identifier == kWQToolbarSeparatorItemIdentifier) {
        painter.setPen(pen);
        painter.drawLine(24, 6, 24, 42);
        return QIcon(picture);
    }
    pen.setStyle(Qt::DashLine);
    painter.setPen(pen);
    painter.drawRoundedRect(QRectF(6, 14, 36, 20), 4, 4);
    if (identifier == kWQToolbarFlexibleSpaceItemIdentifier) {
        painter.setPen(QPen(palette.color(QPalette::Text), 2));
        painter.drawLine(12, 24, 36, 24);
        painter.drawLine(12, 24, 17, 19);
        painter.drawLine(12, 24, 17, 29);
        painter.drawLine(36, 24, 31, 19);
        painter.drawLine(36, 24, 31, 29);
    }
    return QIcon(picture);
}

// A control in a toolbar, for items that show a widget of their own.
QIcon viewIcon(const QPalette& palette)
{
    QPixmap picture(48, 48);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::Text), 2));
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRoundedRect(QRectF(4, 14, 40, 20), 4, 4);
    painter.drawLine(12, 19, 12, 29);
    return QIcon(picture);
}

// What the lists show for an item: its palette label (else its label, else
// its identifier) and its image (else a picture of its widget).
struct Entry {
    QString text;
    QIcon icon;
    QString toolTip;
};

Entry entryFor(WQToolbar& toolbar, const QString& identifier, const QPalette& palette)
{
    Entry entry{identifier, {}, {}};
    if (WQToolbar::isStandardItemIdentifier(identifier))
        entry.icon = standardItemIcon(identifier, palette);
    const std::unique_ptr<WQToolbarItem> item = toolbar.makeItem(identifier, false);
    if (!item)
        return entry;
    entry.text = !item->paletteLabel().isEmpty() ? item->paletteLabel()
                 : !item->label().isEmpty()      ? item->label()
                                                 : identifier;
    entry.toolTip = item->toolTip();
    if (!item->icon().isNull())
        entry.icon = item->icon();
    else if (item->view())
        entry.icon = viewIcon(palette);
    if (entry.icon.isNull()) {
        // An empty picture keeps the labels in line.
        QPixmap blank(48, 48);
        blank.fill(Qt::transparent);
        entry.icon = QIcon(blank);
    }
    return entry;
}

QPushButton* smallButton(const QString& text, const char* name, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

const QString WQToolbarCustomizationDialog::kItemMimeType = QStringLiteral("application/x-wqgeneral-toolbar-items");

WQToolbarCustomizationDialog::WQToolbarCustomizationDialog(WQToolbar& toolbar)
    : QDialog(toolbar.window()), _wq_d(std::make_unique<WQToolbarCustomizationDialogPrivate>())
{
    _wq_d->toolbar = &toolbar;
    _wq_d->original = toolbar.itemIdentifiers();
    _wq_d->originalStyle = int(toolbar.toolButtonStyle());
    _wq_d->chosen = _wq_d->original;
    setWindowTitle(WQToolbarStrings::tr("Customize Toolbar"));
    setWindowModality(Qt::WindowModal);

    auto* hint = new QLabel(WQToolbarStrings::tr("Drag items into the toolbar list, or select them and press Add. "
                                        "Drag items out of it, or press Delete, to remove them."),
                            this);
    hint->setWordWrap(true);

    _wq_d->paletteList = new WQToolbarItemList(WQToolbarItemList::Role::Palette, this);
    _wq_d->paletteList->setObjectName(QStringLiteral("palette"));
    _wq_d->toolbarList = new WQToolbarItemList(WQToolbarItemList::Role::Toolbar, this);
    _wq_d->toolbarList->setObjectName(QStringLiteral("toolbarItems"));
    auto* paletteTitle = new QLabel(WQToolbarStrings::tr("&Available items:"), this);
    paletteTitle->setBuddy(_wq_d->paletteList);
    auto* toolbarTitle = new QLabel(WQToolbarStrings::tr("&Toolbar items:"), this);
    toolbarTitle->setBuddy(_wq_d->toolbarList);

    _wq_d->add = smallButton(WQToolbarStrings::tr("Add \u2192"), "add", this);
    _wq_d->removeButton = smallButton(WQToolbarStrings::tr("\u2190 Remove"), "remove", this);
    _wq_d->up = smallButton(WQToolbarStrings::tr("Move Up"), "moveUp", this);
    _wq_d->down = smallButton(WQToolbarStrings::tr("Move Down"), "moveDown", this);
    auto* middle = new QVBoxLayout;
    middle->addStretch();
    for (QPushButton* button : {_wq_d->add, _wq_d->removeButton, _wq_d->up, _wq_d->down})
        middle->addWidget(button);
    middle->addStretch();

    auto* lists = new QGridLayout;
    lists->addWidget(paletteTitle, 0, 0);
    lists->addWidget(toolbarTitle, 0, 2);
    lists->addWidget(_wq_d->paletteList, 1, 0);
    lists->addLayout(middle, 1, 1);
    lists->addWidget(_wq_d->toolbarList, 1, 2);

    _wq_d->displayMode = new QComboBox(this);
    _wq_d->displayMode->setObjectName(QStringLiteral("displayMode"));
    _wq_d->displayMode->addItem(WQToolbarStrings::tr("Icon and Text"), int(Qt::ToolButtonTextUnderIcon));
    _wq_d->displayMode->addItem(WQToolbarStrings::tr("Icon Only"), int(Qt::ToolButtonIconOnly));
    _wq_d->displayMode->addItem(WQToolbarStrings::tr("Text Only"), int(Qt::ToolButtonTextOnly));
    _wq_d->displayMode->setCurrentIndex(std::max(0, _wq_d->displayMode->findData(_wq_d->originalStyle)));
    auto* showLabel = new QLabel(WQToolbarStrings::tr("&Show:"), this);
    showLabel->setBuddy(_wq_d->displayMode);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* restore = buttons->addButton(WQToolbarStrings::tr("Restore Defaults"), QDialogButtonBox::ResetRole);
    restore->setObjectName(QStringLiteral("restoreDefaults"));
    restore->setAutoDefault(false);
    buttons->addButton(QDialogButtonBox::Cancel);
    QPushButton* done = buttons->addButton(WQToolbarStrings::tr("Done"), QDialogButtonBox::AcceptRole);
    done->setObjectName(QStringLiteral("done"));
    done->setDefault(true);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(showLabel);
    bottom->addWidget(_wq_d->displayMode);
    bottom->addSpacing(12);
    bottom->addWidget(buttons, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addLayout(lists, 1);
    layout->addLayout(bottom);

    connect(_wq_d->add, &QPushButton::clicked, this, &WQToolbarCustomizationDialog::addSelectedItems);
    connect(_wq_d->removeButton, &QPushButton::clicked, this, &WQToolbarCustomizationDialog::removeSelectedItems);
    connect(_wq_d->up, &QPushButton::clicked, this, &WQToolbarCustomizationDialog::moveSelectedItemsUp);
    connect(_wq_d->down, &QPushButton::clicked, this, &WQToolbarCustomizationDialog::moveSelectedItemsDown);
    connect(restore, &QPushButton::clicked, this, &WQToolbarCustomizationDialog::restoreDefaultItems);
    connect(buttons, &QDialogButtonBox::accepted, this, &WQToolbarCustomizationDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &WQToolbarCustomizationDialog::reject);
    connect(_wq_d->displayMode, &QComboBox::currentIndexChanged, this, [this] {
        if (_wq_d->toolbar)
            _wq_d->toolbar->setToolButtonStyle(Qt::ToolButtonStyle(_wq_d->displayMode->currentData().toInt()));
    });

    connect(_wq_d->paletteList, &WQToolbarItemList::activatedByKey, this,
            &WQToolbarCustomizationDialog::addSelectedItems);
    connect(_wq_d->paletteList, &QListWidget::itemDoubleClicked, this,
            &WQToolbarCustomizationDialog::addSelectedItems);
    connect(_wq_d->toolbarList, &WQToolbarItemList::activatedByKey, this,
            &WQToolbarCustomizationDialog::removeSelectedItems);
    connect(_wq_d->toolbarList, &QListWidget::itemDoubleClicked, this,
            &WQToolbarCustomizationDialog::removeSelectedItems);
    connect(_wq_d->toolbarList, &WQToolbarItemList::moveRequested, this,
            &WQToolbarCustomizationDialog::_wq_moveSelected);
    for (QListWidget* list :
         {static_cast<QListWidget*>(_wq_d->paletteList), static_cast<QListWidget*>(_wq_d->toolbarList)})
        connect(list, &QListWidget::itemSelectionChanged, this, &WQToolbarCustomizationDialog::_wq_updateButtons);

    // Into the toolbar list: from the palette adds, from itself moves. Into
    // the palette: from the toolbar list removes.
    connect(_wq_d->toolbarList, &WQToolbarItemList::dropped, this,
            [this](const WQToolbarItemList::Payload& payload, int row) {
                if (payload.origin == WQToolbarItemList::Role::Palette)
                    _wq_insert(payload.itemIdentifiers, row);
                else
                    _wq_move(payload.rows, row);
            });
    connect(_wq_d->paletteList, &WQToolbarItemList::dropped, this,
            [this](const WQToolbarItemList::Payload& payload, int) {
                if (payload.origin == WQToolbarItemList::Role::Toolbar)
                    _wq_remove(payload.rows);
            });

    _wq_fillPalette();
    _wq_fillToolbarList({});
    _wq_updateButtons();
    resize(580, 400);
}

WQToolbarCustomizationDialog::~WQToolbarCustomizationDialog() = default;

QList<int> WQToolbarCustomizationDialog::_wq_selectedRows(const QListWidget& list) const
{
    QList<int> rows;
    for (const QListWidgetItem* item : list.selectedItems())
        rows << list.row(item);
    std::sort(rows.begin(), rows.end());
    return rows;
}

void WQToolbarCustomizationDialog::_wq_fillPalette()
{
    if (!_wq_d->toolbar)
        return;
    _wq_d->paletteList->clear();
    for (const QString& identifier : _wq_d->toolbar->allowedItemIdentifiers()) {
        // Offer only what the toolbar can show.
        if (!_wq_d->toolbar->makeItem(identifier, false))
            continue;
        const Entry entry = entryFor(*_wq_d->toolbar, identifier, palette());
        auto* row = new QListWidgetItem(entry.icon, entry.text, _wq_d->paletteList);
        row->setData(WQToolbarItemList::kIdentifierRole, identifier);
        row->setToolTip(entry.toolTip);
    }
}

void WQToolbarCustomizationDialog::_wq_fillToolbarList(const QList<int>& selectRows)
{
    if (!_wq_d->toolbar)
        return;
    _wq_d->toolbarList->clear();
    for (const QString& identifier : std::as_const(_wq_d->chosen)) {
        const Entry entry = entryFor(*_wq_d->toolbar, identifier, palette());
        auto* row = new QListWidgetItem(entry.icon, entry.text, _wq_d->toolbarList);
        row->setData(WQToolbarItemList::kIdentifierRole, identifier);
        row->setToolTip(entry.toolTip);
    }
    for (int row : selectRows)
        if (QListWidgetItem* item = _wq_d->toolbarList->item(row))
            item->setSelected(true);
    if (!selectRows.isEmpty())
        _wq_d->toolbarList->setCurrentRow(selectRows.first(), QItemSelectionModel::NoUpdate);
    // An item already in the toolbar cannot be added a second time.
    for (int i = 0; i < _wq_d->paletteList->count(); ++i) {
        QListWidgetItem* item = _wq_d->paletteList->item(i);
        const QString identifier = item->data(WQToolbarItemList::kIdentifierRole).toString();
        const bool used = !WQToolbar::isStandardItemIdentifier(identifier) && _wq_d->chosen.contains(identifier);
        item->setFlags(used ? Qt::NoItemFlags : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
        item->setData(Qt::StatusTipRole, used ? WQToolbarStrings::tr("Already in the toolbar") : QString());
    }
    _wq_updateButtons();
}

void WQToolbarCustomizationDialog::_wq_setChosen(const QStringList& chosen, const QList<int>& selectRows)
{
    if (!_wq_d->toolbar)
        return;
    _wq_d->toolbar->setItemIdentifiers(chosen);
    // What the toolbar could show, without what it skipped.
    _wq_d->chosen = _wq_d->toolbar->itemIdentifiers();
    _wq_fillToolbarList(selectRows);
}

void WQToolbarCustomizationDialog::_wq_insert(const QStringList& itemIdentifiers, int row)
{
    QStringList chosen = _wq_d->chosen;
    row = std::clamp<int>(row, 0, int(chosen.size()));
    QList<int> inserted;
    for (const QString& identifier : itemIdentifiers) {
        if (!WQToolbar::isStandardItemIdentifier(identifier) && chosen.contains(identifier))
            continue;
        chosen.insert(row, identifier);
        inserted << row++;
    }
    if (!inserted.isEmpty())
        _wq_setChosen(chosen, inserted);
}

void WQToolbarCustomizationDialog::_wq_remove(QList<int> rows)
{
    std::sort(rows.begin(), rows.end(), std::greater<>());
    QStringList chosen = _wq_d->chosen;
    for (int row : rows)
        if (row >= 0 && row < chosen.size())
            chosen.removeAt(row);
    if (chosen != _wq_d->chosen) {
        const int next = rows.isEmpty() ? 0 : std::min(rows.last(), int(chosen.size()) - 1);
        _wq_setChosen(chosen, next >= 0 ? QList<int>{next} : QList<int>{});
    }
}

void WQToolbarCustomizationDialog::_wq_move(QList<int> rows, int destination)
{
    std::sort(rows.begin(), rows.end());
    rows.resize(std::unique(rows.begin(), rows.end()) - rows.begin());
    QStringList moving;
    QStringList rest;
    for (int i = 0; i < _wq_d->chosen.size(); ++i) {
        if (rows.contains(i)) {
            moving << _wq_d->chosen[i];
            if (i < destination)
                --destination;
        } else {
            rest << _wq_d->chosen[i];
        }
    }
    if (moving.isEmpty())
        return;
    destination = std::clamp<int>(destination, 0, int(rest.size()));
    QList<int> selection;
    for (int i = 0; i < moving.size(); ++i) {
        rest.insert(destination + i, moving[i]);
        selection << destination + i;
    }
    _wq_setChosen(rest, selection);
}

void WQToolbarCustomizationDialog::_wq_moveSelected(int delta)
{
    const QList<int> rows = _wq_selectedRows(*_wq_d->toolbarList);
    if (rows.isEmpty())
        return;
    if ((delta < 0 && rows.first() == 0) || (delta > 0 && rows.last() == _wq_d->chosen.size() - 1))
        return;
    // Up: in before the row above the first; down: after the row below the last.
    _wq_move(rows, delta < 0 ? rows.first() - 1 : rows.last() + 2);
}

void WQToolbarCustomizationDialog::addSelectedItems()
{
    QStringList identifiers;
    for (int row : _wq_selectedRows(*_wq_d->paletteList))
        identifiers << _wq_d->paletteList->item(row)->data(WQToolbarItemList::kIdentifierRole).toString();
    // After the toolbar list's selection, or at its end.
    const QList<int> selected = _wq_selectedRows(*_wq_d->toolbarList);
    _wq_insert(identifiers, selected.isEmpty() ? int(_wq_d->chosen.size()) : selected.last() + 1);
}

void WQToolbarCustomizationDialog::removeSelectedItems()
{
    _wq_remove(_wq_selectedRows(*_wq_d->toolbarList));
}

void WQToolbarCustomizationDialog::restoreDefaultItems()
{
    if (_wq_d->toolbar)
        _wq_setChosen(_wq_d->toolbar->defaultItemIdentifiers(), {});
}

void WQToolbarCustomizationDialog::_wq_updateButtons()
{
    const QList<int> selected = _wq_selectedRows(*_wq_d->toolbarList);
    _wq_d->add->setEnabled(!_wq_d->paletteList->selectedItems().isEmpty());
    _wq_d->removeButton->setEnabled(!selected.isEmpty());
    _wq_d->up->setEnabled(!selected.isEmpty() && selected.first() > 0);
    _wq_d->down->setEnabled(!selected.isEmpty() && selected.last() < _wq_d->chosen.size() - 1);
}

void WQToolbarCustomizationDialog::accept()
{
    if (_wq_d->toolbar && _wq_d->toolbar->autosavesConfiguration())
        _wq_d->toolbar->saveConfiguration();
    QDialog::accept();
}

void WQToolbarCustomizationDialog::reject()
{
    if (_wq_d->toolbar) {
        _wq_d->toolbar->setItemIdentifiers(_wq_d->original);
        _wq_d->toolbar->setToolButtonStyle(Qt::ToolButtonStyle(_wq_d->originalStyle));
    }
    QDialog::reject();
}

QStringList WQToolbarCustomizationDialog::itemIdentifiers() const
{
    Q_D(const WQToolbarCustomizationDialog);
    return d->chosen;
}

} // namespace wq
