#pragma once
// Reading the log back, shared by WQLogClass, its tests and the benchmarks.

#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <optional>

namespace wq {

// Lenient UTF-8: bad bytes become U+FFFD (a cut record may end inside a
// character) and a byte order mark is kept as text wherever it stands, so
// decoding a tail that starts after a line feed gives exactly the matching
// part of the whole text.
QString _wq_decodeLogText(QByteArrayView bytes);

// The whole file, decoded; nothing when it cannot be read.
std::optional<QString> _wq_readWholeLog(const QString& path);

// The reading-back rule applied to a whole text.
QString _wq_lastLinesOfText(const QString& text, quint64 maxLines);

// The same answer as _wq_lastLinesOfText(_wq_readWholeLog(path)), reading a
// large file backwards from its end only as far as the lines asked for.
std::optional<QString> _wq_readLastLines(const QString& path, quint64 maxLines);

// Milliseconds since the epoch of a record's 25-character time stamp
// "YYYY-MM-DD HH:MM:SS +ZZZZ"; nothing unless the text has exactly that form.
std::optional<qint64> _wq_parseLogTimeStamp(QStringView stamp);
// The same over raw bytes; a stamp holds only ASCII, so the first 25 bytes
// of a line hold its stamp exactly when its first 25 characters do.
std::optional<qint64> _wq_parseLogTimeStamp(QByteArrayView stamp);

// A log text must be longer than this before lines are counted or trimmed.
inline constexpr qsizetype kWQLogMinimumLength = 28;
inline constexpr qsizetype kWQLogTimeStampLength = 25;

} // namespace wq
