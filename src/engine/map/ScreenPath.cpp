#include "engine/map/ScreenPath.h"

#include "engine/projection/TxReprojector.h"

#include <cmath>
#include <limits>

namespace {

/// One side of a rectangle, for cutting polygons: which points are inside, and where an edge crosses it.
struct Side
{
    bool vertical;
    double at;
    double sign; // +1: inside is above at

    double distance(const QPointF &p) const { return sign * ((vertical ? p.x() : p.y()) - at); }
    QPointF crossing(const QPointF &a, const QPointF &b) const
    {
        const double da = distance(a);
        const double t = da / (da - distance(b));
        return vertical ? QPointF(at, a.y() + t * (b.y() - a.y())) : QPointF(a.x() + t * (b.x() - a.x()), at);
    }
};

/// Cuts a ring at one side after the other (Sutherland and Hodgman). Edges along the rectangle's border may lie on one
/// another; with the even-odd rule they enclose nothing.
QPolygonF cutRing(QPolygonF ring, const QRectF &window)
{
    const Side sides[] = {
        {true, window.left(), 1}, {true, window.right(), -1}, {false, window.top(), 1}, {false, window.bottom(), -1}};
    for (const Side &side : sides) {
        QPolygonF result;
        result.reserve(ring.size() + 4);
        for (qsizetype i = 0; i < ring.size(); ++i) {
            const QPointF &from = ring[i == 0 ? ring.size() - 1 : i - 1];
            const QPointF &to = ring[i];
            const bool wasInside = side.distance(from) >= 0;
            const bool isInside = side.distance(to) >= 0;
            if (wasInside != isInside)
                result.append(side.crossing(from, to));
            if (isInside)
                result.append(to);
        }
        ring = std::move(result);
    }
    return ring;
}

/// Cuts the segment from @p a to @p b to @p window (Liang and Barsky). @return false when nothing is left.
bool cutSegment(QPointF &a, QPointF &b, const QRectF &window)
{
    const QPointF delta = b - a;
    const double p[] = {-delta.x(), delta.x(), -delta.y(), delta.y()};
    const double q[] = {a.x() - window.left(), window.right() - a.x(), a.y() - window.top(), window.bottom() - a.y()};
    double from = 0;
    double to = 1;
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0)
                return false;
        } else if (p[i] < 0) {
            from = std::max(from, q[i] / p[i]);
        } else {
            to = std::min(to, q[i] / p[i]);
        }
    }
    if (from > to)
        return false;
    const QPointF start = a;
    if (to < 1)
        b = start + to * delta;
    if (from > 0)
        a = start + from * delta;
    return true;
}

bool isPlace(const QPointF &p)
{
    return !std::isnan(p.x()) && !std::isnan(p.y());
}

} // namespace

ScreenPath::ScreenPath(const MapView &view, std::shared_ptr<const TxReprojector> reprojector, double tolerance,
                       double room)
    : m_view(view), m_reprojector(std::move(reprojector)), m_tolerance(tolerance),
      m_window(QRectF(QPointF(), view.size()).adjusted(-room, -room, room, room))
{
}

QPointF ScreenPath::point(const CPoint2D &point)
{
    CPoint2D place = point;
    if (m_reprojector)
        m_reprojector->transform(std::span(&place, 1));
    return m_view.toPixel(place);
}

void ScreenPath::project(std::span<const CPoint2D> points)
{
    if (m_reprojector) {
        m_scratch.assign(points.begin(), points.end());
        m_reprojector->transform(m_scratch);
        points = m_scratch;
    }
    m_projected.clear();
    const double least = m_tolerance * m_tolerance;
    QPointF kept(std::numeric_limits<double>::quiet_NaN(), 0);
    for (size_t i = 0; i < points.size(); ++i) {
        const QPointF place = m_view.toPixel(points[i]);
        const QPointF delta = place - kept;
        if (QPointF::dotProduct(delta, delta) < least && i + 1 < points.size()) // never with NaN
            continue;
        m_projected.append(place);
        kept = place;
    }
}

QRectF ScreenPath::boundsOfProjected() const
{
    double left = std::numeric_limits<double>::infinity();
    double top = left;
    double right = -left;
    double bottom = -left;
    for (const QPointF &p : m_projected) { // comparisons with NaN are false
        left = p.x() < left ? p.x() : left;
        right = p.x() > right ? p.x() : right;
        top = p.y() < top ? p.y() : top;
        bottom = p.y() > bottom ? p.y() : bottom;
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

bool ScreenPath::isNearWindow(const QRectF &bounds) const
{
    return bounds.left() <= m_window.right() && bounds.right() >= m_window.left() &&
           bounds.top() <= m_window.bottom() && bounds.bottom() >= m_window.top();
}

void ScreenPath::cutLine(const QPolygonF &line)
{
    QPolygonF piece;
    for (qsizetype i = 1; i < line.size(); ++i) {
        QPointF a = line[i - 1];
        QPointF b = line[i];
        if (!cutSegment(a, b, m_window))
            continue;
        if (piece.isEmpty() || piece.back() != a) {
            if (!piece.isEmpty())
                m_pieces.push_back(std::exchange(piece, QPolygonF()));
            piece.append(a);
        }
        piece.append(b);
    }
    if (!piece.isEmpty())
        m_pieces.push_back(std::move(piece));
}

const std::vector<QPolygonF> &ScreenPath::line(std::span<const CPoint2D> points)
{
    m_pieces.clear();
    project(points);
    const QRectF bounds = boundsOfProjected();
    if (!isNearWindow(bounds))
        return m_pieces;
    QPolygonF run;
    const auto finish = [&] {
        if (run.size() > 1 && m_window.contains(bounds))
            m_pieces.push_back(run);
        else if (run.size() > 1)
            cutLine(run);
        run.clear();
    };
    for (const QPointF &place : m_projected) {
        if (isPlace(place))
            run.append(place);
        else
            finish();
    }
    finish();
    return m_pieces;
}

const QPolygonF &ScreenPath::ring(std::span<const CPoint2D> points)
{
    project(points);
    m_projected.removeIf([](const QPointF &place) { return !isPlace(place); });
    m_ringBounds = boundsOfProjected();
    m_ring = m_window.contains(m_ringBounds) ? m_projected : cutRing(m_projected, m_window);
    if (m_ring.size() < 2)
        m_ring.clear();
    else if (m_ring.front() != m_ring.back())
        m_ring.append(m_ring.front());
    return m_ring;
}

const QPolygonF &ScreenPath::whole(std::span<const CPoint2D> points)
{
    project(points);
    if (!isNearWindow(boundsOfProjected()))
        m_projected.clear();
    return m_projected;
}
