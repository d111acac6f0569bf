#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/menus/WQNamedImage.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/toolbar/WQToolbarDictionary.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include <QWidget>

namespace wq {
namespace {

// A missing text is empty; a text without translation shows as it is.
QString toolbarString(const QVariantMap& description, const QString& key)
{
    const QString text = description.value(key).toString();
    return text.isEmpty() ? QString() : WQLocalizedStringFromTable(text.toUtf8().constData(), kWQToolbarStringsTable);
}

QWidget* viewNamed(const QObject& owner, const QString& name)
{
    if (name.isEmpty())
        return nullptr;
    return qobject_cast<QWidget*>(owner.property(name.toUtf8().constData()).value<QObject*>());
}

} // namespace

std::unique_ptr<WQToolbarItem> WQToolbarItemFromDictionary(const QVariantMap& toolbarDictionary,
                                                           const QString& itemIdentifier, QObject& owner)
{
    const QVariant info = toolbarDictionary.value(kWQToolbarKey_ItemInfoByIdentifier).toMap().value(itemIdentifier);
    if (info.metaType() != QMetaType::fromType<QVariantMap>())
        return nullptr;
    const QVariantMap description = info.toMap();

    auto item = std::make_unique<WQToolbarItem>(itemIdentifier);
    item->setLabel(toolbarString(description, kWQToolbarItemKey_Label));
    item->setPaletteLabel(toolbarString(description, kWQToolbarItemKey_PaletteLabel));
    item->setToolTip(toolbarString(description, kWQToolbarItemKey_ToolTip));

    if (description.contains(kWQToolbarItemKey_View)) {
        const QString name = description.value(kWQToolbarItemKey_View).toString();
        QWidget* view = viewNamed(owner, name);
        if (!view) {
            qWarning("WQGeneral: toolbar item \"%s\": %s has no widget property \"%s\"", qUtf8Printable(itemIdentifier),
                     owner.metaObject()->className(), qUtf8Printable(name));
            return nullptr;
        }
        item->setView(view);
        // A widget laid out by nobody yet has Qt's placeholder size.
        item->setMinSize(view->testAttribute(Qt::WA_Resized) ? view->size() : view->sizeHint());
        return item;
    }
    const QString imageName = description.value(kWQToolbarItemKey_ImageName).toString();
    if (!imageName.isEmpty())
        item->setIcon(WQImageNamed(imageName));
    wq_setAction(*item, description.value(kWQToolbarItemKey_Action).toString().toUtf8(), &owner);
    return item;
}

QStringList WQToolbarDefaultItemIdentifiers(const QVariantMap& toolbarDictionary)
{
    return toolbarDictionary.value(kWQToolbarKey_DefaultItemIdentifiers).toStringList();
}

QStringList WQToolbarAllowedItemIdentifiers(const QVariantMap& toolbarDictionary)
{
    return toolbarDictionary.value(kWQToolbarKey_AllowedItemIdentifiers).toStringList();
}

} // namespace wq
