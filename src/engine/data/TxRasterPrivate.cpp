#include "engine/data/TxRasterPrivate.h"

#include "engine/projection/TxCoordSysPrivate.h"
#include "engine/projection/TxPJCoordSys.h"

#include <algorithm>
#include <cmath>

TxRasterPlace TxRasterPlace::of(GDALDataset &raster)
{
    TxRasterPlace place;
    const bool isPlaced = raster.GetGeoTransform(place.transform.data()) == CE_None &&
                          std::all_of(place.transform.begin(), place.transform.end(),
                                      [](double value) { return std::isfinite(value); }) &&
                          GDALInvGeoTransform(place.transform.data(), place.inverse.data());
    if (!isPlaced) {
        place.transform = {0, 1, 0, double(raster.GetRasterYSize()), 0, -1};
        place.inverse = place.transform; // turned over at the same height, it is its own inverse
    }
    return place;
}

CRect2D TxRasterPlace::bounds(int width, int height) const
{
    CRect2D result;
    for (const double column : {0.0, double(width)}) {
        for (const double row : {0.0, double(height)}) {
            const double x = transform[0] + transform[1] * column + transform[2] * row;
            const double y = transform[3] + transform[4] * column + transform[5] * row;
            result.Union(CRect2D(x, y, x, y));
        }
    }
    return result;
}

const OGRSpatialReference *TxRasterPlace::systemOf(const GDALDataset &raster)
{
    const OGRSpatialReference *system = raster.GetSpatialRef();
    return TxCoordSysPrivate::fromReference(system).GetType() == CTxPJCoordSys::None ? nullptr : system;
}

TxGdal::DatasetPtr TxRasterPrivate::openRaster(unsigned access) const
{
    const TxDataSourcePrivate &owner = dataSource();
    if (!owner.isGeoPackage())
        return TxGdal::open(source, GDAL_OF_RASTER | access);
    QStringList options = {QStringLiteral("TABLE=") + QString::fromUtf8(source)};
    if (bands > 0)
        options.append(QStringLiteral("BAND_COUNT=%1").arg(bands));
    // Left to itself, the driver would write opaque tiles as JPEG.
    const bool holdsBytes = gdal && gdal->GetRasterBand(1)->GetRasterDataType() == GDT_Byte;
    if ((access & GDAL_OF_UPDATE) != 0 && holdsBytes)
        options.append(QStringLiteral("TILE_FORMAT=PNG"));
    return TxGdal::open(owner.gdalName, GDAL_OF_RASTER | access, options, {QStringLiteral("GPKG")});
}

GDALDataset *TxRasterPrivate::raster(TxGdal::DatasetPtr &holder) const
{
    if (gdal)
        return gdal.get();
    holder = openRaster(GDAL_OF_READONLY);
    return holder.get();
}

std::optional<std::pair<double, double>> TxRasterPrivate::valueRange(int band)
{
    const auto known = m_ranges.constFind(band);
    if (known != m_ranges.constEnd())
        return *known;
    const TxGdal::ErrorCollector errors;
    std::optional<std::pair<double, double>> result;
    TxGdal::DatasetPtr holder;
    GDALDataset *from = raster(holder);
    std::array<double, 2> range = {0, 0};
    // Not the statistics: they would be written beside the file.
    if (from && band >= 1 && band <= from->GetRasterCount() &&
        from->GetRasterBand(band)->ComputeRasterMinMax(TRUE, range.data()) == CE_None && std::isfinite(range[0]) &&
        std::isfinite(range[1]))
        result = std::make_pair(range[0], range[1]);
    m_ranges.insert(band, result);
    return result;
}
