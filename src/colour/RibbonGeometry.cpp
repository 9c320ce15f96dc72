#include "colour/RibbonGeometry.h"

#include <algorithm>
#include <cstdlib>

QRect RibbonGeometry::ramp() const
{
    return {usableLeft(), m_frame.top() + 2, std::max(usableWidth(), 0) + 1, std::max(m_frame.height() - 44, 0)};
}

QRect RibbonGeometry::markerStrip() const
{
    return {m_frame.left(), bandBottom() + 1, m_frame.width(), 22};
}

QPolygon RibbonGeometry::marker(qint32 position) const
{
    const int b = bandBottom();
    return QPolygon({{position, b + 5},
                     {position - 5, b + 10},
                     {position - 5, b + 18},
                     {position + 5, b + 18},
                     {position + 5, b + 10}});
}

QRect RibbonGeometry::markerSwatch(qint32 position) const
{
    return {position - 5, bandBottom() + 10, 10, 8};
}

bool RibbonGeometry::hitsMarker(QPoint point, qint32 position) const
{
    const int below = point.y() - bandBottom();
    if (below <= 5 || below >= 18)
        return false;
    return std::abs(qint64(point.x()) - position) <= std::min(5, below - 5);
}

qint32 RibbonGeometry::stopAt(QPoint point, const std::vector<RibbonStop> &stops) const
{
    const auto found = std::find_if(stops.begin(), stops.end(),
                                    [&](const RibbonStop &stop) { return hitsMarker(point, stop.position); });
    return found == stops.end() ? -1 : static_cast<qint32>(found - stops.begin());
}
