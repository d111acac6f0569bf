#pragma once
// Whole-file reads and writes for tests that check what landed on disk.

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/stat.h>

namespace wq::test {

// The file's bytes; empty when it cannot be read.
inline QByteArray readBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Replaces the file's contents; false when it cannot be written whole.
inline bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// The permission bits; 0 when the file is not there.
inline mode_t modeOf(const QString& path)
{
    struct stat info;
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? (info.st_mode & 07777) : mode_t(0);
}

} // namespace wq::test
