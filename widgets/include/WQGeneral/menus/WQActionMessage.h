#pragma once
/// \file
/// Actions that send a message by name. An item of a menu or toolbar names
/// the message it sends ("newTransaction", "toggleCalculator") and the object
/// it sends it to; menus can then be searched and pruned by that name (see
/// WQMenuExtensions.h) and toolbars described by data.
///
/// The message is a slot or Q_INVOKABLE method of the target, found by name.
/// It may take the sender (a QObject* or a pointer to any class the sender
/// is) or nothing; with both overloads present the one with the sender wins.
///
/// Without a target the message goes to the first that answers it of: the
/// focused widget and its parents up to its window, that window's controller
/// (the object held in the window's "wqWindowController" property), and the
/// application object.

#include <WQGeneral/WQWidgetsExport.h>

#include <QByteArray>
#include <QKeySequence>
#include <QString>

class QAction;
class QObject;
class QWidget;

namespace wq {

/// \addtogroup menus
/// @{

/// The dynamic property of a window that names its controller.
inline constexpr char kWQWindowControllerProperty[] = "wqWindowController";

/// From now on, triggering the item sends `action` to `target` (not owned;
/// forgotten when it is destroyed). An empty action sends nothing; setting a
/// new one replaces the old.
WQ_WIDGETS_EXPORT void wq_setAction(QAction& item, const QByteArray& action, QObject* target = nullptr);
/// The name of the message the item sends; empty when it sends none.
WQ_WIDGETS_EXPORT QByteArray wq_action(const QAction& item);
/// The item's target; null when it has none or it was destroyed.
WQ_WIDGETS_EXPORT QObject* wq_target(const QAction& item);

/// Adds an item with a title, message and shortcut to the end of a menu,
/// menu bar or toolbar; the item belongs to that widget.
WQ_WIDGETS_EXPORT QAction* wq_addItemWithTitle(QWidget& menu, const QString& title, const QByteArray& action,
                                               QObject* target = nullptr, const QKeySequence& keyEquivalent = {});

/// Sends `action` to `target` (or, without one, along the chain above) with
/// `sender` as its argument. False when nobody answers it.
WQ_WIDGETS_EXPORT bool WQSendAction(const QByteArray& action, QObject* target, QObject* sender);
/// True when target has a message named `action` to receive (with or
/// without the sender).
WQ_WIDGETS_EXPORT bool WQAnswersAction(const QObject& target, const QByteArray& action);
/// The object that would receive `action` sent without a target, or null.
WQ_WIDGETS_EXPORT QObject* WQTargetForAction(const QByteArray& action);

/// @}

} // namespace wq
