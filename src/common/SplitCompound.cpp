#include "common/TdCommMethods.h"
#include "engine/geometry/GeoCompound.h"

bool CTdCommMethods::SplitGeoCompound(const CGeoCompound *compound, QList<CElemGeometry *> *out)
{
    if (!compound || !out || compound->GetGeometryCount() == 0)
        return false;
    for (CElemGeometry *leaf : compound->GetLeaves())
        out->append(leaf);
    return true;
}
