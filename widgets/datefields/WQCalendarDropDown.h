#pragma once
// The calendar that drops down under a date input: the picker's own, and one
// made for a date typed into a line edit (a table cell's editor).

#include <QDate>

#include <functional>

class QCalendarWidget;
class QWidget;

namespace wq::datefields {

// Moves a pop-up just under anchor, or just above it where the screen ends,
// and within the screen's width.
void placeUnder(QWidget& popup, const QWidget& anchor);

// Drops a calendar down under anchor with date selected (today for an
// invalid date) and the keyboard. A date clicked or chosen with Return goes
// to picked and closes it; Escape or a click elsewhere closes it. It lives as
// anchor's child pop-up until it closes.
QCalendarWidget* dropDownCalendar(QWidget& anchor, const QDate& date, std::function<void(const QDate&)> picked);

} // namespace wq::datefields
