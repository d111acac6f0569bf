#pragma once
/// \class wq::WQLineEdit
/// A line edit that runs every edit through a WQFormatter: typing, pasting,
/// cutting, deleting, undo and redo, drops and input-method commits. The
/// formatter sees the text and selection before and after the edit and keeps
/// the proposal, rewrites it, or refuses it (the field then goes back to what
/// it showed). When editing ends (focus leaves, Return), the text is turned
/// into the field's object value; a text the formatter cannot read keeps the
/// focus. Refusals that come with a description are announced by signals for
/// the application to show, and their end (the next edit the formatter takes
/// without complaint) too. When the formatter announces a change of its
/// display, the field shows its value again (unless the user is editing it).
///
/// Undo and redo (Ctrl+Z, Ctrl+Shift+Z, the context menu) step through the
/// texts the user saw, one edit at a time, rewrites included; Escape gives up
/// the edit.
///
/// While the formatter judges an edit, the field is the toolkit's key field
/// editor and the key being handled is its current event (Backspace as
/// character 127, Alt as the option key).
///
/// Forms made in Qt Designer pick the field's formatter by kind and places
/// (the formatterKind and places properties); code can still set any
/// formatter, which the kind then reports as Custom.
///
/// The value is the field's user property (objectValue, notified by
/// objectValueChanged), so QDataWidgetMapper and item delegates read and
/// write the value, not the text: a model's 1234.5 shows as "$1,234.50" in a
/// money field and goes back as a number. Typed beside it: value and
/// valueChanged(double) for the number and money kinds, date and
/// dateChanged(QDate) for the date kinds; a model column of QDates maps the
/// date property (`mapper.addMapping(field, column, "date")`). Date fields
/// take a range (minimumDate, maximumDate), none by default.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QDate>
#include <QLineEdit>
#include <QVariant>

#include <memory>
#include <vector>

namespace wq {

class WQLineEditPrivate;

/// \addtogroup fields
/// @{

class WQ_WIDGETS_EXPORT WQLineEdit : public QLineEdit, public WQFieldEditor {
    Q_OBJECT
    /// The kind of formatter in use; setting it installs one (Designer's choice).
    Q_PROPERTY(FormatterKind formatterKind READ formatterKind WRITE setFormatterKind NOTIFY formatterKindChanged)
    /// Decimal places of the money kinds.
    Q_PROPERTY(int places READ places WRITE setPlaces NOTIFY placesChanged)
    /// The value; what item delegates and QDataWidgetMapper read and write.
    Q_PROPERTY(QVariant objectValue READ currentObjectValue WRITE setObjectValue NOTIFY objectValueChanged USER true
                   DESIGNABLE false)
    /// The value as a number (number and money kinds).
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY valueChanged DESIGNABLE false)
    /// The value as a date (date kinds).
    Q_PROPERTY(QDate date READ date WRITE setDate NOTIFY dateChanged DESIGNABLE false)
    /// The earliest date a date field takes; none when invalid.
    Q_PROPERTY(QDate minimumDate READ minimumDate WRITE setMinimumDate RESET clearMinimumDate NOTIFY dateRangeChanged)
    /// The latest date a date field takes; none when invalid.
    Q_PROPERTY(QDate maximumDate READ maximumDate WRITE setMaximumDate RESET clearMaximumDate NOTIFY dateRangeChanged)
public:
    /// The framework's entry formatters, for forms that choose one by name.
    /// ExtendedDate is the user's short date with the year in four digits.
    enum FormatterKind { NoFormatter, Date, ExtendedDate, WholeNumber, Decimal, Money, CalculatingMoney, Custom };
    Q_ENUM(FormatterKind)

    /// A plain field without formatter.
    explicit WQLineEdit(QWidget* parent = nullptr);
    /// A field that shows and judges its text through formatter.
    explicit WQLineEdit(std::shared_ptr<WQFormatter> formatter, QWidget* parent = nullptr);
    ~WQLineEdit() override;

    /// Shows the object value again through the new formatter. A field
    /// without formatter is a plain line edit whose value is its text.
    void setFormatter(std::shared_ptr<WQFormatter> formatter);
    /// The formatter in use, or null.
    const std::shared_ptr<WQFormatter>& formatter() const noexcept;

    /// Installs a new formatter of the kind (money kinds with places decimal
    /// places, shared per places under the system's settings); Custom keeps
    /// the formatter in place.
    void setFormatterKind(FormatterKind kind);
    /// The kind of the formatter in use (Custom for one set from code).
    FormatterKind formatterKind() const;
    /// Decimal places of the money kinds, 0 to 9 (2 at first).
    void setPlaces(int places);
    /// The money kinds' decimal places.
    int places() const noexcept;

