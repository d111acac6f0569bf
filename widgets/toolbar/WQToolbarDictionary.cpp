#include <WQGeneral/menus/WQActionMessage.h>
#include <WQGeneral/menus/WQNamedImage.h>
#include <WQGeneral/platform/WQLocalizedText.h>
#include <WQGeneral/toolbar/WQToolbar.h>
#include <WQGeneral/toolbar/WQToolbarDictionary.h>
#include <WQGeneral/toolbar/WQToolbarItem.h>

#include <QSet>
#include <QWidget>

namespace wq {
namespace {

// A mistake in a dictionary is reported once: toolbars make their items
// again for every customization and every window.
void warnOnce(const QString& message)
{
    static QSet<QString> reported;
    if (reported.contains(message))
        return;
    reported.insert(message);
    qWarning("WQGeneral: %s", qUtf8Printable(message));
}

void warnAboutUnknownKeys(const QVariantMap& map, const QStringList& known, const QString& where)
{
    for (auto it = map.keyBegin(); it != map.keyEnd(); ++it)
        if (!known.contains(*it))
            warnOnce(QStringLiteral("%1: unknown key \"%2\"").arg(where, *it));
}

// The dictionary's own keys are checked wherever it is read. A copy shares
// the map's data, and cannot outlive a temporary as a reference would.
QVariantMap checked(const QVariantMap& toolbarDictionary)
{
    static const QStringList known{kWQToolbarKey_ItemInfoByIdentifier, kWQToolbarKey_DefaultItemIdentifiers,
                                   kWQToolbarKey_AllowedItemIdentifiers};
    const QString where = QStringLiteral("toolbar dictionary");
    warnAboutUnknownKeys(toolbarDictionary, known, where);
    // An identifier in a set that nothing describes would give no item.
    const QVariantMap items = toolbarDictionary.value(kWQToolbarKey_ItemInfoByIdentifier).toMap();
    for (const QString& set : {kWQToolbarKey_DefaultItemIdentifiers, kWQToolbarKey_AllowedItemIdentifiers})
        for (const QString& identifier : toolbarDictionary.value(set).toStringList())
            if (!items.contains(identifier) && !WQToolbar::isStandardItemIdentifier(identifier))
                warnOnce(QStringLiteral("%1: %2 names \"%3\", which %4 does not describe")
                             .arg(where, set, identifier, kWQToolbarKey_ItemInfoByIdentifier));
    return toolbarDictionary;
}

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
    const QVariant info =
        checked(toolbarDictionary).value(kWQToolbarKey_ItemInfoByIdentifier).toMap().value(itemIdentifier);
    if (info.metaType() != QMetaType::fromType<QVariantMap>())
        return nullptr;
    const QVariantMap description = info.toMap();
    const QString where = QStringLiteral("toolbar item \"%1\"").arg(itemIdentifier);
    static const QStringList knownItemKeys{kWQToolbarItemKey_Label,     kWQToolbarItemKey_PaletteLabel,
                                           kWQToolbarItemKey_ToolTip,   kWQToolbarItemKey_View,
                                           kWQToolbarItemKey_ImageName, kWQToolbarItemKey_Action};
    warnAboutUnknownKeys(description, knownItemKeys, where);

    auto item = std::make_unique<WQToolbarItem>(itemIdentifier);
    item->setLabel(toolbarString(description, kWQToolbarItemKey_Label));
    item->setPaletteLabel(toolbarString(description, kWQToolbarItemKey_PaletteLabel));
    item->setToolTip(toolbarString(description, kWQToolbarItemKey_ToolTip));

    if (description.contains(kWQToolbarItemKey_View)) {
        const QString name = description.value(kWQToolbarItemKey_View).toString();
        QWidget* view = viewNamed(owner, name);
        if (!view) {
            warnOnce(QStringLiteral("%1: %2 has no widget property \"%3\"")
                         .arg(where, QLatin1String(owner.metaObject()->className()), name));
            return nullptr;
        }
        item->setView(view);
        // A widget laid out by nobody yet has Qt's placeholder size.
        item->setMinSize(view->testAttribute(Qt::WA_Resized) ? view->size() : view->sizeHint());
        return item;
    }
    const QString imageName = description.value(kWQToolbarItemKey_ImageName).toString();
    if (!imageName.isEmpty()) {
        item->setIcon(WQImageNamed(imageName));
        if (item->icon().isNull())
            warnOnce(QStringLiteral("%1: no image named \"%2\"").arg(where, imageName));
    }
    const QByteArray action = description.value(kWQToolbarItemKey_Action).toString().toUtf8();
    if (!action.isEmpty() && !WQAnswersAction(owner, action))
        warnOnce(QStringLiteral("%1: %2 does not answer the action \"%3\"")
                     .arg(where, QLatin1String(owner.metaObject()->className()), QString::fromUtf8(action)));
    wq_setAction(*item, action, &owner);
    return item;
}

QStringList WQToolbarDefaultItemIdentifiers(const QVariantMap& toolbarDictionary)
{
    return checked(toolbarDictionary).value(kWQToolbarKey_DefaultItemIdentifiers).toStringList();
}

QStringList WQToolbarAllowedItemIdentifiers(const QVariantMap& toolbarDictionary)
{
    return checked(toolbarDictionary).value(kWQToolbarKey_AllowedItemIdentifiers).toStringList();
}

} // namespace wq
