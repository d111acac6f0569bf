// The Qt Quick field and calculator as a user feels them, offscreen, beside
// the same in the widgets in this run: from a digit typed into a money field
// to its new text, and from the operator key to the calculator's pop-up shown
// with the keyboard in its editing field. Target: each within one frame at
// 60 Hz (16 ms).

#include "WQBenchFields.h"
#include "WQBenchRecorder.h"

#include <WQGeneral/platform/WQRegionalSettings.h>
#include <WQGeneral/quick/WQQuickCalculator.h>
#include <WQGeneral/quick/WQQuickFormattedField.h>

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <memory>

namespace {

using namespace wq;

// A QML window with one calculating amount field holding $12.
struct QuickRegister {
    QuickRegister()
    {
        view.engine()->addImportPath(QStringLiteral(WQ_QML_IMPORT_PATH));
        QQmlComponent component(view.engine());
        component.setData("import QtQuick\nimport WQGeneral\n"
                          "Item { width: 300; height: 80\n"
                          "  FormattedTextField { objectName: \"amount\"; width: 200\n"
                          "    formatterKind: FormattedTextField.CalculatingMoney } }",
                          QUrl());
        root.reset(component.create());
        if (!root)
            qFatal("%s", qPrintable(component.errorString()));
        view.setContent(QUrl(), &component, root.get());
        view.show();
        view.requestActivate();
        for (int i = 0; i < 10; ++i)
            bench::pass();
        field = root->findChild<QQuickItem*>(QStringLiteral("amount"));
        reset();
    }
    ~QuickRegister()
    {
        if (auto* open = WQQuickCalculator::openCalculator())
            open->closeAndForgetAmount();
        bench::pass();
    }
    void reset()
    {
        field->forceActiveFocus(Qt::MouseFocusReason);
        WQQuickFormattedField::of(field)->setValue(12.0);
    }
    void key(Qt::Key code, const QString& text)
    {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, text);
        QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&view, &press);
        QCoreApplication::sendEvent(&view, &release);
    }

    QQuickView view;
    std::unique_ptr<QObject> root;
    QQuickItem* field = nullptr;
};

void BM_QuickFieldKeystroke(benchmark::State& state)
{
    QuickRegister r;
    for (auto _ : state) {
        r.key(Qt::Key_5, QStringLiteral("5"));
        benchmark::DoNotOptimize(r.field->property("text"));
        state.PauseTiming();
        r.key(Qt::Key_Backspace, QStringLiteral("\b"));
        state.ResumeTiming();
    }
}

void BM_QuickOpenCalculator(benchmark::State& state)
{
    QuickRegister r;
    for (auto _ : state) {
        r.key(Qt::Key_Plus, QStringLiteral("+"));
        bench::pass();
        const WQQuickCalculator* calculator = WQQuickCalculator::openCalculator();
        if (!calculator || !calculator->editingField()->hasActiveFocus()) {
            state.SkipWithError("no calculator opened");
            break;
        }
        state.PauseTiming();
        r.key(Qt::Key_Escape, QStringLiteral("\x1b"));
        bench::pass();
        r.reset();
        state.ResumeTiming();
    }
}

BENCHMARK(bench::BM_FieldKeystroke)->Name("BM_WidgetsFieldKeystroke")->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_QuickFieldKeystroke)->Unit(benchmark::kMicrosecond);
BENCHMARK(bench::BM_OpenCalculator)->Name("BM_WidgetsOpenCalculator")->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QuickOpenCalculator)->Unit(benchmark::kMillisecond);

// A frame's worth of wall time, with the widgets' figure beside.
void targetFrame(bench::WQBenchRecorder& recorder, const std::string& target, const std::string& quick,
                 const std::string& widgets)
{
    const auto ours = recorder.realNanoseconds.find(quick);
    const auto peer = recorder.realNanoseconds.find(widgets);
    if (ours == recorder.realNanoseconds.end() || peer == recorder.realNanoseconds.end())
        return;
    recorder.addTarget({target, ours->second / 1e6, "ms", bench::WQBenchTarget::Bound::AtMost, 16,
                        "Qt Quick " + bench::WQBenchRecorder::timeText(ours->second) + ", widgets "
                            + bench::WQBenchRecorder::timeText(peer->second)});
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    QApplication app(argc, argv);
    WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    bench::WQBenchRecorder recorder;
    if (!bench::runBenchmarks(argc, argv, recorder))
        return 1;
    targetFrame(recorder, "Qt Quick field: keystroke to updated text", "BM_QuickFieldKeystroke",
                "BM_WidgetsFieldKeystroke");
    targetFrame(recorder, "Qt Quick: operator key to calculator visible", "BM_QuickOpenCalculator",
                "BM_WidgetsOpenCalculator");
    recorder.finish("bench_quick");
    return 0;
}
