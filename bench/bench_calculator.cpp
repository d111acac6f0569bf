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

// Offscreen, wall time: the work includes the event loop's turns.
void targets(wq::bench::WQBenchRecorder& recorder)
{
    using Clock = wq::bench::WQBenchRecorder::Clock;
    recorder.targetTime("Operator key to calculator with focus (offscreen)", "BM_OpenCalculator", 16e6, {}, Clock::Real);
    recorder.targetTime("Keystroke to calculator total updated (offscreen)", "BM_TotalUpdate", 1e6, {}, Clock::Real);
    recorder.targetTime("Calculator rebuild with 50 rows (offscreen)", "BM_Rebuild50Rows/iterations:30", 16e6, {},
                        Clock::Real);
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
    targets(reporter);
    reporter.finish("bench_calculator");
    return 0;
}
