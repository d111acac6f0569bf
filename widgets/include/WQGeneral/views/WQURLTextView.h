#pragma once
/// \class wq::WQURLTextView
/// A read-only rich text view whose links show a hand cursor, and only its
/// links: the areas under the visible link text are worked out from the text
/// layout, not from the whole paragraph or line. Links open in the desktop's
/// browser unless the application turns that off (setOpenExternalLinks).
///
/// The hand is the library's "URLClickHand" image, a resource of the library
/// that any application linking it can load as ":/WQGeneral/URLClickHand.png";
/// its hot spot is the fingertip at (5, 0).

#include <WQGeneral/WQWidgetsExport.h>

#include <QCursor>
#include <QList>
#include <QPixmap>
#include <QRect>
#include <QTextBrowser>

#include <memory>

namespace wq {

/// \addtogroup views
/// @{

/// The hand image, loaded once and kept; null if the resource is missing.
WQ_WIDGETS_EXPORT QPixmap WQURLClickHandImage();

class WQURLTextViewPrivate;

class WQ_WIDGETS_EXPORT WQURLTextView : public QTextBrowser {
    Q_OBJECT
public:
    /// An empty, read-only view.
    explicit WQURLTextView(QWidget* parent = nullptr);
    ~WQURLTextView() override;

    /// The hand cursor (hot spot 5, 0); a blank cursor when the image is missing.
    static QCursor linkCursor();

    /// Works out the link areas again: the characters of the lines in view
    /// are walked run by run; each run that is a link adds the rectangles its
    /// text takes, cut to the visible area. Done by itself when the text, its
    /// layout, the size or the scroll position change.
    void resetCursorRects();
    /// The areas (viewport coordinates) that show the hand, as last worked out.
    const QList<QRect>& linkCursorRects();

protected:
    /// Shows the hand over link areas and the text cursor elsewhere.
    void mouseMoveEvent(QMouseEvent* event) override;
    /// Works the link areas out again.
    void resizeEvent(QResizeEvent* event) override;
    /// Works the link areas out again.
    void scrollContentsBy(int dx, int dy) override;

private:
    void _wq_invalidateCursorRects();
    void _wq_updateCursor(const QPoint& viewportPos);

    Q_DECLARE_PRIVATE_D(_wq_d, WQURLTextView)
    std::unique_ptr<WQURLTextViewPrivate> _wq_d;
};

/// @}

} // namespace wq
