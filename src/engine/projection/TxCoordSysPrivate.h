#pragma once

#include "engine/projection/TxPJCoordSys.h"

#include <ogr_spatialref.h>

/// The inside of a coordinate system.
class TxCoordSysPrivate
{
public:
    static TxCoordSysPrivate &of(const CTxPJCoordSys &coordSys) { return *coordSys.d; }

    /// The system that @p reference describes; none for null and for what drivers give when they know nothing
    /// ("Undefined Cartesian SRS …" of a GeoPackage, an engineering system of an image).
    static CTxPJCoordSys fromReference(const OGRSpatialReference *reference);
    /// Takes @p reference over, in the traditional order of axes: x is the easting or the longitude.
    void set(const OGRSpatialReference &reference);

    /// Null for no system.
    std::unique_ptr<OGRSpatialReference> reference;
};
