#include "colour/RGBType.h"
#include "colour/HSVType.h"

#include <algorithm>

HSVType RGBType::toHSV() const
{
    const qint32 largest = std::max({red, green, blue});
    const double r = red;
    const double g = green;
    const double b = blue;
    const double delta = largest - std::min({r, g, b});
    if (delta == 0.0)
        return {0, 0, largest};
    // Red wins ties, then green.
    double sextants = 0.0;
    if (red == largest)
        sextants = (g - b) / delta;
    else if (green != largest)
        sextants = (r - g) / delta + 4.0;
    else
        sextants = (b - r) / delta + 2.0;
    double degrees = sextants * 60.0;
    if (degrees < 0.0)
        degrees += 360.0;
    if (degrees == 360.0)
        degrees = 0.0;
    // Parts out of range are kept from giving a saturation that no number holds.
    const double saturation = largest > 0 ? std::min(delta / largest * 255.0, 2147483647.0) : 0.0;
    return {static_cast<qint32>(degrees), static_cast<qint32>(saturation), largest};
}
