#pragma once

#include "engine/base/TxExport.h"

class CElemGeometry;

/// Operations on whole geometries.
class TX_EXPORT CTxSpatialOperators
{
public:
    CTxSpatialOperators() = delete;

    /// True when the interiors of two areas overlap; areas that only touch do not. Regions and the regions in compounds
    /// are areas, seen from above where they have heights. False for null and where one of the two has no area.
    ///
    /// Points that are not finite or further out than 1e75 are left out, and rings with fewer than three places enclose
    /// nothing. Rings that cross themselves or one another enclose what the even-odd rule gives them, as they are
    /// drawn.
    static bool IsAreaIntersect(const CElemGeometry *a, const CElemGeometry *b);
};
