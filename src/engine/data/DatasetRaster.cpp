#include "engine/data/DatasetRaster.h"

#include "engine/data/TxRasterPrivate.h"
#include "engine/data/TxRasterRender.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/symbol/TxHeightColors.h"

#include <cmath>

CDatasetRaster::CDatasetRaster(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type)
    : CTxDataset(dataSource, name, type), d(std::make_unique<TxRasterPrivate>(this, QByteArray()))
{
}

CDatasetRaster::~CDatasetRaster() = default;

bool CDatasetRaster::IsOpen() const
{
    return d->gdal != nullptr;
}

bool CDatasetRaster::Open()
{
    if (d->gdal)
        return true;
    const TxGdal::ErrorCollector errors;
    d->gdal = d->openRaster(GDAL_OF_READONLY);
    return d->gdal || errors.fail(QStringLiteral("“%1” cannot be opened").arg(GetName()));
}

bool CDatasetRaster::Close()
{
    const TxGdal::ErrorCollector errors;
    d->gdal.reset();
    return true;
}

CRect2D CDatasetRaster::GetBounds() const
{
    const TxGdal::ErrorCollector errors;
    TxGdal::DatasetPtr holder;
    GDALDataset *raster = d->raster(holder);
    return raster ? TxRasterPlace::of(*raster).bounds(raster->GetRasterXSize(), raster->GetRasterYSize()) : CRect2D();
}

void CDatasetRaster::GetProjection(CTxPJCoordSys &coordSys) const
{
    d->dataSource().ownProjection(*this, coordSys);
    if (coordSys.GetType() == CTxPJCoordSys::None)
        GetDataSource()->GetProjection(coordSys);
}

QSize CDatasetRaster::GetSize() const
{
    const TxGdal::ErrorCollector errors;
    TxGdal::DatasetPtr holder;
    GDALDataset *raster = d->raster(holder);
    return raster ? QSize(raster->GetRasterXSize(), raster->GetRasterYSize()) : QSize();
}

int CDatasetRaster::GetBandCount() const
{
    const TxGdal::ErrorCollector errors;
    TxGdal::DatasetPtr holder;
    GDALDataset *raster = d->raster(holder);
    return raster ? raster->GetRasterCount() : 0;
}

QString CDatasetRaster::GetPixelFormat() const
{
    const TxGdal::ErrorCollector errors;
    TxGdal::DatasetPtr holder;
    GDALDataset *raster = d->raster(holder);
    if (!raster || raster->GetRasterCount() == 0)
        return QString();
    return QString::fromLatin1(GDALGetDataTypeName(raster->GetRasterBand(1)->GetRasterDataType()));
}

std::optional<double> CDatasetRaster::GetValue(double x, double y, int band) const
{
    if (!d->gdal || band < 1 || band > d->gdal->GetRasterCount())
        return std::nullopt;
    const TxGdal::ErrorCollector errors;
    double column = 0, row = 0;
    GDALApplyGeoTransform(TxRasterPlace::of(*d->gdal).inverse.data(), x, y, &column, &row);
    const bool isInside = column >= 0 && row >= 0 && column < d->gdal->GetRasterXSize() &&
                          row < d->gdal->GetRasterYSize(); // false for NaN too
    if (!isInside)
        return std::nullopt;
    GDALRasterBand &from = *d->gdal->GetRasterBand(band);
    double value = 0;
    quint8 mask = 0;
    const int cellColumn = static_cast<int>(column), cellRow = static_cast<int>(row);
    if (from.RasterIO(GF_Read, cellColumn, cellRow, 1, 1, &value, 1, 1, GDT_Float64, 0, 0, nullptr) != CE_None ||
        from.GetMaskBand()->RasterIO(GF_Read, cellColumn, cellRow, 1, 1, &mask, 1, 1, GDT_Byte, 0, 0, nullptr) !=
            CE_None)
        return std::nullopt;
    return mask == 0 || std::isnan(value) ? std::nullopt : std::optional(value);
}

std::optional<std::pair<double, double>> CDatasetRaster::GetValueRange(int band) const
{
    return d->valueRange(band);
}

QImage CDatasetRaster::Render(const CRect2D &bounds, const QSize &size, const QList<QRgb> &ramp) const
{
    if (!d->gdal || bounds.IsVoid() || size.isEmpty())
        return QImage();
    const TxGdal::ErrorCollector errors;
    return TxRasterRender::render(*d, bounds, size, ramp);
}

QImage CDatasetRaster::Render(const CRect2D &bounds, const QSize &size, const TxHeightColors &colors) const
{
    const bool isGrid = GetType() == CElemDatasetInfo::Grid || GetType() == CElemDatasetInfo::DEM;
    if (!isGrid || colors.isEmpty())
        return Render(bounds, size);
    if (!d->gdal || bounds.IsVoid() || size.isEmpty())
        return QImage();
    const TxGdal::ErrorCollector errors;
    return TxRasterRender::render(*d, bounds, size, colors);
}
