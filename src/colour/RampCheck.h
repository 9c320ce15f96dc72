#pragma once

#include "colour/ColorVision.h"
#include "common/TdCommonExport.h"

#include <span>
#include <vector>

/// What keeps readers of a map from telling the colours of a ramp apart or from seeing which of two is more.
namespace RampCheck {

enum class Kind {
    NeighboursAlike,     ///< a stop and the next, which differ to most people, look alike to some
    LightnessNotMonotone ///< the ramp turns from lighter to darker, or back, at or behind a stop
};

struct Finding
{
    Kind kind = Kind::NeighboursAlike;
    ColorVision::Deficiency deficiency = ColorVision::Deficiency::None; ///< whom neighbours look alike to
    qsizetype stop = 0;                                                 ///< index; of neighbours, of the first

    bool operator==(const Finding &other) const = default;
};

/// Colours that differ less (CIEDE2000) count as alike: they are told apart side by side, but not across a map.
inline constexpr double alikeBelow = 5.0;
/// Neighbours that differ less to people with full colour vision were meant to be close, and are not found.
inline constexpr double distinctFrom = 10.0;
/// Lightness (CIE L*) may go back by this much: less is not seen.
inline constexpr double lightnessSlack = 1.0;

/// Ramps of more stops are not checked: no screen shows their stops one by one, and the editor checks while it drags.
inline constexpr size_t maximumStops = 10000;

/// Checks a ramp that blends from each of its stops' colours to the next, in red, green and blue. The findings come by
/// kind, then by stop, then by deficiency in the order of ColorVision::Deficiency. None for fewer than two stops
/// or more than maximumStops.
TDCOMMON_API std::vector<Finding> check(std::span<const COLORREF> stops);

} // namespace RampCheck
