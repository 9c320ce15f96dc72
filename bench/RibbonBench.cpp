// The colour ribbon: reckoning and painting 16 stops over 3840 pixels (goal: under 1 ms), sampling in order (goal: at
// most 2 ns a colour whatever the number of stops), and both with the million stops that a file may bring.

#include "colour/RibbonColumns.h"
#include "colour/RibbonGeometry.h"
#include "colour/RibbonPainter.h"
#include "colour/RibbonStops.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

/// A band of 3840 pixels of the screen, when a logical pixel has @p scale of them.
RibbonGeometry geometryAt(int scale = 1)
{
    return RibbonGeometry(QRect(0, 0, 3840 / scale + 40, 120));
}

/// A ramp of @p count stops; in order, or each at a place that has nothing to do with the last one's.
RibbonStops ramp(qint64 count, const RibbonGeometry &geometry, bool isInOrder = true)
{
    RibbonStops::Stops stops(static_cast<size_t>(count));
    for (qint64 i = 0; i < count; ++i) {
        RibbonStop &stop = stops[static_cast<size_t>(i)];
        stop.color = static_cast<COLORREF>(i * 7919 * 2654435761U) & 0xFFFFFFU;
        stop.value = static_cast<double>(isInOrder ? i : i * 7919 % count);
    }
    RibbonStops ribbon;
    ribbon.replaceAll(std::move(stops), 0.0, static_cast<double>(count - 1));
    ribbon.setBand(geometry.usableLeft(), geometry.usableWidth());
    ribbon.select(static_cast<qint32>(count / 2));
    return ribbon;
}

void paintRibbon(benchmark::State &state)
{
    const int scale = static_cast<int>(state.range(1));
    const RibbonGeometry geometry = geometryAt(scale);
    const RibbonStops ribbon = ramp(state.range(0), geometry);
    QImage screen(geometry.frame().size() * scale, QImage::Format_RGB32);
    screen.setDevicePixelRatio(scale);
    for (auto _ : state) {
        QPainter painter(&screen);
        RibbonPainter ribbonPainter(painter, QPalette());
        ribbonPainter.drawBand(geometry, RibbonColumns(ribbon.stops(), geometry));
        ribbonPainter.drawMarkers(geometry, ribbon, true);
    }
}
BENCHMARK(paintRibbon)
    ->ArgNames({"stops", "scale"})
    ->Args({16, 1})
    ->Args({16, 2})
    ->Args({1000000, 1})
    ->Unit(benchmark::kMicrosecond);

void reckonColumns(benchmark::State &state)
{
    const RibbonGeometry geometry = geometryAt();
    const RibbonStops ribbon = ramp(state.range(0), geometry, state.range(1) != 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(RibbonColumns(ribbon.stops(), geometry).pixels().data());
}
BENCHMARK(reckonColumns)
    ->ArgNames({"stops", "inOrder"})
    ->Args({16, 1})
    ->Args({1000000, 1})
    ->Args({1000000, 0})
    ->Unit(benchmark::kMicrosecond);

void sampleInOrder(benchmark::State &state)
{
    const RibbonGeometry geometry = geometryAt();
    const RibbonStops ribbon = ramp(state.range(0), geometry);
    const RibbonColumns columns(ribbon.stops(), geometry);
    constexpr qint32 count = 1000000;
    for (auto _ : state)
        benchmark::DoNotOptimize(columns.MakeOutColor(count).constData());
    state.counters["a colour"] =
        benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(sampleInOrder)->ArgName("stops")->Arg(2)->Arg(16)->Arg(1000000)->Unit(benchmark::kMicrosecond);

} // namespace
