// Plane geometry against bare loops that stand here as peers: smoothing at density 8, projection onto a segment and
// intersection of segments take at most twice their time. The peers know no tolerance and no odd input.

#include "common/TdCommMethods.h"
#include "engine/geometry/TxOperator.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

/// Points of a map some hundred kilometres from its origin.
CPoint2Ds somePoints(size_t count)
{
    std::mt19937 random(1); // NOLINT: the same points in each run
    std::uniform_real_distribution<double> place(0, 1000);
    CPoint2Ds points(count);
    for (CPoint2D &point : points)
        point = CPoint2D(5e5 + place(random), 5e6 + place(random));
    return points;
}

constexpr qint32 density = 8;
constexpr size_t pointCount = 1003;

/// The uniform cubic B-spline by its basis functions, straight from the formula.
void bareSpline(const CPoint2Ds &points, CPoint2Ds &out)
{
    double weights[density][4];
    for (qint32 i = 0; i < density; ++i) {
        const double t = static_cast<double>(i) / density;
        weights[i][0] = (1 - t) * (1 - t) * (1 - t) / 6;
        weights[i][1] = (3 * t * t * t - 6 * t * t + 4) / 6;
        weights[i][2] = (-3 * t * t * t + 3 * t * t + 3 * t + 1) / 6;
        weights[i][3] = t * t * t / 6;
    }
    out.clear();
    for (size_t piece = 0; piece + 3 < points.size(); ++piece) {
        const CPoint2D *p = &points[piece];
        for (const auto &w : weights)
            out.emplace_back(w[0] * p[0].x + w[1] * p[1].x + w[2] * p[2].x + w[3] * p[3].x,
                             w[0] * p[0].y + w[1] * p[1].y + w[2] * p[2].y + w[3] * p[3].y);
    }
}

void SplineBare(benchmark::State &state)
{
    const CPoint2Ds points = somePoints(pointCount);
    CPoint2Ds out;
    for (auto _ : state) {
        bareSpline(points, out);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<qint64>(out.size()));
}
BENCHMARK(SplineBare);

void SplineOurs(benchmark::State &state)
{
    const CPoint2Ds points = somePoints(pointCount);
    CPoint2Ds out;
    qint32 count = 0;
    for (auto _ : state) {
        CTxOperator::BSpline2Line(points.data(), static_cast<qint32>(points.size()), out, count, density);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(SplineOurs);

/// Runs @p operation on four neighbouring points of many.
template<class Operation>
void overSegments(benchmark::State &state, Operation operation)
{
    constexpr size_t count = 4096;
    const CPoint2Ds points = somePoints(count + 3);
    qint64 hits = 0;
    CPoint2D out;
    for (auto _ : state) {
        for (size_t i = 0; i < count; ++i)
            hits += operation(&points[i], out);
        benchmark::DoNotOptimize(out);
    }
    benchmark::DoNotOptimize(hits);
    state.SetItemsProcessed(state.iterations() * static_cast<qint64>(count));
}

void FootBare(benchmark::State &state)
{
    overSegments(state, [](const CPoint2D *p, CPoint2D &foot) {
        const CPoint2D &a = p[1];
        const double dx = p[2].x - a.x;
        const double dy = p[2].y - a.y;
        const double t = ((p->x - a.x) * dx + (p->y - a.y) * dy) / (dx * dx + dy * dy);
        foot = CPoint2D(a.x + t * dx, a.y + t * dy);
        benchmark::DoNotOptimize(foot);
        return t >= 0 && t <= 1;
    });
}
BENCHMARK(FootBare);

void FootOurs(benchmark::State &state)
{
    overSegments(state, [](const CPoint2D *p, CPoint2D &foot) {
        return CTdCommMethods::PointProjectToLineset(p[0], p[1], p[2], foot);
    });
}
BENCHMARK(FootOurs);

void CrossingBare(benchmark::State &state)
{
    overSegments(state, [](const CPoint2D *p, CPoint2D &out) {
        const double ax = p[1].x - p[0].x;
        const double ay = p[1].y - p[0].y;
        const double bx = p[3].x - p[2].x;
        const double by = p[3].y - p[2].y;
        const double gx = p[2].x - p[0].x;
        const double gy = p[2].y - p[0].y;
        const double turn = ax * by - ay * bx;
        const double t = (gx * by - gy * bx) / turn;
        const double u = (gx * ay - gy * ax) / turn;
        if (!(t >= 0 && t <= 1 && u >= 0 && u <= 1))
            return false;
        out = CPoint2D(p[0].x + t * ax, p[0].y + t * ay);
        benchmark::DoNotOptimize(out);
        return true;
    });
}
BENCHMARK(CrossingBare);

void CrossingOurs(benchmark::State &state)
{
    overSegments(state, [](const CPoint2D *p, CPoint2D &out) {
        return CTxOperator::IntersectLine(p[0], p[1], p[2], p[3], out);
    });
}
BENCHMARK(CrossingOurs);

} // namespace
