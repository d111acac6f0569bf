#pragma once
// Shared by the date formatter tests: a formatter with a pinned today, and
// one keystroke run through the typing judgement the way a field does it.

#include <WQGeneral/dateformatter/WQDateFormatter.h>

#include "TypingField.h"
#include "WQTestSupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>

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

// Replaces the selection of `original` by `typed`, one key press, and asks
// the formatter.
inline Keystroke typeInto(WQDateFormatter& formatter, const QString& original, WQRange selection,
                          const QString& typed, bool option = false)
{
    TypingField field(formatter, original);
    field.select(selection.location, selection.length);
    field.press(typed, option);
    return {field.lastAccepted, field.text(), field.selectedRange(), field.lastError};
}

// Typing at the end of the text.
inline Keystroke typeAtEnd(WQDateFormatter& formatter, const QString& original, const QString& typed,
                           bool option = false)
{
    return typeInto(formatter, original, WQRange{original.size(), 0}, typed, option);
}

} // namespace wq::test
