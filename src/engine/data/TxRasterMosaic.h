#pragma once

#include "engine/base/TxGdal.h"
#include "engine/base/TxProgress.h"
#include "engine/geometry/Rect2D.h"

/// Laying the cells of one raster into another. A private header.
namespace TxRasterMosaic {

/// Writes the cells of @p source that hold data to the cells of @p target whose middle lies in them.
///
/// @p source lies in @p bounds (in the target's coordinate system), or where it says itself when they are void; it is
/// reprojected where the systems differ. Without @p replace only cells of the target without data are written. A
/// palette is spread to colours, and one band to all colours, where the target has more of them.
/// @param progress counts rows of the target
/// @return false when the two do not overlap, their bands do not match, reading or writing fails, or @p progress stops
/// it; why is reported to the collectors.
bool lay(GDALDataset &target, GDALDataset &source, const CRect2D &bounds, bool replace,
         const TxProgress &progress = {});

} // namespace TxRasterMosaic
