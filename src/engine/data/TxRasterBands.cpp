#include "engine/data/TxRasterBands.h"

#include <gdal_rat.h>

namespace {

/// The alpha band, which is the last one; 0 when there is none beside others.
int alphaOf(GDALDataset &raster)
{
    const int last = raster.GetRasterCount();
    return last > 1 && raster.GetRasterBand(last)->GetColorInterpretation() == GCI_AlphaBand ? last : 0;
}

int valueBands(GDALDataset &raster)
{
    return raster.GetRasterCount() - (alphaOf(raster) ? 1 : 0);
}

const GDALColorTable *paletteOf(GDALDataset &raster)
{
    return valueBands(raster) == 1 ? raster.GetRasterBand(1)->GetColorTable() : nullptr;
}

std::nullopt_t refuse(const char *reason)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", reason);
    return std::nullopt;
}

/// Why a band of @p raster cannot be worked with; null when all can.
const char *formatRefusal(GDALDataset &raster)
{
    for (int number = 1; number <= raster.GetRasterCount(); ++number) {
        GDALRasterBand &band = *raster.GetRasterBand(number);
        if (GDALDataTypeIsComplex(band.GetRasterDataType()))
            return "complex numbers cannot be laid";
        const char *pixelType = band.GetMetadataItem("PIXELTYPE", "IMAGE_STRUCTURE");
        if (pixelType && qstrcmp(pixelType, "SIGNEDBYTE") == 0) // the driver would give them as unsigned ones
            return "signed bytes cannot be laid";
    }
    return nullptr;
}

} // namespace

bool TxRasterBands::holdsClasses(GDALDataset &raster)
{
    if (raster.GetRasterCount() == 0)
        return false;
    GDALRasterBand &band = *raster.GetRasterBand(1);
    const GDALRasterAttributeTable *table = band.GetDefaultRAT();
    return band.GetColorTable() || band.GetCategoryNames() ||
           (table && table->GetRowCount() > 0 && table->GetTableType() == GRTT_THEMATIC);
}

std::optional<TxRasterBands> TxRasterBands::match(GDALDataset &target, CElemDatasetInfo::Type kind, GDALDataset &source)
{
    constexpr int colours = 3;
    if (source.GetRasterCount() == 0)
        return refuse("it holds no image of its own");
    for (GDALDataset *raster : {&target, &source}) {
        if (const char *reason = formatRefusal(*raster))
            return refuse(reason);
    }
    TxRasterBands bands;
    bands.sourceAlpha = alphaOf(source);
    bands.targetAlpha = alphaOf(target);
    const int wanted = valueBands(target), given = valueBands(source);
    const GDALColorTable *palette = paletteOf(source), *targetPalette = paletteOf(target);
    if (targetPalette && !(palette && palette->IsSame(targetPalette)))
        return refuse("the two have different palettes");
    if (palette && !targetPalette && kind == CElemDatasetInfo::Image) {
        if (wanted != colours)
            return refuse("it has a palette, and there are no three bands for its colours");
        bands.expandsPalette = true;
        bands.sources = {1};
        return bands;
    }
    if (given != wanted && !(given == 1 && wanted == colours)) {
        CPLError(CE_Failure, CPLE_AppDefined, "it has %d bands of values, not %d", given, wanted);
        return std::nullopt;
    }
    for (int band = 1; band <= wanted; ++band)
        bands.sources.push_back(given == 1 ? 1 : band);
    return bands;
}
