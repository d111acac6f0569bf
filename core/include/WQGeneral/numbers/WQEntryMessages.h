#pragma once
// The refusals the number and money formatters give while the user types.

#include <WQGeneral/platform/WQLocalizedText.h>

#include <QString>

namespace wq {

// A typed or pasted text with a character the field cannot take.
inline QString _wq_notValidHereMessage(const QString& inserted)
{
    return WQFormatTemplate(WQLocalizedString("\"%@\" is not valid here"), {inserted});
}

// A second, separate decimal separator.
inline QString _wq_moreThanOnceMessage(const QString& separator)
{
    return WQFormatTemplate(WQLocalizedString("\"%@\" can't appear more than once here"), {separator});
}

} // namespace wq
