#pragma once
/// \class wq::WQFormatter
/// The entry formatter contract: what a text field asks of the formatter
/// attached to it. The widgets layer's WQLineEdit drives any WQFormatter.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QString>
#include <QVariant>

#include <optional>

namespace wq {

/// \addtogroup formatters
/// @{

/// Posted on the default centre, with the formatter as object, by a formatter
/// whose display of the same value has changed (a new date order, say).
inline const QString kWQNotif_FormatterChanged = QStringLiteral("kWQNotif_FormatterChanged");

class WQ_CORE_EXPORT WQFormatter : public WQNotificationSender {
public:
    ~WQFormatter() override = default;

    /// The notification this formatter posts when its display changes; a
    /// field showing its values re-renders them on it.
    virtual QString changeNotificationName() const { return kWQNotif_FormatterChanged; }

    /// The display text for a value; nullopt where the formatter has none.
    virtual std::optional<QString> stringForObjectValue(const QVariant& value) const = 0;

    /// Turns a finished text into a value. On false, errorDescription (when
    /// given) says why, for the user.
    virtual bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const = 0;

    /// Judges the text after an edit. true: the proposal stands as it is.
    /// false with *partialString / *proposedSelectedRange rewritten: the field
    /// shows the rewrite. false with them untouched: the edit is refused.
    /// errorDescription is left null (QString()) when there is nothing to say.
    ///
    /// A rewrite that may come out equal to the proposal (regrouping "$1" + "1"
    /// gives "$11" again) must be stored with rewriteProposal(): a field cannot
    /// otherwise tell it from a refusal and would restore the old text.
    virtual bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                      const QString& originalString, WQRange originalSelectedRange,
                                      QString* errorDescription);

    /// Stores text and selection as the rewrite and answers false, marking the
    /// answer as a rewrite for the field even when nothing changed.
    static bool rewriteProposal(QString* partialString, WQRange* proposedSelectedRange,
                                const QString& text, WQRange selection);
};

inline bool WQFormatter::isPartialStringValid(QString*, WQRange*, const QString&, WQRange, QString* errorDescription)
{
    if (errorDescription)
        *errorDescription = QString();
    return true;
}

inline bool WQFormatter::rewriteProposal(QString* partialString, WQRange* proposedSelectedRange,
                                         const QString& text, WQRange selection)
{
    if (partialString)
        *partialString = text;
    if (proposedSelectedRange)
        *proposedSelectedRange = selection;
    WQToolkit::shared().noteRewrite();
    return false;
}

/// @}

} // namespace wq
