#pragma once

#include "engine/geometry/GeoParts.h"

/// A region: outer rings with holes. A hole belongs to the last outer ring before it.
///
/// Rings are closed: each ends with the point it begins with. Drawn with the even-odd rule, the parts give the region.
/// A surface of faces in space (a TIN) is a region with heights whose parts are its faces.
class TX_EXPORT CGeoRegion : public CGeoParts
{
public:
    CGeoRegion() = default;

    /// Region, or Region3D when there are heights.
    Type GetType() const override { return HasZ() ? Region3D : Region; }
    std::unique_ptr<CElemGeometry> Clone() const override;

    /// Makes the region anew of one outer ring with @p count points, which are copied; the ring is closed where it is
    /// not. @return false, and the region is left as it was, for a null array or a count below 1.
    bool MakePolygon(const CPoint2D *points, qint32 count, const double *zs = nullptr, const double *ms = nullptr);
    /// Adds an outer ring.
    bool AddSubPolygon(const CPoint2D *points, qint32 count, const double *zs = nullptr, const double *ms = nullptr);
    /// Adds a hole of the last outer ring. @return false also when there is no outer ring yet.
    bool AddHole(const CPoint2D *points, qint32 count, const double *zs = nullptr, const double *ms = nullptr);

    /// True when the part at 0-based @p index is a hole; false for outer rings and when out of range.
    bool IsHole(qint32 index) const { return index >= 0 && index < m_holes.size() && m_holes.at(index); }

    /// The plane area, holes left out, in the squared units of the coordinate system.
    double GetArea() const;
    /// The plane length of all rings in the units of the coordinate system.
    double GetPerimeter() const;

private:
    QList<bool> m_holes;
};
