#pragma once
// Drives a formatter's keystroke judgement with an arbitrary edit and checks
// what a field relies on: a rewrite's selection lies inside the rewritten text.

#include "FuzzInput.h"

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/formatters/WQFormatter.h>

#include <cstdlib>

namespace wq::fuzz {

// A range inside text of the given length; with anyRange, one that may also
// start before it or reach past it, as a confused caller might pass.
inline WQRange rangeIn(Input& in, qsizetype length, bool anyRange = false)
{
    if (anyRange)
        return {qsizetype(in.byte()) % (length + 5) - 2, qsizetype(in.byte()) % (length + 5) - 2};
    const qsizetype location = length == 0 ? 0 : qsizetype(in.byte()) % (length + 1);
    const qsizetype room = length - location;
    const qsizetype span = room == 0 ? 0 : qsizetype(in.byte()) % (room + 1);
    return {location, span};
}

// What the formatter made of one edit.
struct Judgement {
    bool accepted = false;
    bool rewritten = false; // the formatter said it rewrote the text
    QString proposed;       // the text the edit proposed
    QString text;           // the text after the judgement
    WQRange range;          // the selection after the judgement
    QString error;
};

inline Judgement judgeEdit(WQFormatter& formatter, Input& in, bool anyRange = false)
{
    const std::uint8_t flags = in.byte();
    const QString original = in.text();
    Judgement j;
    j.proposed = in.text();
    const WQRange originalRange = rangeIn(in, original.size(), anyRange);
    j.range = rangeIn(in, j.proposed.size(), anyRange);

    WQEditEvent event;
    event.type = (flags & 1) ? WQEditEvent::Type::KeyDown : WQEditEvent::Type::None;
    event.characters = (flags & 2) ? QString(QChar(WQEditEvent::DeleteCharacter)) : j.proposed.left(1);
    event.optionKeyDown = flags & 4;
    WQEditScope scope(event);

    j.text = j.proposed;
    j.accepted = formatter.isPartialStringValid(&j.text, &j.range, original, originalRange, &j.error);
    j.rewritten = scope.rewritten();
    if (!j.accepted && !anyRange
        && (j.range.location < 0 || j.range.length < 0 || j.range.location + j.range.length > j.text.size()))
        std::abort();
    return j;
}

} // namespace wq::fuzz
