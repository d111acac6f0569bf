// Money entry side by side with its peers: display against ICU's currency
// formatting and QLocale::toCurrencyString, parsing against ICU's parse,
// and one keystroke judgement in each typing mode. A summary of the ratios
// and the per-keystroke times follows the table.

#include <WQGeneral/formatters/WQToolkit.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/money/WQMoneyFormatterOwner.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QLocale>

#include <unicode/curramt.h>
#include <unicode/numfmt.h>
#include <unicode/parsepos.h>

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace {

using namespace wq;

constexpr std::array<double, 8> kAmounts = {1234.5, -1234.5, 0.375, 999.999, 12.34, -0.004, 1234567.89, 42};

// The documents the formatters belong to; each takes its formatters out of
// the registry when the program ends.
WQMoneyFormatterOwner& standardOwner() { static WQMoneyFormatterOwner o; return o; }
WQMoneyFormatterOwner& atmOwner() { static WQMoneyFormatterOwner o(std::nullopt, true); return o; }

std::shared_ptr<WQMoneyFormatter> formatter(WQMoneyFormatterOwner& owner)
{
    return owner.moneyFormatter();
}

std::unique_ptr<icu::NumberFormat> icuCurrency()
{
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::NumberFormat>(icu::NumberFormat::createCurrencyInstance(icu::Locale("en_US"), status));
}


void BM_DisplayWQMoney(benchmark::State& state)
{
    const auto f = formatter(standardOwner());
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(f->stringForAmount(kAmounts[i++ % kAmounts.size()]));
}

void BM_DisplayIcuCurrency(benchmark::State& state)
{
    const auto icu = icuCurrency();
    std::size_t i = 0;
    for (auto _ : state) {
        // What a field needs: the text as a QString.
        icu::UnicodeString text;
        icu->format(kAmounts[i++ % kAmounts.size()], text);
        benchmark::DoNotOptimize(QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length()));
    }
}

void BM_DisplayQLocale(benchmark::State& state)
{
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(locale.toCurrencyString(kAmounts[i++ % kAmounts.size()]));
}

const std::array<QString, 4> kTexts = {QStringLiteral("$1,234.56"), QStringLiteral("-$1,234.56"),
                                       QStringLiteral("$0.38"), QStringLiteral("$1,234,567.89")};

void BM_ParseWQMoney(benchmark::State& state)
{
    const auto f = formatter(standardOwner());
    std::size_t i = 0;
    for (auto _ : state) {
        QVariant value;
        QString error;
        benchmark::DoNotOptimize(f->getObjectValue(&value, kTexts[i++ % kTexts.size()], &error));
    }
}

void BM_ParseIcuCurrency(benchmark::State& state)
{
    const auto icu = icuCurrency();
    std::size_t i = 0;
    for (auto _ : state) {
        const QString& text = kTexts[i++ % kTexts.size()];
        const icu::UnicodeString u(reinterpret_cast<const UChar*>(text.utf16()), int32_t(text.size()));
        icu::ParsePosition position(0);
        benchmark::DoNotOptimize(icu->parseCurrency(u, position));
    }
}

// One judgement: the fifth digit typed at the end of $1,234.
void BM_KeystrokeStandard(benchmark::State& state)
{
    const auto f = formatter(standardOwner());
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QStringLiteral("5"), false});
    const QString original = QStringLiteral("$1,234");
    const QString proposal = QStringLiteral("$1,2345");
    for (auto _ : state) {
        QString partial = proposal;
        WQRange range{7, 0};
        QString error;
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {6, 0}, &error));
    }
}

// A digit typed at the end of a grouped amount of state.range(0) digits
// ("$1,234,...,567"), as long texts are pasted or typed.
QString groupedAmount(qsizetype digits)
{
    QString text = QStringLiteral("$");
    for (qsizetype i = 0; i < digits; ++i) {
        if (i > 0 && (digits - i) % 3 == 0)
            text += u',';
        text += QChar(char16_t(u'1' + i % 9));
    }
    return text;
}

void BM_KeystrokeStandardLength(benchmark::State& state)
{
    const auto f = formatter(standardOwner());
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QStringLiteral("5"), false});
    const QString original = groupedAmount(state.range(0));
    const QString proposal = original + u'5';
    for (auto _ : state) {
        QString partial = proposal;
        WQRange range{proposal.size(), 0};
        QString error;
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {original.size(), 0}, &error));
    }
    state.counters["chars"] = double(proposal.size());
}

