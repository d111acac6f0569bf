#pragma once
// Not public. The refusals the number and money formatters give while the
// user types.

#include <WQGeneral/numbers/WQDigitSet.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QString>

namespace wq {

// A typed or pasted text with a character the field cannot take.
inline QString _wq_notValidHereMessage(const QString& inserted)
{
    return WQFormatTemplate(WQStrings::tr("\"%@\" is not valid here"), {inserted});
}

// The first test of every keystroke judgement: an insertion holding a
// character of `foreign` is refused with the message above (answers true).
inline bool _wq_refuseForeign(const WQDigitSet& foreign, const QString& inserted, QString* errorDescription)
{
    if (!foreign.intersects(inserted))
        return false;
    if (errorDescription)
        *errorDescription = _wq_notValidHereMessage(inserted);
    return true;
}

// A second, separate decimal separator.
inline QString _wq_moreThanOnceMessage(const QString& separator)
{
    return WQFormatTemplate(WQStrings::tr("\"%@\" can't appear more than once here"), {separator});
}

} // namespace wq
