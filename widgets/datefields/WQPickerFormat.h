#pragma once
// The display format of date pickers, made from the user's short date
// pattern: four-digit years, and the day left out for month pickers.

#include <QString>

namespace wq::datefields {

// pattern: date-pattern letters such as M/d/yy or dd.MM.yy.
QString pickerDisplayFormat(const QString& pattern, bool showDay);

} // namespace wq::datefields
