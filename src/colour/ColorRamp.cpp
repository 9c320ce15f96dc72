#include "colour/ColorRamp.h"

#include "colour/ColorsetTable.h"

#include <algorithm>
#include <cmath>

namespace {

/// How far @p value is on the way from @p from to @p to, which differ; the way may be longer than a double can be.
double place(double value, double from, double to)
{
    const double span = to - from;
    return std::isfinite(span) ? (value - from) / span : (value / 2 - from / 2) / (to / 2 - from / 2);
}

int mixed(int from, int to, double t)
{
    return static_cast<int>(std::lround(from + (to - from) * t));
}

} // namespace

std::optional<ColorRamp> ColorRamp::fromStops(Stops stops)
{
    const auto isBad = [](const Stop &stop) { return !std::isfinite(stop.value); };
    const auto descends = [](const Stop &a, const Stop &b) { return a.value > b.value; };
    if (stops.empty() || std::any_of(stops.begin(), stops.end(), isBad) ||
        std::adjacent_find(stops.begin(), stops.end(), descends) != stops.end())
        return std::nullopt;
    size_t kept = 0;
    for (Stop stop : stops) {
        stop.value += 0.0; // no negative zero, which text could tell from zero
        stop.color &= 0xFFFFFF;
        if (kept > 0 && stops[kept - 1].value == stop.value) {
            const bool isSecond = kept > 1 && stops[kept - 2].value == stop.value;
            if (kept == 1 || isSecond)
                --kept; // what went before at this value is not seen
        }
        if (kept == 0 || stops[kept - 1] != stop)
            stops[kept++] = stop;
    }
    if (kept > 1 && stops[kept - 1].value == stops[kept - 2].value)
        --kept;
    stops.resize(kept);
    return ColorRamp(std::move(stops));
}

std::optional<ColorRamp> ColorRamp::fromTable(const ColorsetTable &table)
{
    Stops stops;
    stops.reserve(table.entries.size() + 1);
    for (const ColorsetTable::Entry &entry : table.entries)
        stops.push_back({entry.value, entry.color});
    if (!stops.empty() && stops.back().value != table.maximum)
        stops.push_back({table.maximum, stops.back().color});
    return fromStops(std::move(stops));
}

std::optional<ColorRamp> ColorRamp::fromRibbonStops(std::span<const RibbonStop> ribbon)
{
    Stops stops;
    stops.reserve(ribbon.size());
    for (const RibbonStop &stop : ribbon)
        stops.push_back({stop.value, stop.color});
    return fromStops(std::move(stops));
}

COLORREF ColorRamp::at(double value) const
{
    const auto above = std::upper_bound(m_stops.begin(), m_stops.end(), value,
                                        [](double v, const Stop &stop) { return v < stop.value; });
    if (above == m_stops.begin() || std::isnan(value))
        return m_stops.front().color;
    if (above == m_stops.end())
        return m_stops.back().color;
    const Stop &below = *std::prev(above);
    const double t = place(value, below.value, above->value);
    return TxColorRef::make(mixed(TxColorRef::red(below.color), TxColorRef::red(above->color), t),
                            mixed(TxColorRef::green(below.color), TxColorRef::green(above->color), t),
                            mixed(TxColorRef::blue(below.color), TxColorRef::blue(above->color), t));
}

std::optional<ColorRamp> ColorRamp::mapped(double minimum, double maximum) const
{
    if (!std::isfinite(minimum) || !std::isfinite(maximum) || minimum > maximum)
        return std::nullopt;
    Stops stops = m_stops;
    for (Stop &stop : stops) {
        const double t = stop.value > m_stops.front().value ? place(stop.value, this->minimum(), this->maximum()) : 0;
        stop.value = std::clamp(minimum * (1 - t) + maximum * t, minimum, maximum);
    }
    return fromStops(std::move(stops));
}

ColorsetTable ColorRamp::toTable() const
{
    ColorsetTable table;
    table.minimum = minimum();
    table.maximum = maximum();
    table.entries.reserve(m_stops.size());
    for (const Stop &stop : m_stops)
        table.entries.push_back({stop.value, stop.color});
    table.reckonStep();
    return table;
}

std::vector<RibbonStop> ColorRamp::toRibbonStops() const
{
    std::vector<RibbonStop> stops;
    stops.reserve(m_stops.size());
    for (const Stop &stop : m_stops)
        stops.push_back({0, stop.color, stop.value});
    return stops;
}
