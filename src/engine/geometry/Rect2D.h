#pragma once

#include "engine/geometry/Point2D.h"

#include <algorithm>
#include <limits>

/// An upright rectangle of the plane; y grows upward, so top is the larger y of a normal rectangle.
///
/// A rectangle made without arguments is void: it holds nothing and takes on whatever is united with it.
class CRect2D
{
public:
    double left = std::numeric_limits<double>::infinity();
    double bottom = std::numeric_limits<double>::infinity();
    double right = -std::numeric_limits<double>::infinity();
    double top = -std::numeric_limits<double>::infinity();

    constexpr CRect2D() = default;
    constexpr CRect2D(double l, double b, double r, double t) : left(l), bottom(b), right(r), top(t) {}

    constexpr double Width() const { return right - left; }
    constexpr double Height() const { return top - bottom; }
    constexpr CPoint2D CenterPoint() const { return {(left + right) / 2, (bottom + top) / 2}; }
    /// True when it holds no point (a NaN edge included). A rectangle of zero width or height still holds points.
    constexpr bool IsVoid() const { return !(left <= right && bottom <= top); }
    /// Moves every edge outward by (@p dx, @p dy); negative values move them inward.
    constexpr void InflateRect(double dx, double dy)
    {
        left -= dx;
        right += dx;
        bottom -= dy;
        top += dy;
    }
    /// Grows to hold @p other; a void @p other changes nothing.
    constexpr void Union(const CRect2D &other)
    {
        if (other.IsVoid())
            return;
        left = std::min(left, other.left);
        bottom = std::min(bottom, other.bottom);
        right = std::max(right, other.right);
        top = std::max(top, other.top);
    }
    /// True when the two share at least one point.
    constexpr bool Intersects(const CRect2D &other) const
    {
        return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
    }
    constexpr bool Contains(const CPoint2D &p) const
    {
        return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top;
    }
    constexpr bool operator==(const CRect2D &other) const = default;
};
