#include "colour/HSVType.h"
#include "colour/RGBType.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

/// One sector of the hues: in it one part of the colour is the value, one is the low (the value less delta), and one
/// moves between them.
struct Sector
{
    int end;         ///< the first hue behind it
    double from;     ///< the multiple of 60 degrees at which the part that moves is low
    double way;      ///< 1 when that part grows with the hue, -1 when it shrinks
    quint8 parts[3]; ///< what red, green and blue are: 0 the value, 1 the low, 2 the part that moves
};

// Deliberate: the sectors do not meet halfway. Ramps that users have stored were computed so.
constexpr Sector sectors[] = {
    {61, 0, 1, {0, 2, 1}},   {120, 2, -1, {2, 0, 1}}, {180, 2, 1, {1, 0, 2}},
    {240, 4, -1, {1, 2, 0}}, {301, 4, 1, {2, 1, 0}},  {std::numeric_limits<int>::max(), 6, -1, {0, 1, 2}},
};

/// What the conversion needs to know of a hue.
struct Turn
{
    double share = 0.0; ///< of delta, what the part that moves has above the low
    quint8 parts[3] = {};
};

constexpr Turn turnOf(qint32 hue)
{
    size_t i = 0;
    while (i + 1 < std::size(sectors) && hue >= sectors[i].end)
        ++i;
    const Sector &sector = sectors[i];
    // In the last sector the degrees are counted from 360 before they are divided, which rounds otherwise.
    const double turn = sector.from == 6 ? (hue - 360.0) / 60.0 : hue / 60.0 - sector.from;
    return {sector.way * turn, {sector.parts[0], sector.parts[1], sector.parts[2]}};
}

constexpr auto turns = [] {
    std::array<Turn, 360> all;
    for (qint32 hue = 0; hue < 360; ++hue)
        all[static_cast<size_t>(hue)] = turnOf(hue);
    return all;
}();

/// @p part with its fraction cut off, kept within 32 bits.
qint32 whole(double part)
{
    using Limits = std::numeric_limits<qint32>;
    return static_cast<qint32>(std::clamp<double>(part, Limits::min(), Limits::max()));
}

} // namespace

RGBType HSVType::toRGB() const
{
    const Turn turn = hue >= 0 && hue < 360 ? turns[static_cast<size_t>(hue)] : turnOf(hue);
    const double delta = static_cast<double>(saturation) * value / 255.0;
    const double low = value - delta;
    const qint32 parts[] = {value, whole(low), whole(low + turn.share * delta)};
    return {parts[turn.parts[0]], parts[turn.parts[1]], parts[turn.parts[2]]};
}
