// Parallel lines against a loop that does nothing but mitres, and against GEOS. The goal: at most twice the time of the
// loop for 1,000, 100,000 and 1,000,000 vertices, so linear.

#include "common/TdCommMethods.h"

#include <geos_c.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

/// A winding line that neither crosses itself nor bends more tightly than the distance.
CPoint2Ds windingLine(int count)
{
    CPoint2Ds line;
    line.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        line.push_back({i * 2.0, 8.0 * std::sin(i * 0.21) + 0.1 * (i * 7919 % 13)});
    return line;
}

constexpr double distance = 0.8;

/// The least that a parallel line can do: no segment without length, no limit, no closed line.
CPoint2Ds bareMitres(const CPoint2Ds &line)
{
    CPoint2Ds out;
    out.reserve(line.size());
    double beforeX = 0.0;
    double beforeY = 0.0;
    for (size_t i = 1; i < line.size(); ++i) {
        const double dx = line[i].x - line[i - 1].x;
        const double dy = line[i].y - line[i - 1].y;
        const double length = std::sqrt(dx * dx + dy * dy);
        const double x = -dy / length;
        const double y = dx / length;
        if (i == 1) {
            out.push_back({line[0].x + x * distance, line[0].y + y * distance});
        } else {
            const double k = distance / (1.0 + beforeX * x + beforeY * y);
            out.push_back({line[i - 1].x + (beforeX + x) * k, line[i - 1].y + (beforeY + y) * k});
        }
        beforeX = x;
        beforeY = y;
    }
    out.push_back({line.back().x + beforeX * distance, line.back().y + beforeY * distance});
    return out;
}

void countVertices(benchmark::State &state)
{
    state.counters["per vertex"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ParallelLine_Bare(benchmark::State &state)
{
    const CPoint2Ds line = windingLine(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bareMitres(line));
    countVertices(state);
}

void ParallelLine_Ours(benchmark::State &state)
{
    const CPoint2Ds line = windingLine(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        CPoint2Ds out;
        if (!CTdCommMethods::ParallelLine(line.data(), static_cast<qint32>(line.size()), distance, out))
            state.SkipWithError("no parallel line");
        benchmark::DoNotOptimize(out);
    }
    countVertices(state);
}

void ParallelLine_Geos(benchmark::State &state)
{
    const CPoint2Ds line = windingLine(static_cast<int>(state.range(0)));
    GEOSContextHandle_t geos = GEOS_init_r();
    const auto count = static_cast<unsigned>(line.size());
    GEOSCoordSequence *sequence = GEOSCoordSeq_create_r(geos, count, 2);
    for (unsigned i = 0; i < count; ++i)
        GEOSCoordSeq_setXY_r(geos, sequence, i, line[i].x, line[i].y);
    GEOSGeometry *geometry = GEOSGeom_createLineString_r(geos, sequence);
    for (auto _ : state)
        GEOSGeom_destroy_r(geos, GEOSOffsetCurve_r(geos, geometry, distance, 8, GEOSBUF_JOIN_MITRE, 5.0));
    GEOSGeom_destroy_r(geos, geometry);
    GEOS_finish_r(geos);
    countVertices(state);
}

BENCHMARK(ParallelLine_Bare)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(ParallelLine_Ours)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(ParallelLine_Geos)->Arg(1'000)->Arg(10'000);

} // namespace
