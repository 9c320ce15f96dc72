#include "engine/data/TxDataset.h"

CTxDataset::CTxDataset(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type)
    : m_dataSource(dataSource), m_name(name), m_type(type)
{
}

CTxDataset::~CTxDataset() = default;
