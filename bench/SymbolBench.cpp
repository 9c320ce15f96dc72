// Drawing 100,000 point symbols and 10,000 lines of a style on a picture of 1000 x 700 pixels. The goal for symbols, at
// one angle or at any: below 100 ms in all. The peer is the same symbol drawn as a path each time.

#include "engine/symbol/PointSymbols.h"
#include "engine/symbol/TxFillStyleLib.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

constexpr int width = 1000;
constexpr int height = 700;
constexpr int symbolCount = 100000;
constexpr int lineCount = 10000;
constexpr qint32 church = 16;

QPointF place(int i)
{
    return {double(i * 7919LL % (width * 10)) / 10, double(i * 104729LL % (height * 10)) / 10};
}

/// Symbols of 12 units; the argument is how many pixels a unit has, and whether each has an angle of its own.
void drawSymbols(benchmark::State &state)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.scale(double(state.range(0)), double(state.range(0)));
    CTxGeoStyle style;
    style.symbolStyle = church;
    const CTxSymbol symbol(style);
    for (auto _ : state) {
        for (int i = 0; i < symbolCount; ++i)
            symbol.Draw(&painter, place(i) / double(state.range(0)), state.range(1) ? i : 0);
    }
    state.SetItemsProcessed(state.iterations() * symbolCount);
}

void drawSymbolsAsPaths(benchmark::State &state)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPainterPath path =
        QTransform::fromScale(0.5, 0.5).map(StyleDrawing::parsed(PointSymbols::row(church).shapes.front().path));
    for (auto _ : state) {
        for (int i = 0; i < symbolCount; ++i) {
            painter.translate(place(i));
            painter.fillPath(path, Qt::black);
            painter.translate(-place(i));
        }
    }
    state.SetItemsProcessed(state.iterations() * symbolCount);
}

/// Lines of 20 points in the style of the argument.
void drawLines(benchmark::State &state)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    CTxGeoStyle style;
    style.lineStyle = static_cast<qint32>(state.range(0));
    const CTxLineStyleObj line(style);
    QPolygonF points(20);
    for (auto _ : state) {
        for (int i = 0; i < lineCount; ++i) {
            for (qsizetype k = 0; k < points.size(); ++k)
                points[k] = place(i) + QPointF(double(k) * 4, double(k * 7 % 5));
            line.Polyline(&painter, points.constData(), static_cast<qint32>(points.size()));
        }
    }
    state.SetItemsProcessed(state.iterations() * lineCount);
}

/// Areas of 40 x 40 pixels in the fill of the argument.
void drawAreas(benchmark::State &state)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    CTxFillStyle fill(static_cast<qint32>(state.range(0)), Qt::black, Qt::white, 12, double(state.range(1)));
    for (auto _ : state) {
        for (int i = 0; i < lineCount; ++i) {
            const QPointF at = place(i);
            const QPointF corners[] = {at, at + QPointF(40, 3), at + QPointF(37, 40), at + QPointF(2, 35)};
            fill.Polygon(&painter, corners, 4);
        }
    }
    state.SetItemsProcessed(state.iterations() * lineCount);
}

BENCHMARK(drawSymbols)->Args({1, 0})->Args({1, 1})->Args({2, 0})->Args({2, 1})->Unit(benchmark::kMillisecond);
BENCHMARK(drawSymbolsAsPaths)->Unit(benchmark::kMillisecond);
BENCHMARK(drawLines)->Arg(0)->Arg(1)->Arg(12)->Arg(18)->Arg(26)->Unit(benchmark::kMillisecond);
BENCHMARK(drawAreas)->Args({0, 0})->Args({4, 0})->Args({4, 30})->Args({19, 0})->Unit(benchmark::kMillisecond);

} // namespace
