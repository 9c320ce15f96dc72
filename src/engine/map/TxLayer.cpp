#include "engine/map/TxLayer.h"

#include "engine/data/TxDataSources.h"

CTxLayer::CTxLayer(const CTxDataSources *dataSources, const QString &alias, const QString &datasetName)
    : m_dataSources(dataSources), m_alias(alias), m_datasetName(datasetName)
{
}

QString CTxLayer::GetName() const
{
    return m_name.isEmpty() ? m_datasetName + u'@' + m_alias : m_name;
}

CTxDataset *CTxLayer::GetDataset() const
{
    const CTxDataSource *dataSource = m_dataSources ? m_dataSources->find(m_alias) : nullptr;
    return dataSource ? dataSource->GetDataset(m_datasetName) : nullptr;
}
