#pragma once

#include <QImage>
#include <QList>

/// Few colours for many.
namespace PaletteReduction {

/// At most @p count colours (2 to 256) that suit @p image, found by cutting the colours it has at the median of their
/// widest channel; the very colours of the image where they are no more.
QList<QRgb> palette(const QImage &image, int count);

/// The image with each pixel the nearest colour of @p palette (1 to 256 opaque colours), as 8-bit indices.
/// @param dither spreads the error of each pixel over its neighbours (Floyd and Steinberg, 1976)
QImage indexed(const QImage &image, const QList<QRgb> &palette, bool dither);

} // namespace PaletteReduction
