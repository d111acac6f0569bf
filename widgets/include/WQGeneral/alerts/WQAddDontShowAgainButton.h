#pragma once
/// \file
/// Adds a "Don't show again" check box, and optionally a Cancel button, to an
/// alert panel the application builds itself.
///
/// The panel's direct child widgets are walked in order. Each button becomes
/// the reference: the check box will line up with it, the Cancel button takes
/// its frame moved left by its width less 4 pixels (the frames overlap by 4:
/// push-button frames carry a transparent margin), and its clicks now send
/// `buttonsAction` to the target instead of what they did before. Every other
/// widget whose left edge is past x = 40 (the message text, not the icon) sets
/// the check box's left edge. The last of each kind wins.
///
/// The check box gets the left edge (20 when nothing is past 40), the last
/// button's height and the width its title needs; its top sits 4 pixels below
/// the last button's top. Its "representedObject" property holds `attached`,
/// and toggling it sends `checkBoxAction` to the target with the check box.
/// With no button at all, the reference is the panel's bottom-left corner: the
/// check box then lies 4 pixels below the panel's bottom edge, and the Cancel
/// button, when asked for, gets the 230 x 80 frame whose bottom-left is that
/// corner. (The frames are those of a bottom-up layout, turned into Qt's
/// top-down coordinates: y counts down from the panel's top.)
///
/// With a cancelAction, a Cancel button is added with that frame; it sends
/// cancelAction and answers Escape. Actions are message names (see
/// WQActionMessage.h); empty ones send nothing.
///
/// A QMessageBox lays out its children itself and keeps its buttons in a
/// button box, so frames mean nothing there: its buttons (QMessageBox::buttons)
/// are redirected, the check box becomes the box's own (QMessageBox::checkBox,
/// laid out below the text) and Cancel is added among its buttons as the
/// escape button.

#include <WQGeneral/WQWidgetsExport.h>

#include <QByteArray>
#include <QVariant>

class QObject;
class QWidget;

namespace wq {

/// \addtogroup alerts
/// @{

/// Adds the check box, and with a cancelAction a Cancel button, to panel as described above.
WQ_WIDGETS_EXPORT void WQAddDontShowAgainButton(QObject* target, QWidget* panel, const QVariant& attached,
                                                const QByteArray& checkBoxAction, const QByteArray& buttonsAction,
                                                const QByteArray& cancelAction = QByteArray());

/// The property of the check box that holds `attached`.
inline constexpr char kWQRepresentedObjectProperty[] = "representedObject";

/// @}

} // namespace wq
