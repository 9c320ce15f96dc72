#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

/// How colours look to people, among them people with a colour-vision deficiency.
namespace ColorVision {

enum class Deficiency { None, Protanopia, Deuteranopia, Tritanopia, Achromatopsia };

/// The colour that shows to everybody what @p color is to people with the deficiency.
TDCOMMON_API COLORREF simulate(COLORREF color, Deficiency deficiency);
/// CIE L*, 0 (black) to 100 (white).
TDCOMMON_API double lightness(COLORREF color);
/// How different two colours look: CIEDE2000, 0 for the same; about 1 is just noticeable side by side.
TDCOMMON_API double difference(COLORREF first, COLORREF second);

} // namespace ColorVision
