// The log's readers on arbitrary files: the backward tail reader must give
// what the reading rule gives on the whole text, and trimming must leave
// either the file as it was or a tail of it that starts at a line.
#include "FuzzInput.h"

#include <WQGeneral/log/WQLogClass.h>

#include "log/WQLogReading.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTimeZone>

#include <cstdlib>
#include <unistd.h>

namespace {

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QString path = QDir::tempPath() + QStringLiteral("/wq-fuzz-log-%1.log").arg(::getpid());
    wq::fuzz::Input in(data, size);
    const std::uint8_t mode = in.byte();
    const quint64 maxLines = in.byte();
    const qint64 cutOffSeconds = qint64(in.byte()) << 24 | qint64(in.byte()) << 16 | qint64(in.byte()) << 8;
    QByteArray bytes = in.rest();
    // Past 64 KiB the tail is read backwards chunk by chunk: repeat the input to get there.
    if ((mode & 1) && !bytes.isEmpty())
        bytes = bytes.repeated(70 * 1024 / bytes.size() + 1);
    writeFile(path, bytes);

    const std::optional<QString> tail = wq::_wq_readLastLines(path, maxLines);
    const std::optional<QString> whole = wq::_wq_readWholeLog(path);
    if (!tail || !whole || *tail != wq::_wq_lastLinesOfText(*whole, maxLines))
        std::abort();

    wq::WQLogClass log(QStringLiteral("Fuzz"));
    log.setLogFilePath(path);
    const QDateTime cutOff = QDateTime::fromSecsSinceEpoch(1700000000 + cutOffSeconds - (qint64(1) << 31), Qt::UTC);
    log.clearLogDataBeforeDate(cutOff);
    const QByteArray after = readFile(path);
    if (after != bytes && !(bytes.endsWith(after) && bytes.at(bytes.size() - after.size() - 1) == '\n'))
        std::abort();
    return 0;
}
