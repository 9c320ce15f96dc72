// Ramps of a million colours through 2 to 100,000 stops, a stock ramp, and the same ramp with whole numbers divided for
// every channel. The time of one colour is the time divided by a million: with real time in ms, that many ns.

#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr qint32 count = 1000000;

CTxColorFolder stops(qint64 number)
{
    CTxColorFolder folder;
    for (qint64 i = 0; i < number; ++i)
        folder.Add(static_cast<COLORREF>(i * 2654435761LL >> 7 & 0xFFFFFF));
    return folder;
}

void rampThroughStops(benchmark::State &state)
{
    const CTxColorFolder through = stops(state.range(0));
    CTxColorFolder ramp;
    for (auto _ : state) {
        ramp.MakeGradient(count, through);
        benchmark::DoNotOptimize(ramp.GetColors().constData());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void rampByDivision(benchmark::State &state)
{
    const QList<COLORREF> through = stops(state.range(0)).GetColors();
    for (auto _ : state) {
        QList<COLORREF> ramp;
        ramp.resize(count);
        const qint64 pieces = through.size() - 1, steps = count - 1;
        for (qint64 i = 0; i < count; ++i) {
            const qint64 piece = i * pieces / steps, rest = i * pieces % steps;
            const COLORREF from = through[piece], to = through[std::min(piece + 1, pieces)];
            const auto between = [&](int first, int last) {
                return static_cast<int>((2 * (first * (steps - rest) + last * rest) + steps) / (2 * steps));
            };
            ramp[i] = TxColorRef::make(between(TxColorRef::red(from), TxColorRef::red(to)),
                                       between(TxColorRef::green(from), TxColorRef::green(to)),
                                       between(TxColorRef::blue(from), TxColorRef::blue(to)));
        }
        benchmark::DoNotOptimize(ramp.constData());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void stockRamp(benchmark::State &state)
{
    CTxColorFolder ramp;
    for (auto _ : state) {
        ramp.MakeStockGradient(count, static_cast<qint32>(TxStockGradient::Viridis));
        benchmark::DoNotOptimize(ramp.GetColors().constData());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// All ramps as a list of pictures wants them.
void allStockRampsOf256(benchmark::State &state)
{
    CTxColorFolder ramp;
    for (auto _ : state) {
        for (qint32 style = 0; style < CTxColorFolder::GetStockGradientCount(); ++style) {
            ramp.MakeStockGradient(256, style);
            benchmark::DoNotOptimize(ramp.GetColors().constData());
        }
    }
}

BENCHMARK(rampThroughStops)->Arg(2)->Arg(16)->Arg(1000)->Arg(100000)->Arg(5000000)->Unit(benchmark::kMillisecond);
BENCHMARK(rampByDivision)->Arg(2)->Arg(16)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(stockRamp)->Unit(benchmark::kMillisecond);
BENCHMARK(allStockRampsOf256)->Unit(benchmark::kMillisecond);

} // namespace
