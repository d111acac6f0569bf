// The showcase's register with 100,000 transactions, in its window as a
// user has it (every feature built, shown offscreen): loading them into the
// window (as saved, and in no order), recording one (a sorted insert with the balances below it), editing
// the first row's amount (every balance changes) and scrolling a page, each
// until the window has repainted. Target: each within one frame (16 ms); two
// for a register that must be sorted first.

#include "WQBenchRecorder.h"

#include "RegisterBook.h"
#include "RegisterWindow.h"
#include "ShowcaseFeature.h"

#include <WQGeneral/platform/WQRegionalSettings.h>

#include <QApplication>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSettings>

#include <memory>

namespace showcase {
std::vector<std::unique_ptr<ShowcaseFeature>> makeFeatures();
}

namespace {

using namespace showcase;

constexpr int kTransactions = 100000;
constexpr double kFrameNs = 16e6;

// Ten years of a register, a few transactions a day, in no order.
QList<Transaction> transactions()
{
    static const QStringList payees = {QStringLiteral("Corner Grocery"), QStringLiteral("City Power & Light"),
                                       QStringLiteral("Paycheck"), QStringLiteral("Bakery"),
                                       QStringLiteral("Pharmacy"), QStringLiteral("Bookshop")};
    QRandomGenerator random(42);
    QList<Transaction> all;
    all.reserve(kTransactions);
    for (int i = 0; i < kTransactions; ++i) {
        const wq::WQDate date(2016 + int(random.bounded(10)), 1 + random.bounded(12), 1 + random.bounded(28));
        const double amount = (int(random.bounded(200000)) - 120000) / 100.0;
        all.append({date, payees[int(random.bounded(int(payees.size())))], amount, QString(), random.bounded(2) == 0});
    }
    return all;
}

// The window with every feature, shown, and the register loaded once.
struct Showcase {
    std::unique_ptr<RegisterWindow> window = std::make_unique<RegisterWindow>();
    std::vector<std::unique_ptr<ShowcaseFeature>> features = makeFeatures();
    QList<Transaction> rows = transactions();

    Showcase()
    {
        for (const auto& feature : features)
            feature->build(*window);
        window->finishEntryRow();
        window->resize(1000, 700);
        window->show();
        window->book().setTransactions(rows);
        settle();
    }
    ~Showcase()
    {
        features.clear();
        window.reset();
    }

    // What follows a change before the user sees it: queued work, then a paint.
    void settle() const
    {
        QApplication::processEvents();
        window->table().viewport()->repaint();
    }
};

std::unique_ptr<Showcase> shown;

Showcase& showcaseWindow()
{
    if (!shown)
        shown = std::make_unique<Showcase>();
    return *shown;
}

// state.range(0): 0 loads them as a saved register has them (in date order),
// 1 in no order (sorted on the way in).
void BM_OpenRegister(benchmark::State& state)
{
    Showcase& s = showcaseWindow();
    const QList<Transaction> saved = s.window->book().transactions();
    const QList<Transaction>& rows = state.range(0) ? s.rows : saved;
    for (auto _ : state) {
        s.window->book().setTransactions(rows);
        s.settle();
    }
    state.counters["rows"] = double(s.window->rows().rowCount());
}

void BM_RecordTransaction(benchmark::State& state)
{
    Showcase& s = showcaseWindow();
    RegisterBook& book = s.window->book();
    const Transaction bakery{wq::WQDate(2021, 6, 15), QStringLiteral("Bakery"), -12.5, QString(), false};
    for (auto _ : state) {
        const int row = book.add(bakery);
        s.window->table().scrollTo(book.index(row, 0));
        s.settle();
        state.PauseTiming();
        book.history().undo();
        state.ResumeTiming();
    }
    if (book.rowCount() != kTransactions)
        state.SkipWithError("the register did not come back to its size");
}

void BM_EditFirstAmount(benchmark::State& state)
{
    Showcase& s = showcaseWindow();
    RegisterBook& book = s.window->book();
    const QModelIndex amount = book.index(0, RegisterBook::AmountColumn);
    double value = 100;
    for (auto _ : state) {
        value += 1;
        book.setData(amount, value);
        s.settle();
    }
    book.history().clear();
    if (book.at(0).amount != value)
        state.SkipWithError("the amount was not edited");
}

void BM_ScrollPage(benchmark::State& state)
{
    Showcase& s = showcaseWindow();
    QScrollBar* bar = s.window->table().verticalScrollBar();
    bar->setValue(0);
    for (auto _ : state) {
        bar->setValue(bar->value() + bar->pageStep() >= bar->maximum() ? 0 : bar->value() + bar->pageStep());
        s.settle();
    }
}

BENCHMARK(BM_OpenRegister)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RecordTransaction)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_EditFirstAmount)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ScrollPage)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Settings of its own: the showcase's features keep some.
    QApplication::setOrganizationName(QStringLiteral("WQGeneral benchmarks"));
    QApplication::setApplicationName(QStringLiteral("bench_register"));
    QSettings().clear();
    wq::WQRegionalSettings::setAllLocales(QStringLiteral("en_US"));
    QLocale::setDefault(QLocale(QStringLiteral("en_US")));
    showcaseWindow();
    wq::bench::WQBenchRecorder recorder;
    if (!wq::bench::runBenchmarks(argc, argv, recorder))
        return 1;
    recorder.targetTime("Register, 100,000 rows: a saved one loaded into the window, shown", "BM_OpenRegister/0",
                        kFrameNs);
    recorder.targetTime("Register, 100,000 rows in no order: loaded, sorted, shown", "BM_OpenRegister/1", 2 * kFrameNs);
    recorder.targetTime("Register, 100,000 rows: one recorded (sorted, balances)", "BM_RecordTransaction", kFrameNs);
    recorder.targetTime("Register, 100,000 rows: the first amount edited", "BM_EditFirstAmount", kFrameNs);
    recorder.targetTime("Register, 100,000 rows: a page scrolled", "BM_ScrollPage", kFrameNs);
    recorder.finish("bench_register");
    // The window goes before the application.
    shown.reset();
    return 0;
}
