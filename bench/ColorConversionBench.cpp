// Colours to hue, saturation and value and back, against QColor's: 20,000 colours without an order, each time from
// one array into another.

#include "colour/HSVType.h"
#include "colour/RGBType.h"

#include <QColor>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

/// Colours whose first part is below @p first.
template<class Color>
std::vector<Color> randomColors(unsigned first)
{
    std::mt19937 random(7); // NOLINT: the same colours in each run
    const auto below = [&random](unsigned end) { return static_cast<qint32>(random() % end); };
    std::vector<Color> colors;
    for (int i = 0; i < 20000; ++i)
        colors.emplace_back(below(first), below(256), below(256));
    return colors;
}

template<class From, class Change>
void convertAll(benchmark::State &state, const std::vector<From> &from, Change change)
{
    std::vector<decltype(change(from[0]))> to(from.size());
    for (auto _ : state) {
        for (size_t i = 0; i < from.size(); ++i)
            to[i] = change(from[i]);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<qint64>(from.size()));
}

void rgbToHsvByQColor(benchmark::State &state)
{
    convertAll(state, randomColors<RGBType>(256), [](const RGBType &rgb) {
        HSVType hsv;
        QColor(rgb.red, rgb.green, rgb.blue).getHsv(&hsv.hue, &hsv.saturation, &hsv.value);
        return hsv;
    });
}

void rgbToHsv(benchmark::State &state)
{
    convertAll(state, randomColors<RGBType>(256), [](const RGBType &rgb) { return rgb.toHSV(); });
}

void hsvToRgbByQColor(benchmark::State &state)
{
    convertAll(state, randomColors<HSVType>(360), [](const HSVType &hsv) {
        RGBType rgb;
        QColor::fromHsv(hsv.hue, hsv.saturation, hsv.value).getRgb(&rgb.red, &rgb.green, &rgb.blue);
        return rgb;
    });
}

void hsvToRgb(benchmark::State &state)
{
    convertAll(state, randomColors<HSVType>(360), [](const HSVType &hsv) { return hsv.toRGB(); });
}

BENCHMARK(rgbToHsvByQColor);
BENCHMARK(rgbToHsv);
BENCHMARK(hsvToRgbByQColor);
BENCHMARK(hsvToRgb);

} // namespace
