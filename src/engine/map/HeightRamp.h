#pragma once

#include "engine/geometry/Point2D.h"

#include <QColor>
#include <QList>

/// Colours of heights, from low to high, and the shading of slopes under a light from the north-west.
namespace HeightRamp {

/// The ramp's colour at @p level, 0 (low) to 1 (high); beyond, the ramp's ends.
QColor colour(double level);
/// 256 colours from low to high.
const QList<QRgb> &table();
/// How light a face is whose first three corners are @p points with the heights @p zs: around 1, less in shadow.
/// @p range is the difference between the surface's highest and lowest height, from which the exaggeration is made.
double shade(const CPoint2D *points, const double *zs, double range);
/// @p colour made lighter or darker by @p shade.
QColor shaded(const QColor &colour, double shade);

} // namespace HeightRamp
