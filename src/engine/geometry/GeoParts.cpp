#include "engine/geometry/GeoParts.h"

#include <cmath>
#include <limits>

namespace {

constexpr double notMeasured = std::numeric_limits<double>::quiet_NaN();

/// Brings @p values to the length that @p pointCount asks for and appends @p count values of @p source, or as many
/// times @p missing.
void appendValues(std::vector<double> &values, size_t pointCount, const double *source, size_t count, double missing)
{
    values.resize(pointCount, missing);
    if (source)
        values.insert(values.end(), source, source + count);
    else
        values.resize(pointCount + count, missing);
}

} // namespace

CRect2D CGeoParts::GetBounds() const
{
    CRect2D bounds;
    for (const CPoint2D &point : m_points) {
        if (!std::isfinite(point.x) || !std::isfinite(point.y))
            continue;
        bounds.left = std::min(bounds.left, point.x);
        bounds.bottom = std::min(bounds.bottom, point.y);
        bounds.right = std::max(bounds.right, point.x);
        bounds.top = std::max(bounds.top, point.y);
    }
    return bounds;
}

void CGeoParts::SetHasZ(bool on)
{
    m_hasZ = on;
    m_zs.resize(on ? m_points.size() : 0, 0.0);
}

void CGeoParts::SetHasM(bool on)
{
    m_hasM = on;
    m_ms.resize(on ? m_points.size() : 0, notMeasured);
}

bool CGeoParts::appendPart(const CPoint2D *points, qint32 count, bool closed, const double *zs, const double *ms)
{
    if (!points || count < 1)
        return false;
    const bool repeatFirst = closed && points[0] != points[count - 1];
    const size_t before = m_points.size();
    const size_t added = static_cast<size_t>(count);
    if (before + added + (repeatFirst ? 1 : 0) > static_cast<size_t>(std::numeric_limits<qint32>::max()))
        return false;

    m_points.insert(m_points.end(), points, points + count);
    if (m_hasZ || zs) {
        appendValues(m_zs, before, zs, added, 0.0);
        m_hasZ = true;
    }
    if (m_hasM || ms) {
        appendValues(m_ms, before, ms, added, notMeasured);
        m_hasM = true;
    }
    if (repeatFirst) {
        m_points.push_back(CPoint2D(m_points[before]));
        if (m_hasZ)
            m_zs.push_back(double(m_zs[before]));
        if (m_hasM)
            m_ms.push_back(double(m_ms[before]));
    }
    m_counts.append(count + (repeatFirst ? 1 : 0));
    return true;
}

double CGeoParts::partsLength() const
{
    double length = 0.0;
    const CPoint2D *point = m_points.data();
    for (const qint32 count : m_counts) {
        for (qint32 i = 1; i < count; ++i)
            length += std::hypot(point[i].x - point[i - 1].x, point[i].y - point[i - 1].y);
        point += count;
    }
    return length;
}
