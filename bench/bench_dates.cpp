// Calendar dates against their peers: day counting and back (a year-by-year
// walk, std::chrono, Howard Hinnant's date library) and rendering a date
// (ICU's SimpleDateFormat, QDate::toString), cached and uncached; cache hits
// beside a plain lookup by an integer key, after a million distinct dates
// and from two threads.

#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/dates/WQSystemDateSettings.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQBenchRecorder.h"
#include "dates/WQDateTesting.h"

#include <benchmark/benchmark.h>
#include <date/date.h>
#include <unicode/smpdtfmt.h>

#include <QDate>
#include <QHash>
#include <QDateTime>
#include <QTimeZone>

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using wq::WQDate;

// Present-day dates, 1900 ... 2100, spread so the branch predictor cannot learn them.
const std::vector<WQDate>& sampleDates()
{
    static const std::vector<WQDate> dates = [] {
        std::vector<WQDate> out;
        quint64 state = 88172645463325252ull;
        for (int i = 0; i < 4096; ++i) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            const qint64 dayNumber = WQDate(1900, 1, 1).dayOfCommonEra() + qint64(state % 73049);
            out.push_back(*WQDate::dateWithDayOfCommonEra(dayNumber));
        }
        return out;
    }();
    return dates;
}

// --- the year-by-year walk, as plainly as it can be written -----------------

