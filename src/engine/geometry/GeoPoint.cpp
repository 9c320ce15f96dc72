#include "engine/geometry/GeoPoint.h"

#include <cmath>
#include <limits>

namespace {
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
}

CGeoPoint::CGeoPoint() : m_point(noValue, noValue) {}

CGeoPoint::CGeoPoint(const CPoint2D &point) : m_point(point) {}

CGeoPoint::CGeoPoint(double x, double y, double z) : m_point(x, y), m_z(z) {}

CRect2D CGeoPoint::GetBounds() const
{
    if (!std::isfinite(m_point.x) || !std::isfinite(m_point.y))
        return {};
    return {m_point.x, m_point.y, m_point.x, m_point.y};
}

std::unique_ptr<CElemGeometry> CGeoPoint::Clone() const
{
    return std::make_unique<CGeoPoint>(*this);
}

bool CGeoPoint::IsEmpty() const
{
    return std::isnan(m_point.x) || std::isnan(m_point.y);
}
