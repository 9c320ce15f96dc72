#include "engine/geometry/TxOperator.h"

#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <new>

namespace {

/// Two places of the plane that are nearer than this are one.
constexpr double coincidence = 1e-10;
/// The same as a part of the largest coordinate.
constexpr double relativeCoincidence = 1e-13;
/// Coordinates up to this size may be multiplied four times over without an overflow.
constexpr double largestPlain = 1e75;

struct Vector
{
    double x;
    double y;
};

Vector operator-(const CPoint2D &to, const CPoint2D &from)
{
    return {to.x - from.x, to.y - from.y};
}

double cross(const Vector &u, const Vector &v)
{
    return u.x * v.y - u.y * v.x;
}

double dot(const Vector &u, const Vector &v)
{
    return u.x * v.x + u.y * v.y;
}

double squared(double value)
{
    return value * value;
}

double largestCoordinate(const CPoint2D &a, const CPoint2D &b)
{
    return std::max(std::max(std::abs(a.x), std::abs(a.y)), std::max(std::abs(b.x), std::abs(b.y)));
}

CPoint2D scaled(const CPoint2D &point, double factor)
{
    return {point.x * factor, point.y * factor};
}

/// True when @p p is no further than @p tolerance beside the segment @p a - @p b and beyond its ends. All comparisons
/// are false for NaN. They are joined without branches, since nobody can guess how they turn out.
inline bool isNear(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b, double tolerance)
{
    constexpr double shortest = 1e-40; // the square of a length far below any tolerance: a point
    const Vector along = b - a;
    const Vector aside = p - a;
    const double length2 = dot(along, along);
    if (length2 < shortest)
        return dot(aside, aside) <= squared(tolerance);
    // Both times the length: how far it may be, and where the foot of p lies on the way from a to b.
    const double reach = tolerance * std::sqrt(length2);
    const double half = length2 / 2;
    return (std::abs(cross(along, aside)) <= reach) & (std::abs(dot(along, aside) - half) <= half + reach);
}

/// The first place of the segment a1-a2 that the ends of the two segments have in common, within @p tolerance.
bool meetAtEnds(const CPoint2D &a1, const CPoint2D &a2, const CPoint2D &b1, const CPoint2D &b2, double tolerance,
                CPoint2D &out)
{
    if (isNear(a1, b1, b2, tolerance)) {
        out = a1;
        return true;
    }
    const bool hasB1 = isNear(b1, a1, a2, tolerance);
    const bool hasB2 = isNear(b2, a1, a2, tolerance);
    if (hasB1 || hasB2) {
        const bool firstIsB1 = hasB1 && (!hasB2 || dot(b1 - a1, b1 - a1) <= dot(b2 - a1, b2 - a1));
        out = firstIsB1 ? b1 : b2;
        return true;
    }
    if (!isNear(a2, b1, b2, tolerance))
        return false;
    out = a2;
    return true;
}

/// IsPntOnLinesect() at coordinates whose products might overflow. Apart, to keep the usual way short.
Q_NEVER_INLINE bool isNearFarOut(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b, double size)
{
    const double factor = 1 / size;
    return std::isfinite(size) && isNear(scaled(p, factor), scaled(a, factor), scaled(b, factor), relativeCoincidence);
}

/// Intersects two segments whose ends may lie on the other one within @p tolerance.
bool intersect(const CPoint2D &a1, const CPoint2D &a2, const CPoint2D &b1, const CPoint2D &b2, double tolerance,
               CPoint2D &out)
{
    const Vector a = a2 - a1;
    const Vector b = b2 - b1;
    const double turn = cross(a, b);
    if (std::isnan(turn))
        return false; // an end is NaN
    if (meetAtEnds(a1, a2, b1, b2, tolerance, out))
        return true;
    const double t = cross(b1 - a1, b) / turn; // compares with nothing where the segments are parallel
    // Of segments one behind the other on a line, parallel but for rounding, t is chance: the place is to be on both.
    const CPoint2D place(a1.x + t * a.x, a1.y + t * a.y);
    if (!(t > 0 && t < 1) || !isNear(place, b1, b2, tolerance))
        return false;
    out = place;
    return true;
}

/// IntersectLine() where ends might lie on the other segment, and at coordinates whose products might overflow. Apart,
/// to keep the usual way short.
Q_NEVER_INLINE bool intersectCarefully(const CPoint2D &a1, const CPoint2D &a2, const CPoint2D &b1, const CPoint2D &b2,
                                       CPoint2D &out)
{
    const double size = std::max(largestCoordinate(a1, a2), largestCoordinate(b1, b2));
    if (size < largestPlain)
        return intersect(a1, a2, b1, b2, std::max(coincidence, relativeCoincidence * size), out);
    const double factor = 1 / size;
    if (!std::isfinite(size) || !intersect(scaled(a1, factor), scaled(a2, factor), scaled(b1, factor),
                                           scaled(b2, factor), relativeCoincidence, out))
        return false;
    out = scaled(out, size);
    return true;
}

/// The weights of the four control points at the parameters of one piece: the basis functions of the uniform cubic
/// B-spline.
struct SplineWeights
{
    double w0, w1, w2, w3;

