#pragma once
/// \class wq::WQToolbar
/// A toolbar whose items come from a delegate and that the user can customize.
///
/// The items shown are the user's own choice when there is one, otherwise the
/// delegate's default set. The choice is kept in the user's settings (the
/// application's QSettings, group "Toolbars/<identifier>") with the default set
/// it was made from: when the application later ships a different default
/// set, the items new to it (and allowed) join the user's choice next to their
/// neighbours in the new default set, and items that no longer exist are left
/// out, so neither the user's choice nor the new items are lost.
///
/// The context menu offers the display mode and "Customize Toolbar…", which
/// opens WQToolbarCustomizationDialog on the toolbar's window.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/toolbar/WQToolbarKeys.h>

#include <QList>
#include <QPointer>
#include <QStringList>
#include <QToolBar>

#include <memory>

namespace wq {

class WQToolbarPrivate;

/// \addtogroup toolbar
/// @{

class WQToolbarCustomizationDialog;
class WQToolbarDelegate;
class WQToolbarItem;

class WQ_WIDGETS_EXPORT WQToolbar : public QToolBar {
    Q_OBJECT
public:
    /// An empty toolbar; identifier names it in the user's settings.
    explicit WQToolbar(const QString& identifier, QWidget* parent = nullptr);
    ~WQToolbar() override;

    /// Names the toolbar in the user's settings.
    const QString& identifier() const noexcept;

    /// The delegate is not owned (one that is a QObject is forgotten when it is
    /// destroyed). Setting it shows its items: the user's saved choice brought
    /// up to date, or the default set. Null empties the toolbar.
    void setDelegate(WQToolbarDelegate* delegate);
    /// The delegate, or nullptr.
    WQToolbarDelegate* delegate() const noexcept;

    /// The items shown, in order.
    QList<WQToolbarItem*> items() const;
    /// Identifiers of the items shown, in order.
    QStringList itemIdentifiers() const;
    /// The first item with the identifier, or null.
    WQToolbarItem* itemWithIdentifier(const QString& itemIdentifier) const;

    /// Shows these items in this order. Identifiers the delegate does not
    /// make are skipped, and so is a second copy of any but the standard
    /// items. Items that stay keep their state. Nothing is saved.
    void setItemIdentifiers(const QStringList& itemIdentifiers);
    /// Inserts a new item at index (clamped to the ends); saved when autosaving.
    void insertItemWithItemIdentifier(const QString& itemIdentifier, int index);
    /// Removes the item at index; saved when autosaving.
    void removeItemAtIndex(int index);

    /// The delegate's sets, with the standard items the user may always add.
    QStringList defaultItemIdentifiers() const;
    /// The identifiers the user may add, the standard items included.
    QStringList allowedItemIdentifiers() const;
    /// The separator, space and flexible space, which every toolbar offers.
    static const QStringList& standardItemIdentifiers();
    /// True for the separator, space and flexible space.
    static bool isStandardItemIdentifier(const QString& itemIdentifier);
    /// A new item for the palette or the toolbar: standard items are made
    /// here, the others by the delegate; null when nobody makes it.
    std::unique_ptr<WQToolbarItem> makeItem(const QString& itemIdentifier, bool willBeInsertedIntoToolbar);

    /// Whether the user may change the items (default: yes).
    bool allowsUserCustomization() const noexcept;
    /// Allows or forbids customization.
    void setAllowsUserCustomization(bool allows);
    /// Whether the user's changes are kept in the settings (default: yes).
    bool autosavesConfiguration() const noexcept;
    /// Turns the keeping of the user's changes on or off.
    void setAutosavesConfiguration(bool autosaves);
    /// Writes the items shown and the display mode to the settings now.
    void saveConfiguration();
    /// Forgets the user's choice and shows the default set.
    void restoreDefaultConfiguration();

    /// Opens the customization dialog (window-modal; it does not block), or
    /// raises the one already open.
    void runCustomizationPalette();
    /// The open customization dialog, or nullptr.
    WQToolbarCustomizationDialog* customizationPalette() const;

signals:
    /// A new item is about to be shown: the place to set its state.
    void willAddItem(wq::WQToolbarItem* item);
    /// The items shown changed.
    void itemIdentifiersChanged();

private:
    void _wq_showContextMenu(const QPoint& position);
    void _wq_setDisplayMode(Qt::ToolButtonStyle style);
    QString _wq_settingsGroup() const;

    Q_DECLARE_PRIVATE_D(_wq_d, WQToolbar)
    std::unique_ptr<WQToolbarPrivate> _wq_d;
};

/// @}

} // namespace wq
