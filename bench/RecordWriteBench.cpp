// Adding records against the bare OGR loop: points with five fields, in one transaction into an empty GeoPackage table
// with its spatial index, commit included. The commit, where the driver builds the index, is the larger part of both.

#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoPoint.h"

#include <ogrsf_frmts.h>

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

/// Places that jump about, as those of real records do.
CPoint2D placeOf(qint64 number)
{
    return CPoint2D(static_cast<double>(number * 7919 % 1000003), static_cast<double>(number * 104729 % 999983));
}

void addByOgr(benchmark::State &state)
{
    GDALAllRegister();
    for (auto _ : state) {
        state.PauseTiming();
        const QTemporaryDir folder;
        GDALDriver *driver = GetGDALDriverManager()->GetDriverByName("GPKG");
        GDALDatasetUniquePtr file(
            driver->Create(folder.filePath(QStringLiteral("a.gpkg")).toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
        OGRLayer *layer = file->CreateLayer("points", nullptr, wkbPoint, nullptr);
        for (const auto &[name, type] :
             {std::pair("user", OFTInteger), std::pair("a", OFTInteger), std::pair("b", OFTReal),
              std::pair("c", OFTString), std::pair("d", OFTInteger), std::pair("e", OFTReal)}) {
            OGRFieldDefn field(name, type);
            layer->CreateField(&field);
        }
        layer->SyncToDisk();
        state.ResumeTiming();
        file->StartTransaction();
        for (qint64 i = 0; i < state.range(0); ++i) {
            OGRFeature feature(layer->GetLayerDefn());
            feature.SetField(0, 0);
            feature.SetField(1, static_cast<int>(i));
            feature.SetField(2, static_cast<double>(i) * 0.5);
            feature.SetField(3, "name");
            feature.SetField(4, static_cast<int>(i % 1000));
            feature.SetField(5, static_cast<double>(i) * 0.25);
            const CPoint2D place = placeOf(i);
            const OGRPoint point(place.x, place.y);
            feature.SetGeometry(&point);
            if (layer->CreateFeature(&feature) != OGRERR_NONE)
                state.SkipWithError("cannot write");
        }
        file->CommitTransaction();
        state.PauseTiming();
        file.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addByRecordset(benchmark::State &state)
{
    const QString names[] = {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
                             QStringLiteral("e")};
    CTxDatasetDef def;
    def.name = QStringLiteral("points");
    def.fields = {CTxFieldInfo(names[0], CTxFieldInfo::Long), CTxFieldInfo(names[1], CTxFieldInfo::Double),
                  CTxFieldInfo(names[2], CTxFieldInfo::Text, 20), CTxFieldInfo(names[3], CTxFieldInfo::Short),
                  CTxFieldInfo(names[4], CTxFieldInfo::Double)};
    for (auto _ : state) {
        state.PauseTiming();
        const QTemporaryDir folder;
        CTxDataSources sources;
        CTxDataSource *source =
            sources.Create(folder.filePath(QStringLiteral("a.tdb")), QStringLiteral("a"), CTxDataSourceStorage::Native);
        auto *points = dynamic_cast<CDatasetVector *>(source->CreateDataset(def));
        points->Open();
        state.ResumeTiming();
        source->BeginTrans();
        CTxRecordset *records = points->Query(CTxQueryDef());
        for (qint64 i = 0; i < state.range(0); ++i) {
            const CGeoPoint point(placeOf(i));
            const bool done = records->AddNew() && records->SetFieldValue(names[0], CTxVariant(qint32(i))) &&
                              records->SetFieldValue(names[1], CTxVariant(static_cast<double>(i) * 0.5)) &&
                              records->SetFieldValue(names[2], CTxVariant(QStringLiteral("name"))) &&
                              records->SetFieldValue(names[3], CTxVariant(qint16(i % 1000))) &&
                              records->SetFieldValue(names[4], CTxVariant(static_cast<double>(i) * 0.25)) &&
                              records->SetGeometry(&point) && records->Update();
            if (!done)
                state.SkipWithError("cannot write");
        }
        points->ReleaseRecordset(records);
        source->CommitTrans();
        state.PauseTiming();
        sources.CloseAll();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(addByOgr)->Name("AddRecords/BareOgr")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(addByRecordset)->Name("AddRecords/Recordset")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
