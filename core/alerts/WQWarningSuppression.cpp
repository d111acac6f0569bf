#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QHash>
#include <QSettings>

namespace wq {
namespace {

struct Registry {
    QStringList keys{kDefaultsKey_IntegerWarning, kDefaultsKey_DecimalWarning, kDefaultsKey_DateWarning};
    QHash<QString, QString> descriptions; // the application's keys only
};

Registry& registry()
{
    static Registry known;
    return known;
}

} // namespace

const QStringList& WQWarningSuppression::suppressibleKeys()
{
    return registry().keys;
}

void WQWarningSuppression::registerKey(const QString& key, const QString& description)
{
    if (key.isEmpty())
        return;
    Registry& known = registry();
    if (!known.keys.contains(key))
        known.keys << key;
    known.descriptions.insert(key, description);
    emit notifier().changed();
}

QString WQWarningSuppression::describe(const QString& key)
{
    // Translated when asked for, so the page follows a change of language.
    if (key == kDefaultsKey_IntegerWarning)
        return WQStrings::tr("A character that a whole-number field does not accept");
    if (key == kDefaultsKey_DecimalWarning)
        return WQStrings::tr("A character that a decimal or amount field or column does not accept");
    if (key == kDefaultsKey_DateWarning)
        return WQStrings::tr("A character that a date column does not accept");
    return registry().descriptions.value(key, key);
}

bool WQWarningSuppression::isSuppressed(const QString& key)
{
    return QSettings().value(key, false).toBool();
}

void WQWarningSuppression::suppress(const QString& key)
{
    QSettings settings;
    settings.setValue(key, true);
    settings.sync();
    emit notifier().changed();
}

void WQWarningSuppression::showAgain(const QString& key)
{
    QSettings settings;
    settings.remove(key);
    settings.sync();
    emit notifier().changed();
}

void WQWarningSuppression::showAllAgain()
{
    QSettings settings;
    for (const QString& key : suppressibleKeys())
        settings.remove(key);
    settings.sync();
    emit notifier().changed();
}

QStringList WQWarningSuppression::suppressedKeys()
{
    QStringList keys;
    for (const QString& key : suppressibleKeys())
        if (isSuppressed(key))
            keys << key;
    return keys;
}

WQWarningSuppression& WQWarningSuppression::notifier()
{
    // Lives until the process ends, like the settings it speaks for.
    static WQWarningSuppression* const instance = new WQWarningSuppression;
    return *instance;
}

} // namespace wq
