#include <WQGeneral/views/WQFocusableScrollView.h>

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace wq {

WQFocusableScrollView::WQFocusableScrollView(QWidget* parent)
    : QScrollArea(parent)
{
    // A band around the viewport for the ring, which the style draws a
    // pixel wide; with the frame's own pixel it is two.
    setViewportMargins(1, 1, 1, 1);
    connect(qApp, &QApplication::focusChanged, this, [this] { needsDisplay(); });
}

WQFocusableScrollView::~WQFocusableScrollView() = default;

bool WQFocusableScrollView::needsDisplay()
{
    QWidget* focus = nullptr;
    if (isActiveWindow()) {
        focus = QApplication::focusWidget();
        if (focus == mLastResp)
            return false;
    } else if (!mLastResp) {
        return false;
    }
    mShouldDrawFocusRing = focus && (focus == this || isAncestorOf(focus));
    mLastResp = focus;
    update();
    return true;
}

void WQFocusableScrollView::changeEvent(QEvent* event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::ActivationChange)
        needsDisplay();
}

bool WQFocusableScrollView::event(QEvent* event)
{
    // The scroll area's own paint event draws its frame (the viewport has
    // its own); the ring goes over the frame, clipped to what is redrawn.
    const bool handled = QScrollArea::event(event);
    if (event->type() == QEvent::Paint && mShouldDrawFocusRing)
        _wq_drawFocusRing(static_cast<QPaintEvent*>(event)->rect());
    return handled;
}

void WQFocusableScrollView::_wq_drawFocusRing(const QRect& area)
{
    QPainter painter(this);
    painter.setClipRect(area);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    // Styles draw the frame only for focus that came from the keyboard or
    // that the widget shows itself; this view shows it for its children.
    option.state |= QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange | QStyle::State_FocusAtBorder;
    option.backgroundColor = palette().color(backgroundRole());
    for (const QRect& ring : {rect(), rect().adjusted(1, 1, -1, -1)}) {
        option.rect = ring;
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

} // namespace wq
