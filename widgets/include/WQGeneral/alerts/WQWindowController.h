#pragma once
/// \class wq::WQWindowController
/// The controller of one top-level window: it shows the window's alert sheets
/// and supplies its toolbar from a dictionary.
///
/// Sheets. Each sheet operation shows a window-modal message box on the window
/// and returns at once, always false, so that a validation can return its
/// answer straight: `return controller.sheetForBlankTextField(field, name);`.
/// One sheet shows at a time; later ones wait their turn. Texts are English
/// sentences translated through the application's translations (context
/// "WQGeneral"); untranslated, the English shows.
///
/// The Edit/Cancel sheets (blank, negative, date with a field) are answered
/// with Edit (the default: the user goes on editing the rejected text) or
/// Cancel (Escape: the field's edit is thrown away, its value from before the
/// edit comes back, all selected). The refusal sheets of the integer, decimal
/// and date formatters carry a "Don't show again" check box; ticked when the
/// sheet closes, it silences that warning for good (WQWarningSuppression.h)
/// and the operation then shows nothing.
///
/// Toolbar. A controller that describes its toolbar overrides
/// toolbarDictionary() (keys in <WQGeneral/toolbar/WQToolbarKeys.h>): views are
/// the controller's properties holding widgets, actions its slots, both found
/// by name. setUpToolbar() puts the toolbar on the window.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/toolbar/WQToolbarDelegate.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

class QMessageBox;
class QWidget;

namespace wq {

class WQWindowControllerPrivate;

/// \addtogroup alerts
/// @{

class WQToolbar;

class WQ_WIDGETS_EXPORT WQWindowController : public QObject, public WQToolbarDelegate {
    Q_OBJECT
public:
    /// Return codes of the Edit/Cancel sheets.
    enum SheetReturnCode { DefaultReturn = 1, AlternateReturn = 0, OtherReturn = -1 };

    /// Owns the window: it goes with the controller.
    explicit WQWindowController(std::unique_ptr<QWidget> window);
    /// Takes charge of a window someone else owns; the controller becomes the
    /// window's child and goes with it.
    explicit WQWindowController(QWidget& window);
    ~WQWindowController() override;
    WQWindowController(const WQWindowController&) = delete;
    WQWindowController& operator=(const WQWindowController&) = delete;

    /// The window in the controller's charge.
    QWidget* window() const;
    /// The controller of a window, if it has one.
    static WQWindowController* controllerOf(const QWidget* window);

    // --- Edit/Cancel sheets: the field travels as the sheet's context; the
    // name may be empty ("The  field is blank.", two blanks).
    /// Edit/Cancel sheet saying the named field is blank; the field travels as the sheet's context.
    bool sheetForBlankTextField(QWidget* textField, const QString& name = QString());
    /// Edit/Cancel sheet saying the named field must not be negative.
    bool sheetForNegativeTextField(QWidget* textField, const QString& name = QString());
    /// Edit/Cancel sheet saying the named field must be greater than zero.
    bool sheetForNegativeOrZeroTextField(QWidget* textField, const QString& name = QString());

    // --- Refusals of a formatter; the error description is the title. The
    // field or column is not consulted.
    /// A whole-number formatter's refusal, titled with its error description; can be silenced.
    bool sheetForIntegerTextFieldValidationFailure(QObject* textField, const QString& localizedTextFieldName,
                                                   const QString& errorDescription);
    /// A decimal or amount formatter's refusal in a table column, titled with its error description; can be silenced.
    bool sheetForDecimalColumnValidationFailure(QObject* column, const QString& localizedTextFieldName,
                                                const QString& errorDescription, bool asATM);
    /// A decimal or amount formatter's refusal in a field, titled with its error description; can be silenced.
    bool sheetForDecimalFieldValidationFailure(QObject* textField, const QString& localizedTextFieldName,
                                               const QString& errorDescription, bool asATM);
    /// With a date field an Edit/Cancel sheet that is never silenced; without
    /// one (a table column) the sheet that can be. The failed text is not
    /// consulted.
    bool sheetForDateField(QWidget* dateField, const QString& validationFailure,
                           const QString& localizedTextFieldName, const QString& localizedDateSeparator,
                           const QString& errorDescription);

    /// The application's own warning as a sheet titled title, with a "Don't
    /// show again" check box: ticked when the sheet closes, it silences the
    /// warning under suppressionKey for good (registered with
    /// WQWarningSuppression::registerKey, the key is listed on the settings
    /// page). A silenced warning shows nothing.
    bool sheetForSuppressibleWarning(const QString& title, const QString& information,
                                     const QString& suppressionKey);

    /// The sheet showing on the window, or null.
    QMessageBox* attachedSheet() const;
    /// The end of an Edit/Cancel sheet: on Cancel (OtherReturn) the field's
    /// edit is aborted and its text selected; on Edit nothing happens.
    virtual void invalidTextFieldSheetDidEnd(QMessageBox* sheet, int returnCode, QWidget* contextInfo);

    // --- Toolbar
    /// The toolbar's description; none by default.
    virtual std::optional<QVariantMap> toolbarDictionary() const;
    std::unique_ptr<WQToolbarItem> toolbarItemForItemIdentifier(WQToolbar& toolbar, const QString& itemIdentifier,
                                                                bool willBeInsertedIntoToolbar) override;
    QStringList toolbarDefaultItemIdentifiers(WQToolbar& toolbar) override;
    QStringList toolbarAllowedItemIdentifiers(WQToolbar& toolbar) override;
    /// Makes the window's toolbar with this controller as its delegate and
    /// puts it at the top of the window: in a QMainWindow's toolbar area, else
    /// first in the window's box layout (otherwise the caller places it).
    WQToolbar* setUpToolbar(const QString& identifier);
    /// The toolbar made by setUpToolbar(), or nullptr.
    WQToolbar* toolbar() const;

private:
    using SheetEnd = std::function<void(QMessageBox& sheet, int returnCode)>;
    void _wq_adoptWindow();
    void _wq_beginSheet(QMessageBox* sheet, SheetEnd didEnd);
    void _wq_showNextSheet();
    void _wq_startEditCancelSheet(QWidget* field, const QString& title, const QString& message);
    void _wq_startAlertSheetTitle(const QString& title, const QString& information, const QString& suppressionKey);
    void _wq_alertDidEnd(QMessageBox& alert, int returnCode, const QString& suppressionKey);
    QMessageBox* _wq_newSheet(const QString& title, const QString& message);

    Q_DECLARE_PRIVATE_D(_wq_d, WQWindowController)
    std::unique_ptr<WQWindowControllerPrivate> _wq_d;
};

/// @}

} // namespace wq
