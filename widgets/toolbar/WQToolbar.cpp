#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/toolbar/WQToolbar.h>

#include "WQToolbar_p.h"
#include <WQGeneral/toolbar/WQToolbarCustomizationDialog.h>
#include <WQGeneral/toolbar/WQToolbarDelegate.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include "WQToolbarConfiguration.h"

#include <QActionGroup>
#include <QMenu>
#include <QMultiHash>
#include <QSet>
#include <QSettings>

namespace wq {
namespace {

const QString kItemsKey = QStringLiteral("itemIdentifiers");
const QString kDefaultsKey = QStringLiteral("defaultItemIdentifiers");
const QString kDisplayModeKey = QStringLiteral("displayMode");

} // namespace

WQToolbar::WQToolbar(const QString& identifier, QWidget* parent)
    : QToolBar(parent), _wq_d(std::make_unique<WQToolbarPrivate>())
{
    _wq_d->identifier = identifier;
    // QMainWindow::saveState() knows toolbars by name.
    setObjectName(identifier);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &WQToolbar::_wq_showContextMenu);
}

WQToolbar::~WQToolbar()
{
    delete _wq_d->palette;
}

const QStringList& WQToolbar::standardItemIdentifiers()
{
    static const QStringList identifiers = {kWQToolbarSeparatorItemIdentifier, kWQToolbarSpaceItemIdentifier,
                                            kWQToolbarFlexibleSpaceItemIdentifier};
    return identifiers;
}

bool WQToolbar::isStandardItemIdentifier(const QString& itemIdentifier)
{
    return standardItemIdentifiers().contains(itemIdentifier);
}

QStringList WQToolbar::defaultItemIdentifiers() const
{
    return _wq_d->delegate ? _wq_d->delegate->toolbarDefaultItemIdentifiers(const_cast<WQToolbar&>(*this))
                           : QStringList();
}

QStringList WQToolbar::allowedItemIdentifiers() const
{
    QStringList allowed =
        _wq_d->delegate ? _wq_d->delegate->toolbarAllowedItemIdentifiers(const_cast<WQToolbar&>(*this)) : QStringList();
    for (const QString& standard : standardItemIdentifiers())
        if (!allowed.contains(standard))
            allowed << standard;
    return allowed;
}

std::unique_ptr<WQToolbarItem> WQToolbar::makeItem(const QString& itemIdentifier, bool willBeInsertedIntoToolbar)
{
    if (isStandardItemIdentifier(itemIdentifier)) {
        auto item = std::make_unique<WQToolbarItem>(itemIdentifier);
        if (itemIdentifier == kWQToolbarSeparatorItemIdentifier)
            item->setPaletteLabel(WQToolbarStrings::tr("Separator"));
        else if (itemIdentifier == kWQToolbarSpaceItemIdentifier)
            item->setPaletteLabel(WQToolbarStrings::tr("Space"));
        else
            item->setPaletteLabel(WQToolbarStrings::tr("Flexible Space"));
        return item;
    }
    if (!_wq_d->delegate)
        return nullptr;
    return _wq_d->delegate->toolbarItemForItemIdentifier(*this, itemIdentifier, willBeInsertedIntoToolbar);
}

void WQToolbar::setDelegate(WQToolbarDelegate* delegate)
{
    disconnect(_wq_d->delegateGuard);
    _wq_d->delegate = delegate;
    // A delegate that is a QObject is forgotten when it goes.
    if (auto* object = dynamic_cast<QObject*>(delegate))
        _wq_d->delegateGuard = connect(object, &QObject::destroyed, this, [this] { setDelegate(nullptr); });
    if (!delegate) {
        setItemIdentifiers({});
        return;
    }
    const QStringList defaults = delegate->toolbarDefaultItemIdentifiers(*this);
    QStringList shown = defaults;
    if (_wq_d->autosaves) {
        QSettings settings;
        settings.beginGroup(_wq_settingsGroup());
        if (settings.contains(kItemsKey)) {
            const QStringList saved = settings.value(kItemsKey).toStringList();
            const QStringList savedDefaults = settings.value(kDefaultsKey).toStringList();
            shown = detail::mergedItemIdentifiers(saved, savedDefaults, defaults,
                                                  delegate->toolbarAllowedItemIdentifiers(*this));
            if (shown != saved || savedDefaults != defaults) {
                settings.setValue(kItemsKey, shown);
                settings.setValue(kDefaultsKey, defaults);
                settings.sync();
            }
        }
        if (settings.contains(kDisplayModeKey))
            setToolButtonStyle(Qt::ToolButtonStyle(settings.value(kDisplayModeKey).toInt()));
    }
    setItemIdentifiers(shown);
}

QStringList WQToolbar::itemIdentifiers() const
{
    QStringList identifiers;
    for (const WQToolbarItem* item : std::as_const(_wq_d->items))
        identifiers << item->itemIdentifier();
    return identifiers;
}

WQToolbarItem* WQToolbar::itemWithIdentifier(const QString& itemIdentifier) const
{
    for (WQToolbarItem* item : std::as_const(_wq_d->items))
        if (item->itemIdentifier() == itemIdentifier)
            return item;
    return nullptr;
}

