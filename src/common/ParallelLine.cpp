#include "common/TdCommMethods.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

// The join of two offset segments comes from their unit normals alone: the offset lines meet at
// vertex + distance * (n1 + n2) / (1 + n1.n2), the half-angle formula of the mitre. It takes no angle and no
// intersection of two nearly parallel lines, so a gentle turn is as exact as a sharp one, and far from the origin it
// loses no digits; that is why CTxOperator::IntersectLine is not asked.

namespace {

constexpr double leastDistance = 1e-10;
/// Segments with a squared length up to this are skipped.
constexpr double degenerate = 1e-10;
/// How far a mitre may reach from its vertex, in distances; reached by a turn of 157 degrees.
constexpr double mitreLimit = 5.0;
/// 1 + n1.n2 where the mitre reaches its limit: its length is sqrt(2 / (1 + n1.n2)) distances.
constexpr double leastMitre = 2.0 / (mitreLimit * mitreLimit);
/// Turns up to this tangent count as none where a closed line closes.
constexpr double straight = 1e-9;

/// A segment that is not degenerate.
struct Segment
{
    CPoint2D from;
    CPoint2D to;
    CPoint2D normal; ///< to the left, of length 1
    double length = 0.0;
};

bool samePlace(const CPoint2D &p, const CPoint2D &q)
{
    return std::abs(p.x - q.x) < 1e-10 && std::abs(p.y - q.y) < 1e-10;
}

/// Builds the parallel of a polyline, segment by segment.
class ParallelBuilder
{
public:
    ParallelBuilder(double distance, qint32 count) : m_distance(distance)
    {
        m_line.reserve(static_cast<size_t>(count) + 2);
    }

    /// Takes the next segment of the polyline. @return false when it has no finite length.
    bool add(const CPoint2D &from, const CPoint2D &to)
    {
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        const double squared = dx * dx + dy * dy;
        if (squared <= degenerate)
            return true;
        if (!(squared <= std::numeric_limits<double>::max()))
            return false;
        const double length = std::sqrt(squared);
        const Segment next{from, to, {-dy / length, dx / length}, length};
        if (m_line.empty()) {
            m_first = next;
            m_line.push_back(shifted(next.from, next.normal, m_distance));
        } else {
            join(m_last, next);
        }
        m_last = next;
        return true;
    }

    /// Ends the line: at the last vertex, or, when the polyline is @p closed, at the first point of the line by way of
    /// the join at the closing vertex. @return false when every segment was degenerate.
    bool finish(bool closed)
    {
        if (m_line.empty())
            return false;
        if (!closed) {
            m_line.push_back(shifted(m_last.to, m_last.normal, m_distance));
            return true;
        }
        if (samePlace(m_last.to, m_first.from))
            m_last.to = m_first.from;
        const bool goesStraightOn =
            dot(m_last.normal, m_first.normal) > 0.0 && std::abs(cross(m_last.normal, m_first.normal)) <= straight;
        if (!goesStraightOn || m_last.to != m_first.from)
            join(m_last, m_first);
        // Deliberate: the line begins beside its first vertex and not at the mitre there, also when it is closed; see
        // docs/oddities.md.
        const CPoint2D begin = m_line.front();
        if (m_line.back() != begin)
            m_line.push_back(begin);
        return true;
    }

    CPoint2Ds &line() { return m_line; }

private:
    static double dot(const CPoint2D &a, const CPoint2D &b) { return a.x * b.x + a.y * b.y; }
    static double cross(const CPoint2D &a, const CPoint2D &b) { return a.x * b.y - a.y * b.x; }
    static CPoint2D shifted(const CPoint2D &p, const CPoint2D &v, double times)
    {
        return {p.x + v.x * times, p.y + v.y * times};
    }

    /// Adds the join of two segments.
    void join(const Segment &a, const Segment &b)
    {
        const double cosine = dot(a.normal, b.normal);
        if (1.0 + cosine >= leastMitre) [[likely]] {
            const double k = m_distance / (1.0 + cosine);
            corner(a, b, {(a.normal.x + b.normal.x) * k, (a.normal.y + b.normal.y) * k});
            return;
        }
        // Within a sharp turn the offset segments still meet when both are longer than what the mitre cuts off them;
        // a bevel there would cross the line itself.
        const double turn = cross(a.normal, b.normal);
        const double cut = std::abs(m_distance * (1.0 - cosine) / turn);
        if (turn * m_distance > 0.0 && cut <= std::min(a.length, b.length)) {
            corner(a, b, shifted({-a.normal.y * cut, a.normal.x * cut}, a.normal, m_distance));
            return;
        }
        m_line.push_back(shifted(a.to, a.normal, m_distance));
        m_line.push_back(shifted(b.from, b.normal, m_distance));
    }

    /// Adds the corner that stands at @p v from its vertex. Where degenerate segments were skipped, the end of @p a and
    /// the beginning of @p b are two places, and a corner at each keeps both segments at their distance.
    void corner(const Segment &a, const Segment &b, const CPoint2D &v)
    {
        m_line.push_back({a.to.x + v.x, a.to.y + v.y});
        if (a.to != b.from) [[unlikely]]
            m_line.push_back({b.from.x + v.x, b.from.y + v.y});
    }

    double m_distance;
    CPoint2Ds m_line;
    Segment m_first;
    Segment m_last;
};

} // namespace

bool CTdCommMethods::ParallelLine(const CPoint2D *points, qint32 count, double distance, CPoint2Ds &out)
try {
    if (!points || count < 2 || !(std::abs(distance) >= leastDistance) || !std::isfinite(distance * distance))
        return false;
    ParallelBuilder builder(distance, count);
    for (qint32 i = 1; i < count; ++i) {
        if (!builder.add(points[i - 1], points[i]))
            return false;
    }
    if (!builder.finish(samePlace(points[0], points[count - 1])))
        return false;
    if (out.empty())
        out.swap(builder.line());
    else
        out.insert(out.end(), builder.line().begin(), builder.line().end());
    return true;
} catch (const std::bad_alloc &) {
    return false;
}
