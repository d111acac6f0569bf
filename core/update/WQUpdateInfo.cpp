#include <WQGeneral/update/WQUpdateInfo.h>
#include <WQGeneral/encoding/WQEscaping.h>

#include "WQUpdateInfoInternal.h"

#include <QFile>
#include <QLocale>
#include <QSettings>
#include <QStandardPaths>
#include <QUuid>

#include <thread>

namespace wq {

namespace {

// Read afresh each time: another application of the maker may have made it.
QString _wq_installationIdentifier()
{
    QSettings shared(WQSharedDefaultsFilePath(), QSettings::IniFormat);
    QString identifier = shared.value(kWQDefaultsKey_SoftwareUpdateUUID).toString();
    if (identifier.isEmpty()) {
        identifier = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
        shared.setValue(kWQDefaultsKey_SoftwareUpdateUUID, identifier);
        shared.sync();
    }
    return identifier;
}

// os-release values may be quoted, with backslash escapes inside quotes.
QString _wq_unquote(QStringView value)
{
    if (value.size() < 2 || (value.front() != u'"' && value.front() != u'\'') || value.back() != value.front())
        return value.toString();
    const QStringView inner = value.sliced(1, value.size() - 2);
    QString result;
    result.reserve(inner.size());
    for (qsizetype i = 0; i < inner.size(); ++i) {
        if (inner[i] == u'\\' && i + 1 < inner.size())
            ++i;
        result.append(inner[i]);
    }
    return result;
}

} // namespace

QString WQSharedDefaultsFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
           + QStringLiteral("/Veltrano Studio/") + kWQDefaultsLocation_Global + QStringLiteral(".conf");
}

QVariantMap _wq_gatherUpdateInfo(const QStringList& preferredLanguages)
{
    QVariantMap info;
    info.insert(QStringLiteral("uuid"), _wq_installationIdentifier());
    if (!preferredLanguages.isEmpty())
        info.insert(QStringLiteral("lang"), preferredLanguages.front());
    info.insert(QStringLiteral("cpu"), QStringLiteral("Intel"));
    if (const unsigned count = std::thread::hardware_concurrency(); count > 0)
        info.insert(QStringLiteral("cpu_count"), QString::number(count));
    return info;
}

QString _wq_updateQuery(const QVariantMap& info)
{
    QString query;
    for (auto it = info.constBegin(); it != info.constEnd(); ++it)
        url_appendValue(query, it.value().toString(), it.key(), false);
    return query;
}

QString _wq_systemVersionFromOsRelease(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    QString versionID;
    QString version;
    // os-release files are a few hundred bytes; anything far larger is not one.
    const QString text = QString::fromUtf8(file.read(64 * 1024));
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const QStringView trimmed = line.trimmed();
        if (trimmed.startsWith(u"VERSION_ID="))
            versionID = _wq_unquote(trimmed.sliced(11));
        else if (trimmed.startsWith(u"VERSION="))
            version = _wq_unquote(trimmed.sliced(8));
    }
    if (!versionID.isEmpty())
        return versionID;
    if (!version.isEmpty())
        return version;
    return QString();
}

QVariantMap WQGatherUpdateInfoInDictionary()
{
    return _wq_gatherUpdateInfo(QLocale::system().uiLanguages());
}

QString WQGatherUpdateInfoForURL()
{
    return _wq_updateQuery(WQGatherUpdateInfoInDictionary());
}

QString WQSystemVersionForUpdate()
{
    // /usr/lib/os-release stands in when /etc has none, as os-release(5) says.
    QString version = _wq_systemVersionFromOsRelease(QStringLiteral("/etc/os-release"));
    if (version.isNull())
        version = _wq_systemVersionFromOsRelease(QStringLiteral("/usr/lib/os-release"));
    return version.isNull() ? QStringLiteral("") : version;
}

} // namespace wq
