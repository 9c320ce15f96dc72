#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

class HSVType;

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
