#pragma once
// A widgets window with one calculating amount field holding $12, and the
// keys a user types into it, shared by the programs that time fields and
// the calculator as a user feels them (offscreen).

#include <WQGeneral/calculator/WQCalculateWindowController.h>
#include <WQGeneral/money/WQMoneyFormatter.h>

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

namespace wq::bench {

inline WQMoneyFormatterDelegate& owner()
{
    static WQMoneyFormatterDelegate document;
    return document;
}

// A key press and release on the focused widget.
inline void key(Qt::Key code, const QString& text)
{
    QWidget* target = QApplication::focusWidget();
    QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
    QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, text);
    QApplication::sendEvent(target, &press);
    QApplication::sendEvent(target, &release);
}

// One pass of the event loop, deferred deletions included.
inline void pass()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

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
inline WQCalculateWindowController* openWithPlus(benchmark::State& state)
{
    key(Qt::Key_Plus, QStringLiteral("+"));
    pass();
    WQCalculateWindowController* calculator = WQCalculateWindowController::openCalculator();
    if (!calculator)
        state.SkipWithError("no calculator opened");
    return calculator;
}

// From the operator key to the calculator shown with the keyboard in its
// editing field.
inline void BM_OpenCalculator(benchmark::State& state)
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

// From a digit typed into the amount field to its new text.
inline void BM_FieldKeystroke(benchmark::State& state)
{
    Register r;
    r.field->end(false);
    for (auto _ : state) {
        key(Qt::Key_5, QStringLiteral("5"));
        benchmark::DoNotOptimize(r.field->text());
        state.PauseTiming();
        key(Qt::Key_Backspace, QStringLiteral("\b"));
        state.ResumeTiming();
    }
}

} // namespace wq::bench
