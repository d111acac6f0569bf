#include "SidePanels.h"
#include "ShowcaseText.h"

#include <WQGeneral/dragging/WQDragPayload.h>
#include <WQGeneral/views/WQFocusableScrollView.h>

#include <QDropEvent>
#include <QLabel>
#include <QPainter>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>

namespace showcase {
namespace {

const QString kOrderKey = QStringLiteral("Showcase/panelOrder");

} // namespace

SidePanels::SidePanels(QWidget* parent)
    : QWidget(parent)
{
    setAcceptDrops(true);
    setFixedWidth(kWidth);
    _layout = new QVBoxLayout(this);
    _layout->setContentsMargins(0, 0, 0, 0);
    _layout->setSpacing(8);
    _layout->addStretch(1);
    hide();
}

SidePanels::~SidePanels()
{
    // The panels go before this delegate does; keep them from asking it.
    for (const Panel& p : _panels)
        p.view->setDelegate(nullptr);
}

int SidePanels::addPanel(const QString& key, const QString& title, QWidget* content)
{
    auto* view = new wq::WQDragAndDropView(this);
    view->setObjectName(key);
    view->setTag(_nextTag++);
    view->setDelegate(this);
    view->setCanDrag(true);
    view->setToolTip(Text::tr("Drag the title to move the panel"));

    auto* layout = new QVBoxLayout(view);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto* heading = new QLabel(QStringLiteral("\u2630  ") + title, view);
    heading->setStyleSheet(QStringLiteral("font-weight: bold; color: #333; padding: 2px 4px;"));
    heading->setCursor(Qt::OpenHandCursor);
    layout->addWidget(heading);

    auto* area = new wq::WQFocusableScrollView(view);
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Its ring shows where the focus is inside; it is no stop of its own.
    area->setFocusPolicy(Qt::NoFocus);
    // As tall as what it shows, up to a point; longer content scrolls.
    const int wanted = qMin(content->sizeHint().height(), content->maximumHeight());
    // The area's frame and the band round its viewport.
    const int chrome = area->height() - area->viewport()->height();
    area->setFixedHeight(qMin(wanted + chrome, 220));
    layout->addWidget(area);

    _layout->insertWidget(int(_panels.size()), view);
    _panels.append({key, title, view, area});
    show();
    return int(view->tag());
}

QStringList SidePanels::order() const
{
    QStringList keys;
    for (int i = 0; i < _layout->count(); ++i)
        if (auto* view = qobject_cast<wq::WQDragAndDropView*>(_layout->itemAt(i)->widget()))
            keys << view->objectName();
    return keys;
}

wq::WQDragAndDropView* SidePanels::panel(const QString& key) const
{
    for (const Panel& p : _panels)
        if (p.key == key)
            return p.view;
    return nullptr;
}

wq::WQFocusableScrollView* SidePanels::scrollArea(const QString& key) const
{
    for (const Panel& p : _panels)
        if (p.key == key)
            return p.area;
    return nullptr;
}

const SidePanels::Panel* SidePanels::_find(int tag) const
{
    for (const Panel& p : _panels)
        if (p.view->tag() == tag)
            return &p;
    return nullptr;
}

int SidePanels::placeAt(int y) const
{
    int place = 0;
    for (int i = 0; i < _layout->count(); ++i)
        if (QWidget* w = _layout->itemAt(i)->widget(); w && y > w->geometry().center().y())
            place = i + 1;
    return place;
}

int SidePanels::draggedPanel(const QMimeData* data) const
{
    if (!data)
        return -1;
    const std::optional<wq::WQDragAndDropPayload> payload = wq::WQReadDragAndDropPayload(*data);
    // Only drags of our own panels: the delegate identity says whose they are.
    const auto* self = static_cast<const wq::WQDragAndDropViewDelegate*>(this);
    if (!payload || payload->delegate != wq::WQDelegateIdentity(self) || !_find(int(payload->tag)))
        return -1;
    return int(payload->tag);
}

std::optional<QString> SidePanels::dragStringForWQDragAndDropView(const wq::WQDragAndDropView& view)
{
    if (const Panel* p = _find(int(view.tag())))
        return p->title;
    return std::nullopt;
}

void SidePanels::dragEnterEvent(QDragEnterEvent* event)
{
    if (draggedPanel(event->mimeData()) < 0)
        return event->ignore();
    event->acceptProposedAction();
    _showDropPlace(placeAt(event->position().toPoint().y()));
}

void SidePanels::dragMoveEvent(QDragMoveEvent* event)
{
    if (draggedPanel(event->mimeData()) < 0)
        return event->ignore();
    event->acceptProposedAction();
    _showDropPlace(placeAt(event->position().toPoint().y()));
}

void SidePanels::dragLeaveEvent(QDragLeaveEvent*)
{
    _showDropPlace(-1);
}

void SidePanels::dropEvent(QDropEvent* event)
{
    _showDropPlace(-1);
    const Panel* p = _find(draggedPanel(event->mimeData()));
    if (!p)
        return event->ignore();
    int place = placeAt(event->position().toPoint().y());
    // Taking the panel out first moves the places below it up by one.
    if (place > _layout->indexOf(p->view))
        --place;
    const QString key = p->key;
    event->setDropAction(Qt::MoveAction);
    event->accept();
    moveToPlace(key, place);
}

void SidePanels::moveToPlace(const QString& key, int place)
{
    wq::WQDragAndDropView* view = panel(key);
    if (!view)
        return;
    place = std::clamp(place, 0, int(_panels.size()) - 1);
    _moveTo(view, place);
    QSettings().setValue(kOrderKey, order());
    emit panelMoved(key, place);
}

void SidePanels::_moveTo(wq::WQDragAndDropView* view, int place)
{
    _layout->removeWidget(view);
    _layout->insertWidget(place, view);
}

void SidePanels::restoreOrder()
{
    int place = 0;
    for (const QString& key : QSettings().value(kOrderKey).toStringList())
        if (wq::WQDragAndDropView* view = panel(key))
            _moveTo(view, place++);
}

void SidePanels::_showDropPlace(int place)
{
    if (place != _dropPlace) {
        _dropPlace = place;
        update();
    }
}

void SidePanels::paintEvent(QPaintEvent*)
{
    if (_dropPlace < 0)
        return;
    // A bar in the gap where the panel would land.
    int y = 0;
    if (_dropPlace < _layout->count() && _layout->itemAt(_dropPlace)->widget())
        y = _layout->itemAt(_dropPlace)->widget()->geometry().top() - _layout->spacing() / 2;
    else if (_dropPlace > 0 && _layout->itemAt(_dropPlace - 1)->widget())
        y = _layout->itemAt(_dropPlace - 1)->widget()->geometry().bottom() + _layout->spacing() / 2;
    QPainter painter(this);
    painter.fillRect(QRect(0, qMax(0, y - 2), width(), 4), palette().color(QPalette::Highlight));
}

} // namespace showcase
