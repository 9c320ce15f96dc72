#include "engine/geometry/GeoRegion.h"

#include <cmath>

namespace {

/// Area of a closed ring; the shoelace formula, taken relative to the first point so that large coordinates do not eat
/// the digits.
double ringArea(const CPoint2D *ring, qint32 count)
{
    double doubled = 0.0;
    for (qint32 i = 1; i < count; ++i) {
        const double ax = ring[i - 1].x - ring[0].x;
        const double ay = ring[i - 1].y - ring[0].y;
        const double bx = ring[i].x - ring[0].x;
        const double by = ring[i].y - ring[0].y;
        doubled += ax * by - bx * ay;
    }
    return std::abs(doubled) / 2.0;
}

} // namespace

std::unique_ptr<CElemGeometry> CGeoRegion::Clone() const
{
    return std::make_unique<CGeoRegion>(*this);
}

bool CGeoRegion::MakePolygon(const CPoint2D *points, qint32 count, const double *zs, const double *ms)
{
    CGeoRegion made; // the arrays may be our own
    if (!made.AddSubPolygon(points, count, zs, ms))
        return false;
    *this = std::move(made);
    return true;
}

bool CGeoRegion::AddSubPolygon(const CPoint2D *points, qint32 count, const double *zs, const double *ms)
{
    if (!appendPart(points, count, true, zs, ms))
        return false;
    m_holes.append(false);
    return true;
}

bool CGeoRegion::AddHole(const CPoint2D *points, qint32 count, const double *zs, const double *ms)
{
    if (m_holes.isEmpty() || !appendPart(points, count, true, zs, ms))
        return false;
    m_holes.append(true);
    return true;
}

double CGeoRegion::GetArea() const
{
    double area = 0.0;
    const CPoint2D *point = GetPoints();
    for (qint32 part = 0; part < GetPartCount(); ++part) {
        const qint32 count = GetPolyCounts().at(part);
        area += (IsHole(part) ? -1.0 : 1.0) * ringArea(point, count);
        point += count;
    }
    return area;
}

double CGeoRegion::GetPerimeter() const
{
    return partsLength();
}
