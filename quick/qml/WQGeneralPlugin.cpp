// The plugin of the QML module WQGeneral: the engine loads it when a
// document imports WQGeneral, and it registers the quick layer's C++ types.

#include <WQGeneral/quick/WQQuickTypes.h>

#include <QQmlExtensionPlugin>

class WQGeneralPlugin : public QQmlExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)
public:
    void registerTypes(const char*) override { wq::WQRegisterQmlTypes(); }
};

#include "WQGeneralPlugin.moc"
