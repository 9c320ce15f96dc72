#pragma once

#include "engine/base/TxExport.h"

class CElemGeometry;

/// Operations on whole geometries.
class TX_EXPORT CTxSpatialOperators
{
public:
    CTxSpatialOperators() = delete;

    /// True when the interiors of two areas overlap; areas that only touch do not. Regions and the regions in compounds
    /// are areas. False for null and where one of the two has no area.
    static bool IsAreaIntersect(const CElemGeometry *a, const CElemGeometry *b);
};
