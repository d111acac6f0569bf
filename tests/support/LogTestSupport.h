#pragma once
// Helpers shared by the log tests.

#include <WQGeneral/log/WQLogClass.h>

#include <QByteArray>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace wq::test {

inline QByteArray readBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

inline mode_t modeOf(const QString& path)
{
    struct stat info;
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? (info.st_mode & 07777) : mode_t(0);
}

// A log object on a file of its own in a temporary folder.
struct ScratchLog {
    QTemporaryDir folder;
    WQLogClass log{QStringLiteral("Scratch")};
    QString path = folder.path() + QStringLiteral("/scratch.log");
    ScratchLog() { log.setLogFilePath(path); }
};

} // namespace wq::test
