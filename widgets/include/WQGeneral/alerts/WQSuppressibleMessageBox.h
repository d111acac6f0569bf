#pragma once
/// \file
/// "Don't show again" for the application's own warnings, under any key the
/// user's choice is kept under (see WQWarningSuppression::registerKey for
/// listing it on the settings page):
///
/// \code
///   // once, at start-up, so the settings page lists it
///   WQWarningSuppression::registerKey(kFutureDateKey, futureDateDescription);
///   // where the warning is due
///   WQSuppressibleWarning(window, kFutureDateKey, futureDateTitle, futureDateExplanation);
/// \endcode
///
/// For a window-modal sheet on a controller's window, see
/// WQWindowController::sheetForSuppressibleWarning().

#include <WQGeneral/WQWidgetsExport.h>

#include <QMessageBox>
#include <QString>

class QWidget;

namespace wq {

/// \addtogroup alerts
/// @{

/// Gives box a "Don't show again" check box (QMessageBox::setCheckBox, so
/// the box lays it out below its text): ticked when the box finishes,
/// however it closes, it silences the warning under key for good. Replaces
/// a check box the box had.
WQ_WIDGETS_EXPORT void WQAddSuppressionCheckBox(QMessageBox& box, const QString& key);

/// One call for a modal warning the user can silence: unless the warning
/// under key is silenced, shows a warning box with title (the box's text),
/// information (its informative text), the buttons and the check box, and
/// answers the button clicked (Escape answers the escape button Qt chose).
/// A silenced warning shows nothing and answers defaultButton.
WQ_WIDGETS_EXPORT QMessageBox::StandardButton
WQSuppressibleWarning(QWidget* parent, const QString& key, const QString& title, const QString& information,
                      QMessageBox::StandardButtons buttons = QMessageBox::Ok,
                      QMessageBox::StandardButton defaultButton = QMessageBox::Ok);

/// @}

} // namespace wq