    explicit SplineWeights(double t)
        : w0((1 - t) * (1 - t) * (1 - t) / 6), w1((3 * t * t * t - 6 * t * t + 4) / 6),
          w2((-3 * t * t * t + 3 * t * t + 3 * t + 1) / 6), w3(t * t * t / 6)
    {
    }
    CPoint2D at(const CPoint2D *p) const
    {
        return {w0 * p[0].x + w1 * p[1].x + w2 * p[2].x + w3 * p[3].x,
                w0 * p[0].y + w1 * p[1].y + w2 * p[2].y + w3 * p[3].y};
    }
};

} // namespace

bool CTxOperator::IsPntOnLinesect(const CPoint2D &p, const CPoint2D &a, const CPoint2D &b)
{
    const double size = largestCoordinate(a, b);
    if (!(size < largestPlain))
        return isNearFarOut(p, a, b, size);
    return isNear(p, a, b, std::max(coincidence, relativeCoincidence * size));
}

bool CTxOperator::IntersectLine(const CPoint2D &a1, const CPoint2D &a2, const CPoint2D &b1, const CPoint2D &b2,
                                CPoint2D &out)
{
    const Vector a = a2 - a1;
    const Vector b = b2 - b1;
    const Vector gap = b1 - a1;
    const double turn = cross(a, b);
    // How far the ends of one segment are from the line of the other, times that line's length; the signs tell the
    // side.
    const double a1Side = cross(gap, b);
    const double a2Side = a1Side - turn;
    const double b1Side = cross(gap, a);
    const double b2Side = b1Side - turn;
    // Whether an end might be within the tolerance is asked with sums of coordinates, which are no less than what the
    // tolerance is made of, and quicker: the exact question is asked only then.
    const double spanA = std::abs(a.x) + std::abs(a.y);
    const double spanB = std::abs(b.x) + std::abs(b.y);
    const double size = (std::abs(a1.x) + std::abs(a1.y)) + (std::abs(b1.x) + std::abs(b1.y)) + (spanA + spanB);
    const double tolerance = coincidence + relativeCoincidence * size;
    const bool endsAreOff = (std::abs(a1Side) > tolerance * spanB) & (std::abs(a2Side) > tolerance * spanB) &
                            (std::abs(b1Side) > tolerance * spanA) & (std::abs(b2Side) > tolerance * spanA) &
                            (size < largestPlain);
    if (!endsAreOff)
        return intersectCarefully(a1, a2, b1, b2, out);
    // No end is on the other line, so either both segments cross the line of the other or they do not meet.
    if ((std::signbit(a1Side) == std::signbit(a2Side)) | (std::signbit(b1Side) == std::signbit(b2Side)))
        return false;
    const double t = a1Side / turn;
    out = CPoint2D(a1.x + t * a.x, a1.y + t * a.y);
    return true;
}

bool CTxOperator::BSpline2Line(const CPoint2D *points, qint32 count, CPoint2Ds &outPoints, qint32 &outCount,
                               qint32 step)
{
    constexpr qint32 order = 4; // control points that govern a piece
    if (!points || count < order || step < 1 || step > maximumDensity)
        return false;
    const qint64 total = qint64(count - order + 1) * step + 1;
    if (total > std::numeric_limits<qint32>::max())
        return false;
    try {
        const std::greater_equal<const CPoint2D *> notBefore;
        if (notBefore(points, outPoints.data()) && !notBefore(points, outPoints.data() + outPoints.size())) {
            const CPoint2Ds copy(points, points + count);
            return BSpline2Line(copy.data(), count, outPoints, outCount, step);
        }
        std::vector<SplineWeights> weights;
        weights.reserve(static_cast<size_t>(step));
        for (qint32 i = 0; i < step; ++i)
            weights.emplace_back(static_cast<double>(i) / step);
        outPoints.resize(static_cast<size_t>(total));
        CPoint2D *out = outPoints.data();
        for (const CPoint2D *piece = points; piece <= points + count - order; ++piece) {
            for (const SplineWeights &weight : weights)
                *out++ = weight.at(piece);
        }
        *out = SplineWeights(1.0).at(points + count - order);
        outCount = static_cast<qint32>(total);
    } catch (const std::bad_alloc &) {
        return false;
    }
    return true;
}

bool CTxOperator::SetGeoMapMode(QPainter *painter)
{
    if (!painter || !painter->isActive())
        return false;
    constexpr double unitsPerInch = 254.0;
    const QPaintDevice &device = *painter->device();
    // Pictures tell their height in their own pixels, windows in those of the painter.
    const double pixels = device.devType() == QInternal::Widget ? 1.0 : device.devicePixelRatio();
    painter->setViewTransformEnabled(false);
    painter->setTransform(QTransform(device.logicalDpiX() / unitsPerInch, 0, 0, -device.logicalDpiY() / unitsPerInch, 0,
                                     device.height() / pixels));
    painter->setRenderHint(QPainter::Antialiasing);
    return true;
}