void WQToolbar::setItemIdentifiers(const QStringList& itemIdentifiers)
{
    QMultiHash<QString, WQToolbarItem*> unused;
    for (WQToolbarItem* item : std::as_const(_wq_d->items))
        unused.insert(item->itemIdentifier(), item);

    QList<WQToolbarItem*> next;
    QSet<QString> shown;
    for (const QString& identifier : itemIdentifiers) {
        if (shown.contains(identifier) && !isStandardItemIdentifier(identifier))
            continue;
        WQToolbarItem* item = unused.take(identifier);
        if (!item) {
            std::unique_ptr<WQToolbarItem> made = makeItem(identifier, true);
            if (!made)
                continue;
            item = made.release();
            item->setParent(this);
            emit willAddItem(item);
        }
        shown.insert(identifier);
        next << item;
    }
    if (next == _wq_d->items)
        return;

    setUpdatesEnabled(false);
    for (WQToolbarItem* item : std::as_const(_wq_d->items))
        removeAction(item);
    for (WQToolbarItem* item : std::as_const(next))
        addAction(item);
    setUpdatesEnabled(true);
    _wq_d->items = next;
    // An item may be going away from inside its own action.
    for (WQToolbarItem* item : std::as_const(unused))
        item->deleteLater();
    emit itemIdentifiersChanged();
}

void WQToolbar::insertItemWithItemIdentifier(const QString& itemIdentifier, int index)
{
    QStringList identifiers = itemIdentifiers();
    identifiers.insert(std::clamp<qsizetype>(index, 0, identifiers.size()), itemIdentifier);
    setItemIdentifiers(identifiers);
}

void WQToolbar::removeItemAtIndex(int index)
{
    QStringList identifiers = itemIdentifiers();
    if (index < 0 || index >= identifiers.size())
        return;
    identifiers.removeAt(index);
    setItemIdentifiers(identifiers);
}

QString WQToolbar::_wq_settingsGroup() const
{
    QString name = _wq_d->identifier;
    name.replace(u'/', u'_').replace(u'\\', u'_');
    return QStringLiteral("Toolbars/") + name;
}

void WQToolbar::saveConfiguration()
{
    QSettings settings;
    settings.beginGroup(_wq_settingsGroup());
    settings.setValue(kItemsKey, itemIdentifiers());
    settings.setValue(kDefaultsKey, defaultItemIdentifiers());
    settings.setValue(kDisplayModeKey, int(toolButtonStyle()));
    settings.endGroup();
    settings.sync();
}

void WQToolbar::restoreDefaultConfiguration()
{
    QSettings settings;
    settings.remove(_wq_settingsGroup());
    settings.sync();
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setItemIdentifiers(defaultItemIdentifiers());
}

void WQToolbar::_wq_setDisplayMode(Qt::ToolButtonStyle style)
{
    setToolButtonStyle(style);
    if (!_wq_d->autosaves)
        return;
    // Only the mode: the items stay the default set until the user chooses.
    QSettings settings;
    settings.beginGroup(_wq_settingsGroup());
    settings.setValue(kDisplayModeKey, int(style));
    settings.endGroup();
    settings.sync();
}

WQToolbarCustomizationDialog* WQToolbar::customizationPalette() const
{
    return _wq_d->palette;
}

void WQToolbar::runCustomizationPalette()
{
    if (_wq_d->palette) {
        _wq_d->palette->raise();
        _wq_d->palette->activateWindow();
        return;
    }
    if (!_wq_d->allowsCustomization || !_wq_d->delegate)
        return;
    _wq_d->palette = new WQToolbarCustomizationDialog(*this);
    _wq_d->palette->setAttribute(Qt::WA_DeleteOnClose);
    _wq_d->palette->open();
}

void WQToolbar::_wq_showContextMenu(const QPoint& position)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto* modes = new QActionGroup(menu);
    const std::pair<QString, Qt::ToolButtonStyle> choices[] = {
        {WQToolbarStrings::tr("Icon and Text"), Qt::ToolButtonTextUnderIcon},
        {WQToolbarStrings::tr("Icon Only"), Qt::ToolButtonIconOnly},
        {WQToolbarStrings::tr("Text Only"), Qt::ToolButtonTextOnly},
    };
    for (const auto& [title, style] : choices) {
        QAction* mode = menu->addAction(title);
        mode->setCheckable(true);
        mode->setChecked(toolButtonStyle() == style);
        modes->addAction(mode);
        connect(mode, &QAction::triggered, this, [this, style = style] { _wq_setDisplayMode(style); });
    }
    menu->addSeparator();
    QAction* customize = menu->addAction(WQToolbarStrings::tr("Customize Toolbar\u2026"));
    customize->setEnabled(_wq_d->allowsCustomization && _wq_d->delegate);
    connect(customize, &QAction::triggered, this, &WQToolbar::runCustomizationPalette);
    menu->popup(mapToGlobal(position));
}

const QString& WQToolbar::identifier() const noexcept
{
    Q_D(const WQToolbar);
    return d->identifier;
}

WQToolbarDelegate* WQToolbar::delegate() const noexcept
{
    Q_D(const WQToolbar);
    return d->delegate;
}

QList<WQToolbarItem*> WQToolbar::items() const
{
    Q_D(const WQToolbar);
    return d->items;
}

bool WQToolbar::allowsUserCustomization() const noexcept
{
    Q_D(const WQToolbar);
    return d->allowsCustomization;
}

bool WQToolbar::autosavesConfiguration() const noexcept
{
    Q_D(const WQToolbar);
    return d->autosaves;
}

void WQToolbar::setAllowsUserCustomization(bool allows)
{
    Q_D(WQToolbar);
    d->allowsCustomization = allows;
}

void WQToolbar::setAutosavesConfiguration(bool autosaves)
{
    Q_D(WQToolbar);
    d->autosaves = autosaves;
}

} // namespace wq
