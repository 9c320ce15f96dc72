#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Point2Ds.h"

#include <QtGlobal>

class QPainter;

/// Elementary operations on points and segments of the plane.
class TX_EXPORT CTxOperator
{
public:
    CTxOperator() = delete;

    /// True when @p p lies on the segment from @p a to @p b, its ends included, within the tolerance.
    static bool IsPntOnLinesect(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b);
    /// Intersects the segments a1-a2 and b1-b2. @param[out] out where they meet; left as it was when they do not
    static bool IntersectLine(const CPoint2D &a1, const CPoint2D &a2, const CPoint2D &b1, const CPoint2D &b2,
                              CPoint2D &out);
    /// Smooths a polyline by the uniform cubic B-spline that has @p points as its control points.
    /// @param[out] outPoints the spline, @p outCount points
    /// @param step the density: how many points the spline gets for each of its pieces, 1 to 1000
    /// @return false, and nothing changes, for a null array, fewer than 4 points and a density out of range.
    static bool BSpline2Line(const CPoint2D *points, qint32 count, CPoint2Ds &outPoints, qint32 &outCount, qint32 step);
    /// Prepares a painter for the engine's drawing.
    static bool SetGeoMapMode(QPainter *painter);
};
