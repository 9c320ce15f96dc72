// The different values of a field over a million records, against a bare SQLite statement whose values go into a hash
// set. Ours are sorted and variants besides. Goal: at most 1.2 times the bare statement.

#include "engine/base/TxVariant.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"

#include <ogrsf_frmts.h>
#include <sqlite3.h>

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <string>
#include <unordered_set>

namespace {

constexpr qint64 recordCount = 1000000;

/// The fields, as the argument of the benchmarks.
constexpr const char *fieldNames[] = {"fewNumbers", "numbers", "fewReals", "reals", "fewTexts", "texts", "moments"};

/// A GeoPackage of records without geometry, made once.
const QString &recordsFile()
{
    static const QTemporaryDir folder;
    static QString path;
    if (!path.isEmpty())
        return path;
    path = folder.filePath(QStringLiteral("records.gpkg"));
    GDALAllRegister();
    const GDALDatasetUniquePtr file(
        GetGDALDriverManager()->GetDriverByName("GPKG")->Create(path.toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRLayer *layer = file->CreateLayer("records", nullptr, wkbNone, nullptr);
    const OGRFieldType types[] = {OFTInteger, OFTInteger, OFTReal, OFTReal, OFTString, OFTString, OFTDateTime};
    for (size_t i = 0; i < std::size(types); ++i) {
        OGRFieldDefn field(fieldNames[i], types[i]);
        layer->CreateField(&field);
    }
    file->StartTransaction();
    OGRFeature feature(layer->GetLayerDefn());
    for (qint64 i = 0; i < recordCount; ++i) {
        const qint64 mixed = i * 7919 % 1000003, few = mixed % 1000;
        feature.SetFID(OGRNullFID);
        feature.SetField(0, static_cast<int>(few));
        feature.SetField(1, static_cast<int>(mixed));
        feature.SetField(2, static_cast<double>(few) * 0.37);
        feature.SetField(3, static_cast<double>(mixed) * 0.37);
        feature.SetField(4, ("land use " + std::to_string(few)).c_str());
        feature.SetField(5, ("parcel " + std::to_string(mixed)).c_str());
        feature.SetField(6, 2000 + static_cast<int>(few % 26), 1 + static_cast<int>(few % 12), 1, 12, 0, 0.0F, 100);
        if (layer->CreateFeature(&feature) != OGRERR_NONE)
            break;
    }
    file->CommitTransaction();
    return path;
}

template<class Value, class Read>
size_t countDifferent(sqlite3_stmt *statement, Read read)
{
    std::unordered_set<Value> values;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        if (sqlite3_column_type(statement, 0) != SQLITE_NULL)
            values.insert(read(statement));
    }
    return values.size();
}

void distinctBySqlite(benchmark::State &state)
{
    sqlite3 *database = nullptr;
    sqlite3_open_v2(recordsFile().toUtf8(), &database, SQLITE_OPEN_READONLY, nullptr);
    const QByteArray sql = QByteArray("SELECT \"") + fieldNames[state.range(0)] + "\" FROM records";
    for (auto _ : state) {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(database, sql, -1, &statement, nullptr);
        size_t count = 0;
        if (state.range(0) < 2)
            count = countDifferent<sqlite3_int64>(statement, [](auto *s) { return sqlite3_column_int64(s, 0); });
        else if (state.range(0) < 4)
            count = countDifferent<double>(statement, [](auto *s) { return sqlite3_column_double(s, 0); });
        else
            count = countDifferent<std::string>(statement, [](auto *s) {
                return std::string(reinterpret_cast<const char *>(sqlite3_column_text(s, 0)),
                                   static_cast<size_t>(sqlite3_column_bytes(s, 0)));
            });
        sqlite3_finalize(statement);
        state.counters["values"] = static_cast<double>(count);
    }
    sqlite3_close(database);
    state.SetItemsProcessed(state.iterations() * recordCount);
    state.SetLabel(fieldNames[state.range(0)]);
}

void distinctByEngine(benchmark::State &state)
{
    CTxDataSources sources;
    CTxDataSource *source = sources.Open(recordsFile(), QStringLiteral("a"));
    auto *records = source ? dynamic_cast<CDatasetVector *>(source->GetDatasetAt(0)) : nullptr;
    if (!records || !records->Open()) {
        state.SkipWithError("cannot open");
        return;
    }
    for (auto _ : state) {
        QList<CTxVariant> values;
        if (!records->GetDistinctValues(QString::fromLatin1(fieldNames[state.range(0)]), values, state.range(1)))
            state.SkipWithError("cannot read");
        state.counters["values"] = static_cast<double>(values.size());
    }
    state.SetItemsProcessed(state.iterations() * recordCount);
    state.SetLabel(fieldNames[state.range(0)]);
}

BENCHMARK(distinctBySqlite)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(distinctByEngine)->ArgsProduct({{0, 1, 2, 3, 4, 5, 6}, {-1}})->Unit(benchmark::kMillisecond);
BENCHMARK(distinctByEngine)->ArgsProduct({{3, 5}, {1000}})->Unit(benchmark::kMillisecond);

} // namespace
