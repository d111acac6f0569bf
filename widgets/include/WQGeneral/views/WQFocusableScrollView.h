#pragma once
/// \class wq::WQFocusableScrollView
/// A scroll area that draws the style's keyboard focus frame around itself
/// while it or any widget inside it has the keyboard focus, so that a list or
/// a form in it reads as focused the way a single field does. The frame is
/// two pixels wide: the area's own frame and a one-pixel band the area keeps
/// round its viewport (its viewport margins).
///
/// Qt has no "does the view need display" poll: the decision runs whenever
/// the application's focus widget changes and whenever the window is
/// activated or deactivated.

#include <WQGeneral/WQWidgetsExport.h>

#include <QPointer>
#include <QScrollArea>

namespace wq {

/// \addtogroup views
/// @{

class WQ_WIDGETS_EXPORT WQFocusableScrollView : public QScrollArea {
    Q_OBJECT
public:
    /// A scroll area that follows the application's focus.
    explicit WQFocusableScrollView(QWidget* parent = nullptr);
    ~WQFocusableScrollView() override;

    /// Whether the focus frame is drawn now.
    bool shouldDrawFocusRing() const noexcept { return mShouldDrawFocusRing; }

    /// Takes a new look at the focus. F is the active window's focus widget,
    /// or nothing when this window is not active. Nothing changes when F is
    /// the widget seen last time, or when the window is inactive and nothing
    /// was seen; otherwise the frame is drawn exactly when F is this view or
    /// lies inside it, F is remembered and the whole view is repainted, and the answer
    /// is true.
    bool needsDisplay();

protected:
    /// Takes a new look when the window is activated or deactivated.
    void changeEvent(QEvent* event) override;
    /// Draws the focus frame over the area's own frame while it is due.
    bool event(QEvent* event) override;

private:
    void _wq_drawFocusRing(const QRect& area);

    bool mShouldDrawFocusRing = false;
    /// The focus widget seen last time; guarded, as a widget can go away
    /// while it has the focus.
    QPointer<QWidget> mLastResp;
};

/// @}

} // namespace wq
