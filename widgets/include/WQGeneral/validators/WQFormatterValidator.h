#pragma once
/// \class wq::WQFormatterValidator
/// Lets a plain QLineEdit, an editable QComboBox or any other text input that
/// takes a QValidator use a WQFormatter: each edit is judged by the formatter,
/// which may refuse it (Invalid), rewrite it (the text and cursor become the
/// formatter's) or let it stand; the finished text is read by the formatter.
///
/// validate() answers Acceptable when the text reads as a value and is
/// already shown as the formatter shows that value, Intermediate otherwise;
/// fixup() then turns a text that reads into that display form, so Return or
/// leaving the input ends with "$1,234.00" where "1234" was typed, and a text
/// that does not read keeps the input from finishing (no editingFinished).
///
/// What a validator cannot see, and how this one makes up for it:
/// - The text and selection before the edit: validate() is given only the
///   text after it and the cursor. The validator remembers the last text it
///   let through for each input it serves (the focused object when validate()
///   runs, recognised by its text), and takes the edit to be the one range
///   in which the old and new texts differ, ending at the new cursor. That
///   range of the old text was the selection, as a formatter expects. For an
///   input it has not seen before, the character before the cursor is taken
///   as the one just typed.
/// - The key that was pressed: an edit that only removes text counts as the
///   delete key (Backspace) when the removed range ended at the old cursor,
///   as forward Delete otherwise; Alt is read from the keyboard's modifiers.
/// - The selection a formatter sets: a validator can only place the cursor,
///   which goes to the end of it.
/// - Texts set by the program on an input that does not have the focus are
///   not edits: they are answered by reading them, never rewritten.
///
/// A refused edit is announced by editRefused() with the formatter's reason.
/// The pop-up calculator of a calculating money formatter opens only from a
/// WQLineEdit; here the operator is simply taken out of the text.
///
/// Only QtGui is used, so that other toolkits over QtGui can take the same
/// approach.

#include <WQGeneral/WQWidgetsExport.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <QValidator>

#include <memory>

namespace wq {

/// \addtogroup validators
/// @{

class WQFormatterValidatorPrivate;

class WQ_WIDGETS_EXPORT WQFormatterValidator : public QValidator {
    Q_OBJECT
public:
    /// A validator that judges through formatter (which may be shared with fields).
    explicit WQFormatterValidator(std::shared_ptr<WQFormatter> formatter, QObject* parent = nullptr);
    ~WQFormatterValidator() override;

    /// Replaces the formatter; announces changed() so inputs judge their text again.
    void setFormatter(std::shared_ptr<WQFormatter> formatter);
    /// The formatter in use.
    const std::shared_ptr<WQFormatter>& formatter() const noexcept;

    /// Judges the edit that led to input; may rewrite input and pos.
    State validate(QString& input, int& pos) const override;
    /// A text that reads as a value becomes the formatter's display of it.
    void fixup(QString& input) const override;

signals:
    /// An edit was refused, with the formatter's reason (never empty).
    void editRefused(const QString& errorDescription);

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQFormatterValidator)
    std::unique_ptr<WQFormatterValidatorPrivate> _wq_d;
};

/// @}

} // namespace wq
