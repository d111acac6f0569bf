#include "WQLogReading.h"

#include <QFile>
#include <QStringDecoder>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace wq {

namespace {

constexpr qint64 kChunk = 64 * 1024;

// Closes the descriptor on every path out.
struct FileDescriptor {
    int fd;
    explicit FileDescriptor(int descriptor) : fd(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
};

std::optional<QByteArray> _wq_readAll(int fd)
{
    QByteArray bytes;
    struct stat info;
    if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0)
        bytes.reserve(qsizetype(info.st_size));
    char buffer[kChunk];
    for (;;) {
        const ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got == 0)
            return bytes;
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return std::nullopt;
        }
        bytes.append(buffer, qsizetype(got));
    }
}

bool _wq_preadFully(int fd, char* into, qint64 length, qint64 offset)
{
    while (length > 0) {
        const ssize_t got = ::pread(fd, into, size_t(length), off_t(offset));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        into += got;
        length -= got;
        offset += got;
    }
    return true;
}

int _wq_openForReading(const QString& path)
{
    if (path.isEmpty())
        return -1;
    return ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
}

} // namespace

QString _wq_decodeLogText(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

std::optional<QString> _wq_readWholeLog(const QString& path)
{
    const FileDescriptor file(_wq_openForReading(path));
    if (file.fd < 0)
        return std::nullopt;
    const std::optional<QByteArray> bytes = _wq_readAll(file.fd);
    if (!bytes)
        return std::nullopt;
    return _wq_decodeLogText(*bytes);
}

QString _wq_lastLinesOfText(const QString& text, quint64 maxLines)
{
    if (text.size() <= kWQLogMinimumLength || maxLines == 0)
        return text;
    // The last maxLines pieces between line feeds are what follows the
    // maxLines-th line feed from the end; with fewer line feeds, everything.
    qsizetype from = text.size();
    for (quint64 found = 0; found < maxLines; ++found) {
        from = from > 0 ? text.lastIndexOf(u'\n', from - 1) : -1;
        if (from < 0)
            return text;
    }
    return text.mid(from + 1);
}

std::optional<QString> _wq_readLastLines(const QString& path, quint64 maxLines)
{
    const FileDescriptor file(_wq_openForReading(path));
    if (file.fd < 0)
        return std::nullopt;
    struct stat info;
    if (maxLines == 0 || ::fstat(file.fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size <= kChunk) {
        // Small or special files: the whole text, and the rule on it. Any
        // file past this size decodes to far more than 28 characters.
        const std::optional<QByteArray> bytes = _wq_readAll(file.fd);
        if (!bytes)
            return std::nullopt;
        return _wq_lastLinesOfText(_wq_decodeLogText(*bytes), maxLines);
    }

    // Walk back chunk by chunk counting line-feed bytes; a line-feed byte is
    // never part of a longer UTF-8 sequence, so the count is the decoded one.
    std::vector<QByteArray> chunks; // from the end backwards
    qint64 start = info.st_size;
    qint64 kept = 0;
    quint64 found = 0;
    auto joined = [&chunks, &kept] {
        QByteArray bytes;
        bytes.reserve(qsizetype(kept));
        for (auto it = chunks.rbegin(); it != chunks.rend(); ++it)
            bytes.append(*it);
        return bytes;
    };
    while (start > 0) {
        const qint64 length = std::min<qint64>(kChunk, start);
        start -= length;
        QByteArray chunk(qsizetype(length), Qt::Uninitialized);
        if (!_wq_preadFully(file.fd, chunk.data(), length, start)) {
            // The file shrank meanwhile: fall back to reading what is there.
            const std::optional<QString> text = _wq_readWholeLog(path);
            if (!text)
                return std::nullopt;
            return _wq_lastLinesOfText(*text, maxLines);
        }
        const char* begin = chunk.constData();
        qint64 scan = length;
        while (scan > 0) {
            const void* hit = ::memrchr(begin, '\n', size_t(scan));
            if (!hit)
                break;
            scan = static_cast<const char*>(hit) - begin;
            if (++found == maxLines) {
                chunk.remove(0, qsizetype(scan + 1));
                kept += chunk.size();
                chunks.push_back(std::move(chunk));
                return _wq_decodeLogText(joined());
            }
        }
        kept += chunk.size();
        chunks.push_back(std::move(chunk));
    }
    // Fewer line feeds than lines asked for: the whole text.
    return _wq_decodeLogText(joined());
}

namespace {

template <typename Char>
std::optional<qint64> _wq_parseStamp(const Char* stamp)
{
    auto at = [stamp](int i) { return char16_t(stamp[i]); };
    auto digits = [&at](int from, int count, int& value) {
        value = 0;
        for (int i = from; i < from + count; ++i) {
            const char16_t c = at(i);
            if (c < u'0' || c > u'9')
                return false;
            value = value * 10 + int(c - u'0');
        }
        return true;
    };
    const char16_t sign = at(20);
    int year, month, day, hour, minute, second, zoneHours, zoneMinutes;
    if (!digits(0, 4, year) || at(4) != u'-' || !digits(5, 2, month) || at(7) != u'-'
        || !digits(8, 2, day) || at(10) != u' ' || !digits(11, 2, hour) || at(13) != u':'
        || !digits(14, 2, minute) || at(16) != u':' || !digits(17, 2, second) || at(19) != u' '
        || (sign != u'+' && sign != u'-') || !digits(21, 2, zoneHours) || !digits(23, 2, zoneMinutes))
        return std::nullopt;
    static constexpr int kDaysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    if (month < 1 || month > 12 || day < 1 || day > kDaysInMonth[month - 1] + (month == 2 && leap ? 1 : 0)
        || hour > 23 || minute > 59 || second > 60 || zoneHours > 23 || zoneMinutes > 59)
        return std::nullopt;
    // Days since 1970-01-01 of a proleptic Gregorian date.
    const int y = year - (month <= 2 ? 1 : 0);
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    const qint64 days = qint64(era) * 146097 + dayOfEra - 719468;
    const qint64 offset = (qint64(zoneHours) * 3600 + zoneMinutes * 60) * (sign == u'-' ? -1 : 1);
    const qint64 seconds = days * 86400 + hour * 3600 + minute * 60 + second - offset;
    return seconds * 1000;
}

} // namespace

std::optional<qint64> _wq_parseLogTimeStamp(QStringView stamp)
{
    if (stamp.size() != kWQLogTimeStampLength)
        return std::nullopt;
    return _wq_parseStamp(stamp.utf16());
}

std::optional<qint64> _wq_parseLogTimeStamp(QByteArrayView stamp)
{
    if (stamp.size() != kWQLogTimeStampLength)
        return std::nullopt;
    // Bytes above 0x7F are never digits or separators, so a stamp is ASCII.
    return _wq_parseStamp(reinterpret_cast<const unsigned char*>(stamp.data()));
}

} // namespace wq
