// The pop-up calculator as a user feels it, offscreen: from the operator key
// to the calculator shown with the keyboard in its editing field, from a
// keystroke in the editing field to the new total, and a rebuild of a tape of
// 50 rows. Targets: 16 ms (one frame at 60 Hz), 1 ms, 16 ms.

#include "WQBenchRecorder.h"

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/money/WQMoneyFormatter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <cstdio>
#include <memory>

namespace {

using namespace wq;

WQMoneyFormatterDelegate& owner()
{
    static WQMoneyFormatterDelegate document;
    return document;
}

void key(Qt::Key code, const QString& text)
{
    QWidget* target = QApplication::focusWidget();
    QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
    QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, text);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

void pass()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// A window with one calculating amount field holding $12.
struct Register {
    Register()
    {
        auto* layout = new QVBoxLayout(&window);
        field = new WQLineEdit(WQMoneyFormatter::moneyFormatterForDelegate(&owner(), 2, true), &window);
        layout->addWidget(field);
        window.resize(300, 80);
        window.show();
        window.activateWindow();
        for (int i = 0; i < 10; ++i)
            pass();
        field->setFocus();
        field->setObjectValue(12.0);
    }
    ~Register()
    {
        if (auto* open = WQCalculateWindowController::openCalculator())
            open->closeAndForgetAmount();
        pass();
    }
    QWidget window;
    WQLineEdit* field = nullptr;
};

// Types the operator that opens the calculator; nullptr (and the benchmark
// marked as failed) when none opened.
WQCalculateWindowController* openWithPlus(benchmark::State& state)
{
    key(Qt::Key_Plus, QStringLiteral("+"));
    pass();
    WQCalculateWindowController* calculator = WQCalculateWindowController::openCalculator();
    if (!calculator)
        state.SkipWithError("no calculator opened");
    return calculator;
}

void BM_OpenCalculator(benchmark::State& state)
{
    Register r;
    for (auto _ : state) {
        if (!openWithPlus(state))
            break;
        state.PauseTiming();
        key(Qt::Key_Escape, QStringLiteral("\x1b"));
        pass();
        r.field->setFocus();
        r.field->setObjectValue(12.0);
        state.ResumeTiming();
    }
}

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
