// Appending points with five fields from one native database to another, against GDAL's ogr2ogr (in this process) and
// against a bare INSERT … SELECT within SQLite, with the target's spatial index and without one.

#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoPoint.h"

#include <gdal_utils.h>
#include <ogrsf_frmts.h>
#include <sqlite3.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

enum class Index { With, Without };

CTxDatasetDef pointsDefinition()
{
    CTxDatasetDef def;
    def.name = QStringLiteral("points");
    def.fields = {
        CTxFieldInfo(QStringLiteral("a"), CTxFieldInfo::Long), CTxFieldInfo(QStringLiteral("b"), CTxFieldInfo::Double),
        CTxFieldInfo(QStringLiteral("c"), CTxFieldInfo::Text, 20),
        CTxFieldInfo(QStringLiteral("d"), CTxFieldInfo::Short), CTxFieldInfo(QStringLiteral("e"), CTxFieldInfo::Date)};
    return def;
}

/// The folder of the files that the measurements share, with a source of each asked-for size and the two empty targets.
class Files
{
public:
    static Files &instance()
    {
        static Files files;
        return files;
    }

    QString source(qint64 count)
    {
        const QString path = m_folder.filePath(QStringLiteral("source%1.tdb").arg(count));
        if (!QFile::exists(path))
            make(path, count, Index::With);
        return path;
    }

    /// A fresh copy of an empty target.
    QString target(Index index)
    {
        const QString empty =
            m_folder.filePath(index == Index::With ? QStringLiteral("indexed.tdb") : QStringLiteral("bare.tdb"));
        if (!QFile::exists(empty))
            make(empty, 0, index);
        const QString path = m_folder.filePath(QStringLiteral("target.tdb"));
        QFile::remove(path);
        QFile::copy(empty, path);
        return path;
    }

private:
    static void make(const QString &path, qint64 count, Index index)
    {
        CTxDataSources sources;
        CTxDataSource *made = sources.Create(path, QStringLiteral("made"), CTxDataSourceStorage::Native);
        auto *points = dynamic_cast<CDatasetVector *>(made->CreateDataset(pointsDefinition()));
        points->Open();
        made->BeginTrans();
        CTxRecordset *records = points->Query(CTxQueryDef());
        const QDateTime day(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC);
        for (qint64 i = 0; i < count; ++i) {
            const CGeoPoint place(static_cast<double>(i * 7919 % 1000003), static_cast<double>(i * 104729 % 999983));
            records->AddNew();
            records->SetFieldValue(QStringLiteral("a"), CTxVariant(qint32(i)));
            records->SetFieldValue(QStringLiteral("b"), CTxVariant(static_cast<double>(i) * 0.7));
            records->SetFieldValue(QStringLiteral("c"), CTxVariant(QStringLiteral("name %1").arg(i % 5000)));
            records->SetFieldValue(QStringLiteral("d"), CTxVariant(qint16(i % 1000)));
            records->SetFieldValue(QStringLiteral("e"), CTxVariant(day.addSecs(i)));
            records->SetGeometry(&place);
            records->Update();
        }
        points->ReleaseRecordset(records);
        made->CommitTrans();
        sources.CloseAll();
        if (index == Index::Without) {
            const GDALDatasetUniquePtr file(GDALDataset::Open(path.toUtf8(), GDAL_OF_VECTOR | GDAL_OF_UPDATE));
            file->ReleaseResultSet(
                file->ExecuteSQL("SELECT DisableSpatialIndex('points', 'TxGeometry')", nullptr, nullptr));
        }
    }

    QTemporaryDir m_folder;
};

void appendByEngine(benchmark::State &state, Index index)
{
    const QString source = Files::instance().source(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const QString target = Files::instance().target(index);
        state.ResumeTiming();
        CTxDataSources sources;
        auto *from = dynamic_cast<CDatasetVector *>(
            sources.Open(source, QStringLiteral("from"))->GetDataset(QStringLiteral("points")));
        auto *to = dynamic_cast<CDatasetVector *>(
            sources.Open(target, QStringLiteral("to"))->GetDataset(QStringLiteral("points")));
        from->Open();
        to->Open();
        CTxRecordset *records = from->Query(CTxQueryDef());
        if (!to->Append(records) || to->GetRecordCount() != state.range(0))
            state.SkipWithError("cannot append");
        from->ReleaseRecordset(records);
        sources.CloseAll();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void appendByOgr2ogr(benchmark::State &state, Index index)
{
    const QByteArray source = Files::instance().source(state.range(0)).toUtf8();
    for (auto _ : state) {
        state.PauseTiming();
        const QByteArray target = Files::instance().target(index).toUtf8();
        state.ResumeTiming();
        const GDALDatasetUniquePtr from(GDALDataset::Open(source, GDAL_OF_VECTOR));
        GDALDatasetUniquePtr to(GDALDataset::Open(target, GDAL_OF_VECTOR | GDAL_OF_UPDATE));
        const char *arguments[] = {"-append", "points", nullptr};
        GDALVectorTranslateOptions *options = GDALVectorTranslateOptionsNew(const_cast<char **>(arguments), nullptr);
        GDALDatasetH input = GDALDataset::ToHandle(from.get());
        int misuse = 0;
        if (!GDALVectorTranslate(nullptr, GDALDataset::ToHandle(to.get()), 1, &input, options, &misuse))
            state.SkipWithError("cannot append");
        GDALVectorTranslateOptionsFree(options);
        if (to->GetLayerByName("points")->GetFeatureCount() != state.range(0))
            state.SkipWithError("not all are there");
        to.reset();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void insertSelect(benchmark::State &state)
{
    const QString source = Files::instance().source(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const QString target = Files::instance().target(Index::Without);
        state.ResumeTiming();
        sqlite3 *database = nullptr;
        sqlite3_open(target.toUtf8(), &database);
        sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
        const QByteArray sql = "ATTACH '" + source.toUtf8() +
                               "' AS source; BEGIN; INSERT INTO main.points (TxGeometry, TxUserID, a, b, c, d, e) "
                               "SELECT TxGeometry, TxUserID, a, b, c, d, e FROM source.points; COMMIT";
        if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            state.SkipWithError("cannot insert");
        sqlite3_close(database);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(appendByEngine, , Index::Without)
    ->Name("AppendNative/Engine")
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(appendByOgr2ogr, , Index::Without)
    ->Name("AppendNative/Ogr2ogr")
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(insertSelect)->Name("AppendNative/InsertSelect")->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(appendByEngine, indexed, Index::With)
    ->Name("AppendNativeIndexed/Engine")
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(appendByOgr2ogr, indexed, Index::With)
    ->Name("AppendNativeIndexed/Ogr2ogr")
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);

} // namespace
