#pragma once

#include "engine/base/TxGdal.h"
#include "engine/data/ElemDatasetInfo.h"

#include <optional>
#include <vector>

/// Which bands of one raster become which of another. A private header.
struct TxRasterBands
{
    std::vector<int> sources; ///< for every value band of the target the source's, 1-based; one where it is a palette's
    int sourceAlpha = 0;      ///< the source's alpha band, 0 for none
    int targetAlpha = 0;      ///< the target's alpha band (the last one), 0 for none
    bool expandsPalette = false; ///< the one source band holds places in a palette, the target colours

    /// The bands of @p source for a @p target of the kind @p kind. Nothing when they do not match: what they are is
    /// reported to the collectors.
    static std::optional<TxRasterBands> match(GDALDataset &target, CElemDatasetInfo::Type kind, GDALDataset &source);

    /// True when the values of @p raster are names rather than quantities, by what it says itself: it has a palette,
    /// categories or a table of classes.
    static bool holdsClasses(GDALDataset &raster);
};
