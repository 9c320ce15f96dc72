#pragma once

#include "engine/base/TxProgress.h"
#include "engine/data/TxRasterReader.h"

/// Laying the cells of one raster into another. A private header.
namespace TxRasterMosaic {

/// Writes the cells of @p source for which there is data into @p target, piece by piece, whatever their number. Changes
/// are not taken back on a failure.
/// @return false when the two do not go together or do not overlap, when nothing of the source holds data there, when
/// reading or writing fails, and when @p progress (which counts cells) says so; why is reported to the collectors.
bool lay(GDALDataset &target, GDALDataset &source, const TxRasterOrder &order, const TxProgress &progress);

} // namespace TxRasterMosaic
