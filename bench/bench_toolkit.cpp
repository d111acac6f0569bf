// Toolkit helpers against Qt doing the same by hand: a toolbar of 50 items
// built from its dictionary, and expanding and collapsing a tree of 100,000
// items with the outline walks against QTreeView's own expandAll and
// collapseAll (each timed up to a laid-out view).

#include <WQGeneral/alerts/WQWindowController.h>
#include <WQGeneral/menus/WQNamedImage.h>
#include <WQGeneral/menus/WQTreeViewExtensions.h>
#include <WQGeneral/toolbar/WQToolbar.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QStandardItemModel>
#include <QToolBar>
#include <QTreeView>

#include <cstdio>
#include <memory>

namespace {

constexpr int kToolbarItems = 50;

class BenchController : public wq::WQWindowController {
    Q_OBJECT
public:
    BenchController() : wq::WQWindowController(std::make_unique<QWidget>())
    {
        QVariantMap info;
        QStringList identifiers;
        for (int i = 0; i < kToolbarItems; ++i) {
            const QString identifier = QStringLiteral("item%1").arg(i);
            identifiers << identifier;
            info.insert(identifier, QVariantMap{{wq::kWQToolbarItemKey_Label, QStringLiteral("Item %1").arg(i)},
                                                {wq::kWQToolbarItemKey_PaletteLabel, QStringLiteral("Item %1").arg(i)},
                                                {wq::kWQToolbarItemKey_ToolTip, QStringLiteral("Does %1").arg(i)},
                                                {wq::kWQToolbarItemKey_ImageName, wq::kWQLittleRightArrowImageName},
                                                {wq::kWQToolbarItemKey_Action, QStringLiteral("act")}});
        }
        _dictionary = {{wq::kWQToolbarKey_ItemInfoByIdentifier, info},
                       {wq::kWQToolbarKey_DefaultItemIdentifiers, identifiers},
                       {wq::kWQToolbarKey_AllowedItemIdentifiers, identifiers}};
    }
    std::optional<QVariantMap> toolbarDictionary() const override { return _dictionary; }
    int acts = 0;
public slots:
    void act() { ++acts; }

private:
    QVariantMap _dictionary;
};

void BM_ToolbarFromDictionary50(benchmark::State& state)
{
    BenchController controller;
    for (auto _ : state) {
        wq::WQToolbar toolbar(QStringLiteral("Bench"));
        toolbar.setDelegate(&controller);
        benchmark::DoNotOptimize(toolbar.items().size());
    }
    state.SetItemsProcessed(state.iterations() * kToolbarItems);
}
BENCHMARK(BM_ToolbarFromDictionary50)->Unit(benchmark::kMicrosecond);

// The same 50 buttons written out by hand.
void BM_ToolbarByHand50(benchmark::State& state)
{
    BenchController controller;
    const QIcon icon = wq::WQImageNamed(wq::kWQLittleRightArrowImageName);
    for (auto _ : state) {
        QToolBar toolbar;
        toolbar.setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        for (int i = 0; i < kToolbarItems; ++i) {
            QAction* action = toolbar.addAction(icon, QStringLiteral("Item %1").arg(i));
            action->setToolTip(QStringLiteral("Does %1").arg(i));
            QObject::connect(action, &QAction::triggered, &controller, &BenchController::act);
        }
        benchmark::DoNotOptimize(toolbar.actions().size());
    }
    state.SetItemsProcessed(state.iterations() * kToolbarItems);
}
BENCHMARK(BM_ToolbarByHand50)->Unit(benchmark::kMicrosecond);

// 10 groups of 99 accounts of 100 entries: 100,000 items, 1,000 of them
// with children.
struct Tree {
    Tree()
    {
        QStandardItem* root = model.invisibleRootItem();
        for (int g = 0; g < 10; ++g) {
            auto* group = new QStandardItem(QStringLiteral("Group %1").arg(g));
            for (int a = 0; a < 99; ++a) {
                auto* account = new QStandardItem(QStringLiteral("Account %1").arg(a));
                QList<QStandardItem*> entries;
                for (int e = 0; e < 100; ++e)
                    entries << new QStandardItem(QStringLiteral("Entry %1").arg(e));
                account->appendRows(entries);
                group->appendRow(account);
            }
            root->appendRow(group);
        }
        model.setHorizontalHeaderLabels({QStringLiteral("Account")});
        view.setModel(&model);
        view.setUniformRowHeights(true);
        view.resize(400, 600);
        view.show();
        QCoreApplication::processEvents();
    }
    // Makes the view lay out what it has been told.
    void layOut() { benchmark::DoNotOptimize(view.indexBelow(model.index(0, 0))); }

