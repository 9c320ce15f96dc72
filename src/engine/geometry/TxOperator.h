#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Point2Ds.h"

#include <QtGlobal>

class QPainter;

/// Elementary operations on points and segments of the plane.
///
/// Two places are the same within the tolerance: 1e-10 units of the coordinate system or, where coordinates are larger
/// than 1000, 1e-13 of the largest one of the segments (0.1 micrometres at 1,000,000 m). That is some 450 times the
/// step between neighbouring numbers, room for the rounding errors of a computation, and far below what anybody
/// measures. Nothing meets anything at a coordinate that is not finite.
class TX_EXPORT CTxOperator
{
public:
    CTxOperator() = delete;

    /// The largest density of BSpline2Line().
    static constexpr qint32 maximumDensity = 1000;

    /// True when @p p is no further than the tolerance beside the segment @p a - @p b and beyond its ends. A segment
    /// whose ends are one place is that place.
    static bool IsPntOnLinesect(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b);
    /// Intersects the segments a1-a2 and b1-b2, their ends included within the tolerance.
    /// @param[out] out where they meet; left as it was when they do not. Of segments that lie on one another it is the
    /// first common place as seen from @p a1; of segments that only reach one another within the tolerance, the end
    /// that does.
    /// @return false when they have no common place: parallel segments side by side too.
    static bool IntersectLine(const CPoint2D &a1, const CPoint2D &a2, const CPoint2D &b1, const CPoint2D &b2,
                              CPoint2D &out);
    /// Smooths a polyline by the uniform cubic B-spline that has @p points as its control points. The spline is made of
    /// count - 3 pieces; it begins near the second point and ends near the last but one, and touches a point that is
    /// given three times in a row.
    /// @param[out] outPoints the spline: (count - 3) * step + 1 points. May be the array that @p points stand in.
    /// @param[out] outCount how many points these are
    /// @param step the density: into how many chords of equal parameter length each piece is cut, 1 to maximumDensity
    /// @return false, and nothing changes, for a null array, fewer than 4 points, a density out of range, and when the
    /// spline would have more than 2^31 - 1 points or no memory is left. A point that is not finite makes the pieces
    /// that it governs (at most four) so.
    static bool BSpline2Line(const CPoint2D *points, qint32 count, CPoint2Ds &outPoints, qint32 &outCount, qint32 step);
    /// Prepares a painter for the drawing of styles and symbols: afterwards one unit is a tenth of a millimetre (by the
    /// logical resolution of the device), x grows to the right and y upwards, the origin is the lower left corner of
    /// the device, and edges are smoothed. Whatever transformation was set before is replaced; save() the painter
    /// before and restore() it afterwards. Texts would stand on their heads: scale(1, -1) where they are drawn.
    /// @return false, and nothing changes, for null and for a painter that is not active.
    static bool SetGeoMapMode(QPainter *painter);
};
