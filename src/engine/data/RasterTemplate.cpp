#include "engine/data/TxDatasetMaker.h"
#include "engine/data/TxRasterPrivate.h"

#include <gdal_priv.h>

namespace {

/// The pixel format that holds the cells of one that no tile can. Float32 holds the whole numbers up to 2^24 exactly;
/// larger ones are refused when they are laid into it.
GDALDataType keptFormat(GDALDataType type)
{
    return type == GDT_Int32 || type == GDT_UInt32 ? GDT_Float32 : type;
}

} // namespace

QString TxDatasetMaker::describeRaster(const CDatasetRaster &source, bool isNative, CTxDatasetDef &def,
                                       std::optional<double> &noData)
{
    constexpr int colours = 3;
    const TxGdal::ErrorCollector errors;
    TxGdal::DatasetPtr holder;
    GDALDataset *raster = TxRasterPrivate::of(source).raster(holder);
    if (!raster || raster->GetRasterCount() == 0)
        return QStringLiteral("cannot be opened: ") + errors.text();
    const int last = raster->GetRasterCount();
    const bool hasAlpha = raster->GetRasterBand(last)->GetColorInterpretation() == GCI_AlphaBand;
    GDALRasterBand &band = *raster->GetRasterBand(1);

    switch (source.GetType()) {
    case CElemDatasetInfo::Grid:
        break;
    case CElemDatasetInfo::DEM: // a name that only the catalogue of a native database keeps
        def.type = isNative ? CElemDatasetInfo::DEM : CElemDatasetInfo::Grid;
        break;
    default: // the kinds of compressed image files are images here
        def.type = CElemDatasetInfo::Image;
    }
    const bool isImage = def.type == CElemDatasetInfo::Image;
    def.rasterSize = QSize(raster->GetRasterXSize(), raster->GetRasterYSize());
    def.rasterBounds = TxRasterPlace::of(*raster).bounds(raster->GetRasterXSize(), raster->GetRasterYSize());
    def.bandCount = last;
    if (isImage && last == 1 && band.GetColorTable())
        def.bandCount = colours;                               // tiles know no palette
    else if (isImage && (last == 2 || last == 4) && !hasAlpha) // where an image has its transparency
        return QStringLiteral("has a last band that is no alpha band");
    const GDALDataType format = isImage ? band.GetRasterDataType() : keptFormat(band.GetRasterDataType());
    def.pixelFormat = QString::fromLatin1(GDALGetDataTypeName(format));
    int isSet = FALSE;
    const double value = band.GetNoDataValue(&isSet);
    if (isSet)
        noData = value;
    return QString();
}
