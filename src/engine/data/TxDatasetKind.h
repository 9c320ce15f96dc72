#pragma once

#include "engine/data/ElemDatasetInfo.h"

#include <ogr_core.h>

class GDALDataset;

/// Which kind a dataset is, where no catalogue says it. A private header.
namespace TxDatasetKind {

/// The kind of a layer whose geometries are of @p type.
///
/// Lines with measures but without heights are routes. A layer without geometry is a table; one whose geometries are
/// mixed or not known is CAD.
CElemDatasetInfo::Type ofGeometry(OGRwkbGeometryType type);

/// The geometry type of a layer that holds datasets of @p kind; wkbNone for tables, wkbUnknown for mixed kinds and for
/// those of rasters.
OGRwkbGeometryType geometryOf(CElemDatasetInfo::Type kind);

/// The kind of a raster: MrSID and ECW by their drivers, terrain formats are DEM, a single band of numbers that is no
/// picture (floating point, or whole numbers wider than a byte without a palette) is Grid, everything else Image.
CElemDatasetInfo::Type ofRaster(GDALDataset &raster);

} // namespace TxDatasetKind
