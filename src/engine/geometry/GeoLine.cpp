#include "engine/geometry/GeoLine.h"

std::unique_ptr<CElemGeometry> CGeoLine::Clone() const
{
    return std::make_unique<CGeoLine>(*this);
}

bool CGeoLine::MakePolyline(const CPoint2D *points, qint32 count, bool closed, const double *zs, const double *ms)
{
    CGeoLine made; // the arrays may be our own
    if (!made.appendPart(points, count, closed, zs, ms))
        return false;
    *this = std::move(made);
    return true;
}

bool CGeoLine::AddSubPolyline(const CPoint2D *points, qint32 count, const double *zs, const double *ms)
{
    return appendPart(points, count, false, zs, ms);
}

double CGeoLine::GetLength() const
{
    return partsLength();
}
