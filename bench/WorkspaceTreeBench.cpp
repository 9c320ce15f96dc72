// The workspace tree against a bare QTreeWidget, and its look-up. The goals: a fill takes at most twice what the bare
// tree takes for the same items with icons, and grows with their number; a look-up among 100,000 stays under 200 ns.

#include "basic/TdOleDataNode.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxWorkspace.h"
#include "tests/workspace/VirtualSource.h"
#include "workspace/WorkspaceBarTree.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

const QString alias = QStringLiteral("many");

/// A workspace with one datasource of @p count datasets; opened once for all benchmarks.
CTxWorkspace &workspaceOf(int count)
{
    static QTemporaryDir folder;
    static std::map<int, std::unique_ptr<CTxWorkspace>> workspaces;
    std::unique_ptr<CTxWorkspace> &workspace = workspaces[count];
    if (!workspace) {
        workspace = std::make_unique<CTxWorkspace>();
        const QString file = QStringLiteral("%1.ovf").arg(count);
        workspace->GetDataSources().Open(writeManyLayers(folder.path(), file, count), alias);
    }
    return *workspace;
}

void setRate(benchmark::State &state)
{
    state.counters["per_item"] = benchmark::Counter(double(state.range(0)) * double(state.iterations()),
                                                    benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void FillBareTree(benchmark::State &state)
{
    const CTxDataSource *source = workspaceOf(int(state.range(0))).GetDataSources().GetAt(0);
    CTdWkspImageList images;
    images.InitImageList(1);
    QTreeWidget tree;
    tree.setUniformRowHeights(true);
    for (auto _ : state) {
        state.PauseTiming();
        tree.clear();
        auto *parent = new QTreeWidgetItem(&tree);
        state.ResumeTiming();
        QList<QTreeWidgetItem *> children;
        children.reserve(source->GetDatasetCount());
        for (qint32 index = 0; index < source->GetDatasetCount(); ++index) {
            const CTxDataset *dataset = source->GetDatasetAt(index);
            auto *child = new QTreeWidgetItem;
            child->setText(0, dataset->GetName());
            child->setIcon(0, images.icon(images.GetImageIndex(dataset, 0)));
            children.append(child);
        }
        parent->addChildren(children);
    }
    setRate(state);
}
BENCHMARK(FillBareTree)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

void FillWorkspaceTree(benchmark::State &state)
{
    CTxWorkspace &workspace = workspaceOf(int(state.range(0)));
    CWorkspaceBarTree tree;
    tree.SetShowItemMask(0xfff);
    for (auto _ : state) {
        state.PauseTiming();
        tree.ConnectWorkspace(workspace);
        state.ResumeTiming();
        tree.FillTreeItem(CWorkspaceBarTree::FillTypeDataSource, alias);
    }
    setRate(state);
}
BENCHMARK(FillWorkspaceTree)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

void RefillWorkspaceTree(benchmark::State &state)
{
    CWorkspaceBarTree tree;
    tree.SetShowItemMask(0xfff);
    tree.ConnectWorkspace(workspaceOf(int(state.range(0))));
    tree.FillTreeItem(CWorkspaceBarTree::FillTypeDataSource, alias);
    for (auto _ : state)
        tree.FillTreeItem(CWorkspaceBarTree::FillTypeDataSource, alias);
    setRate(state);
}
BENCHMARK(RefillWorkspaceTree)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

void SortWorkspaceTree(benchmark::State &state)
{
    CWorkspaceBarTree tree;
    tree.SetShowItemMask(0xfff);
    tree.ConnectWorkspace(workspaceOf(int(state.range(0))));
    tree.FillTreeItem(CWorkspaceBarTree::FillTypeDataSource, alias);
    QTreeWidgetItem *parent = tree.FindFirstItem(CTdOleDataNode::ItemDataSource);
    bool byKind = false;
    for (auto _ : state)
        tree.SortChildrenV(parent, (byKind = !byKind) ? CWorkspaceBarTree::SortByKind : CWorkspaceBarTree::SortByLabel);
    setRate(state);
}
BENCHMARK(SortWorkspaceTree)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

void FindHTreeItem(benchmark::State &state)
{
    CTxWorkspace &workspace = workspaceOf(int(state.range(0)));
    CWorkspaceBarTree tree;
    tree.SetShowItemMask(0xfff);
    tree.ConnectWorkspace(workspace);
    tree.FillTreeItem(CWorkspaceBarTree::FillTypeDataSource, alias);
    const CTxDataSource *source = workspace.GetDataSources().GetAt(0);
    const bool noCase = state.range(1) != 0;
    QStringList names; // in an order that caches cannot foresee
    for (quint32 step = 0; step < 4096; ++step) {
        const QString &name = source->GetDatasetAt(qint32(step * 2654435761u % quint32(state.range(0))))->GetName();
        names.append(noCase ? name.toUpper() : QString(name.constData(), name.size())); // memory of its own
    }
    int next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(tree.FindHTreeItem(names.at(next), alias, CTdOleDataNode::ItemDataset, noCase));
        next = (next + 1) & 4095;
    }
}
BENCHMARK(FindHTreeItem)->ArgsProduct({{1000, 10000, 100000}, {0, 1}});

} // namespace
