#include "common/TdCommMethods.h"
#include "engine/geometry/TxOperator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

using std::numbers::pi;

namespace {

/// Map points that differ by less in x and in y are the same.
constexpr double coincidence = 1e-10;

/// @p value without its fraction. Defined for every value, unlike the conversion of the language: what is too large
/// becomes the largest or smallest int, NaN becomes 0.
int truncated(double value)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    if (std::isnan(value))
        return 0;
    return value <= least ? least : value >= most ? most : static_cast<int>(value);
}

QPoint truncated(double x, double y)
{
    return {truncated(x), truncated(y)};
}

/// The point as seen with y upwards, and back.
QPoint turnedOver(const QPoint &point)
{
    return truncated(point.x(), -static_cast<double>(point.y()));
}

/// The square of the difference, in 32 bits.
double squaredDifference(int from, int to)
{
    const quint32 difference = static_cast<quint32>(to) - static_cast<quint32>(from);
    return static_cast<qint32>(difference * difference);
}

} // namespace

int CTdCommMethods::Distance(const QPoint &a, const QPoint &b)
{
    // Deliberate: the squares wrap in 32 bits. Callers take a distance for one on the screen, and test for 0 what is
    // not.
    return truncated(std::sqrt(squaredDifference(a.x(), b.x()) + squaredDifference(a.y(), b.y())));
}

double CTdCommMethods::AngleFromPoint(const QPoint &a, const QPoint &b)
{
    if (a == b)
        return 0.0;
    return std::atan2(static_cast<double>(b.y()) - a.y(), static_cast<double>(a.x()) - b.x());
}

QPoint CTdCommMethods::PtFromAngle(double angle, double length, const QPoint &origin)
{
    // Deliberate: callers give lengths in 255ths of 100 pixels.
    const double radius = length * 100 / 255;
    const double radians = angle * pi / 180;
    const QPoint step = truncated(std::cos(radians) * radius, std::sin(radians) * radius);
    return truncated(static_cast<double>(origin.x()) + step.x(), static_cast<double>(origin.y()) - step.y());
}

double CTdCommMethods::Slope(const QPoint &a, const QPoint &b)
{
    // Deliberate: a number stands for "vertical", since callers store slopes and compare them exactly.
    if (a.x() == b.x())
        return LineDesc::vertical;
    return (static_cast<double>(b.y()) - a.y()) / (static_cast<double>(b.x()) - a.x());
}

double CTdCommMethods::FindC(LineDesc &line)
{
    // Deliberate: a vertical line has no intercept and answers its y; Intersection() never asks for it.
    if (line.slope == LineDesc::vertical)
        return line.y;
    line.c = line.y - line.slope * line.x;
    return line.c;
}

QPoint CTdCommMethods::Intersection(const LineDesc &l1, const LineDesc &l2)
{
    // Deliberate: lines of equal slope meet at the origin, one line with itself too; callers test for it.
    if (l1.slope == l2.slope)
        return {0, 0};
    if (l1.slope == LineDesc::vertical)
        return truncated(l1.x, l2.slope * l1.x + l2.c);
    if (l2.slope == LineDesc::vertical)
        return truncated(l2.x, l1.slope * l2.x + l1.c);
    // Deliberate: x follows from l1 though it may be horizontal and then gives no x; callers pass such a line second.
    const double y = (l1.c * l2.slope - l2.c * l1.slope) / (l2.slope - l1.slope);
    return truncated((y - l1.c) / l1.slope, y);
}

QPoint CTdCommMethods::PointOnLine(const QPoint &a, const QPoint &b, int distance, int tolerance)
{
    const QPoint upA = turnedOver(a);
    const QPoint upB = turnedOver(b);
    const double ax = a.x();
    const double ay = -static_cast<double>(a.y());
    const double reach = distance;

    QPoint ahead = truncated(ax, ay + reach);
    QPoint behind = truncated(ax, ay - reach);
    if (a.x() != b.x()) {
        const double m = (static_cast<double>(a.y()) - b.y()) / (static_cast<double>(b.x()) - ax);
        const double c = ay - ax * m;
        // Where the circle around a meets the line, by the quadratic formula as it stands: a shorter form would round,
        // and cut off, otherwise.
        const double root = std::sqrt(std::max(0.0, 4 * ax * ax - 4 * (ax * ax - reach * reach / (m * m + 1))));
        const double aheadX = (2 * ax + root) / 2;
        const double behindX = (2 * ax - root) / 2;
        ahead = truncated(aheadX, m * aheadX + c);
        behind = truncated(behindX, m * behindX + c);
    }
    // Deliberate: the second solution is taken untested. Callers that overshoot both ends want the point behind a.
    const bool isNear = Distance(ahead, upA) <= tolerance && Distance(ahead, upB) <= tolerance;
    return turnedOver(isNear ? ahead : behind);
}

bool CTdCommMethods::IsTheSamePoint(const CPoint2D &p, const CPoint2D &q)
{
    // Deliberate: a difference of exactly 1e-10 is one. Snapping moves points by that much to keep them apart.
    return std::abs(p.x - q.x) < coincidence && std::abs(p.y - q.y) < coincidence;
}

double CTdCommMethods::CalAzimuth(const CPoint2D &from, const CPoint2D &to)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    if (dx == 0 && dy != 0)
        return dy < 0 ? 3 * pi / 2 : pi / 2;
    // Deliberate: a point lies in the direction pi of itself; callers turn a symbol without direction by it.
    if (dy == 0)
        return dx <= 0 ? pi : 0.0;
    // The signs tell the quadrant, since the quotient of a flat direction may vanish.
    const double angle = std::atan(dy / dx);
    if (dx < 0)
        return angle + pi;
    if (dy > 0)
        return angle;
    const double turned = angle + 2 * pi;
    return turned >= 2 * pi ? 0.0 : turned; // so near below the x axis that it rounds to a full turn
}

bool CTdCommMethods::PointProjectToLineset(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b, CPoint2D &foot)
{
    if (!(std::abs(b.y - a.y) >= coincidence)) {
        foot = CPoint2D(p.x, a.y);
        return CTxOperator::IsPntOnLinesect(foot, a, b);
    }
    // The line y = (x - p.x) k + p.y with k = run / drop stands upright on a-b. Reckoned from a: far from the origin,
    // with a p that is far away, or along a nearly horizontal segment, whose k is large, whole coordinates would lose
    // the foot.
    const double run = b.x - a.x;
    const double drop = a.y - b.y;
    const double dx = p.x - a.x;
    const double dy = p.y - a.y;
    const double length2 = run * run + drop * drop;
    const double way = run * dx - drop * dy; // from a to the foot, times the length
    const double part = way / length2;
    foot = CPoint2D(a.x + part * run, a.y - part * drop);
    // The foot is on the line, so only near an end is there something to ask: a foot between the ends is on the
    // segment, and one that is clearly further beyond than any tolerance is not.
    const double half = length2 / 2;
    const double beyond = std::abs(way - half) - half;
    const double clear = 1e-9 + 1e-12 * (std::abs(a.x) + std::abs(a.y) + std::abs(b.x) + std::abs(b.y));
    const bool isBetween = beyond <= 0.0;
    const bool isSettled = isBetween | (beyond * beyond > clear * clear * length2);
    if (isSettled)
        return isBetween;
    if (!std::isfinite(length2)) { // but the ratio of the sides may be
        const double k = run / drop;
        const double down = (k * dx - dy) / (k * k + 1);
        foot = CPoint2D(a.x + k * down, a.y - down);
    }
    return CTxOperator::IsPntOnLinesect(foot, a, b);
}
