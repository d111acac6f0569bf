#pragma once
// Shared by the date formatter tests: a formatter with a pinned today, and
// one keystroke run through the typing judgement the way a field does it.

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>

#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

QT_BEGIN_NAMESPACE
QT_END_NAMESPACE

namespace wq::test {

inline std::unique_ptr<WQDateFormatter> formatterOn(const QString& format, WQDate today = WQDate(2026, 3, 15))
{
    auto formatter = std::make_unique<WQDateFormatter>(format);
    formatter->setTodayProvider([today] { return std::optional<WQDate>(today); });
    return formatter;
}

struct Keystroke {
    bool answer = false;
    QString text; // what the field shows afterwards
    WQRange caret;
    QString error;
    bool operator==(const Keystroke&) const = default;
};

inline void PrintTo(const Keystroke& k, std::ostream* os)
{
    *os << (k.answer ? "accepted " : "refused ") << '"' << k.text.toStdString() << "\" caret {" << k.caret.location
        << ", " << k.caret.length << "} error \"" << k.error.toStdString() << '"';
}

// Replaces the selection of `original` by `typed` and asks the formatter.
inline Keystroke typeInto(WQDateFormatter& formatter, const QString& original, WQRange selection,
                          const QString& typed, bool option = false)
{
    QString proposed = original;
    proposed.replace(selection.location, selection.length, typed);
    const WQRange proposedRange{selection.location + typed.size(), 0};
    QString partial = proposed;
    WQRange range = proposedRange;
    Keystroke result;
    const WQEditScope scope({WQEditEvent::Type::KeyDown, typed, option});
    result.answer = formatter.isPartialStringValid(&partial, &range, original, selection, &result.error);
    const bool rewritten = scope.rewritten() || partial != proposed || range != proposedRange;
    if (result.answer) {
        result.text = proposed;
        result.caret = proposedRange;
    } else if (rewritten) {
        result.text = partial;
        result.caret = range;
    } else {
        result.text = original;
        result.caret = selection;
    }
    return result;
}

// Typing at the end of the text.
inline Keystroke typeAtEnd(WQDateFormatter& formatter, const QString& original, const QString& typed,
                           bool option = false)
{
    return typeInto(formatter, original, WQRange{original.size(), 0}, typed, option);
}

} // namespace wq::test
