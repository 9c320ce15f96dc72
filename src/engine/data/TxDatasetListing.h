#pragma once

#include "engine/data/TxDataSourcePrivate.h"

#include <vector>

/// Finds out which datasets a storage holds, without opening any of them. A private header.
namespace TxDatasetListing {

/// The datasets of the storage behind @p dataSource, whose GDAL dataset and engine type are set: the layers of
/// @p dataSource.gdal in the driver's order, then the rasters; of a native database those that its catalogue knows, in
/// its order, then the others. Names are made unique.
///
/// A layer costs its name and geometry type alone; never its definition, which many drivers read with a query of its
/// own.
std::vector<TxDatasetEntry> list(const TxDataSourcePrivate &dataSource);

/// Of two layers with one name GetLayerByName() finds the first alone; such layers are found by their place.
QByteArray sourceByPlace(int index);
/// The place that sourceByPlace() put into @p source, -1 when it holds a name.
int placeOf(const QByteArray &source);

} // namespace TxDatasetListing
