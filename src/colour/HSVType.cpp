#include "colour/HSVType.h"
#include "colour/RGBType.h"

#include <algorithm>
#include <limits>

namespace {

/// @p part with its fraction cut off, kept within 32 bits.
qint32 whole(double part)
{
    using Limits = std::numeric_limits<qint32>;
    return static_cast<qint32>(std::clamp<double>(part, Limits::min(), Limits::max()));
}

} // namespace

RGBType HSVType::toRGB() const
{
    const double v = value;
    const double delta = static_cast<double>(saturation) * v / 255.0;
    const double low = v - delta;
    const double sextant = hue / 60.0;
    // Deliberate: the sectors do not meet halfway. Ramps that users have stored were computed so.
    if (hue > 300 || hue < 61) {
        if (hue < 301)
            return {whole(v), whole(sextant * delta + low), whole(low)};
        return {whole(v), whole(low), whole(low - (hue - 360.0) / 60.0 * delta)};
    }
    if (hue >= 180) {
        if (hue < 240)
            return {whole(low), whole(low - (sextant - 4.0) * delta), whole(v)};
        return {whole(low + (sextant - 4.0) * delta), whole(low), whole(v)};
    }
    if (hue >= 120)
        return {whole(low), whole(v), whole(low + (sextant - 2.0) * delta)};
    return {whole(low - (sextant - 2.0) * delta), whole(v), whole(low)};
}
