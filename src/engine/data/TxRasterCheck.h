#pragma once

#include <QString>

class GDALDataset;

/// Whether a raster file is whole. A private header.
namespace TxRasterCheck {

/// Why the raster @p gdal, opened from the file @p path, lacks some of its cells, in words that follow its name; empty
/// when nothing speaks against it. Drivers open such files, since they read the header alone. Of a TIFF the places of
/// its blocks are compared with the file's size; the cells of a text grid are counted.
QString damage(GDALDataset &gdal, const QString &path);

} // namespace TxRasterCheck