void BM_KeystrokeATM(benchmark::State& state)
{
    const auto f = formatter(atmOwner());
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QStringLiteral("5"), false});
    const QString original = QStringLiteral("$12.34");
    const QString proposal = QStringLiteral("$12.345");
    for (auto _ : state) {
        QString partial = proposal;
        WQRange range{7, 0};
        QString error;
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {6, 0}, &error));
    }
}

void BM_KeystrokeATMDelete(benchmark::State& state)
{
    const auto f = formatter(atmOwner());
    const WQEditScope scope({WQEditEvent::Type::KeyDown, QString(QChar(WQEditEvent::DeleteCharacter)), false});
    const QString original = QStringLiteral("$1,234.56");
    for (auto _ : state) {
        QString partial = QStringLiteral("$1,234.5");
        WQRange range{8, 0};
        QString error;
        benchmark::DoNotOptimize(f->isPartialStringValid(&partial, &range, original, {9, 0}, &error));
    }
}

BENCHMARK(BM_DisplayWQMoney);
BENCHMARK(BM_DisplayIcuCurrency);
BENCHMARK(BM_DisplayQLocale);
BENCHMARK(BM_ParseWQMoney);
BENCHMARK(BM_ParseIcuCurrency);
BENCHMARK(BM_KeystrokeStandard);
// 30, 342, 5,462, 20,000 and 21,846 characters after the keystroke.
BENCHMARK(BM_KeystrokeStandardLength)->Arg(22)->Arg(256)->Arg(4096)->Arg(15000)->Arg(16384);
BENCHMARK(BM_KeystrokeATM);
BENCHMARK(BM_KeystrokeATMDelete);

void targets(wq::bench::WQBenchRecorder& recorder)
{
    using Clock = wq::bench::WQBenchRecorder::Clock;
    recorder.targetSpeedup("Money display: speed / ICU currency format", "BM_DisplayWQMoney", "BM_DisplayIcuCurrency", 3,
                           Clock::Real);
    for (const char* name : {"BM_KeystrokeStandard", "BM_KeystrokeATM", "BM_KeystrokeATMDelete"})
        recorder.targetTime(std::string("Money keystroke judgement, ") + name, name, 5000, {}, Clock::Real);
    // Shown beside the targets; no bound was set for them.
    const auto ratio = [&](const char* label, const char* peer, const char* ours) {
        if (const auto a = recorder.time(ours, Clock::Real), b = recorder.time(peer, Clock::Real); a && b)
            std::printf("  %-44s %6.1fx\n", label, *b / *a);
    };
    std::printf("\nAgainst the peers (time of the peer / time of ours):\n");
    ratio("display vs QLocale::toCurrencyString", "BM_DisplayQLocale", "BM_DisplayWQMoney");
    ratio("parse vs ICU parseCurrency", "BM_ParseIcuCurrency", "BM_ParseWQMoney");
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    // The worked settings: en_US gives $#,##0.00 and -$#,##0.00.
    WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    wq::bench::WQBenchRecorder reporter;
    if (!wq::bench::runBenchmarks(argc, argv, reporter))
        return 1;
    targets(reporter);
    // Standard typing must stay linear in the text.
    reporter.targetTime("Money keystroke, standard mode, 30 characters", "BM_KeystrokeStandardLength/22", 1000);
    reporter.targetTime("Money keystroke, standard mode, 20,000 characters", "BM_KeystrokeStandardLength/15000",
                        50000);
    if (const auto quarter = reporter.cpu("BM_KeystrokeStandardLength/4096"),
        whole = reporter.cpu("BM_KeystrokeStandardLength/16384");
        quarter && whole)
        reporter.addTarget({"Money keystroke growth, 5,462 to 21,846 characters (linear 4x)", *whole / *quarter, "x",
                            wq::bench::WQBenchTarget::Bound::AtMost, 5.0,
                            wq::bench::WQBenchRecorder::timeText(*quarter) + " and "
                                + wq::bench::WQBenchRecorder::timeText(*whole)});
    reporter.finish("bench_money");
    return 0;
}
