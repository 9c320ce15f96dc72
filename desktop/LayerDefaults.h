#pragma once

class CTxDataset;
class CTxDataSources;
class CTxLayer;
class CTxLayers;

/// How a dataset comes into a map when nobody said more: its place among the layers and its looks.
namespace LayerDefaults {

/// True when a map can show @p dataset: everything but tables.
bool isDrawable(const CTxDataset &dataset);

/// Adds a layer over @p dataset to @p layers. It goes on top of its kind: images and grids below regions, these below
/// lines, these below points and texts. Each layer gets the engine's next default style. @return the layer.
CTxLayer *addLayer(CTxLayers &layers, const CTxDataSources &dataSources, const CTxDataset &dataset);

} // namespace LayerDefaults
