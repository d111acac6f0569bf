#pragma once
// The entry formatter contract: what a text field asks of the formatter
// attached to it. The widgets layer's WQLineEdit drives any WQFormatter.

#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQTypes.h>

#include <QString>
#include <QVariant>

#include <optional>

namespace wq {

class WQFormatter : public WQNotificationSender {
public:
    ~WQFormatter() override = default;

    // The display text for a value; nullopt where the formatter has none.
    virtual std::optional<QString> stringForObjectValue(const QVariant& value) const = 0;

    // Turns a finished text into a value. On false, errorDescription (when
    // given) says why, for the user.
    virtual bool getObjectValue(QVariant* value, const QString& string, QString* errorDescription) const = 0;

    // Judges the text after an edit. true: the proposal stands as it is.
    // false with *partialString / *proposedSelectedRange rewritten: the field
    // shows the rewrite. false with them untouched: the edit is refused.
    // errorDescription is left null (QString()) when there is nothing to say.
    virtual bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                                      const QString& originalString, WQRange originalSelectedRange,
                                      QString* errorDescription);
};

inline bool WQFormatter::isPartialStringValid(QString*, WQRange*, const QString&, WQRange, QString* errorDescription)
{
    if (errorDescription)
        *errorDescription = QString();
    return true;
}

} // namespace wq
