#pragma once

#include "engine/data/DatasetRaster.h"
#include "engine/data/TxDataSourcePrivate.h"

/// The inside of a raster dataset.
class TxRasterPrivate
{
public:
    TxRasterPrivate(CDatasetRaster *owner, const QByteArray &name) : q(owner), source(name) {}

    TxDataSourcePrivate &dataSource() const { return TxDataSourcePrivate::of(*q->GetDataSource()); }
    /// The raster: the one that is open, or one opened for reading into @p holder while the dataset is closed. Null
    /// when it cannot be opened.
    GDALDataset *raster(TxGdal::DatasetPtr &holder) const;

    CDatasetRaster *const q;
    QByteArray source;        ///< what GDAL opens
    TxGdal::DatasetPtr gdal;  ///< while the dataset is open
    bool isUpdatable = false; ///< gdal was opened for changes
};
