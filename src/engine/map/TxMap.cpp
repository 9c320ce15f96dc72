#include "engine/map/TxMap.h"

#include "engine/data/TxDataset.h"

CRect2D CTxMap::GetBounds() const
{
    CRect2D bounds;
    for (int i = 0; i < m_layers.GetCount(); ++i) {
        if (const CTxDataset *dataset = m_layers.GetLayerAt(i)->GetDataset())
            bounds.Union(dataset->GetBounds());
    }
    return bounds;
}
