#include "LayerDefaults.h"

#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxLayers.h"

#include <memory>

namespace {

/// Heights in the pile of layers; a smaller number is drawn later.
enum Rank { Symbols, Lines, Mixed, Regions, Rasters };

Rank rank(CElemDatasetInfo::Type type)
{
    switch (type) {
    case CElemDatasetInfo::Region:
    case CElemDatasetInfo::Parcel:
    case CElemDatasetInfo::Region3D:
    case CElemDatasetInfo::TIN:
        return Regions;
    case CElemDatasetInfo::Line:
    case CElemDatasetInfo::Line3D:
    case CElemDatasetInfo::Network:
    case CElemDatasetInfo::Route:
    case CElemDatasetInfo::Traverse:
        return Lines;
    case CElemDatasetInfo::CAD:
        return Mixed;
    case CElemDatasetInfo::Image:
    case CElemDatasetInfo::MrSID:
    case CElemDatasetInfo::Grid:
    case CElemDatasetInfo::DEM:
    case CElemDatasetInfo::ECW:
        return Rasters;
    default:
        return Symbols;
    }
}

} // namespace

bool LayerDefaults::isDrawable(const CTxDataset &dataset)
{
    return dataset.GetType() != CElemDatasetInfo::Tabular;
}

CTxLayer *LayerDefaults::addLayer(CTxLayers &layers, const CTxDataSources &dataSources, const CTxDataset &dataset)
{
    auto made = std::make_unique<CTxLayer>(&dataSources, dataset.GetDataSource()->GetAlias(), dataset.GetName());
    const Rank own = rank(dataset.GetType());
    made->setStyle(defaultStyle(dataset.GetType(), layers.GetCount()));

    CTxLayer *layer = layers.Add(std::move(made));
    int place = 0;
    while (place + 1 < layers.GetCount()) {
        const CTxDataset *below = layers.GetLayerAt(place + 1)->GetDataset();
        if (!below || rank(below->GetType()) >= own)
            break;
        ++place;
    }
    if (layer && place > 0)
        layers.Move(0, place);
    return layer;
}
