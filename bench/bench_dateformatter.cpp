// Date entry: reading a finished date and judging a keystroke, the two things
// a date field does on every edit, against ICU's and Qt's date parsing.

#include <WQGeneral/dateformatter/WQDateFormatter.h>
#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QCoreApplication>
#include <QDate>
#include <QLocale>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/unistr.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

using namespace wq;

namespace {

std::unique_ptr<WQDateFormatter> usFormatter()
{
    auto f = std::make_unique<WQDateFormatter>(QStringLiteral("M/d/yy"));
    f->setTodayProvider([] { return std::optional<WQDate>(WQDate(2026, 3, 15)); });
    return f;
}

void BM_Parse_WQDateFormatter(benchmark::State& state)
{
    const auto f = usFormatter();
    const QString text = QStringLiteral("3/15/26");
    QVariant value;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f->getObjectValue(&value, text, nullptr));
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(BM_Parse_WQDateFormatter);

void BM_Parse_WQDateFormatter_TwoNumbers(benchmark::State& state)
{
    const auto f = usFormatter();
    const QString text = QStringLiteral("3/15");
    for (auto _ : state)
        benchmark::DoNotOptimize(f->dateForString(text));
}
BENCHMARK(BM_Parse_WQDateFormatter_TwoNumbers);

void BM_Parse_ICU_SimpleDateFormat(benchmark::State& state)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(u"M/d/yy"), icu::Locale("en_US"), status);
    const icu::UnicodeString text(u"3/15/26");
    for (auto _ : state) {
        UErrorCode parseStatus = U_ZERO_ERROR;
        benchmark::DoNotOptimize(format.parse(text, parseStatus));
    }
    if (U_FAILURE(status))
        state.SkipWithError("ICU format unavailable");
}
BENCHMARK(BM_Parse_ICU_SimpleDateFormat);

void BM_Parse_QDate_fromString(benchmark::State& state)
{
    const QString text = QStringLiteral("3/15/26");
    const QString format = QStringLiteral("M/d/yy");
    for (auto _ : state)
        benchmark::DoNotOptimize(QDate::fromString(text, format));
}
BENCHMARK(BM_Parse_QDate_fromString);

// A digit typed at the end of the field: the most common keystroke.
void BM_Keystroke_Digit(benchmark::State& state)
{
    const auto f = usFormatter();
    const QString original = QStringLiteral("3/15/2");
    const QString proposed = QStringLiteral("3/15/26");
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QStringLiteral("6"), false});
    for (auto _ : state) {
        QString partial = proposed;
        WQRange range{7, 0};
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {6, 0}, nullptr));
    }
}
BENCHMARK(BM_Keystroke_Digit);

// "+" typed after a full date: parse, step a day, show the new date.
void BM_Keystroke_IncrementKey(benchmark::State& state)
{
    const auto f = usFormatter();
    const QString original = QStringLiteral("3/15/26");
    const QString proposed = QStringLiteral("3/15/26+");
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QStringLiteral("+"), false});
    for (auto _ : state) {
        QString partial = proposed;
        WQRange range{8, 0};
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {7, 0}, nullptr));
        benchmark::DoNotOptimize(partial);
    }
}
BENCHMARK(BM_Keystroke_IncrementKey);

// A refused letter builds its message.
void BM_Keystroke_RefusedLetter(benchmark::State& state)
{
    const auto f = usFormatter();
    const QString original = QStringLiteral("3/15/26");
    const QString proposed = QStringLiteral("3/15/26x");
    for (auto _ : state) {
        QString partial = proposed;
        WQRange range{8, 0};
        QString error;
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {7, 0}, &error));
    }
}
BENCHMARK(BM_Keystroke_RefusedLetter);

void BM_Display_WQDateFormatter(benchmark::State& state)
{
    const auto f = usFormatter();
    const QVariant value = QVariant::fromValue(WQDate(2026, 3, 15));
    for (auto _ : state)
        benchmark::DoNotOptimize(f->stringForObjectValue(value));
}
BENCHMARK(BM_Display_WQDateFormatter);

void BM_Display_ICU_SimpleDateFormat(benchmark::State& state)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat format(icu::UnicodeString(u"M/d/yy"), icu::Locale("en_US"), status);
    const UDate when = 1773532800000.0; // 2026-03-15 00:00 UTC
    for (auto _ : state) {
        icu::UnicodeString out;
        benchmark::DoNotOptimize(format.format(when, out));
    }
}
BENCHMARK(BM_Display_ICU_SimpleDateFormat);

void targets(wq::bench::WQBenchRecorder& r)
{
    r.targetTime("Date parse of finished text", "BM_Parse_WQDateFormatter", 5000);
    r.targetTime("Date digit keystroke", "BM_Keystroke_Digit", 5000);
    r.targetTime("Date increment keystroke", "BM_Keystroke_IncrementKey", 5000);
    // Shown beside the targets; no bound was set for them.
    const auto ratio = [&](const char* label, const char* ours, const char* peer) {
        if (const auto a = r.cpu(ours), b = r.cpu(peer); a && b)
            std::printf("  %-40s %.1fx faster\n", label, *b / *a);
    };
    std::printf("\nDate entry against its peers (CPU time):\n");
    ratio("parse vs ICU SimpleDateFormat::parse", "BM_Parse_WQDateFormatter", "BM_Parse_ICU_SimpleDateFormat");
    ratio("parse vs QDate::fromString", "BM_Parse_WQDateFormatter", "BM_Parse_QDate_fromString");
    ratio("display vs ICU SimpleDateFormat", "BM_Display_WQDateFormatter", "BM_Display_ICU_SimpleDateFormat");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    wq::bench::WQBenchRecorder reporter;
    if (!wq::bench::runBenchmarks(argc, argv, reporter))
        return 1;
    targets(reporter);
    reporter.finish("bench_dateformatter");
    return 0;
}
