// Laying a large image into another one, against GDAL's own: the warper run in the process (GDALWarp) where the cells
// differ, a block by block copy where they are the same. Ours is all or nothing, the peers' is not: into a GeoTIFF it
// copies the file first, in a database it also makes the overviews anew.

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/TxDataSources.h"

#include <gdal_priv.h>
#include <gdal_utils.h>

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int side = 8192; ///< cells of either image
constexpr int block = 256;

enum Target { Tiff, Database };

using FilePtr = GDALDatasetUniquePtr;

/// The image's cells stand on the target's when @p step is 1, and are @p step of them wide else.
FilePtr makeTiff(const QString &path, double step, bool filled)
{
    CPLStringList options;
    options.SetNameValue("TILED", "YES");
    FilePtr file(GetGDALDriverManager()->GetDriverByName("GTiff")->Create(path.toUtf8(), side, side, 1, GDT_Byte,
                                                                          options.List()));
    double place[6] = {0, step, 0, side, 0, -step};
    file->SetGeoTransform(place);
    std::vector<quint8> row(side);
    for (int y = 0; filled && y < side; ++y) {
        for (int x = 0; x < side; ++x)
            row[size_t(x)] = quint8((x * 7 + y * 13) >> 5);
        if (file->GetRasterBand(1)->RasterIO(GF_Write, 0, y, side, 1, row.data(), side, 1, GDT_Byte, 0, 0, nullptr))
            return nullptr;
    }
    if (!filled)
        file->GetRasterBand(1)->Fill(1);
    return file;
}

/// A folder with the image to lay and, made anew for every run, what it is laid into.
struct Scene
{
    explicit Scene(double step)
    {
        GDALAllRegister();
        makeTiff(source, step, true);
    }

    void makeTarget(Target kind)
    {
        CTxDataSources sources;
        QFile::remove(tiff);
        QFile::remove(database);
        if (kind == Tiff) {
            makeTiff(tiff, 1, false);
            return;
        }
        CTxDatasetDef def;
        def.name = QStringLiteral("image");
        def.type = CElemDatasetInfo::Image;
        def.rasterBounds = CRect2D(0, 0, side, side);
        def.rasterSize = QSize(side, side);
        def.pixelFormat = QStringLiteral("Byte");
        sources.Create(database, QStringLiteral("t"), CTxDataSourceStorage::Native)->CreateDataset(def);
    }

    FilePtr openTarget(Target kind) const
    {
        return FilePtr(
            kind == Tiff
                ? GDALDataset::Open(tiff.toUtf8(), GDAL_OF_RASTER | GDAL_OF_UPDATE)
                : GDALDataset::Open(database.toUtf8(), GDAL_OF_RASTER | GDAL_OF_UPDATE, nullptr,
                                    std::vector<const char *>{"BAND_COUNT=2", "TILE_FORMAT=PNG", nullptr}.data()));
    }

    const QTemporaryDir folder;
    const QString source = folder.filePath(QStringLiteral("source.tif"));
    const QString tiff = folder.filePath(QStringLiteral("target.tif"));
    const QString database = folder.filePath(QStringLiteral("target.tdb"));
};

void layByAppend(benchmark::State &state, double step)
{
    const auto kind = static_cast<Target>(state.range(0));
    Scene scene(step);
    for (auto _ : state) {
        state.PauseTiming();
        scene.makeTarget(kind);
        CTxDataSources sources;
        CTxDataSource *opened = sources.Open(kind == Tiff ? scene.tiff : scene.database);
        auto *target = dynamic_cast<CDatasetRaster *>(opened->GetDatasetAt(0));
        target->Open();
        state.ResumeTiming();
        if (!target->Append(scene.source, CRect2D()))
            state.SkipWithError(TxGetErrorMsgObj().GetErrorMessage().toUtf8().constData());
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

void layByWarp(benchmark::State &state)
{
    const auto kind = static_cast<Target>(state.range(0));
    Scene scene(0.5);
    const FilePtr source(GDALDataset::Open(scene.source.toUtf8()));
    for (auto _ : state) {
        state.PauseTiming();
        scene.makeTarget(kind);
        CPLStringList words;
        words.AddString("-r");
        words.AddString("bilinear");
        GDALWarpAppOptions *options = GDALWarpAppOptionsNew(words.List(), nullptr);
        state.ResumeTiming();
        FilePtr target = scene.openTarget(kind);
        GDALDatasetH from = GDALDataset::ToHandle(source.get());
        int failed = 0;
        GDALWarp(nullptr, GDALDataset::ToHandle(target.get()), 1, &from, options, &failed);
        target.reset();
        state.PauseTiming();
        if (failed)
            state.SkipWithError("cannot warp");
        GDALWarpAppOptionsFree(options);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

void layByBlocks(benchmark::State &state)
{
    const auto kind = static_cast<Target>(state.range(0));
    Scene scene(1);
    const FilePtr source(GDALDataset::Open(scene.source.toUtf8()));
    std::vector<quint8> cells(block * block);
    const std::vector<quint8> opaque(block * block, 255);
    for (auto _ : state) {
        state.PauseTiming();
        scene.makeTarget(kind);
        state.ResumeTiming();
        FilePtr target = scene.openTarget(kind);
        bool done = true;
        for (int y = 0; y < side; y += block) {
            for (int x = 0; x < side; x += block) {
                const auto exchange = [&](GDALDataset &file, int band, GDALRWFlag flag, const quint8 *data) {
                    return file.GetRasterBand(band)->RasterIO(flag, x, y, block, block, const_cast<quint8 *>(data),
                                                              block, block, GDT_Byte, 0, 0, nullptr) == CE_None;
                };
                done = done && exchange(*source, 1, GF_Read, cells.data()) &&
                       exchange(*target, 1, GF_Write, cells.data()) &&
                       (kind == Tiff || exchange(*target, 2, GF_Write, opaque.data()));
            }
        }
        target.reset();
        if (!done)
            state.SkipWithError("cannot copy");
    }
    state.SetItemsProcessed(state.iterations() * side * side);
}

BENCHMARK(layByBlocks)->Name("LayRaster/SameCells/BareBlocks")->Arg(Tiff)->Arg(Database)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(layByAppend, Same, 1.0)
    ->Name("LayRaster/SameCells/Append")
    ->Arg(Tiff)
    ->Arg(Database)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(layByWarp)->Name("LayRaster/FinerCells/GdalWarp")->Arg(Tiff)->Arg(Database)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(layByAppend, Finer, 0.5)
    ->Name("LayRaster/FinerCells/Append")
    ->Arg(Tiff)
    ->Arg(Database)
    ->Unit(benchmark::kMillisecond);

} // namespace
