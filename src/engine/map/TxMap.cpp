#include "engine/map/TxMap.h"

#include "engine/data/TxDataset.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/projection/TxReprojector.h"

CRect2D CTxMap::GetBounds() const
{
    CTxPJCoordSys own;
    GetProjection(own);
    CRect2D bounds;
    for (int i = 0; i < m_layers.GetCount(); ++i) {
        const CTxDataset *dataset = m_layers.GetLayerAt(i)->GetDataset();
        if (!dataset)
            continue;
        CTxPJCoordSys coordSys;
        dataset->GetProjection(coordSys);
        bool failed = false;
        const auto reprojector = TxReprojector::make(coordSys, own, failed);
        if (!failed)
            bounds.Union(reprojector ? reprojector->transform(dataset->GetBounds()) : dataset->GetBounds());
    }
    return bounds;
}

void CTxMap::GetProjection(CTxPJCoordSys &coordSys) const
{
    coordSys = CTxPJCoordSys();
    for (int i = m_layers.GetCount() - 1; i >= 0 && coordSys.GetType() == CTxPJCoordSys::None; --i) {
        if (const CTxDataset *dataset = m_layers.GetLayerAt(i)->GetDataset())
            dataset->GetProjection(coordSys);
    }
}
