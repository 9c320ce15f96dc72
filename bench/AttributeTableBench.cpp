#include "AttributeTable.h"
#include "RecordTableModel.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/map/TxWorkspace.h"

#include <QCoreApplication>
#include <QTableView>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

// An attribute table over many records: until its first rows are shown, until every row is known, and a jump to a page
// that was never read.

namespace {

/// A native database with one table of records, made once for each size.
class ManyRecords
{
public:
    explicit ManyRecords(qint64 records)
    {
        CTxDataSource *source = m_workspace.GetDataSources().Create(
            m_folder.filePath(QStringLiteral("many.tdb")), QStringLiteral("many"), CTxDataSourceStorage::Native);
        CTxDatasetDef def;
        def.name = QStringLiteral("numbers");
        def.type = CElemDatasetInfo::Tabular;
        def.fields << CTxFieldInfo(QStringLiteral("n"), CTxFieldInfo::Long)
                   << CTxFieldInfo(QStringLiteral("name"), CTxFieldInfo::Text, 40)
                   << CTxFieldInfo(QStringLiteral("share"), CTxFieldInfo::Double);
        m_dataset = source ? static_cast<CDatasetVector *>(source->CreateDataset(def)) : nullptr;
        if (!m_dataset || !m_dataset->Open() || !source->BeginTrans())
            return;
        CTxRecordset *writer = m_dataset->Query(CTxQueryDef());
        for (qint64 i = 0; i < records; ++i) {
            writer->AddNew();
            writer->SetFieldValue(QStringLiteral("n"), CTxVariant(static_cast<qint32>(i)));
            writer->SetFieldValue(QStringLiteral("name"), CTxVariant(QStringLiteral("record %1").arg(i)));
            writer->SetFieldValue(QStringLiteral("share"), CTxVariant(static_cast<double>(i) / 7));
            writer->Update();
        }
        m_dataset->ReleaseRecordset(writer);
        source->CommitTrans();
    }

    CDatasetVector *dataset() const { return m_dataset; }

private:
    QTemporaryDir m_folder;
    CTxWorkspace m_workspace;
    CDatasetVector *m_dataset = nullptr;
};

CDatasetVector *datasetOf(qint64 records)
{
    static std::map<qint64, std::unique_ptr<ManyRecords>> made;
    std::unique_ptr<ManyRecords> &entry = made[records];
    if (!entry)
        entry = std::make_unique<ManyRecords>(records);
    return entry->dataset();
}

void openTable(benchmark::State &state)
{
    CDatasetVector *dataset = datasetOf(state.range(0));
    for (auto _ : state) {
        AttributeTable table;
        table.setDataset(dataset);
        table.show();
        table.repaint();
        benchmark::DoNotOptimize(table.model()->rowCount());
    }
}
BENCHMARK(openTable)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void findEveryRow(benchmark::State &state)
{
    CDatasetVector *dataset = datasetOf(state.range(0));
    for (auto _ : state) {
        RecordTableModel model;
        model.setDataset(dataset);
        while (!model.isComplete())
            QCoreApplication::processEvents();
        if (model.rowCount() != state.range(0))
            state.SkipWithError("rows are missing");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(findEveryRow)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void jumpToUnreadPage(benchmark::State &state)
{
    RecordTableModel model;
    model.setDataset(datasetOf(state.range(0)));
    while (!model.isComplete())
        QCoreApplication::processEvents();
    int row = 0;
    for (auto _ : state) {
        row = static_cast<int>((row + 7'919LL * 256) % model.rowCount());
        benchmark::DoNotOptimize(model.index(row, 1).data());
    }
}
BENCHMARK(jumpToUnreadPage)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

} // namespace
