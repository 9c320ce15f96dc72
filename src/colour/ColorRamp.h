#pragma once

#include "colour/RibbonStop.h"
#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <optional>
#include <span>
#include <vector>

class ColorsetTable;

/// A ramp of colours over a range of numbers: stops with straight ways, in red, green and blue, between them. What all
/// kinds of ramp files are read into and written from. A value type, never empty.
///
/// Values are finite and ascend. A value that stands twice is a hard step: the first colour ends below it, the second
/// begins there. Nothing that cannot be seen is kept: no third stop at a value, no step at the ends of the range.
class TDCOMMON_API ColorRamp
{
public:
    struct Stop
    {
        double value = 0.0;
        COLORREF color = 0;

        bool operator==(const Stop &other) const = default;
    };
    using Stops = std::vector<Stop>;

    /// The ramp of @p stops. @return nothing when there are none, a value is not finite or values descend
    static std::optional<ColorRamp> fromStops(Stops stops);
    /// The ramp of a colour-set table as the ribbon editor shows it: one more stop stands at the range's maximum when
    /// the last value is not that. @return nothing as fromStops() does
    static std::optional<ColorRamp> fromTable(const ColorsetTable &table);
    /// The ramp of the ribbon editor's stops; their positions in pixels do not count.
    static std::optional<ColorRamp> fromRibbonStops(std::span<const RibbonStop> ribbon);

    const Stops &stops() const { return m_stops; }
    double minimum() const { return m_stops.front().value; }
    double maximum() const { return m_stops.back().value; }
    /// The colour at @p value; beyond the range that of the nearer end, of NaN that of the minimum.
    COLORREF at(double value) const;
    /// The same colours over another, finite range. Stops whose values fall together become hard steps.
    /// @return nothing when an end is not finite or @p maximum lies below @p minimum
    std::optional<ColorRamp> mapped(double minimum, double maximum) const;

    ColorsetTable toTable() const;
    /// The stops for the ribbon editor, at no position in pixels.
    std::vector<RibbonStop> toRibbonStops() const;

    bool operator==(const ColorRamp &other) const = default;

private:
    explicit ColorRamp(Stops stops) : m_stops(std::move(stops)) {}

    Stops m_stops;
};
