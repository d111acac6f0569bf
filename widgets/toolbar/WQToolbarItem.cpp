#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

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
    : QWidgetAction(parent), _wq_identifier(itemIdentifier)
{
}

WQToolbarItem::~WQToolbarItem()
{
    // QWidgetAction deletes the widgets it made; the view is not ours.
    if (_wq_view && createdWidgets().contains(_wq_view)) {
        _wq_dying = true;
        releaseWidget(_wq_view);
    }
}

bool WQToolbarItem::isStandardItem() const
{
    return WQToolbar::isStandardItemIdentifier(_wq_identifier);
}

void WQToolbarItem::setLabel(const QString& label)
{
    setText(label);
    setIconText(label);
}

QWidget* WQToolbarItem::createWidget(QWidget* parent)
{
    if (_wq_view) {
        if (!_wq_minSize.isEmpty())
            _wq_view->setMinimumSize(_wq_minSize);
        if (!_wq_maxSize.isEmpty())
            _wq_view->setMaximumSize(_wq_maxSize);
        _wq_view->setParent(parent);
        _wq_view->show();
        return _wq_view;
    }
    if (_wq_identifier == kWQToolbarSeparatorItemIdentifier)
        return new SeparatorWidget(parent);
    if (_wq_identifier == kWQToolbarSpaceItemIdentifier) {
        auto* space = new QWidget(parent);
        space->setFixedWidth(kSpaceWidth);
        return space;
    }
    if (_wq_identifier == kWQToolbarFlexibleSpaceItemIdentifier) {
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
    if (widget && widget == _wq_view) {
        widget->hide();
        // Back to the window that lent it, unless that window is going too.
        if (!_wq_dying && widget->parentWidget() && widget->parentWidget()->window() != widget->parentWidget())
            widget->setParent(widget->parentWidget()->window());
        return;
    }
    QWidgetAction::deleteWidget(widget);
}

} // namespace wq
