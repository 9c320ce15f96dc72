#pragma once

#include "common/TdCommonExport.h"

#include <QtGlobal>

class RGBType;

/// A colour by hue, saturation and value, in whole numbers.
class TDCOMMON_API HSVType
{
public:
    qint32 hue = 0;        ///< degrees, 0 to 359
    qint32 saturation = 0; ///< 0 to 255
    qint32 value = 0;      ///< 0 to 255

    constexpr HSVType() = default;
    constexpr HSVType(qint32 h, qint32 s, qint32 v) : hue(h), saturation(s), value(v) {}

    /// The colour in red, green and blue, fractions cut off. The sectors end at 60, 120, 179, 240 and 300 degrees;
    /// values outside the ranges give parts outside 0 to 255.
    RGBType toRGB() const;

    constexpr bool operator==(const HSVType &other) const = default;
};
