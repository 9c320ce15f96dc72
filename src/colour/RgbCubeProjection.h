#pragma once

#include "colour/RGBType.h"
#include "common/TdCommonExport.h"

#include <QImage>
#include <QPointF>
#include <QPolygonF>

#include <array>

/// The cube of all colours, seen along the line from its white corner to its black one, which both stand in the
/// middle. Green goes up, red to the lower right, blue to the lower left.
///
/// The block of the colours that have more red, more green and more blue than the current colour is cut out, so that
/// the current colour is the innermost corner of the cut and every colour can be the one that shows.
struct TDCOMMON_API RgbCubeProjection
{
    /// Red, green and blue, 0 to 255, with fractions.
    using Position = std::array<double, 3>;

    /// A place on what shows of the cube: a face, given by the part that is the same on all of it.
    struct Hit
    {
        Position position;
        int channel = 0; ///< 0 red, 1 green, 2 blue: the part that the face holds fixed
    };

    QPointF centre;
    double edge = 0.0; ///< the length of an edge of the cube in pixels

    static Position positionOf(const RGBType &color);
    static RGBType rounded(const Position &position);

    QPointF pointOf(const Position &position) const;
    /// The corner points of the outline, from the one of green with the clock.
    QPolygonF outline() const;
    /// Whether the cube stands at @p point.
    bool contains(const QPointF &point) const;

    /// What shows at @p point when the cube is cut at @p color; beside the cube what shows on its outline near by.
    Hit surfaceAt(const QPointF &point, const RGBType &color) const;
    /// The place at @p point on the plane where @p channel is @p fixed; the other two are kept within 0 to 255.
    Position onPlane(const QPointF &point, int channel, double fixed) const;

    /// The uncut cube in device pixels, @p width x @p height, each of them 1 / @p scale; clear beside it, with a smooth
    /// outline.
    QImage outerPicture(int width, int height, double scale) const;
    /// Makes @p picture that of the cube cut at @p color, premultiplied, from the picture of the uncut one.
    static void cutPicture(const QImage &outer, const RGBType &color, QImage &picture);
};
