#include <WQGeneral/menus/WQNamedImage.h>

#include <QFile>

// Resources of a static library are registered only when asked for by name.
static void initFrameworkImages()
{
    Q_INIT_RESOURCE(WQGeneralImages);
}

namespace wq {
namespace {

QString resourceFile(const QString& folder, const QString& name)
{
    static const char* const extensions[] = {"", ".svg", ".png", ".xpm", ".jpg"};
    for (const char* extension : extensions) {
        QString path = folder + name + QLatin1String(extension);
        if (QFile::exists(path))
            return path;
    }
    return QString();
}

} // namespace

QIcon WQImageNamed(const QString& name)
{
    if (name.isEmpty() || name.contains(u'/'))
        return QIcon();
    static const bool registered = (initFrameworkImages(), true);
    Q_UNUSED(registered);
    for (const QString& folder : {QStringLiteral(":/images/"), QStringLiteral(":/")})
        if (const QString path = resourceFile(folder, name); !path.isEmpty())
            return QIcon(path);
    if (QIcon::hasThemeIcon(name))
        return QIcon::fromTheme(name);
    if (const QString path = resourceFile(QStringLiteral(":/WQGeneral/images/"), name); !path.isEmpty())
        return QIcon(path);
    return QIcon();
}

} // namespace wq
