#include "WQDesignerWidget.h"

#include <QIcon>

namespace wq::designer {

WQDesignerWidget::WQDesignerWidget(WidgetDescription description, QObject* parent)
    : QObject(parent), _description(std::move(description))
{
}

QString WQDesignerWidget::group() const
{
    return QStringLiteral("WQGeneral");
}

QIcon WQDesignerWidget::icon() const
{
    // Designer draws its generic custom-widget icon for a null one.
    return {};
}

QString WQDesignerWidget::domXml() const
{
    return QStringLiteral("<ui language=\"c++\" displayname=\"%1\">"
                          "<widget class=\"%2\" name=\"%3\">%4</widget>"
                          "</ui>")
        .arg(_description.displayName.toHtmlEscaped(), _description.className, _description.objectName,
             _description.defaultContents);
}

} // namespace wq::designer
