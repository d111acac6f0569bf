// The pop-up calculator as a user feels it, offscreen: from the operator key
// to the calculator shown with the keyboard in its editing field, from a
// keystroke in the editing field to the new total, and a rebuild of a tape of
// 50 rows. Targets: 16 ms (one frame at 60 Hz), 1 ms, 16 ms.

#include "WQBenchFields.h"
#include "WQBenchRecorder.h"

#include <WQGeneral/platform/WQRegionalSettings.h>

#include <cstdio>
#include <memory>

namespace {

using namespace wq;
using namespace wq::bench;

void BM_TotalUpdate(benchmark::State& state)
{
    Register r;
    WQCalculateWindowController* calculator = openWithPlus(state);
    if (!calculator)
        return;
    double total = 0;
    QObject::connect(calculator, &WQCalculateWindowController::totalChanged, [&total](double t) { total = t; });
    for (auto _ : state) {
        key(Qt::Key_5, QStringLiteral("5"));
        benchmark::DoNotOptimize(total);
        state.PauseTiming();
        key(Qt::Key_Backspace, QStringLiteral("\b"));
        state.ResumeTiming();
    }
}

void BM_Rebuild50Rows(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto r = std::make_unique<Register>();
        WQCalculateWindowController* calculator = openWithPlus(state);
        if (!calculator)
            break;
        for (int i = 0; i < 48; ++i)
            calculator->addMathOperator(QStringLiteral("+"), 1.0);
        pass();
        calculator->addMathOperator(QStringLiteral("+"), 1.0);
        state.ResumeTiming();
        pass(); // the 50-row rebuild
        state.PauseTiming();
        if (calculator->tape().operators.size() != 50)
            state.SkipWithError("the tape did not grow");
        r.reset();
        state.ResumeTiming();
    }
}

BENCHMARK(BM_OpenCalculator)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TotalUpdate)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Rebuild50Rows)->Unit(benchmark::kMillisecond)->Iterations(30);

void summary(const wq::bench::WQBenchRecorder& recorder)
{
    std::printf("\nTargets (offscreen):\n");
    const auto check = [&](const char* label, const char* name, double targetMs) {
        const auto it = recorder.realNanoseconds.find(name);
        if (it == recorder.realNanoseconds.end())
            return;
        const double ms = it->second / 1e6;
        std::printf("  %-46s %8.3f ms (target %g ms) %s\n", label, ms, targetMs, ms <= targetMs ? "ok" : "MISSED");
    };
    check("operator key to calculator with focus", "BM_OpenCalculator", 16);
    check("keystroke to total updated", "BM_TotalUpdate", 1);
    check("rebuild with 50 rows", "BM_Rebuild50Rows/iterations:30", 16);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    wq::bench::WQBenchRecorder reporter;
    if (!wq::bench::runBenchmarks(argc, argv, reporter))
        return 1;
    summary(reporter);
    return 0;
}