    /// The value last set or read from the text when editing ended.
    QVariant objectValue() const;
    /// Displays the value through the formatter and forgets pending edits.
    void setObjectValue(const QVariant& value);
    /// The value the field stands for now: while the user edits, what the
    /// text reads as (objectValue() when it cannot be read), else
    /// objectValue(). Item delegates read it when they commit, which they
    /// may do before the field ends its edit (Tab, focus leaving).
    QVariant currentObjectValue() const;

    /// currentObjectValue() as a number; 0 when it holds none.
    double value() const;
    /// Shows a number (the number and money kinds' value).
    void setValue(double value);
    /// currentObjectValue() as a date; invalid when it holds none.
    QDate date() const;
    /// Shows a date (the date kinds' value); an invalid one clears the value.
    void setDate(QDate date);

    /// The earliest date text is read as in a date field (minimumDate).
    QDate minimumDate() const;
    /// Sets the earliest date a date field reads, on its date formatter and
    /// on any date formatter it gets later; one after the maximum moves the
    /// maximum. Earlier dates are refused with a message naming the limit.
    void setMinimumDate(QDate minimum);
    /// No earliest date of the field's own.
    void clearMinimumDate() { setMinimumDate(QDate()); }
    /// The latest date text is read as in a date field (maximumDate).
    QDate maximumDate() const;
    /// Sets the latest date a date field reads; one before the minimum moves the minimum.
    void setMaximumDate(QDate maximum);
    /// No latest date of the field's own.
    void clearMaximumDate() { setMaximumDate(QDate()); }
    /// Both limits at once, as QDateEdit::setDateRange.
    void setDateRange(QDate minimum, QDate maximum);

    /// Reads the edited text into the object value now, as leaving the field
    /// does. False (and valueRefused) when the formatter cannot read it.
    bool validateEditing();
    /// True when the text was edited since the value was last set or read.
    bool hasPendingEdit() const noexcept;
    /// Gives up the edit: the value from before it shows again, all selected.
    /// What Escape does while there is an edit (it can be undone).
    void abortEditing();

    /// One step back or forth through the texts the user saw.
    void undoEdit();
    /// Steps forward again after undoEdit().
    void redoEdit();
    /// True when undoEdit() has something to undo.
    bool canUndoEdit() const noexcept;
    /// True when redoEdit() has something to redo.
    bool canRedoEdit() const noexcept;

    // WQFieldEditor
    WQRange selectedRange() const override;
    void setSelectedRange(WQRange range) override;
    QString string() const override;

signals:
    /// The object value changed: set, or read from the text when editing ended.
    void objectValueChanged(const QVariant& value);
    /// With objectValueChanged, when the value is a number or the field's
    /// formatter one of numbers (0 for no value).
    void valueChanged(double value);
    /// With objectValueChanged, when the value is a date or the field's
    /// formatter one of dates (an invalid date for no value).
    void dateChanged(QDate date);
    /// The user changed the text and the formatter has had its say.
    void editedTextChanged(const QString& text);
    /// An edit was refused or rewritten, with the formatter's reason.
    void editRefused(const QString& errorDescription);
    /// The finished text could not be read; the field keeps the focus.
    void valueRefused(const QString& errorDescription);
    /// The last refusal is over: an edit or a value went through since.
    void refusalCleared();
    /// The formatter kind changed (set, or a formatter set from code made it Custom or NoFormatter).
    void formatterKindChanged(wq::WQLineEdit::FormatterKind kind);
    /// The money kinds' decimal places changed.
    void placesChanged(int places);
    /// The earliest or latest date a date field takes changed.
    void dateRangeChanged(QDate minimum, QDate maximum);

protected:
    /// Records the key or input-method text being handled, so that its edit is judged once the line edit is done with it.
    bool event(QEvent* event) override;
    /// Undo and redo go through the field's own history and Escape gives up a pending edit; other keys go to the line edit, their edits to the formatter.
    void keyPressEvent(QKeyEvent* event) override;
    /// Ends editing as validateEditing() does, and keeps the focus when the text cannot be read; switching windows or opening a menu does not end it.
    void focusOutEvent(QFocusEvent* event) override;
    /// A context menu whose undo and redo use the field's own history.
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQLineEdit)
    std::unique_ptr<WQLineEditPrivate> _wq_d;
};

/// A new formatter of the kind; nullptr for NoFormatter and Custom.
WQ_WIDGETS_EXPORT std::shared_ptr<WQFormatter> WQMakeFormatter(WQLineEdit::FormatterKind kind, int places);

/// @}

} // namespace wq
