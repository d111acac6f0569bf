#pragma once
/// \class wq::WQDragAndDropView
/// A view the user drags as a whole (a panel, a row) to drop it elsewhere in
/// the application. With dragging on, a left press that moves 3 points or
/// more on either axis (window coordinates) starts a drag; a press that
/// never gets that far reaches the ordinary press handling only when the
/// button is released, and with the release event. The drag shows a rounded
/// grey label (WQDragImage.h) with the delegate's text and carries the view's
/// tag and its delegate's identity (WQDragPayload.h).
///
/// Qt delivers press, moves and release one by one instead of a loop that
/// waits for them, so the press is remembered and each later event takes the
/// step the waiting loop would have taken: moves under the threshold and
/// moves after a drag failed to start are swallowed.

#include <WQGeneral/WQWidgetsExport.h>

#include <QPixmap>
#include <QTextDocumentFragment>
#include <QWidget>

#include <memory>
#include <optional>

class QMimeData;

namespace wq {

class WQDragAndDropViewPrivate;

/// \addtogroup dragging
/// @{

class WQDragAndDropView;

/// Both operations are optional: nullopt means "not answered", and the next
/// one is asked.
class WQ_WIDGETS_EXPORT WQDragAndDropViewDelegate {
public:
    virtual ~WQDragAndDropViewDelegate() = default;
    /// The drag label as formatted text; asked first.
    virtual std::optional<QTextDocumentFragment> attributedDragStringForWQDragAndDropView(const WQDragAndDropView& view);
    /// The drag label as plain text, in the view's font.
    virtual std::optional<QString> dragStringForWQDragAndDropView(const WQDragAndDropView& view);
};

class WQ_WIDGETS_EXPORT WQDragAndDropView : public QWidget {
    Q_OBJECT
public:
    /// A view with dragging off.
    explicit WQDragAndDropView(QWidget* parent = nullptr);
    ~WQDragAndDropView() override;

    /// Not owned; it must outlive the view or be cleared first.
    WQDragAndDropViewDelegate* delegate() const noexcept;
    /// Sets the delegate (not owned).
    void setDelegate(WQDragAndDropViewDelegate* delegate) noexcept;
    /// The application's number for the view, carried by its drags.
    qintptr tag() const noexcept;
    /// Sets the number carried by the view's drags.
    void setTag(qintptr tag) noexcept;
    /// Off at first: presses are then ordinary presses.
    bool canDrag() const noexcept;
    /// Turns dragging on or off.
    void setCanDrag(bool canDrag) noexcept;

    /// The delegate's formatted label, else its plain one, else no text.
    QTextDocumentFragment dragLabel() const;
    /// The drag image for the view's current width and label, at the given
    /// device pixel ratio (the screen's when 0).
    QPixmap dragImage(qreal devicePixelRatio = 0) const;
    /// The data a drag of the view carries; null if it cannot be written.
    std::unique_ptr<QMimeData> dragMimeData() const;
    /// True while a drag of the view runs.
    bool isDragging() const noexcept;

signals:
    /// A drag of the view ended, with the drop side's answer (Qt::IgnoreAction when nothing took it).
    void dragFinished(Qt::DropAction action);

protected:
    /// Remembers the press while dragging is on; otherwise an ordinary press.
    void mousePressEvent(QMouseEvent* event) override;
    /// Starts the drag once the press has moved far enough.
    void mouseMoveEvent(QMouseEvent* event) override;
    /// Hands a press that did not become a drag to ordinaryMousePress().
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Holds back a deleteLater() that arrives while a drag of the view runs.
    bool event(QEvent* event) override;

    /// The ordinary press handling: a press while dragging is off, or the
    /// release that ends a press that did not become a drag. QWidget's (the
    /// event goes on to the parent) unless a subclass does more.
    virtual void ordinaryMousePress(QMouseEvent* event);

    /// Takes the focus (when it lands elsewhere, on a focus proxy say, the
    /// view is refused and nothing is dragged), writes the payload, draws the
    /// image and runs the drag with the hot spot where the pointer is on the
    /// image, which lies at WQDragImageOrigin. The view stays alive until the drag ends: a
    /// deleteLater() meanwhile waits for it, and a view deleted outright
    /// cancels its drag. False when the drag did not start.
    virtual bool _tv_attemptToStartDragWithEvent(QMouseEvent* event, const QSizeF& initialOffset);

private:
    Q_DECLARE_PRIVATE_D(_wq_d, WQDragAndDropView)
    std::unique_ptr<WQDragAndDropViewPrivate> _wq_d;
};

/// @}

} // namespace wq
