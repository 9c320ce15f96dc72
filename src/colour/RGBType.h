#pragma once

#include "colour/HSVType.h"
#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <algorithm>

/// A colour by red, green and blue, in whole numbers.
class TDCOMMON_API RGBType
{
public:
    qint32 red = 0;   ///< 0 to 255
    qint32 green = 0; ///< 0 to 255
    qint32 blue = 0;  ///< 0 to 255

    constexpr RGBType() = default;
    constexpr RGBType(qint32 r, qint32 g, qint32 b) : red(r), green(g), blue(b) {}
    /// The parts of @p color.
    constexpr explicit RGBType(COLORREF color)
        : red(TxColorRef::red(color)), green(TxColorRef::green(color)), blue(TxColorRef::blue(color))
    {
    }

    /// The colour in 32 bits, made of the low 8 bits of each part.
    constexpr COLORREF color() const { return TxColorRef::make(red, green, blue); }
    /// The colour by hue, saturation and value, fractions cut off. Grey has hue and saturation 0.
    HSVType toHSV() const;

    constexpr bool operator==(const RGBType &other) const = default;
};

// Here, and written so that no branch hangs on the colour, for the sake of pictures: those of a picture come in no
// order that a processor could guess, and the call alone would cost as much as the rest.
inline HSVType RGBType::toHSV() const
{
    const qint32 largest = std::max(std::max(red, green), blue);
    const qint32 smallest = std::min(std::min(red, green), blue);
    // In 64 bits: parts out of range may lie further apart than 32 bits tell.
    const qint64 delta = qint64(largest) - smallest;

    // The part that is the largest: red wins ties, then green. The hue turns from there by the two parts after it.
    const int first = (red != largest) * (1 + (green != largest));
    const qint32 parts[] = {red, green, blue, red, green};
    const double turn = static_cast<double>(qint64(parts[first + 1]) - parts[first + 2]);
    const double divisor = static_cast<double>(delta + (delta == 0)); // grey turns by 0, whatever divides it
    double degrees = (turn / divisor + 2.0 * first) * 60.0;
    degrees += 360.0 * (degrees < 0.0);
    const qint32 hue = static_cast<qint32>(degrees);

    // Parts out of range are kept from giving a saturation that no number holds.
    const double saturation = static_cast<double>(delta) / std::max(largest, 1) * 255.0;
    return {hue == 360 ? 0 : hue, largest > 0 ? static_cast<qint32>(std::min(saturation, 2147483647.0)) : 0, largest};
}
