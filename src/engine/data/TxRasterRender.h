#pragma once

#include "engine/data/TxRasterPrivate.h"

#include <QImage>

/// Painting of rasters. A private header.
namespace TxRasterRender {

/// As CDatasetRaster::Render, of an open raster.
///
/// One band with a palette shows its colours, one band of bytes its greys, three and more the bands that are called
/// red, green and blue (else the first three), with alpha where there is one. Everything wider than a byte is stretched
/// between its estimated smallest and largest value, and goes through the ramp when it is a single band. Cells are
/// averaged where many fall on one pixel, but for palettes, and but for windows so large that reading them whole would
/// take long.
QImage render(TxRasterPrivate &raster, const CRect2D &bounds, const QSize &size, const QList<QRgb> &ramp);
/// The same with the values of the first band, not stretched, through @p colors. There must be colours.
QImage render(TxRasterPrivate &raster, const CRect2D &bounds, const QSize &size, const TxHeightColors &colors);

} // namespace TxRasterRender
