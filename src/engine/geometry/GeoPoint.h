#pragma once

#include "engine/geometry/ElemGeometry.h"

#include <optional>

/// A single point, with a height and a measure where it has them.
class TX_EXPORT CGeoPoint : public CElemGeometry
{
public:
    /// An empty point: both coordinates are NaN.
    CGeoPoint();
    explicit CGeoPoint(const CPoint2D &point);
    CGeoPoint(double x, double y) : CGeoPoint(CPoint2D(x, y)) {}
    CGeoPoint(double x, double y, double z);

    /// Point, or Point3D when there is a height.
    Type GetType() const override { return m_z ? Point3D : Point; }
    /// The point itself; void when a coordinate is not finite.
    CRect2D GetBounds() const override;
    std::unique_ptr<CElemGeometry> Clone() const override;

    const CPoint2D &GetPoint() const { return m_point; }
    void SetPoint(const CPoint2D &point) { m_point = point; }
    /// True when a coordinate is NaN: there is no place.
    bool IsEmpty() const;

    /// Height in the units of the coordinate system; nothing for a plane point.
    const std::optional<double> &GetZ() const { return m_z; }
    void SetZ(std::optional<double> z) { m_z = z; }
    /// Measure along a route; nothing where none is kept.
    const std::optional<double> &GetM() const { return m_m; }
    void SetM(std::optional<double> m) { m_m = m; }

private:
    CPoint2D m_point;
    std::optional<double> m_z;
    std::optional<double> m_m;
};