    QStandardItemModel model;
    QTreeView view;
};

Tree& tree()
{
    static Tree* const shared = new Tree;
    return *shared;
}

template <typename Prepare, typename Run>
void timeTree(benchmark::State& state, Prepare prepare, Run run)
{
    Tree& t = tree();
    for (auto _ : state) {
        state.PauseTiming();
        prepare(t.view);
        t.layOut();
        state.ResumeTiming();
        run(t.view);
        t.layOut();
    }
    state.SetItemsProcessed(state.iterations() * 100000);
}

void collapsed(QTreeView& view) { view.collapseAll(); }
void expanded(QTreeView& view) { view.expandAll(); }

void BM_QTreeViewExpandAll(benchmark::State& state)
{
    timeTree(state, collapsed, [](QTreeView& view) { view.expandAll(); });
}
void BM_WQExpandAllItems(benchmark::State& state)
{
    timeTree(state, collapsed, [](QTreeView& view) { wq::expandAllItems(view); });
}
void BM_WQExpandAllYes(benchmark::State& state)
{
    timeTree(state, collapsed, [](QTreeView& view) { wq::expandAll(view, true, 0); });
}
void BM_QTreeViewCollapseAll(benchmark::State& state)
{
    timeTree(state, expanded, [](QTreeView& view) { view.collapseAll(); });
}
void BM_WQExpandAllNo(benchmark::State& state)
{
    timeTree(state, expanded, [](QTreeView& view) { wq::expandAll(view, false, 0); });
}
BENCHMARK(BM_QTreeViewExpandAll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WQExpandAllItems)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WQExpandAllYes)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QTreeViewCollapseAll)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WQExpandAllNo)->Unit(benchmark::kMillisecond);

void targets(wq::bench::WQBenchRecorder& recorder)
{
    using Clock = wq::bench::WQBenchRecorder::Clock;
    // Within twice Qt's own, and well under a second.
    const auto compare = [&](const std::string& label, const char* ours, const char* peer) {
        recorder.targetSlowdown(label + ": time / Qt's own", ours, peer, 2, Clock::Real);
        recorder.targetTime(label, ours, 1e9, {}, Clock::Real);
    };
    compare("expandAllItems vs QTreeView::expandAll", "BM_WQExpandAllItems", "BM_QTreeViewExpandAll");
    compare("expandAll(YES) vs QTreeView::expandAll", "BM_WQExpandAllYes", "BM_QTreeViewExpandAll");
    compare("expandAll(NO) vs QTreeView::collapseAll", "BM_WQExpandAllNo", "BM_QTreeViewCollapseAll");
    if (const auto ours = recorder.time("BM_ToolbarFromDictionary50", Clock::Real),
        byHand = recorder.time("BM_ToolbarByHand50", Clock::Real);
        ours && byHand)
        std::printf("  %-40s %8.3f ms (by hand %.3f ms)\n", "toolbar of 50 items from its dictionary", *ours / 1e6,
                    *byHand / 1e6);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Nothing the benchmark saves reaches the user's settings.
    QApplication::setOrganizationName(QStringLiteral("WQGeneralBench"));
    QApplication::setApplicationName(QStringLiteral("bench_toolkit"));
    {
        // The walks must leave the tree as Qt's own calls do.
        Tree& t = tree();
        wq::expandAllItems(t.view);
        const int rows = wq::numberOfRows(t.view);
        wq::expandAll(t.view, false, 0);
        if (rows != 100000 || wq::numberOfRows(t.view) != 10) {
            std::fprintf(stderr, "bench_toolkit: the walks did not expand and collapse the whole tree\n");
            return 1;
        }
    }
    wq::bench::WQBenchRecorder reporter;
    if (!wq::bench::runBenchmarks(argc, argv, reporter))
        return 1;
    targets(reporter);
    reporter.finish("bench_toolkit");
    return 0;
}

#include "bench_toolkit.moc"
