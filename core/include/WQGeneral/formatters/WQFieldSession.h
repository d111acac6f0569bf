#pragma once
/// \class wq::WQFieldSession
/// What a formatted text field is, apart from drawing and input: the object
/// value, the text the user saw, the judgement of every edit through the
/// formatter, refusals and their end, undo and redo through the texts the
/// user saw, Escape's abort and the reading of the finished text. Each
/// toolkit's field keeps one and tells it what happens (an event that may
/// edit begins and ends, the text was edited or changed, the selection
/// moved); the session reads and sets the field's text and selection through
/// the small WQFieldSession::Field interface.
///
/// Edits made while an event is handled are judged once the field is done
/// with it, so the toolkit's own signals all go out before any correction.
/// While the formatter judges an edit the session is the toolkit's key field
/// editor (its string() is the text from before the edit) and the event is
/// the current one. An edit from outside any event (a slot called by the
/// application) is judged at once; text set by the program is no edit but is
/// read when editing ends.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/formatters/WQFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQNotificationCenter.h>

#include <QObject>
#include <QVariant>

#include <memory>
#include <vector>

namespace wq {

class WQFieldSessionPrivate;

/// \addtogroup formatters
/// @{

class WQ_CORE_EXPORT WQFieldSession : public QObject, public WQFieldEditor {
    Q_OBJECT
public:
    /// The toolkit's text field, as the session sees it.
    class Field {
    public:
        virtual ~Field() = default;
        /// The text the field shows now.
        virtual QString text() const = 0;
        /// The field's selection now (a caret has length 0).
        virtual WQRange selectedRange() const = 0;
        /// Replaces the whole text (only called when it differs).
        virtual void setText(const QString& text) = 0;
        /// Selects, or places the caret; out-of-range values are clamped.
        virtual void setSelectedRange(WQRange range) = 0;
    };

    /// A session over field (which must outlive it) judging through formatter (may be null).
    explicit WQFieldSession(Field& field, std::shared_ptr<WQFormatter> formatter = nullptr,
                            QObject* parent = nullptr);
    ~WQFieldSession() override;

    /// The field editor formatters see while they judge an edit: this session
    /// unless the toolkit's field is one itself and names itself here.
    void setFieldEditor(WQFieldEditor* editor) noexcept;

    /// The edit event of a key press: Backspace is the delete key (character
    /// 127), forward Delete carries no character, Alt is the option key.
    static WQEditEvent keyEvent(int key, const QString& text, Qt::KeyboardModifiers modifiers);

    /// Shows the object value again through the new formatter (unless the user
    /// is editing). Without formatter the value is the text.
    void setFormatter(std::shared_ptr<WQFormatter> formatter);
    /// The formatter in use, or null.
    const std::shared_ptr<WQFormatter>& formatter() const noexcept;
    /// The formatter's display text for value; empty where it has none.
    QString displayString(const QVariant& value) const;

    /// The value last set or read from the text when editing ended.
    QVariant objectValue() const;
    /// Displays the value through the formatter, caret at the end, and starts a new history.
    void setObjectValue(const QVariant& value);
    /// Reads the edited text into the object value, as ending the edit does.
    /// False (and valueRefused) when the formatter cannot read it.
    bool validateEditing();
    /// The value the field stands for now: while the user edits, what the
    /// text reads as (objectValue() when it cannot be read), else objectValue().
    QVariant currentObjectValue() const;
    /// True when the text was edited since the value was last set or read.
    bool hasPendingEdit() const noexcept;
    /// Gives up the edit: the value from before it shows again, all selected
    /// (it can be undone).
    void abortEditing();
    /// What Escape does: gives up a pending edit and answers true; with none,
    /// answers false and the key goes on (a dialog closes).
    bool escape();

    /// One step back through the texts the user saw.
    void undoEdit();
    /// One step forth again after undoEdit().
    void redoEdit();
    /// True when undoEdit() has something to undo.
    bool canUndoEdit() const noexcept;
    /// True when redoEdit() has something to redo.
    bool canRedoEdit() const noexcept;

    /// An event that may edit the text begins (a key, an input method's
    /// commit, a drop, a middle-button paste); events nest.
    void beginEvent(const WQEditEvent& event);
    /// The event ends: an edit made while it was handled is judged now.
    void endEvent();
    /// The user changed the text (the toolkit's "edited" signal).
    void textEdited();
    /// The text changed for whatever reason (the toolkit's "changed" signal).
    void textChanged();
    /// The selection or caret moved.
    void selectionChanged();

    // WQFieldEditor
    WQRange selectedRange() const override;
    void setSelectedRange(WQRange range) override;
    QString string() const override;

signals:
    /// The object value changed: set, or read from the text when editing ended.
    void objectValueChanged(const QVariant& value);
    /// The user changed the text and the formatter has had its say.
    void editedTextChanged(const QString& text);
    /// An edit was refused or rewritten, with the formatter's reason.
    void editRefused(const QString& errorDescription);
    /// The finished text could not be read.
    void valueRefused(const QString& errorDescription);
    /// The last refusal is over: an edit or a value went through since.
    void refusalCleared();

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQFieldSession)
    std::unique_ptr<WQFieldSessionPrivate> _wq_d;
};

/// @}

} // namespace wq
