#pragma once
// What a keyboard sends, turned into what a field's formatter reads before
// the formatter judges it.

#include <memory>

class QEvent;

namespace wq {

class WQFormatter;

// For a key press or an input-method commit into a field driven by
// formatter: the same event with digits of any script typed as ASCII digits
// (the framework's formatters read those) and the numeric keypad's decimal
// key typing the field's decimal separator. nullptr when the event types
// what the formatter reads already, or is no typing at all.
std::unique_ptr<QEvent> WQTranslatedInput(const QEvent& event, const WQFormatter* formatter);

} // namespace wq
