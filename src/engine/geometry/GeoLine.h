#pragma once

#include "engine/geometry/GeoParts.h"

/// A polyline of one or more parts.
class TX_EXPORT CGeoLine : public CGeoParts
{
public:
    CGeoLine() = default;

    /// Line, or Line3D when there are heights.
    Type GetType() const override { return HasZ() ? Line3D : Line; }
    std::unique_ptr<CElemGeometry> Clone() const override;

    /// Makes the line anew of one part with @p count points, which are copied. @p closed adds the first point once more
    /// at the end unless the part ends there already. @p zs and @p ms, where given, hold a height and a measure a
    /// point.
    /// @return false, and the line is left as it was, for a null array or a count below 1.
    bool MakePolyline(const CPoint2D *points, qint32 count, bool closed = false, const double *zs = nullptr,
                      const double *ms = nullptr);
    /// Adds a part. Parts without heights in a line with heights get 0, parts without measures NaN, and the other way
    /// round. @return false, and the line is left as it was, for a null array or a count below 1.
    bool AddSubPolyline(const CPoint2D *points, qint32 count, const double *zs = nullptr, const double *ms = nullptr);

    /// The plane length of all parts in the units of the coordinate system.
    double GetLength() const;
};
