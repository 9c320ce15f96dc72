#include "engine/map/TxMap.h"

#include "engine/data/TxDataset.h"
#include "engine/map/LayerCoordSys.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/projection/TxReprojector.h"

namespace {

/// The rectangle that holds what @p layer shows, in the coordinate system @p own; void when it cannot be told.
CRect2D layerBounds(const CTxLayer &layer, const CTxPJCoordSys &own)
{
    const CTxDataset *dataset = layer.GetDataset();
    if (!dataset)
        return {};
    CTxPJCoordSys coordSys;
    LayerCoordSys::stated(*dataset, coordSys);
    bool failed = false;
    const auto reprojector = TxReprojector::make(coordSys, own, failed);
    if (failed)
        return {};
    return reprojector ? reprojector->transform(dataset->GetBounds()) : dataset->GetBounds();
}

} // namespace

CRect2D CTxMap::GetBounds() const
{
    CTxPJCoordSys own;
    GetProjection(own);
    CRect2D bounds;
    for (int i = 0; i < m_layers.GetCount(); ++i)
        bounds.Union(layerBounds(*m_layers.GetLayerAt(i), own));
    return bounds;
}

CRect2D CTxMap::GetLayerBounds(int index) const
{
    const CTxLayer *layer = m_layers.GetLayerAt(index);
    if (!layer)
        return {};
    CTxPJCoordSys own;
    GetProjection(own);
    return layerBounds(*layer, own);
}

void CTxMap::GetProjection(CTxPJCoordSys &coordSys) const
{
    coordSys = CTxPJCoordSys();
    for (int i = m_layers.GetCount() - 1; i >= 0 && coordSys.GetType() == CTxPJCoordSys::None; --i) {
        if (const CTxDataset *dataset = m_layers.GetLayerAt(i)->GetDataset())
            LayerCoordSys::stated(*dataset, coordSys);
    }
}
