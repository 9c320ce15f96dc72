#include "engine/map/LayerCoordSys.h"

#include "engine/data/TxDataSourcePrivate.h"
#include "engine/data/TxDataset.h"

void LayerCoordSys::stated(const CTxDataset &dataset, CTxPJCoordSys &coordSys)
{
    TxDataSourcePrivate::of(*dataset.GetDataSource()).ownProjection(dataset, coordSys);
}
