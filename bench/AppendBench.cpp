// Appending records to a dataset of another format against GDAL's own translation (what ogr2ogr -append runs), in
// process: points with five fields, into an empty dataset with a spatial index where the format keeps one. Both open
// the two files, append and close them.

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

#include <gdal_utils.h>
#include <ogrsf_frmts.h>

#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

/// A format: what its datasource is called, and how it is made.
struct Format
{
    const char *file;
    CTxDataSourceStorage::Type type;
    const char *driver;
};

constexpr Format shapefile = {"shapes", CTxDataSourceStorage::Shapefile, "ESRI Shapefile"};
constexpr Format native = {"native.tdb", CTxDataSourceStorage::Native, "GPKG"};
constexpr Format geoPackage = {"plain.gpkg", CTxDataSourceStorage::GeoPackage, "GPKG"};

/// The folder of one run, with a source of points and an empty target.
class Files
{
public:
    Files(const Format &from, const Format &to, qint64 count)
        : m_source(QStringLiteral("from_") + QLatin1String(from.file)),
          m_target(QStringLiteral("to_") + QLatin1String(to.file))
    {
        make(m_source, from.type);
        make(m_target, to.type);
        fill(from, count);
    }

    QString source() const { return m_folder.filePath(m_source); }
    QString target() const { return m_folder.filePath(m_target); }

private:
    void make(const QString &file, CTxDataSourceStorage::Type type) const
    {
        CTxDatasetDef def;
        def.name = QStringLiteral("points");
        def.fields = {CTxFieldInfo(QStringLiteral("a"), CTxFieldInfo::Long),
                      CTxFieldInfo(QStringLiteral("b"), CTxFieldInfo::Double),
                      CTxFieldInfo(QStringLiteral("c"), CTxFieldInfo::Text, 20),
                      CTxFieldInfo(QStringLiteral("d"), CTxFieldInfo::Long),
                      CTxFieldInfo(QStringLiteral("e"), CTxFieldInfo::Double)};
        CTxDataSources sources;
        sources.Create(m_folder.filePath(file), QStringLiteral("made"), type)->CreateDataset(def);
    }

    void fill(const Format &from, qint64 count) const
    {
        const char *drivers[] = {from.driver, nullptr};
        GDALDatasetUniquePtr file(
            GDALDataset::Open(nameFor(source()).constData(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, drivers));
        OGRLayer *layer = file->GetLayerByName("points");
        file->StartTransaction();
        for (qint64 i = 0; i < count; ++i) {
            OGRFeature feature(layer->GetLayerDefn());
            feature.SetField("a", static_cast<int>(i));
            feature.SetField("b", static_cast<double>(i) * 0.5);
            feature.SetField("c", "a name");
            feature.SetField("d", static_cast<int>(i % 1000));
            feature.SetField("e", static_cast<double>(i) * 0.25);
            const OGRPoint point(static_cast<double>(i * 7919 % 1000003), static_cast<double>(i * 104729 % 999983));
            feature.SetGeometry(&point);
            if (layer->CreateFeature(&feature) != OGRERR_NONE)
                qFatal("the source cannot be written");
        }
        file->CommitTransaction();
    }

public:
    /// GDAL opens a native database under its own name only by this prefix.
    static QByteArray nameFor(const QString &path)
    {
        return (path.endsWith(u".tdb") ? QByteArray("GPKG:") : QByteArray()) + path.toUtf8();
    }

private:
    const QTemporaryDir m_folder;
    const QString m_source;
    const QString m_target;
};

void byGdal(benchmark::State &state, const Format &from, const Format &to)
{
    GDALAllRegister();
    for (auto _ : state) {
        state.PauseTiming();
        const Files files(from, to, state.range(0));
        state.ResumeTiming();
        {
            GDALDatasetUniquePtr source(GDALDataset::Open(Files::nameFor(files.source()).constData(), GDAL_OF_VECTOR));
            GDALDatasetUniquePtr target(
                GDALDataset::Open(Files::nameFor(files.target()).constData(), GDAL_OF_VECTOR | GDAL_OF_UPDATE));
            const char *words[] = {"-append", "-nln", "points", "points", nullptr};
            GDALVectorTranslateOptions *options =
                GDALVectorTranslateOptionsNew(const_cast<char **>(words), nullptr); // the function does not write
            GDALDatasetH sources[] = {GDALDataset::ToHandle(source.get())};
            int failed = 0;
            GDALVectorTranslate(nullptr, GDALDataset::ToHandle(target.get()), 1, sources, options, &failed);
            GDALVectorTranslateOptionsFree(options);
            if (failed || target->GetLayerByName("points")->GetFeatureCount() != state.range(0))
                state.SkipWithError("not appended");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void byEngine(benchmark::State &state, const Format &from, const Format &to)
{
    for (auto _ : state) {
        state.PauseTiming();
        const Files files(from, to, state.range(0));
        state.ResumeTiming();
        CTxDataSources sources;
        const auto open = [&sources](const QString &path) {
            auto *points = dynamic_cast<CDatasetVector *>(sources.Open(path)->GetDataset(QStringLiteral("points")));
            points->Open();
            return points;
        };
        CDatasetVector *source = open(files.source());
        CDatasetVector *target = open(files.target());
        CTxRecordset *records = source->Query(CTxQueryDef());
        if (!target->Append(records) || target->GetRecordCount() != state.range(0))
            state.SkipWithError(TxGetErrorMsgObj().GetErrorMessage().toUtf8().constData());
        source->ReleaseRecordset(records);
        sources.CloseAll();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void pair(const char *name, const Format &from, const Format &to)
{
    for (const auto &[peer, run] : {std::pair("Gdal", &byGdal), std::pair("Engine", &byEngine)}) {
        benchmark::RegisterBenchmark((std::string("Append/") + name + '/' + peer).c_str(), run, from, to)
            ->Arg(100'000)
            ->Unit(benchmark::kMillisecond);
    }
}

const bool registered = [] {
    pair("ShapefileToNative", shapefile, native);
    pair("NativeToShapefile", native, shapefile);
    pair("ShapefileToGeoPackage", shapefile, geoPackage);
    pair("GeoPackageToShapefile", geoPackage, shapefile);
    return true;
}();

} // namespace
