#pragma once

/// Width and height in the units of a coordinate system.
class CSize2D
{
public:
    double cx = 0.0;
    double cy = 0.0;

    constexpr CSize2D() = default;
    constexpr CSize2D(double width, double height) : cx(width), cy(height) {}
    constexpr bool operator==(const CSize2D &other) const = default;
};
