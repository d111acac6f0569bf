#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include "WQToolbarItem_p.h"

#include <QPainter>
#include <QStyleOption>
#include <QToolBar>

namespace wq {
namespace {

// The style's separator line, across the toolbar's direction.
class SeparatorWidget : public QWidget {
public:
    using QWidget::QWidget;
    QSize sizeHint() const override
    {
        const int extent = style()->pixelMetric(QStyle::PM_ToolBarSeparatorExtent, nullptr, this);
        return {extent, extent};
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QStyleOption option;
        option.initFrom(this);
        const auto* toolbar = qobject_cast<const QToolBar*>(parentWidget());
        if (!toolbar || toolbar->orientation() == Qt::Horizontal)
            option.state |= QStyle::State_Horizontal;
        style()->drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &option, &painter, this);
    }
};

constexpr int kSpaceWidth = 24;

} // namespace

WQToolbarItem::WQToolbarItem(const QString& itemIdentifier, QObject* parent)
    : QWidgetAction(parent), _wq_d(std::make_unique<WQToolbarItemPrivate>())
{
    _wq_d->identifier = itemIdentifier;
}

WQToolbarItem::~WQToolbarItem()
{
    // QWidgetAction deletes the widgets it made; the view is not ours.
    if (_wq_d->view && createdWidgets().contains(_wq_d->view)) {
        _wq_d->dying = true;
        releaseWidget(_wq_d->view);
    }
}

bool WQToolbarItem::isStandardItem() const
{
    return WQToolbar::isStandardItemIdentifier(_wq_d->identifier);
}

void WQToolbarItem::setLabel(const QString& label)
{
    setText(label);
    setIconText(label);
}

QWidget* WQToolbarItem::createWidget(QWidget* parent)
{
    if (_wq_d->view) {
        if (!_wq_d->minSize.isEmpty())
            _wq_d->view->setMinimumSize(_wq_d->minSize);
        if (!_wq_d->maxSize.isEmpty())
            _wq_d->view->setMaximumSize(_wq_d->maxSize);
        _wq_d->view->setParent(parent);
        _wq_d->view->show();
        return _wq_d->view;
    }
    if (_wq_d->identifier == kWQToolbarSeparatorItemIdentifier)
        return new SeparatorWidget(parent);
    if (_wq_d->identifier == kWQToolbarSpaceItemIdentifier) {
        auto* space = new QWidget(parent);
        space->setFixedWidth(kSpaceWidth);
        return space;
    }
    if (_wq_d->identifier == kWQToolbarFlexibleSpaceItemIdentifier) {
        auto* space = new QWidget(parent);
        space->setMinimumWidth(kSpaceWidth);
        space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        return space;
    }
    // A tool button, made by the toolbar.
    return nullptr;
}

void WQToolbarItem::deleteWidget(QWidget* widget)
{
    if (widget && widget == _wq_d->view) {
        widget->hide();
        // Back to the window that lent it, unless that window is going too.
        if (!_wq_d->dying && widget->parentWidget() && widget->parentWidget()->window() != widget->parentWidget())
            widget->setParent(widget->parentWidget()->window());
        return;
    }
    QWidgetAction::deleteWidget(widget);
}

const QString& WQToolbarItem::itemIdentifier() const noexcept
{
    Q_D(const WQToolbarItem);
    return d->identifier;
}

QString WQToolbarItem::paletteLabel() const
{
    Q_D(const WQToolbarItem);
    return d->paletteLabel;
}

QWidget* WQToolbarItem::view() const
{
    Q_D(const WQToolbarItem);
    return d->view;
}

QSize WQToolbarItem::minSize() const noexcept
{
    Q_D(const WQToolbarItem);
    return d->minSize;
}

QSize WQToolbarItem::maxSize() const noexcept
{
    Q_D(const WQToolbarItem);
    return d->maxSize;
}

void WQToolbarItem::setPaletteLabel(const QString& paletteLabel)
{
    Q_D(WQToolbarItem);
    d->paletteLabel = paletteLabel;
}

void WQToolbarItem::setView(QWidget* view)
{
    Q_D(WQToolbarItem);
    d->view = view;
}

void WQToolbarItem::setMinSize(QSize size)
{
    Q_D(WQToolbarItem);
    d->minSize = size;
}

void WQToolbarItem::setMaxSize(QSize size)
{
    Q_D(WQToolbarItem);
    d->maxSize = size;
}

} // namespace wq
