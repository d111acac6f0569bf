#pragma once
/// \file
/// Menus searched and pruned by the message their items send (the name given
/// with wq_setAction). `menu` is anything that holds actions: a QMenu, a
/// QMenuBar or a QToolBar; an item's submenu is its QAction::menu().
///
/// An empty action name stands for "sends nothing": it matches separators,
/// submenu titles and every other item without a message.

#include <WQGeneral/WQWidgetsExport.h>

#include <QByteArray>
#include <QList>

#include <optional>

class QAction;
class QWidget;

namespace wq {

/// \addtogroup menus
/// @{

/// The first item of the menu itself (submenus are not searched) that sends
/// `action`, or null.
WQ_WIDGETS_EXPORT QAction* itemWithAction(const QWidget& menu, const QByteArray& action);
/// Takes the item that itemWithAction finds, if any, out of the menu. The item
/// is not deleted: it may be shared with other menus or toolbars.
WQ_WIDGETS_EXPORT void removeItemWithAction(QWidget& menu, const QByteArray& action);
/// Every item that sends `action`, depth first (an item, then the matches in
/// its submenu, then the next item); submenus only with checkSubMenus.
/// Nothing, rather than an empty list, when no item matches.
WQ_WIDGETS_EXPORT std::optional<QList<QAction*>> itemsWithAction(const QWidget& menu, const QByteArray& action, bool checkSubMenus);
/// Takes every item that sends `action` out of the menu and, always, out of
/// its submenus. A matching item goes with its submenu, which is not searched.
WQ_WIDGETS_EXPORT void removeAllItemsWithAction(QWidget& menu, const QByteArray& action);

/// @}

} // namespace wq
