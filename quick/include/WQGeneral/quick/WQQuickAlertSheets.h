#pragma once
/// \class wq::WQQuickAlertSheets
/// The validation alert sheets of a Qt Quick window (AlertSheets in QML):
/// the same sheets, texts and "Don't show again" as WQWindowController's,
/// shown as a modal dialog over the window (AlertSheetDialog.qml). Each
/// operation returns at once, always false, so a validation can return its
/// answer straight. One sheet shows at a time; later ones wait their turn.
///
/// Edit/Cancel sheets are answered with Edit (go on editing the rejected
/// text) or Cancel and Escape (the field's edit is given up, its value from
/// before comes back, all selected). The refusal sheets of the whole-number,
/// decimal and date formatters carry "Don't show again"; ticked when the
/// sheet closes, it silences that warning for good, in the store the widgets'
/// sheets read too (WQWarningSuppression).
///
/// \code{.qml}
/// AlertSheets { id: sheets }
/// FormattedTextField { id: amount; formatterKind: FormattedTextField.Money
///                      onEditRefused: (description) => sheets.presentRefusal(amount, qsTr("Amount"), description) }
/// \endcode

#include <WQGeneral/WQQuickExport.h>
#include <WQGeneral/alerts/WQAlertSheet.h>

#include <QObject>
#include <QPointer>
#include <QQmlParserStatus>
#include <QQuickWindow>
#include <QStringList>
#include <QVariantMap>

#include <deque>
#include <memory>
#include <optional>

namespace wq {

class WQQuickAlertSheetsPrivate;

/// \addtogroup quick
/// @{

class WQ_QUICK_EXPORT WQQuickAlertSheets : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    /// The window the sheets show over; by default the one it is declared in.
    Q_PROPERTY(QQuickWindow* window READ window WRITE setWindow NOTIFY windowChanged)
    /// True while a sheet shows.
    Q_PROPERTY(bool showing READ isShowing NOTIFY sheetChanged)
    /// The title of the sheet showing (bold, above the message).
    Q_PROPERTY(QString title READ title NOTIFY sheetChanged)
    /// The message of the sheet showing.
    Q_PROPERTY(QString message READ message NOTIFY sheetChanged)
    /// True for an Edit/Cancel sheet, false for one with "Don't show again".
    Q_PROPERTY(bool editCancel READ isEditCancel NOTIFY sheetChanged)
    /// The button and check box texts, translated: edit, cancel, ok, dontShowAgain.
    Q_PROPERTY(QVariantMap labels READ labels CONSTANT)
    /// The warnings the user has silenced (their keys).
    Q_PROPERTY(QStringList suppressedKeys READ suppressedKeys NOTIFY suppressedKeysChanged)
public:
    /// Sheets for the window this object is declared in (or set later).
    explicit WQQuickAlertSheets(QObject* parent = nullptr);
    ~WQQuickAlertSheets() override;

    /// The window the sheets show over.
    QQuickWindow* window() const;
    /// Shows the sheets over window from now on.
    void setWindow(QQuickWindow* window);

    /// Edit/Cancel sheet saying the named field is blank.
    Q_INVOKABLE bool sheetForBlankTextField(QObject* textField, const QString& name = QString());
    /// Edit/Cancel sheet saying the named field must not be negative.
    Q_INVOKABLE bool sheetForNegativeTextField(QObject* textField, const QString& name = QString());
    /// Edit/Cancel sheet saying the named field must be greater than zero.
    Q_INVOKABLE bool sheetForNegativeOrZeroTextField(QObject* textField, const QString& name = QString());
    /// A whole-number formatter's refusal; can be silenced.
    Q_INVOKABLE bool sheetForIntegerTextFieldValidationFailure(QObject* textField, const QString& name,
                                                               const QString& errorDescription);
    /// A decimal or amount formatter's refusal in a table column; can be silenced.
    Q_INVOKABLE bool sheetForDecimalColumnValidationFailure(QObject* column, const QString& name,
                                                            const QString& errorDescription, bool asATM);
    /// A decimal or amount formatter's refusal in a field; can be silenced.
    Q_INVOKABLE bool sheetForDecimalFieldValidationFailure(QObject* textField, const QString& name,
                                                           const QString& errorDescription, bool asATM);
    /// With a date field an Edit/Cancel sheet that is never silenced; without
    /// one (a column) the sheet that can be.
    Q_INVOKABLE bool sheetForDateField(QObject* dateField, const QString& name, const QString& dateSeparator,
                                       const QString& errorDescription);
    /// The sheet that explains a formatted field's refusal, chosen by its
    /// formatter: the date, whole-number or decimal sheet (money fields take
    /// the decimal one, in their typing mode). Nothing for other fields.
    Q_INVOKABLE bool presentRefusal(QObject* textField, const QString& name, const QString& errorDescription);

    /// Ends the sheet showing: cancel is Cancel (or Escape), dontShowAgain the
    /// check box. The dialog calls it.
    Q_INVOKABLE void finish(bool cancel, bool dontShowAgain);
    /// Shows every silenced warning again.
    Q_INVOKABLE void showAllWarningsAgain();

    /// True while a sheet shows.
    bool isShowing() const;
    /// The title of the sheet showing.
    QString title() const;
    /// The message of the sheet showing.
    QString message() const;
    /// True when the sheet showing is an Edit/Cancel sheet.
    bool isEditCancel() const;
    /// The translated button and check box texts.
    QVariantMap labels() const;
    /// The silenced warnings' keys.
    QStringList suppressedKeys() const;
    /// The dialog the sheets show in, once one was shown.
    QObject* dialog() const;

    /// Nothing to do before the properties are set.
    void classBegin() override {}
    /// Takes the window it is declared in, unless one was given.
    void componentComplete() override;

signals:
    /// The window changed.
    void windowChanged();
    /// Another sheet shows, or none.
    void sheetChanged();
    /// A warning was silenced or shown again.
    void suppressedKeysChanged();

private:
    bool _wq_findWindow();
    void _wq_begin(const std::optional<WQAlertSheet>& sheet, QObject* field);
    void _wq_showNext();
    bool _wq_makeDialog();
    void _wq_cancelEdit(QObject* field);

    Q_DECLARE_PRIVATE_D(_wq_d, WQQuickAlertSheets)
    std::unique_ptr<WQQuickAlertSheetsPrivate> _wq_d;
};

/// @}

} // namespace wq
