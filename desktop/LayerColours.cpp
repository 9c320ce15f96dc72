#include "LayerColours.h"

#include "JobTools.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoParts.h"
#include "engine/map/TxLayer.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

/// The colours of a ramp whose stops do not lie evenly are read off it so often.
constexpr int finest = 256;

CTxColorsetEx colorset(const QList<COLORREF> &colors, double floor, double ceiling)
{
    CTxColorsetEx result;
    result.SetZFloor(floor);
    result.SetZCeiling(ceiling);
    for (const COLORREF color : colors)
        result.AddColor(color);
    return result;
}

std::optional<std::pair<double, double>> surfaceRange(CDatasetVector &surface)
{
    const JobTools::Opened opened(surface);
    if (!opened)
        return std::nullopt;
    CTxQueryDef query;
    query.options = CTxQueryDef::SkipAttributes | CTxQueryDef::AnyOrder;
    std::optional<std::pair<double, double>> range;
    const JobTools::Records records(surface, query);
    for (; records && !records->IsEOF(); records->MoveNext()) {
        CElemGeometry *read = nullptr;
        records->GetGeometry(read);
        const std::unique_ptr<CElemGeometry> geometry(read);
        const auto *parts = dynamic_cast<const CGeoParts *>(geometry.get());
        const double *zs = parts ? parts->GetZs() : nullptr;
        for (qint32 i = 0; zs && i < parts->GetPointCount(); ++i) {
            if (!range)
                range = {zs[i], zs[i]};
            range = {std::min(range->first, zs[i]), std::max(range->second, zs[i])};
        }
    }
    return range;
}

/// @p color between @p from and @p to, @p t of the way.
COLORREF mixed(COLORREF from, COLORREF to, double t)
{
    const auto part = [t](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * t)); };
    return TxColorRef::make(part(TxColorRef::red(from), TxColorRef::red(to)),
                            part(TxColorRef::green(from), TxColorRef::green(to)),
                            part(TxColorRef::blue(from), TxColorRef::blue(to)));
}

int distance(COLORREF a, COLORREF b)
{
    return std::max({std::abs(TxColorRef::red(a) - TxColorRef::red(b)),
                     std::abs(TxColorRef::green(a) - TxColorRef::green(b)),
                     std::abs(TxColorRef::blue(a) - TxColorRef::blue(b))});
}

/// Marks in @p kept which colours between @p first and @p last (kept both) a straight way between stops misses.
void keepCorners(const CTxColorsetEx &colors, qint32 first, qint32 last, std::vector<bool> &kept)
{
    constexpr int unseen = 3; // of 255
    std::vector<std::pair<qint32, qint32>> spans = {{first, last}};
    while (!spans.empty()) {
        const auto [from, to] = spans.back();
        spans.pop_back();
        qint32 farthest = -1;
        int most = unseen;
        for (qint32 i = from + 1; i < to; ++i) {
            const COLORREF straight = mixed(colors.GetRGB(from), colors.GetRGB(to), double(i - from) / (to - from));
            if (const int off = distance(straight, colors.GetRGB(i)); off > most) {
                most = off;
                farthest = i;
            }
        }
        if (farthest < 0)
            continue;
        kept[static_cast<size_t>(farthest)] = true;
        spans.emplace_back(from, farthest);
        spans.emplace_back(farthest, to);
    }
}

bool areEven(const QList<RibbonStop> &stops)
{
    const double step = (stops.last().value - stops.first().value) / static_cast<double>(stops.size() - 1);
    for (qsizetype i = 0; i < stops.size(); ++i) {
        if (std::abs(stops[i].value - stops.first().value - step * static_cast<double>(i)) > std::abs(step) * 1e-6)
            return false;
    }
    return true;
}

/// How many colours show the stops of a ramp: 0 for as many as there are, else more the nearer two of them stand.
int countFor(const QList<RibbonStop> &stops)
{
    constexpr double most = 1025;
    if (areEven(stops))
        return 0;
    const double span = stops.last().value - stops.first().value;
    double nearest = span;
    for (qsizetype i = 1; i < stops.size(); ++i) {
        if (const double gap = stops[i].value - stops[i - 1].value; gap > 0)
            nearest = std::min(nearest, gap);
    }
    return static_cast<int>(std::clamp(std::ceil(span / nearest) + 1, double(finest), most));
}

COLORREF colorAt(const QList<RibbonStop> &stops, double value)
{
    const auto above = std::upper_bound(stops.begin(), stops.end(), value,
                                        [](double v, const RibbonStop &stop) { return v < stop.value; });
    if (above == stops.begin())
        return stops.first().color;
    if (above == stops.end())
        return stops.last().color;
    const RibbonStop &below = *std::prev(above);
    return mixed(below.color, above->color, (value - below.value) / (above->value - below.value));
}

} // namespace

bool LayerColours::showsHeights(const CTxLayer *layer)
{
    const CTxDataset *dataset = layer ? layer->GetDataset() : nullptr;
    return dataset && (dataset->GetType() == CElemDatasetInfo::Grid || dataset->GetType() == CElemDatasetInfo::DEM ||
                       dataset->GetType() == CElemDatasetInfo::TIN);
}

