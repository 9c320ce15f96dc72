#pragma once

#include "engine/data/DatasetRaster.h"
#include "engine/data/TxDataSourcePrivate.h"

#include <array>
#include <optional>
#include <vector>

class OGRSpatialReference;

/// Where a raster's cells lie: the affine transform from columns and rows to coordinates.
struct TxRasterPlace
{
    /// x = t[0] + t[1]·column + t[2]·row, y = t[3] + t[4]·column + t[5]·row, counted from the corner of the first cell.
    std::array<double, 6> transform;
    std::array<double, 6> inverse;

    /// The place of @p raster. One without a georeference (or with one that cannot be inverted) lies in the rectangle
    /// from (0, 0) to (width, height), one unit a cell, its first row at the top.
    static TxRasterPlace of(GDALDataset &raster);
    /// The rectangle that holds @p width by @p height cells.
    CRect2D bounds(int width, int height) const;
    /// The coordinate system of @p raster, null for none. A GeoPackage's "Undefined …" is none.
    static const OGRSpatialReference *systemOf(const GDALDataset &raster);
};

/// The inside of a raster dataset.
class TxRasterPrivate
{
public:
    TxRasterPrivate(CDatasetRaster *owner, const QByteArray &name) : q(owner), source(name) {}

    /// The inside of @p raster, for the engine's other classes.
    static TxRasterPrivate &of(const CDatasetRaster &raster) { return *raster.d; }

    TxDataSourcePrivate &dataSource() const { return TxDataSourcePrivate::of(*q->GetDataSource()); }
    /// Opens the raster with the GDAL_OF_… access @p access (for changes only while it is open for reading); null on
    /// failure, which is reported to the collectors.
    TxGdal::DatasetPtr openRaster(unsigned access) const;
    /// The raster: the one that is open, or one opened for reading into @p holder while the dataset is closed. Null
    /// when it cannot be opened.
    GDALDataset *raster(TxGdal::DatasetPtr &holder) const;
    /// Smallest and largest value of a band, quickly estimated and remembered; nothing when there are none.
    std::optional<std::pair<double, double>> valueRange(int band);
    /// To be called after cells were changed.
    void contentChanged() { m_ranges.clear(); }

    CDatasetRaster *const q;
    QByteArray source;       ///< what GDAL opens; of a GeoPackage the table's name
    int bands = 0;           ///< how many bands it is opened with; 0: the driver's choice
    TxGdal::DatasetPtr gdal; ///< while the dataset is open

private:
    QHash<int, std::optional<std::pair<double, double>>> m_ranges; // by band
};
