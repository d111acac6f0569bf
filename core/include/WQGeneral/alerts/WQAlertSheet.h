#pragma once
/// \class wq::WQAlertSheet
/// What one validation alert sheet says, whatever toolkit shows it: its
/// buttons, title and message, and for the sheets of formatter refusals the
/// key under which "Don't show again" silences it. Each toolkit's sheets are
/// made from these, so a warning silenced in one kind of window stays silent
/// in the other (WQWarningSuppression). Texts go through the framework's
/// translations; a "%@" in a name or description is shown as it is.

#include <WQGeneral/WQCoreExport.h>

#include <QString>

#include <optional>

namespace wq {

/// \addtogroup alerts
/// @{

struct WQ_CORE_EXPORT WQAlertSheet {
    /// The sheet's buttons.
    enum class Buttons {
        EditCancel,           ///< "Edit" (go on editing) and "Cancel" (the field's edit is given up)
        OKWithDontShowAgain,  ///< the default button and the "Don't show again" check box
    };

    Buttons buttons = Buttons::EditCancel; ///< which buttons it has
    QString title;                         ///< its title, shown bold
    QString message;                       ///< the explanation under the title
    QString suppressionKey;                ///< what "Don't show again" silences; empty for Edit/Cancel sheets

    /// "The <name> field is blank." (an absent name leaves two blanks).
    static WQAlertSheet forBlankTextField(const QString& name);
    /// "The <name> field is negative."
    static WQAlertSheet forNegativeTextField(const QString& name);
    /// "The <name> field is negative or zero."
    static WQAlertSheet forNegativeOrZeroTextField(const QString& name);
    /// A whole-number formatter's refusal; nullopt while silenced.
    static std::optional<WQAlertSheet> forIntegerTextFieldValidationFailure(const QString& name,
                                                                            const QString& errorDescription);
    /// A decimal or amount formatter's refusal in a table column; nullopt while silenced.
    static std::optional<WQAlertSheet> forDecimalColumnValidationFailure(const QString& name,
                                                                         const QString& errorDescription, bool asATM);
    /// A decimal or amount formatter's refusal in a field; nullopt while silenced.
    static std::optional<WQAlertSheet> forDecimalFieldValidationFailure(const QString& name,
                                                                        const QString& errorDescription, bool asATM);
    /// A date formatter's refusal: with a field an Edit/Cancel sheet that is
    /// never silenced, without one (a column) the sheet that can be.
    static std::optional<WQAlertSheet> forDateField(bool withField, const QString& name,
                                                    const QString& dateSeparator, const QString& errorDescription);
};

/// @}

} // namespace wq
