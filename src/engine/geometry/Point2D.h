#pragma once

/// A point of the plane, in the units of the coordinate system it belongs to.
class CPoint2D
{
public:
    double x = 0.0;
    double y = 0.0;

    constexpr CPoint2D() = default;
    constexpr CPoint2D(double px, double py) : x(px), y(py) {}
    constexpr bool operator==(const CPoint2D &other) const = default;
};
