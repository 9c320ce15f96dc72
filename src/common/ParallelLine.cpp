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

double dot(const CPoint2D &a, const CPoint2D &b)
{
    return a.x * b.x + a.y * b.y;
}

double cross(const CPoint2D &a, const CPoint2D &b)
{
    return a.x * b.y - a.y * b.x;
}

CPoint2D shifted(const CPoint2D &p, const CPoint2D &v, double times)
{
    return {p.x + v.x * times, p.y + v.y * times};
}

/// Adds the corner that stands at @p v from its vertex. Where degenerate segments were skipped, the end of one segment
/// and the beginning of the next are two places, and a corner at each keeps both segments at their distance.
void addCorner(CPoint2Ds &line, const CPoint2D &end, const CPoint2D &begin, const CPoint2D &v)
{
    line.push_back({end.x + v.x, end.y + v.y});
    if (end != begin) [[unlikely]]
        line.push_back({begin.x + v.x, begin.y + v.y});
}

/// Adds the join of two segments whose mitre would be beyond its limit. It takes copies, so that the segments of the
/// hot loop can stay in registers.
void addSharpJoin(CPoint2Ds &line, Segment a, Segment b, double distance)
{
    // Within a turn the offset segments still meet when both are longer than what the mitre cuts off them; a bevel
    // there would cross the polyline.
    const double turn = cross(a.normal, b.normal);
    const double cut = std::abs(distance * (1.0 - dot(a.normal, b.normal)) / turn);
    if (turn * distance > 0.0 && cut <= std::min(a.length, b.length)) {
        addCorner(line, a.to, b.from, shifted({-a.normal.y * cut, a.normal.x * cut}, a.normal, distance));
        return;
    }
    line.push_back(shifted(a.to, a.normal, distance));
    line.push_back(shifted(b.from, b.normal, distance));
}

/// Adds the join of two segments.
inline void addJoin(CPoint2Ds &line, const Segment &a, const Segment &b, double distance)
{
    const double onePlusCosine = 1.0 + dot(a.normal, b.normal);
    if (onePlusCosine < leastMitre) [[unlikely]]
        return addSharpJoin(line, a, b, distance);
    const double k = distance / onePlusCosine;
    addCorner(line, a.to, b.from, {(a.normal.x + b.normal.x) * k, (a.normal.y + b.normal.y) * k});
}

/// Ends the line: beside the last vertex or, when the polyline is @p closed, at the first point of the line by way of
/// the join at the closing vertex.
void addEnd(CPoint2Ds &line, const Segment &first, Segment last, double distance, bool closed)
{
    if (!closed) {
        line.push_back(shifted(last.to, last.normal, distance));
        return;
    }
    if (CTdCommMethods::IsTheSamePoint(last.to, first.from))
        last.to = first.from;
    const bool goesStraightOn =
        dot(last.normal, first.normal) > 0.0 && std::abs(cross(last.normal, first.normal)) <= straight;
    if (!goesStraightOn || last.to != first.from)
        addJoin(line, last, first, distance);
    // Deliberate: the line begins beside its first vertex and not at the mitre there, also when it is closed; see
    // docs/oddities.md.
    const CPoint2D begin = line.front();
    if (line.back() != begin)
        line.push_back(begin);
}

/// The parallel line; empty when there is none.
CPoint2Ds parallelLine(const CPoint2D *points, qint32 count, double distance)
{
    CPoint2Ds line;
    line.reserve(static_cast<size_t>(count) + 2);
    Segment first;
    Segment last;
    for (qint32 i = 1; i < count; ++i) {
        const double dx = points[i].x - points[i - 1].x;
        const double dy = points[i].y - points[i - 1].y;
        const double squared = dx * dx + dy * dy;
        if (squared <= degenerate)
            continue;
        if (!(squared <= std::numeric_limits<double>::max()))
            return {};
        const double length = std::sqrt(squared);
        const Segment next{points[i - 1], points[i], {-dy / length, dx / length}, length};
        if (line.empty()) {
            first = next;
            line.push_back(shifted(next.from, next.normal, distance));
        } else {
            addJoin(line, last, next, distance);
        }
        last = next;
    }
    if (!line.empty())
        addEnd(line, first, last, distance, CTdCommMethods::IsTheSamePoint(points[0], points[count - 1]));
    return line;
}

} // namespace

bool CTdCommMethods::ParallelLine(const CPoint2D *points, qint32 count, double distance, CPoint2Ds &out)
try {
    if (!points || count < 2 || !(std::abs(distance) >= leastDistance) || !std::isfinite(distance * distance))
        return false;
    CPoint2Ds line = parallelLine(points, count, distance);
    if (line.empty())
        return false;
    if (out.empty())
        out.swap(line);
    else
        out.insert(out.end(), line.begin(), line.end());
    return true;
} catch (const std::bad_alloc &) {
    return false;
}
