// Recordsets and datasources against GDAL alone. The goals: walking records and reading two of their fields takes at
// most 1.1 times what the bare OGR loop takes, without memory that grows with their number; opening a GeoPackage of
// 1,000 layers and listing its datasets takes at most 1.5 times GDAL's own opening.

#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

#include <ogrsf_frmts.h>

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>

namespace {

/// What a benchmark's file is of, as the first argument of the benchmark.
enum Format { GeoPackage, Shapefile, ShapefileReadOnly };

const char *driverOf(Format format)
{
    return format == GeoPackage ? "GPKG" : "ESRI Shapefile";
}

QString folderOfFiles()
{
    static QTemporaryDir folder;
    return folder.path();
}

/// A file of @p count points with five fields, made once.
QString pointsFile(Format format, int count)
{
    if (format == ShapefileReadOnly)
        format = Shapefile;
    static std::map<std::pair<Format, int>, QString> made;
    QString &path = made[{format, count}];
    if (!path.isEmpty())
        return path;
    path = QStringLiteral("%1/points%2.%3").arg(folderOfFiles()).arg(count).arg(format == GeoPackage ? "gpkg" : "shp");
    GDALAllRegister();
    GDALDriver *driver = GetGDALDriverManager()->GetDriverByName(driverOf(format));
    const GDALDatasetUniquePtr file(driver->Create(path.toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
    CPLStringList options;
    if (format == GeoPackage)
        options.AddString("SPATIAL_INDEX=NO");
    OGRLayer *layer = file->CreateLayer("points", nullptr, wkbPoint, options.List());
    for (const auto &[name, type] : {std::pair("name", OFTString), std::pair("n", OFTInteger), std::pair("v", OFTReal),
                                     std::pair("w", OFTReal), std::pair("text", OFTString)}) {
        OGRFieldDefn field(name, type);
        if (type == OFTString)
            field.SetWidth(24);
        layer->CreateField(&field);
    }
    file->StartTransaction();
    OGRFeature feature(layer->GetLayerDefn());
    for (int i = 0; i < count; ++i) {
        feature.SetFID(OGRNullFID);
        feature.SetField(0, QByteArray("name " + QByteArray::number(i)).constData());
        feature.SetField(1, i);
        feature.SetField(2, i * 0.5);
        feature.SetField(3, i * 0.25);
        feature.SetField(4, "some text of a record");
        OGRPoint point(i % 1000, i / 1000);
        feature.SetGeometry(&point);
        if (layer->CreateFeature(&feature) != OGRERR_NONE)
            return QString();
    }
    file->CommitTransaction();
    return path;
}

/// A GeoPackage of @p count layers, made once.
QString layersFile(int count)
{
    static std::map<int, QString> made;
    QString &path = made[count];
    if (!path.isEmpty())
        return path;
    path = QStringLiteral("%1/layers%2.gpkg").arg(folderOfFiles()).arg(count);
    GDALAllRegister();
    const GDALDatasetUniquePtr file(
        GetGDALDriverManager()->GetDriverByName("GPKG")->Create(path.toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
    file->StartTransaction();
    for (int i = 0; i < count; ++i) {
        OGRLayer *layer = file->CreateLayer(QByteArray("layer_" + QByteArray::number(i)), nullptr, wkbPoint, nullptr);
        OGRFieldDefn field("name", OFTString);
        layer->CreateField(&field);
        layer->SyncToDisk();
    }
    file->CommitTransaction();
    return path;
}

/// The memory of the process in kilobytes.
double residentKilobytes()
{
    QFile status(QStringLiteral("/proc/self/statm"));
    return status.open(QIODevice::ReadOnly) ? status.readAll().split(' ').value(1).toDouble() * 4 : 0;
}

void setRate(benchmark::State &state, int64_t count)
{
    state.counters["per_item"] = benchmark::Counter(double(count) * double(state.iterations()),
                                                    benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void WalkBareOgr(benchmark::State &state)
{
    const auto format = static_cast<Format>(state.range(0));
    const QString path = pointsFile(format, int(state.range(1)));
    // The shapefile driver reads faster where it may not write: like is compared with like.
    const unsigned access = format == ShapefileReadOnly ? GDAL_OF_READONLY : GDAL_OF_UPDATE;
    const GDALDatasetUniquePtr file(GDALDataset::Open(path.toUtf8(), GDAL_OF_VECTOR | access));
    OGRLayer *layer = file->GetLayer(0);
    const int name = layer->GetLayerDefn()->GetFieldIndex("name");
    const int value = layer->GetLayerDefn()->GetFieldIndex("v");
    for (auto _ : state) {
        layer->ResetReading();
        while (const OGRFeatureUniquePtr feature{layer->GetNextFeature()}) {
            benchmark::DoNotOptimize(QString::fromUtf8(feature->GetFieldAsString(name)));
            benchmark::DoNotOptimize(feature->GetFieldAsDouble(value));
        }
    }
    setRate(state, state.range(1));
}

void WalkRecordset(benchmark::State &state)
{
    const auto format = static_cast<Format>(state.range(0));
    CTxDataSources dataSources;
    const quint32 options = format == ShapefileReadOnly ? CTxDataSource::OpenReadOnly : CTxDataSource::Normal;
    CTxDataSource *source = dataSources.Open(pointsFile(format, int(state.range(1))), QString(), options);
    auto *dataset = dynamic_cast<CDatasetVector *>(source ? source->GetDatasetAt(0) : nullptr);
    CTxRecordset *records = dataset && dataset->Open() ? dataset->Query(CTxQueryDef()) : nullptr;
    if (!records) {
        state.SkipWithError("the file cannot be read");
        return;
    }
    const int name = records->FindField(QStringLiteral("name"));
    const int value = records->FindField(QStringLiteral("v"));
    CTxVariant variant;
    const double before = residentKilobytes();
    double most = before;
    for (auto _ : state) {
        for (records->MoveFirst(); !records->IsEOF(); records->MoveNext()) {
            records->GetFieldValue(name, variant);
            benchmark::DoNotOptimize(variant);
            records->GetFieldValue(value, variant);
            benchmark::DoNotOptimize(variant.toDouble());
        }
        most = std::max(most, residentKilobytes());
    }
    setRate(state, state.range(1));
    state.counters["grown_kB"] = most - before;
}

void OpenBareGdal(benchmark::State &state)
{
    const QByteArray path = layersFile(int(state.range(0))).toUtf8();
    for (auto _ : state) {
        const GDALDatasetUniquePtr file(GDALDataset::Open(path, GDAL_OF_VECTOR | GDAL_OF_UPDATE));
        benchmark::DoNotOptimize(file->GetLayerCount());
    }
    setRate(state, state.range(0));
}

void OpenAndListDataSource(benchmark::State &state)
{
    const QString path = layersFile(int(state.range(0)));
    for (auto _ : state) {
        CTxDataSources dataSources;
        const CTxDataSource *source = dataSources.Open(path);
        for (qint32 index = 0; index < source->GetDatasetCount(); ++index) {
            benchmark::DoNotOptimize(source->GetDatasetAt(index)->GetName());
            benchmark::DoNotOptimize(source->GetDatasetAt(index)->GetType());
        }
    }
    setRate(state, state.range(0));
}

void records(benchmark::internal::Benchmark *bench)
{
    for (const Format format : {GeoPackage, Shapefile, ShapefileReadOnly}) {
        for (const int count : {10'000, 100'000, 1'000'000})
            bench->Args({format, count});
    }
    bench->Unit(benchmark::kMillisecond);
}

BENCHMARK(WalkBareOgr)->Apply(records);
BENCHMARK(WalkRecordset)->Apply(records);
BENCHMARK(OpenBareGdal)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenAndListDataSource)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

} // namespace
