// Opening a GeoPackage of 1,000 layers and listing it in the tree, against GDAL's own open. The goal: at most 1.5
// times.

#include "engine/map/TxWorkspace.h"
#include "workspace/WorkspaceBarTree.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <ogrsf_frmts.h>

namespace {

/// A GeoPackage of 1,000 empty layers; made once.
QByteArray largeGeoPackage()
{
    static QTemporaryDir folder;
    static const QByteArray path = [] {
        const QByteArray file = folder.filePath(QStringLiteral("large.gpkg")).toUtf8();
        GDALAllRegister();
        CPLSetConfigOption("OGR_SQLITE_SYNCHRONOUS", "OFF");
        GDALDataset *made =
            GetGDALDriverManager()->GetDriverByName("GPKG")->Create(file, 0, 0, 0, GDT_Unknown, nullptr);
        made->StartTransaction();
        for (int number = 0; number < 1000; ++number) {
            OGRLayer *layer = made->CreateLayer("layer_" + QByteArray::number(number), nullptr,
                                                number % 2 ? wkbPoint : wkbPolygon, nullptr);
            OGRFieldDefn field("name", OFTString);
            layer->CreateField(&field);
        }
        made->CommitTransaction();
        GDALClose(made);
        return file;
    }();
    return path;
}

void OpenByGdal(benchmark::State &state)
{
    const QByteArray path = largeGeoPackage();
    const char *const options[] = {"LIST_ALL_TABLES=NO", nullptr};
    const char *const drivers[] = {"GPKG", nullptr};
    for (auto _ : state) {
        void *opened = GDALOpenEx(path, GDAL_OF_VECTOR | GDAL_OF_UPDATE, drivers, options, nullptr);
        benchmark::DoNotOptimize(opened);
        GDALClose(opened);
    }
}
BENCHMARK(OpenByGdal)->Unit(benchmark::kMillisecond);

void OpenAndListInTree(benchmark::State &state)
{
    const QString path = QString::fromUtf8(largeGeoPackage());
    CWorkspaceBarTree tree;
    tree.SetShowItemMask(0xfff);
    for (auto _ : state) {
        CTxWorkspace workspace;
        workspace.GetDataSources().Open(path, QStringLiteral("large"));
        tree.ConnectWorkspace(workspace);
        tree.FillTreeItem(CWorkspaceBarTree::FillTypeWorkspace);
        tree.DisconnectWorkspace();
    }
}
BENCHMARK(OpenAndListInTree)->Unit(benchmark::kMillisecond);

} // namespace
