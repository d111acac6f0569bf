#include <WQGeneral/log/WQLogClass.h>

#include "WQLogReading.h"

#include <QFile>
#include <QSaveFile>

#include <cstring>
#include <vector>

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

} // namespace

void WQLogClass::clearLogDataBeforeDate(const QDateTime& cutOff) const
{
    if (!cutOff.isValid() || _wq_full_file_path.isEmpty())
        return;
    QFile file(_wq_full_file_path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return;
    file.close();
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

    QSaveFile rewrite(_wq_full_file_path);
    if (!rewrite.open(QIODevice::WriteOnly))
        return;
    rewrite.setPermissions(QFile::permissions(_wq_full_file_path));
    rewrite.write(bytes.constData() + starts[size_t(probe)], bytes.size() - starts[size_t(probe)]);
    rewrite.commit();
}

} // namespace wq
