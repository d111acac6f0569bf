#include "detail/WQModuleComponent.h"

#include <QQmlComponent>
#include <QQmlEngine>

namespace wq::detail {

QObject* createModuleObject(QQmlEngine& engine, const char* typeName, QObject* parent,
                            const std::function<void(QObject&)>& prepare)
{
    const QString name = QStringLiteral("_wq_component_") + QLatin1String(typeName);
    auto* component = engine.findChild<QQmlComponent*>(name, Qt::FindDirectChildrenOnly);
    if (!component) {
        component = new QQmlComponent(&engine, &engine);
        component->setObjectName(name);
        component->setData("import WQGeneral\n" + QByteArray(typeName) + " {}\n", QUrl());
    }
    QObject* object = component->beginCreate(engine.rootContext());
    if (!object) {
        qWarning("WQGeneral: cannot make %s: %s", typeName, qUtf8Printable(component->errorString()));
        return nullptr;
    }
    object->setParent(parent);
    prepare(*object);
    component->completeCreate();
    return object;
}

} // namespace wq::detail
