#include <WQGeneral/files/WQFiles.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace wq {

namespace {

bool _wq_exists(const QString& path)
{
    struct stat info;
    return ::stat(QFile::encodeName(path).constData(), &info) == 0;
}

bool _wq_isUsableFolder(const QString& path)
{
    if (path.isEmpty())
        return false;
    const QByteArray native = QFile::encodeName(path);
    struct stat info;
    return ::stat(native.constData(), &info) == 0 && S_ISDIR(info.st_mode) && ::access(native.constData(), W_OK) == 0;
}

// folder + "/" + component, without doubling a trailing slash.
QString _wq_appendingPathComponent(QString folder, const QString& component)
{
    while (folder.size() > 1 && folder.endsWith(u'/'))
        folder.chop(1);
    if (folder.isEmpty())
        return component;
    if (folder == u"/")
        return folder + component;
    return folder + u'/' + component;
}

} // namespace

QString WQDesktopFolderPath()
{
    QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    if (!desktop.isEmpty())
        return desktop;
    return QDir::homePath() + QStringLiteral("/Desktop");
}

QUrl WQUniqueFileURLWithBasePathFileNameAndExtension(const QString& basePath, const QString& fileName,
                                                     const QString& extension)
{
    const QString folder = _wq_isUsableFolder(basePath) ? basePath : WQDesktopFolderPath();
    const QString stem = _wq_appendingPathComponent(folder, fileName);
    QString candidate = stem + u'.' + extension;
    if (_wq_exists(candidate)) {
        // The numbering stops at 499 on purpose; the last name is answered even when taken.
        for (int n = 1; n < 500; ++n) {
            candidate = stem + u'-' + QString::number(n) + u'.' + extension;
            if (!_wq_exists(candidate))
                break;
        }
    }
    return QUrl::fromLocalFile(QFileInfo(candidate).absoluteFilePath());
}

bool createAllDirectoriesAtPath(const QString& path, std::optional<QFileDevice::Permissions> attributes)
{
    if (path.isEmpty())
        return false;
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    const QFileInfo info(absolute);
    if (info.exists())
        return info.isDir();
    const QString parent = info.path();
    if (parent != absolute && !createAllDirectoriesAtPath(parent, attributes))
        return false;
    const QByteArray native = QFile::encodeName(absolute);
    if (::mkdir(native.constData(), 0777) != 0)
        return errno == EEXIST && QFileInfo(absolute).isDir();
    if (attributes)
        QFile::setPermissions(absolute, *attributes);
    return true;
}

} // namespace wq
