#pragma once
// Not public (not installed): a look inside the date-text cache for the
// tests and benchmarks, which compare cached texts with fresh ones.

#include <QString>
#include <QVariantMap>

#include <optional>

namespace wq {

class WQDate;

// Texts the calling thread's cache holds now.
qsizetype _wq_textCacheSize();
// date in format, rendered without reading or growing the cache.
QString _wq_renderWithCalendarFormat(const WQDate& date, const QString& format,
                                     const std::optional<QVariantMap>& locale);

} // namespace wq
