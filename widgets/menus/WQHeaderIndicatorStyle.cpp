#include "WQHeaderIndicatorStyle.h"

#include <WQGeneral/menus/WQNamedImage.h>

#include <QHeaderView>
#include <QPainter>
#include <QStyleOptionHeader>

namespace wq {

void WQHeaderIndicatorStyle::install(QHeaderView& header)
{
    if (qobject_cast<WQHeaderIndicatorStyle*>(header.style()))
        return;
    auto* style = new WQHeaderIndicatorStyle;
    style->setParent(&header);
    header.setStyle(style);
    connect(&header, &QHeaderView::sortIndicatorChanged, &header, [&header] {
        header.setProperty(kImageProperty, QVariant());
        header.setProperty(kSectionProperty, QVariant());
    });
}

void WQHeaderIndicatorStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                           const QWidget* widget) const
{
    if (element == PE_IndicatorHeaderArrow && widget && option) {
        const QString name = widget->property(kImageProperty).toString();
        const QVariant section = widget->property(kSectionProperty);
        const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
        const QIcon image = name.isEmpty() || name == kDescendingImageName ? QIcon() : WQImageNamed(name);
        if (header && section.isValid() && header->section == section.toInt() && name == kDescendingImageName) {
            // The style's own downward arrow, whatever order the header holds.
            QStyleOptionHeader down(*header);
            down.sortIndicator = QStyleOptionHeader::SortDown;
            QProxyStyle::drawPrimitive(element, &down, painter, widget);
            return;
        }
        if (header && !image.isNull() && section.isValid() && header->section == section.toInt()) {
            const int side = qMin(option->rect.width(), option->rect.height());
            QRect square(0, 0, side, side);
            square.moveCenter(option->rect.center());
            image.paint(painter, square, Qt::AlignCenter);
            return;
        }
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

} // namespace wq