std::optional<std::pair<double, double>> LayerColours::heightRange(CTxDataset &dataset)
{
    std::optional<std::pair<double, double>> range = dataset.IsVector()
                                                         ? surfaceRange(static_cast<CDatasetVector &>(dataset))
                                                         : static_cast<CDatasetRaster &>(dataset).GetValueRange();
    if (range && !(range->second > range->first))
        range->second = range->first + std::max(1.0, std::abs(range->first) * 1e-6); // 1 is lost beside a huge one
    return range;
}

CTxColorsetEx LayerColours::shown(const CTxLayer &layer)
{
    if (layer.style().colors.GetSize() > 0)
        return layer.style().colors;
    CTxDataset *dataset = layer.GetDataset();
    const auto [floor, ceiling] = (dataset ? heightRange(*dataset) : std::nullopt).value_or(std::pair(0.0, 1000.0));
    return usualColors(floor, ceiling);
}

CTxColorsetEx LayerColours::stock(qint32 style, bool reverse, int count, double floor, double ceiling, bool toSeaLevel)
{
    CTxColorFolder ramp;
    if (!toSeaLevel || !TxGetStockGradientTraits(style).hasSeaLevel || reverse) {
        ramp.MakeStockGradient(count, style, reverse);
        return colorset(ramp.GetColors(), floor, ceiling);
    }
    // The lower half of an even count is water: each side gets half of a ramp of its own length.
    int water = 0; // land only
    if (ceiling <= 0)
        water = count;
    else if (floor < 0)
        water = std::clamp(static_cast<int>(std::lround(count * -floor / (ceiling - floor))), 1, count - 1);
    ramp.MakeStockGradient(2 * water, style);
    QList<COLORREF> colors = ramp.GetColors().first(water);
    ramp.MakeStockGradient(2 * (count - water), style);
    colors += ramp.GetColors().last(count - water);
    return colorset(colors, floor, ceiling);
}

QList<RibbonStop> LayerColours::toStops(const CTxColorsetEx &colors)
{
    const qint32 count = colors.GetSize();
    const double floor = colors.GetZFloor(), span = colors.GetZCeiling() - floor;
    if (count < 2)
        return {{0, colors.GetRGB(0), floor}, {0, colors.GetRGB(0), colors.GetZCeiling()}};
    std::vector<bool> kept(static_cast<size_t>(count), false);
    kept.front() = kept.back() = true;
    keepCorners(colors, 0, count - 1, kept);
    QList<RibbonStop> stops;
    for (qint32 i = 0; i < count; ++i) {
        if (kept[static_cast<size_t>(i)])
            stops.append({0, colors.GetRGB(i), i + 1 == count ? colors.GetZCeiling() : floor + span * i / (count - 1)});
    }
    return stops;
}

CTxColorsetEx LayerColours::fromStops(QList<RibbonStop> stops, int count)
{
    if (stops.size() < 2)
        return {};
    std::stable_sort(stops.begin(), stops.end(),
                     [](const RibbonStop &a, const RibbonStop &b) { return a.value < b.value; });
    const double floor = stops.first().value, ceiling = stops.last().value;
    QList<COLORREF> colors;
    if (count < 1 && areEven(stops)) {
        for (const RibbonStop &stop : stops)
            colors.append(stop.color);
        return colorset(colors, floor, ceiling);
    }
    const int made = count < 1 ? finest : count;
    for (int i = 0; i < made; ++i)
        colors.append(colorAt(stops, made == 1 ? floor : floor + (ceiling - floor) * i / (made - 1)));
    return colorset(colors, floor, ceiling);
}

std::optional<ColorRamp> LayerColours::toRamp(const CTxLayer &layer)
{
    const CTxColorsetEx colors = shown(layer);
    QList<RibbonStop> stops;
    if (layer.style().stepped && layer.style().colors.GetSize() > 0) {
        const double count = colors.GetSize();
        const auto bound = [&](qint32 i) { return std::lerp(colors.GetZFloor(), colors.GetZCeiling(), i / count); };
        for (qint32 i = 0; i < colors.GetSize(); ++i)
            stops += {{0, colors.GetRGB(i), bound(i)}, {0, colors.GetRGB(i), bound(i + 1)}};
    } else {
        stops = toStops(colors);
    }
    return ColorRamp::fromRibbonStops(stops);
}

CTxColorsetEx LayerColours::fromRamp(const ColorRamp &ramp, const std::pair<double, double> &heights)
{
    const double shared = std::min(ramp.maximum(), heights.second) - std::max(ramp.minimum(), heights.first);
    const bool isForeign = shared < (heights.second - heights.first) / 10;
    const ColorRamp fitting = isForeign ? ramp.mapped(heights.first, heights.second).value_or(ramp) : ramp;
    const std::vector<RibbonStop> ribbon = fitting.toRibbonStops();
    QList<RibbonStop> stops(ribbon.begin(), ribbon.end());
    if (stops.size() == 1) // of no extent
        stops = {{0, ribbon.front().color, heights.first}, {0, ribbon.front().color, heights.second}};
    return fromStops(stops, countFor(stops));
}
