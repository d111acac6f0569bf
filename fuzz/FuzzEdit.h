#pragma once
// Drives a formatter's keystroke judgement with an arbitrary edit and checks
// what a field relies on: a rewrite's selection lies inside the rewritten text.

#include "FuzzInput.h"

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <cstdlib>

namespace wq::fuzz {

inline WQRange rangeIn(Input& in, qsizetype length)
{
    const qsizetype location = length == 0 ? 0 : qsizetype(in.byte()) % (length + 1);
    const qsizetype room = length - location;
    const qsizetype span = room == 0 ? 0 : qsizetype(in.byte()) % (room + 1);
    return {location, span};
}

inline void judgeEdit(WQFormatter& formatter, Input& in)
{
    const std::uint8_t flags = in.byte();
    const QString original = in.text();
    const QString proposed = in.text();
    const WQRange originalRange = rangeIn(in, original.size());
    WQRange proposedRange = rangeIn(in, proposed.size());

    WQEditEvent event;
    event.type = (flags & 1) ? WQEditEvent::Type::KeyDown : WQEditEvent::Type::None;
    event.characters = (flags & 2) ? QString(QChar(WQEditEvent::DeleteCharacter)) : proposed.left(1);
    event.optionKeyDown = flags & 4;
    WQEditScope scope(event);

    QString text = proposed;
    QString error;
    const bool accepted = formatter.isPartialStringValid(&text, &proposedRange, original, originalRange, &error);
    if (!accepted && (proposedRange.location < 0 || proposedRange.length < 0
                      || proposedRange.location + proposedRange.length > text.size()))
        std::abort();
}

} // namespace wq::fuzz
