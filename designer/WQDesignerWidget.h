#pragma once
// One of the framework's widgets as Designer's widget box and QUiLoader see
// it: described by a table entry rather than a class per widget.

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

namespace wq::designer {

struct WidgetDescription {
    QString className;   // with its namespace, as forms name it
    QString includeFile; // as an application includes it
    QString displayName; // the widget box's label
    QString objectName;  // a new instance's name (Designer numbers the next ones)
    QString toolTip;
    QString whatsThis;
    bool container = false;
    // Properties and children a new instance gets in a form (the inside of
    // the <widget> element; may be empty).
    QString defaultContents;
    std::function<QWidget*(QWidget* parent)> make;
};

class WQDesignerWidget : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    WQDesignerWidget(WidgetDescription description, QObject* parent);

    QString name() const override { return _description.className; }
    QString group() const override;
    QString toolTip() const override { return _description.toolTip; }
    QString whatsThis() const override { return _description.whatsThis; }
    QString includeFile() const override { return _description.includeFile; }
    QIcon icon() const override;
    bool isContainer() const override { return _description.container; }
    QWidget* createWidget(QWidget* parent) override { return _description.make(parent); }
    bool isInitialized() const override { return _initialized; }
    void initialize(QDesignerFormEditorInterface*) override { _initialized = true; }
    QString domXml() const override;

private:
    WidgetDescription _description;
    bool _initialized = false;
};

} // namespace wq::designer
