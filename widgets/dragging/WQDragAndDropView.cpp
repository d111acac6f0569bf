#include <WQGeneral/dragging/WQDragAndDropView.h>

#include "WQDragAndDropView_p.h"

#include <WQGeneral/dragging/WQDragImage.h>
#include <WQGeneral/dragging/WQDragPayload.h>

#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>

#include <cmath>

namespace wq {

namespace {

constexpr qreal kDragThreshold = 3;

} // namespace

std::optional<QTextDocumentFragment>
WQDragAndDropViewDelegate::attributedDragStringForWQDragAndDropView(const WQDragAndDropView&)
{
    return std::nullopt;
}

std::optional<QString> WQDragAndDropViewDelegate::dragStringForWQDragAndDropView(const WQDragAndDropView&)
{
    return std::nullopt;
}

WQDragAndDropView::WQDragAndDropView(QWidget* parent)
    : QWidget(parent), _wq_d(std::make_unique<WQDragAndDropViewPrivate>())
{
}

WQDragAndDropView::~WQDragAndDropView()
{
    // Deleted outright from inside its own drag: end the drag, which must
    // not deliver a drop from a source that is gone.
    if (_wq_d->dragging)
        QDrag::cancel();
}

QTextDocumentFragment WQDragAndDropView::dragLabel() const
{
    if (_wq_d->delegate) {
        if (auto label = _wq_d->delegate->attributedDragStringForWQDragAndDropView(*this))
            return *label;
        if (auto text = _wq_d->delegate->dragStringForWQDragAndDropView(*this))
            return QTextDocumentFragment::fromPlainText(*text);
    }
    return QTextDocumentFragment();
}

QPixmap WQDragAndDropView::dragImage(qreal devicePixelRatio) const
{
    return WQDrawDragImage(dragLabel(), font(), width(), devicePixelRatio > 0 ? devicePixelRatio : devicePixelRatioF());
}

std::unique_ptr<QMimeData> WQDragAndDropView::dragMimeData() const
{
    const QByteArray data = WQDragAndDropPayloadData({qint64(_wq_d->tag), WQDelegateIdentity(_wq_d->delegate)});
    if (data.isEmpty())
        return nullptr;
    auto mimeData = std::make_unique<QMimeData>();
    mimeData->setData(kWQPasteboardFlavor_DragAndDropView, data);
    return mimeData;
}

void WQDragAndDropView::ordinaryMousePress(QMouseEvent* event)
{
    QWidget::mousePressEvent(event);
}

void WQDragAndDropView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    if (!_wq_d->canDrag) {
        _wq_d->press = WQDragAndDropViewPrivate::PressState::None;
        ordinaryMousePress(event);
        return;
    }
    _wq_d->press = WQDragAndDropViewPrivate::PressState::Tracking;
    // Window coordinates, mapped: a widget's events carry their scene
    // position in the widget's own coordinates.
    _wq_d->pressLocation = mapTo(window(), event->position());
    event->accept();
}

void WQDragAndDropView::mouseMoveEvent(QMouseEvent* event)
{
    switch (_wq_d->press) {
    case WQDragAndDropViewPrivate::PressState::None:
        QWidget::mouseMoveEvent(event);
        return;
    case WQDragAndDropViewPrivate::PressState::WaitingForRelease:
        event->accept();
        return;
    case WQDragAndDropViewPrivate::PressState::Tracking:
        break;
    }
    event->accept();
    const QPointF latest = mapTo(window(), event->position());
    const qreal dx = std::abs(latest.x() - _wq_d->pressLocation.x());
    const qreal dy = std::abs(latest.y() - _wq_d->pressLocation.y());
    if (dx < kDragThreshold && dy < kDragThreshold)
        return;

    _wq_d->press = WQDragAndDropViewPrivate::PressState::WaitingForRelease;
    const QPointer<WQDragAndDropView> alive(this);
    const bool started = _tv_attemptToStartDragWithEvent(event, WQDragInitialOffset(_wq_d->pressLocation, latest));
    if (!alive)
        return;
    // A drag that ran has had the release; a failed one waits for it.
    if (started)
        _wq_d->press = WQDragAndDropViewPrivate::PressState::None;
}

void WQDragAndDropView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || _wq_d->press == WQDragAndDropViewPrivate::PressState::None) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    _wq_d->press = WQDragAndDropViewPrivate::PressState::None;
    ordinaryMousePress(event);
}

bool WQDragAndDropView::event(QEvent* event)
{
    if (event->type() == QEvent::DeferredDelete && _wq_d->dragging) {
        _wq_d->deleteAfterDrag = true;
        return true;
    }
    return QWidget::event(event);
}

bool WQDragAndDropView::_tv_attemptToStartDragWithEvent(QMouseEvent* event, const QSizeF& initialOffset)
{
    // Qt positions the image by its hot spot; the offset has no use here.
    Q_UNUSED(initialOffset);
    // The focus is given whatever the focus policy, as a plain view's press
    // gives none; it is refused when it lands elsewhere (a focus proxy).
    setFocus(Qt::MouseFocusReason);
    if (window()->focusWidget() != this)
        return false;

    std::unique_ptr<QMimeData> mimeData = dragMimeData();
    if (!mimeData)
        return false;

    const QTextDocumentFragment label = dragLabel();
    const QPixmap image = WQDrawDragImage(label, font(), width(), devicePixelRatioF());
    const QSizeF imageSize = WQDragImageSize(width(), WQDragLabelSize(label, font()));
    const QPointF origin = WQDragImageOrigin(size(), imageSize);

    // Not the view's child: the drag must not go away with the view.
    auto* drag = new QDrag(this);
    drag->setParent(nullptr);
    drag->setMimeData(mimeData.release());
    drag->setPixmap(image);
    drag->setHotSpot((event->position() - origin).toPoint());

    const QPointer<WQDragAndDropView> alive(this);
    _wq_d->dragging = true;
    const Qt::DropAction action = drag->exec(Qt::MoveAction | Qt::CopyAction | Qt::LinkAction, Qt::MoveAction);
    if (!alive)
        return true;
    _wq_d->dragging = false;
    if (_wq_d->deleteAfterDrag)
        deleteLater();
    emit dragFinished(action);
    return true;
}

WQDragAndDropViewDelegate* WQDragAndDropView::delegate() const noexcept
{
    Q_D(const WQDragAndDropView);
    return d->delegate;
}

qintptr WQDragAndDropView::tag() const noexcept
{
    Q_D(const WQDragAndDropView);
    return d->tag;
}

bool WQDragAndDropView::canDrag() const noexcept
{
    Q_D(const WQDragAndDropView);
    return d->canDrag;
}

bool WQDragAndDropView::isDragging() const noexcept
{
    Q_D(const WQDragAndDropView);
    return d->dragging;
}

void WQDragAndDropView::setDelegate(WQDragAndDropViewDelegate* delegate) noexcept
{
    Q_D(WQDragAndDropView);
    d->delegate = delegate;
}

void WQDragAndDropView::setTag(qintptr tag) noexcept
{
    Q_D(WQDragAndDropView);
    d->tag = tag;
}

void WQDragAndDropView::setCanDrag(bool canDrag) noexcept
{
    Q_D(WQDragAndDropView);
    d->canDrag = canDrag;
}

} // namespace wq
