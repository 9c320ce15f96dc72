#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

/// How colours look to people, among them people with a colour-vision deficiency.
namespace ColorVision {

enum class Deficiency {
    None,
    Protanopia,   ///< no long-wave (red) cones
    Deuteranopia, ///< no middle-wave (green) cones
    Tritanopia,   ///< no short-wave (blue) cones
    Achromatopsia ///< light and dark only
};

/// A colour in CIE L*a*b* under the white of screens (D65).
struct Lab
{
    double l = 0.0; ///< lightness, 0 (black) to 100 (white)
    double a = 0.0; ///< green (negative) to red
    double b = 0.0; ///< blue (negative) to yellow
};

/// The colour that shows to everybody what @p color is to people with the deficiency. Greys stay as they are.
TDCOMMON_API COLORREF simulate(COLORREF color, Deficiency deficiency);
TDCOMMON_API Lab toLab(COLORREF color);
/// CIE L*, 0 (black) to 100 (white).
TDCOMMON_API double lightness(COLORREF color);
/// How different two colours look: CIEDE2000, 0 for the same; about 1 is just noticeable side by side.
TDCOMMON_API double difference(COLORREF first, COLORREF second);
TDCOMMON_API double difference(const Lab &first, const Lab &second);

} // namespace ColorVision
