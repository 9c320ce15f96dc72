#include "engine/map/OpenedDatasets.h"

#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/map/TxLayer.h"

bool OpenedDatasets::open(CTxDataset &dataset, const CTxLayer &layer)
{
    if (dataset.IsOpen())
        return true;
    if (!dataset.Open())
        return false;
    m_entries.append({layer.GetDataSources(), layer.GetDataSourceAlias(), dataset.GetName(), &dataset});
    m_isChanged = true;
    return true;
}

void OpenedDatasets::closeEntry(const Entry &entry)
{
    const CTxDataSource *dataSource = entry.dataSources ? entry.dataSources->find(entry.alias) : nullptr;
    CTxDataset *dataset = dataSource ? dataSource->GetDataset(entry.name) : nullptr;
    if (!dataset || dataset != entry.dataset)
        return;
    const bool isRead = dataset->IsVector() && static_cast<const CDatasetVector *>(dataset)->GetRecordsetCount() > 0;
    if (!isRead)
        dataset->Close();
}

void OpenedDatasets::close(const CTxMap *map, const CTxDataset *dataset)
{
    m_entries.removeIf([&](const Entry &entry) {
        if (entry.dataset != dataset)
            return false;
        if (map)
            closeEntry(entry);
        return true;
    });
}

void OpenedDatasets::closeOthers(const CTxMap *map, const QSet<const CTxDataset *> &kept)
{
    m_entries.removeIf([&](const Entry &entry) {
        if (kept.contains(entry.dataset))
            return false;
        if (map)
            closeEntry(entry);
        return true;
    });
}
