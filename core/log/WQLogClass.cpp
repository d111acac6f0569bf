#include <WQGeneral/log/WQLogClass.h>

#include "WQLogClass_p.h"
#include <WQGeneral/files/WQFiles.h>

#include "WQLogLocking.h"
#include "WQLogReading.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace wq {

namespace {

constexpr std::size_t kRecordBufferSize = 4096;

// strlcat's contract, which the record cut depends on: appends what fits,
// keeps dst terminated, answers the length it tried to build.
std::size_t _wq_strlcat(char* dst, const char* src, std::size_t size)
{
    const std::size_t dstLength = ::strnlen(dst, size);
    const std::size_t srcLength = std::strlen(src);
    if (dstLength == size)
        return size + srcLength;
    const std::size_t room = size - dstLength - 1;
    const std::size_t copied = std::min(srcLength, room);
    std::memcpy(dst + dstLength, src, copied);
    dst[dstLength + copied] = '\0';
    return dstLength + srcLength;
}

QString _wq_baseFolder()
{
    QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (!data.isEmpty())
        return data;
    return QDir::homePath() + QStringLiteral("/.local/share");
}

} // namespace

WQLogClass::WQLogClass()
    : WQLogClass(QCoreApplication::applicationName().isEmpty() ? QStringLiteral("Default")
                                                               : QCoreApplication::applicationName())
{
}

bool WQLogClass::isUsableApplicationName(const QString& name)
{
    // One path component, so that the log stays inside the maker's folder.
    return !name.isEmpty() && name != u"." && name != u".." && !name.contains(u'/') && !name.contains(u'\\')
        && !name.contains(QChar(0));
}

WQLogClass::WQLogClass(const QString& applicationName) : _wq_d(std::make_unique<_wq_Private>())
{
    _wq_setUp(applicationName);
    if (const QCoreApplication* app = QCoreApplication::instance())
        _wq_d->terminateConnection = QObject::connect(app, &QCoreApplication::aboutToQuit, app,
                                                   [this] { applicationWillTerminate(); });
}

WQLogClass::~WQLogClass()
{
    QObject::disconnect(_wq_d->terminateConnection);
}

QString WQLogClass::logFilePath() const { return _wq_d->full_file_path; }
void WQLogClass::setLogFilePath(const QString& path) { _wq_d->full_file_path = path; }
bool WQLogClass::isEnabled() const { return _wq_d->is_enabled; }
void WQLogClass::setEnabled(bool enabled) { _wq_d->is_enabled = enabled; }

void WQLogClass::_wq_setUp(const QString& applicationName)
{
    if (!isUsableApplicationName(applicationName))
        return;
    const QString& name = applicationName;
    const QString folder = _wq_baseFolder() + QStringLiteral("/Veltrano Studio/") + name;
    // Whatever already stands there counts, even an ordinary file: the
    // records then simply fail to be written.
    if (!QFileInfo::exists(folder) && !createAllDirectoriesAtPath(folder))
        return;
    _wq_d->full_file_path = folder + u'/' + name + QStringLiteral(".log");
    _wq_d->is_enabled = true;
}

WQLogClass& WQLogClass::sharedLog()
{
    static WQLogClass shared;
    return shared;
}

void WQLogClass::log(const QString& message) const
{
    if (!_wq_d->is_enabled || _wq_d->full_file_path.isEmpty())
        return;
    char record[kRecordBufferSize];
    record[0] = '\0';
    const std::time_t now = std::time(nullptr);
    // localtime_r alone would keep the zone it saw first; follow TZ changes.
    ::tzset();
    struct tm local;
    if (::localtime_r(&now, &local) && std::strftime(record, sizeof record, "%Y-%m-%d %H:%M:%S %z | ", &local) == 0)
        record[0] = '\0';
    const QByteArray utf8 = message.toUtf8();
    _wq_strlcat(record, utf8.constData(), sizeof record);
    // What the second append tried to build: 4096 for an over-long record,
    // i.e. 4095 bytes and the terminating zero, and no line feed.
    const std::size_t length = _wq_strlcat(record, "\n", sizeof record);
    const std::size_t toWrite = std::min(length, sizeof record);
    const int fd = _wq_openForAppending(QFile::encodeName(_wq_d->full_file_path));
    if (fd < 0)
        return;
    const ssize_t written = ::write(fd, record, toWrite);
    Q_UNUSED(written); // a log never reports its own failures
    ::close(fd);   // and with it the lock
}

void WQLogClass::cleanLogFile() const
{
    if (!_wq_d->full_file_path.isEmpty())
        ::unlink(QFile::encodeName(_wq_d->full_file_path).constData());
}

std::optional<QString> WQLogClass::logDataWithMaxLines(quint64 maxLines) const
{
    return _wq_readLastLines(_wq_d->full_file_path, maxLines);
}

void WQLogClass::applicationWillTerminate() const
{
    log(QStringLiteral("Terminating..."));
}

void WQLogNoFormat(const QString& message)
{
    WQLogClass::sharedLog().log(message);
}

} // namespace wq
