#include "WQCalendarDropDown.h"

#include <QCalendarWidget>
#include <QScreen>

#include <algorithm>

namespace wq::datefields {

void placeUnder(QWidget& popup, const QWidget& anchor)
{
    QRect frame(anchor.mapToGlobal(QPoint(0, anchor.height())), popup.size());
    if (const QScreen* screen = anchor.screen()) {
        const QRect area = screen->availableGeometry();
        if (frame.bottom() > area.bottom())
            frame.moveBottom(anchor.mapToGlobal(QPoint(0, 0)).y() - 1);
        frame.moveLeft(std::clamp(frame.left(), area.left(), std::max(area.left(), area.right() + 1 - frame.width())));
    }
    popup.move(frame.topLeft());
}

QCalendarWidget* dropDownCalendar(QWidget& anchor, const QDate& date, std::function<void(const QDate&)> picked)
{
    auto* calendar = new QCalendarWidget(&anchor);
    calendar->setWindowFlags(Qt::Popup);
    calendar->setAttribute(Qt::WA_DeleteOnClose);
    calendar->setSelectedDate(date.isValid() ? date : QDate::currentDate());
    // Clicked covers the mouse, activated Return and a double click; only the
    // first of them counts.
    const auto choose = [calendar, picked = std::move(picked)](const QDate& chosen) {
        if (!calendar->isVisible())
            return;
        calendar->close();
        picked(chosen);
    };
    QObject::connect(calendar, &QCalendarWidget::clicked, calendar, choose);
    QObject::connect(calendar, &QCalendarWidget::activated, calendar, choose);
    calendar->adjustSize();
    placeUnder(*calendar, anchor);
    calendar->show();
    calendar->setFocus(Qt::PopupFocusReason);
    return calendar;
}

} // namespace wq::datefields