bool isLeap(qint64 y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

qint64 walkDayOfCommonEra(qint64 y, int m, int d)
{
    qint64 total = 0;
    for (qint64 year = 1; year < y; ++year)
        total += isLeap(year) ? 366 : 365;
    for (int month = 1; month < m; ++month)
        total += WQDate::daysInMonth(quint8(month), y);
    return total + d;
}

WQDate walkDateWithDayOfCommonEra(qint64 n)
{
    qint64 year = 1, total = 0;
    while (total < n)
        total += isLeap(year++) ? 366 : 365;
    --year;
    total -= isLeap(year) ? 366 : 365;
    int month = 1;
    while (total < n)
        total += WQDate::daysInMonth(quint8(month++), year);
    --month;
    total -= WQDate::daysInMonth(quint8(month), year);
    return WQDate(year, quint64(month), quint64(n - total));
}

// --- day count and back ------------------------------------------------------

void BM_DayCount_WQDate(benchmark::State& state)
{
    const auto& dates = sampleDates();
    std::size_t i = 0;
    for (auto _ : state) {
        const WQDate& date = dates[i++ & 4095];
        const qint64 n = date.dayOfCommonEra();
        const auto back = WQDate::dateWithDayOfCommonEra(n);
        benchmark::DoNotOptimize(back);
    }
}
BENCHMARK(BM_DayCount_WQDate);

void BM_DayCount_Walk(benchmark::State& state)
{
    const auto& dates = sampleDates();
    std::size_t i = 0;
    for (auto _ : state) {
        const WQDate& date = dates[i++ & 4095];
        const qint64 n = walkDayOfCommonEra(date.yearOfCommonEra(), int(date.monthOfYear()), int(date.dayOfMonth()));
        const WQDate back = walkDateWithDayOfCommonEra(n);
        benchmark::DoNotOptimize(back);
    }
}
BENCHMARK(BM_DayCount_Walk);

void BM_DayCount_StdChrono(benchmark::State& state)
{
    using namespace std::chrono;
    std::vector<year_month_day> dates;
    for (const WQDate& d : sampleDates())
        dates.emplace_back(year(int(d.yearOfCommonEra())), month(unsigned(d.monthOfYear())), day(unsigned(d.dayOfMonth())));
    std::size_t i = 0;
    for (auto _ : state) {
        const sys_days n{dates[i++ & 4095]};
        const year_month_day back{n};
        benchmark::DoNotOptimize(back);
    }
}
BENCHMARK(BM_DayCount_StdChrono);

void BM_DayCount_HinnantDate(benchmark::State& state)
{
    std::vector<date::year_month_day> dates;
    for (const WQDate& d : sampleDates())
        dates.emplace_back(date::year(int(d.yearOfCommonEra())), date::month(unsigned(d.monthOfYear())),
                           date::day(unsigned(d.dayOfMonth())));
    std::size_t i = 0;
    for (auto _ : state) {
        const date::sys_days n{dates[i++ & 4095]};
        const date::year_month_day back{n};
        benchmark::DoNotOptimize(back);
    }
}
BENCHMARK(BM_DayCount_HinnantDate);

// --- rendering -----------------------------------------------------------------

const char* const kShort = "M/d/yy";
const char* const kFull = "EEEE, MMMM d, y";

// A year of dates: a scrolling table shows a few hundred distinct ones.
constexpr std::size_t kRenderDates = 366;

void renderWQ(benchmark::State& state, const char* pattern, bool cached)
{
    const QVariantMap names = wq::WQSystemDateSettings::systemDefinedDateInformation();
    const QString format = QString::fromLatin1(pattern);
    const auto& dates = sampleDates();
    for (std::size_t k = 0; k < kRenderDates; ++k)
        benchmark::DoNotOptimize(dates[k].descriptionWithCalendarFormat(format, names));
    std::size_t i = 0;
    for (auto _ : state) {
        const WQDate& date = dates[i++ % kRenderDates];
        QString text = cached ? date.descriptionWithCalendarFormat(format, names)
                              : wq::_wq_renderWithCalendarFormat(date, format, names);
        benchmark::DoNotOptimize(text);
    }
}

void renderICU(benchmark::State& state, const char* pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(pattern), icu::Locale("en_US"), status);
    format.adoptTimeZone(icu::TimeZone::createTimeZone("GMT"));
    std::vector<UDate> moments;
    for (std::size_t k = 0; k < kRenderDates; ++k) {
        const WQDate& d = sampleDates()[k];
        moments.push_back(UDate(QDate(int(d.yearOfCommonEra()), int(d.monthOfYear()), int(d.dayOfMonth()))
                                    .startOfDay(QTimeZone::utc())
                                    .toMSecsSinceEpoch()));
    }
    std::size_t i = 0;
    for (auto _ : state) {
        icu::UnicodeString text;
        format.format(moments[i++ % kRenderDates], text);
        // Hand the text over as a QString, as the framework's callers need it.
        QString out(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
        benchmark::DoNotOptimize(out);
    }
}

void renderQt(benchmark::State& state, const char* qtPattern)
{
    std::vector<QDate> dates;
    for (std::size_t k = 0; k < kRenderDates; ++k) {
        const WQDate& d = sampleDates()[k];
        dates.emplace_back(int(d.yearOfCommonEra()), int(d.monthOfYear()), int(d.dayOfMonth()));
    }
    const QString format = QString::fromLatin1(qtPattern);
    std::size_t i = 0;
    for (auto _ : state) {
        QString text = dates[i++ % kRenderDates].toString(format);
        benchmark::DoNotOptimize(text);
    }
}

// --- the cache ----------------------------------------------------------------

// The bound: a text found by an integer key in a hash of the same size.
void BM_CacheBound_IntegerKey(benchmark::State& state)
{
    QHash<quint64, QString> texts;
    const auto& dates = sampleDates();
    for (std::size_t k = 0; k < kRenderDates; ++k)
        texts.insert(quint64(dates[k].dayOfCommonEra()), dates[k].debugDescription());
    std::vector<quint64> keys;
    for (std::size_t k = 0; k < kRenderDates; ++k)
        keys.push_back(quint64(dates[k].dayOfCommonEra()));
    std::size_t i = 0;
    for (auto _ : state) {
        QString text = texts.value(keys[i++ % kRenderDates]);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(BM_CacheBound_IntegerKey);

constexpr qint64 kMillion = 1000000;

// A million distinct dates through the cache: each one a miss that renders,
// stores and evicts. Run once; the hits below then find a cache that has
// seen them all.
void BM_CacheMillionDates(benchmark::State& state)
{
    const QVariantMap names = wq::WQSystemDateSettings::systemDefinedDateInformation();
    const QString format = QString::fromLatin1(kShort);
    const qint64 first = WQDate(1, 1, 1).dayOfCommonEra();
    for (auto _ : state) {
        for (qint64 n = 0; n < kMillion; ++n)
            benchmark::DoNotOptimize(WQDate::dateWithDayOfCommonEra(first + n)->descriptionWithCalendarFormat(format, names));
    }
    state.counters["entries"] = double(wq::_wq_textCacheSize());
    state.SetItemsProcessed(state.iterations() * kMillion);
}
BENCHMARK(BM_CacheMillionDates)->Iterations(1)->Unit(benchmark::kMillisecond);

// The same million dates without the cache: what each miss costs at least.
void BM_UncachedMillionDates(benchmark::State& state)
{
    const QVariantMap names = wq::WQSystemDateSettings::systemDefinedDateInformation();
    const QString format = QString::fromLatin1(kShort);
    const qint64 first = WQDate(1, 1, 1).dayOfCommonEra();
    for (auto _ : state) {
        for (qint64 n = 0; n < kMillion; ++n)
            benchmark::DoNotOptimize(wq::_wq_renderWithCalendarFormat(*WQDate::dateWithDayOfCommonEra(first + n), format, names));
    }
    state.SetItemsProcessed(state.iterations() * kMillion);
}
BENCHMARK(BM_UncachedMillionDates)->Iterations(1)->Unit(benchmark::kMillisecond);

BENCHMARK_CAPTURE(renderWQ, Short_WQDate_cached, kShort, true);
BENCHMARK_CAPTURE(renderWQ, Short_WQDate_uncached, kShort, false);
BENCHMARK_CAPTURE(renderICU, Short_ICU, kShort);
BENCHMARK_CAPTURE(renderQt, Short_QDate, "M/d/yy");
BENCHMARK_CAPTURE(renderWQ, Full_WQDate_cached, kFull, true);
BENCHMARK_CAPTURE(renderWQ, Full_WQDate_uncached, kFull, false);
BENCHMARK_CAPTURE(renderICU, Full_ICU, kFull);
BENCHMARK_CAPTURE(renderQt, Full_QDate, "dddd, MMMM d, yyyy");
// Hits again, after the million dates, and from two threads at once.
BENCHMARK_CAPTURE(renderWQ, Short_WQDate_cached_after_million, kShort, true);
BENCHMARK_CAPTURE(renderWQ, Short_WQDate_cached_two_threads, kShort, true)->Threads(2);

void printRatio(const wq::bench::WQBenchRecorder& r, const char* label, const std::string& ours, const std::string& peer,
                const char* target)
{
    const auto a = r.cpuNanoseconds.find(ours), b = r.cpuNanoseconds.find(peer);
    if (a == r.cpuNanoseconds.end() || b == r.cpuNanoseconds.end())
        return;
    std::printf("  %-44s %8.2f ns vs %8.2f ns  ratio %7.2fx  %s\n", label, a->second, b->second, b->second / a->second,
                target);
}

} // namespace

int main(int argc, char** argv)
{
    wq::WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    wq::bench::WQBenchRecorder reporter;
    if (!wq::bench::runBenchmarks(argc, argv, reporter))
        return 1;

    std::printf("\nSpeed-ups, CPU time per call (peer / WQDate; above 1 means WQDate is faster):\n");
    printRatio(reporter, "day count and back vs year-by-year walk", "BM_DayCount_WQDate", "BM_DayCount_Walk",
               "(target >= 100x)");
    printRatio(reporter, "day count and back vs std::chrono", "BM_DayCount_WQDate", "BM_DayCount_StdChrono",
               "(target >= 0.67x, within 1.5x)");
    printRatio(reporter, "day count and back vs Hinnant date", "BM_DayCount_WQDate", "BM_DayCount_HinnantDate", "");
    printRatio(reporter, "M/d/yy cached vs ICU SimpleDateFormat", "renderWQ/Short_WQDate_cached", "renderICU/Short_ICU",
               "(target >= 3x)");
    printRatio(reporter, "M/d/yy uncached vs ICU SimpleDateFormat", "renderWQ/Short_WQDate_uncached",
               "renderICU/Short_ICU", "");
    printRatio(reporter, "M/d/yy cached vs QDate::toString", "renderWQ/Short_WQDate_cached", "renderQt/Short_QDate", "");
    printRatio(reporter, "full date cached vs ICU SimpleDateFormat", "renderWQ/Full_WQDate_cached", "renderICU/Full_ICU",
               "(target >= 3x)");
    printRatio(reporter, "full date uncached vs ICU SimpleDateFormat", "renderWQ/Full_WQDate_uncached",
               "renderICU/Full_ICU", "");
    printRatio(reporter, "full date cached vs QDate::toString", "renderWQ/Full_WQDate_cached", "renderQt/Full_QDate", "");

    reporter.targetSpeedup("Day count and back: speed / year-by-year walk", "BM_DayCount_WQDate", "BM_DayCount_Walk", 100);
    reporter.targetSpeedup("Day count and back: speed / std::chrono", "BM_DayCount_WQDate", "BM_DayCount_StdChrono",
                           0.67);
    reporter.targetSpeedup("M/d/yy text, cached: speed / ICU SimpleDateFormat", "renderWQ/Short_WQDate_cached",
                           "renderICU/Short_ICU", 3);
    reporter.targetSpeedup("Full date text, cached: speed / ICU SimpleDateFormat", "renderWQ/Full_WQDate_cached",
                           "renderICU/Full_ICU", 3);
    reporter.targetTime("Date text cache hit, 366 dates", "renderWQ/Short_WQDate_cached", 40, "BM_CacheBound_IntegerKey");
    reporter.targetTime("Date text cache hit, after 1,000,000 distinct dates", "renderWQ/Short_WQDate_cached_after_million",
                        40, "BM_CacheBound_IntegerKey");
    reporter.targetTime("Date text cache hit, two threads at once", "renderWQ/Short_WQDate_cached_two_threads/threads:2",
                        40, "BM_CacheBound_IntegerKey");
    if (const auto entries = reporter.counterValues("entries"); entries.count("BM_CacheMillionDates/iterations:1"))
        reporter.addTarget({"Date text cache entries after 1,000,000 distinct dates",
                            entries.at("BM_CacheMillionDates/iterations:1"), "", wq::bench::WQBenchTarget::Bound::AtMost,
                            8192 + 64, "a fixed number of entries (8,192), least recently used evicted"});
    if (const auto cached = reporter.cpu("BM_CacheMillionDates/iterations:1"),
        uncached = reporter.cpu("BM_UncachedMillionDates/iterations:1");
        cached && uncached)
        reporter.addTarget({"Date text cache, 1,000,000 misses: time / uncached rendering", *cached / *uncached, "x",
                            wq::bench::WQBenchTarget::Bound::AtMost, 2.0,
                            wq::bench::WQBenchRecorder::timeText(*cached / kMillion) + " per miss vs "
                                + wq::bench::WQBenchRecorder::timeText(*uncached / kMillion) + " per render"});
    reporter.finish("bench_dates");
    return 0;
}
