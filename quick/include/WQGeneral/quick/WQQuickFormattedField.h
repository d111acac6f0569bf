#pragma once
/// \class wq::WQQuickFormattedField
/// Drives a Qt Quick text field (a TextField or TextInput) through a
/// WQFormatter, keystroke for keystroke as WQLineEdit does: typing, pasting,
/// cutting, deleting and input-method commits are judged by the formatter,
/// which keeps, rewrites or refuses them; undo and redo (Ctrl+Z,
/// Ctrl+Shift+Z) step through the texts the user saw; Escape gives up the
/// edit; Return and leaving the field read the text into the value, and a
/// text the formatter cannot read keeps the focus. Tabbing into the field
/// selects its text.
///
/// In QML it is FormattedField, which FormattedTextField (a TextField) wraps:
/// \code{.qml}
/// FormattedTextField { formatterKind: FormattedTextField.CalculatingMoney; places: 2 }
/// \endcode
/// The formatter is chosen by formatterKind and places (the money kinds
/// belong to owner, or to the system's settings), or set from C++ with
/// setFormatter(). While the field's formatter judges an edit, the field is
/// the toolkit's key field editor.

#include <WQGeneral/WQQuickExport.h>
#include <WQGeneral/formatters/WQFieldSession.h>
#include <WQGeneral/quick/WQQuickMoneyOwner.h>

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QVariant>

#include <memory>

namespace wq {

class WQQuickFormattedFieldPrivate;

/// \addtogroup quick
/// @{

class WQ_QUICK_EXPORT WQQuickFormattedField : public QObject {
    Q_OBJECT
    /// The text field driven: a TextField, a TextInput or anything with their properties.
    Q_PROPERTY(QQuickItem* textField READ textField WRITE setTextField NOTIFY textFieldChanged)
    /// The kind of formatter in use; setting it installs one.
    Q_PROPERTY(FormatterKind formatterKind READ formatterKind WRITE setFormatterKind NOTIFY formatterChanged)
    /// Decimal places of the money kinds, 0 to 9 (2 at first).
    Q_PROPERTY(int places READ places WRITE setPlaces NOTIFY placesChanged)
    /// The owner of the money kinds' formatters; none: the system's settings and standard typing.
    Q_PROPERTY(wq::WQQuickMoneyOwner* owner READ owner WRITE setOwner NOTIFY ownerChanged)
    /// The value: a number for the number kinds, a date (midnight, local time)
    /// for the date kinds, the text without formatter; undefined when empty.
    Q_PROPERTY(QVariant value READ value WRITE setValue NOTIFY valueChanged)
public:
    /// The framework's formatters by kind (see WQFieldKind).
    enum FormatterKind { NoFormatter, Date, ExtendedDate, WholeNumber, Decimal, Money, CalculatingMoney, Custom };
    Q_ENUM(FormatterKind)

    /// A driver without field or formatter.
    explicit WQQuickFormattedField(QObject* parent = nullptr);
    ~WQQuickFormattedField() override;

    /// The driver of a text field, or nullptr.
    static WQQuickFormattedField* of(const QObject* textField);

    /// The text field driven, or nullptr.
    QQuickItem* textField() const;
    /// Drives textField from now on; it shows the value at once.
    void setTextField(QQuickItem* textField);

    /// The kind of the formatter in use (Custom for one set with setFormatter()).
    FormatterKind formatterKind() const;
    /// Installs a formatter of the kind; Custom keeps the one in place.
    void setFormatterKind(FormatterKind kind);
    /// The money kinds' decimal places.
    int places() const noexcept;
    /// Sets the money kinds' decimal places (clamped to 0 to 9).
    void setPlaces(int places);
    /// The money kinds' owner, or nullptr.
    WQQuickMoneyOwner* owner() const;
    /// Sets the money kinds' owner (nullptr: the system's settings).
    void setOwner(WQQuickMoneyOwner* owner);

    /// Shows the value again through formatter; the kind becomes Custom.
    void setFormatter(std::shared_ptr<WQFormatter> formatter);
    /// The formatter in use, or null.
    const std::shared_ptr<WQFormatter>& formatter() const noexcept;
    /// The session that holds the field's value, history and judgement.
    WQFieldSession& session() noexcept;

    /// The value as QML sees it (see the value property).
    QVariant value() const;
    /// Shows a value and starts a new history.
    void setValue(const QVariant& value);

    /// The text the formatter shows for a value (a number or a date, as for
    /// the value property): for a list's cells beside the field.
    Q_INVOKABLE QString displayString(const QVariant& value) const;
    /// Reads the edited text into the value now, as leaving the field does.
    /// False (and valueRefused) when the formatter cannot read it.
    Q_INVOKABLE bool validateEditing();
    /// Gives up the edit: the value from before it shows again, all selected.
    Q_INVOKABLE void abortEditing();
    /// One step back through the texts the user saw.
    Q_INVOKABLE void undoEdit();
    /// One step forth again.
    Q_INVOKABLE void redoEdit();
    /// True when the text was edited since the value was last set or read.
    Q_INVOKABLE bool hasPendingEdit() const;

signals:
    /// The text field driven changed.
    void textFieldChanged();
    /// Another formatter is in use.
    void formatterChanged();
    /// The money kinds' places changed.
    void placesChanged();
    /// The money kinds' owner changed.
    void ownerChanged();
    /// The value changed: set, or read from the text when editing ended.
    void valueChanged();
    /// The user changed the text and the formatter has had its say.
    void editedTextChanged(const QString& text);
    /// An edit was refused or rewritten, with the formatter's reason.
    void editRefused(const QString& description);
    /// The finished text could not be read; the field keeps the focus.
    void valueRefused(const QString& description);
    /// The last refusal is over: an edit or a value went through since.
    void refusalCleared();

protected:
    /// The field's keys, input-method commits and focus changes pass here first.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QVariant _wq_objectValueFor(const QVariant& value) const;
    bool _wq_deliver(QObject* item, QEvent* event, const WQEditEvent& edit);
    void _wq_focusOut(QObject* item, QEvent* event);
    void _wq_install(std::shared_ptr<WQFormatter> formatter);
    void _wq_installKind();

    Q_DECLARE_PRIVATE_D(_wq_d, WQQuickFormattedField)
    std::unique_ptr<WQQuickFormattedFieldPrivate> _wq_d;
};

/// @}

} // namespace wq
