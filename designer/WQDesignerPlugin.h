#pragma once
// The collection Designer loads: every widget of the framework that a form
// can hold, in the widget box's "WQGeneral" group.

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QObject>

namespace wq::designer {

class WQDesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    explicit WQDesignerPlugin(QObject* parent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return _widgets; }

private:
    QList<QDesignerCustomWidgetInterface*> _widgets; // children of the plugin
};

} // namespace wq::designer
