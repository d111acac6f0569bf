#include <WQGeneral/log/WQLogClass.h>

#include "WQLogClass_p.h"

#include "WQLogLocking.h"
#include "WQLogReading.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace wq {

namespace {

// The time stamp of a line, when the line is longer than 28 characters and
// starts with one. Only lines that could be that short are decoded to count
// their characters; longer ones are long in any decoding.
std::optional<qint64> _wq_lineTimeStamp(QByteArrayView line)
{
    if (line.size() <= kWQLogMinimumLength)
        return std::nullopt;
    if (line.size() <= 4 * (kWQLogMinimumLength + 1) && _wq_decodeLogText(line).size() <= kWQLogMinimumLength)
        return std::nullopt;
    return _wq_parseLogTimeStamp(line.first(kWQLogTimeStampLength));
}

// Closes the descriptor on every path out.
struct Descriptor {
    int fd;
    explicit Descriptor(int descriptor) : fd(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
};

bool writeFully(int fd, const char* bytes, qsizetype length)
{
    while (length > 0) {
        const ssize_t n = ::write(fd, bytes, size_t(length));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        bytes += n;
        length -= n;
    }
    return true;
}

std::optional<QByteArray> readFrom(int fd, qint64 offset)
{
    QByteArray bytes;
    struct stat info;
    if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > offset)
        bytes.reserve(qsizetype(info.st_size - offset));
    char buffer[64 * 1024];
    for (;;) {
        const ssize_t n = ::pread(fd, buffer, sizeof buffer, off_t(offset));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return std::nullopt;
        if (n == 0)
            return bytes;
        bytes.append(buffer, n);
        offset += n;
    }
}

// Puts kept, followed by whatever writers appended to the file after its
// first readBytes bytes, in place of the file, atomically. Writers wait
// only while the appended part is carried over.
void replaceKeepingNewRecords(const QByteArray& path, int fd, qint64 readBytes, QByteArrayView kept)
{
    QByteArray temporary = path + ".XXXXXX";
    const Descriptor out(::mkostemp(temporary.data(), O_CLOEXEC));
    if (out.fd < 0)
        return;
    struct stat info;
    bool ok = ::fstat(fd, &info) == 0 && ::fchmod(out.fd, info.st_mode & 07777) == 0
        && writeFully(out.fd, kept.data(), kept.size()) && ::fdatasync(out.fd) == 0;
    int locked = -1;
    if (ok) {
        while ((locked = ::flock(fd, LOCK_EX)) != 0 && errno == EINTR) {
        }
        // Another trim or a clean may have replaced the file meanwhile: it is
        // not this one's to replace any more.
        ok = locked == 0 && _wq_isSameFile(fd, path);
    }
    if (ok) {
        const std::optional<QByteArray> appended = readFrom(fd, readBytes);
        ok = appended && writeFully(out.fd, appended->constData(), appended->size()) && ::fdatasync(out.fd) == 0
            && ::rename(temporary.constData(), path.constData()) == 0;
    }
    if (!ok)
        ::unlink(temporary.constData());
    // The lock goes with the caller's descriptor.
}

} // namespace

void WQLogClass::clearLogDataBeforeDate(const QDateTime& cutOff) const
{
    if (!cutOff.isValid() || _wq_d->full_file_path.isEmpty())
        return;
    const QByteArray path = QFile::encodeName(_wq_d->full_file_path);
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC));
    if (file.fd < 0)
        return;
    const std::optional<QByteArray> read = readFrom(file.fd, 0);
    if (!read)
        return;
    const QByteArray& bytes = *read;
    if (bytes.size() <= 4 * (kWQLogMinimumLength + 1) && _wq_decodeLogText(bytes).size() <= kWQLogMinimumLength)
        return;
    const qint64 cut = cutOff.toMSecsSinceEpoch();
    const std::optional<qint64> first = _wq_parseLogTimeStamp(QByteArrayView(bytes).first(kWQLogTimeStampLength));
    if (!first || *first >= cut)
        return;

    // Lines as byte ranges: a line feed byte is a line feed character, so the
    // lines of the bytes are the lines of the text, and the kept part is
    // written back byte for byte.
    std::vector<qsizetype> starts{0};
    for (const char* at = bytes.constData(), *end = at + bytes.size();
         (at = static_cast<const char*>(std::memchr(at, '\n', size_t(end - at)))); ++at)
        starts.push_back(at - bytes.constData() + 1);
    const qsizetype n = qsizetype(starts.size());
    auto line = [&](qsizetype i) {
        const qsizetype end = i + 1 < n ? starts[size_t(i + 1)] - 1 : bytes.size();
        return QByteArrayView(bytes).sliced(starts[size_t(i)], end - starts[size_t(i)]);
    };

    // Deliberately starts one eighth in, not in the middle; undated lines
    // push the probe on without narrowing the range.
    qsizetype low = 0;
    qsizetype high = n;
    qsizetype probe = n / 8;
    while (low < high && probe < n) {
        const std::optional<qint64> stamp = _wq_lineTimeStamp(line(probe));
        if (!stamp) {
            ++probe;
            continue;
        }
        if (*stamp < cut)
            low = probe + 1;
        else if (*stamp > cut)
            high = probe - 1;
        else
            break;
        probe = (low + high) / 2;
    }
    if (probe <= 0 || probe >= n)
        return;

    replaceKeepingNewRecords(path, file.fd, bytes.size(), QByteArrayView(bytes).sliced(starts[size_t(probe)]));
}

} // namespace wq
