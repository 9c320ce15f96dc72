#pragma once

#include "engine/geometry/OgrGeometry.h"

#include <gtest/gtest.h>
#include <ogr_geometry.h>

#include <memory>
#include <string>

/// Geometries as well-known text, of the ISO form with all digits.
namespace Wkt {

inline std::unique_ptr<OGRGeometry> toOgr(const std::string &wkt)
{
    OGRGeometry *geometry = nullptr;
    EXPECT_EQ(OGRGeometryFactory::createFromWkt(wkt.c_str(), nullptr, &geometry), OGRERR_NONE) << wkt;
    return std::unique_ptr<OGRGeometry>(geometry);
}

inline std::unique_ptr<CElemGeometry> toElement(const std::string &wkt)
{
    return OgrGeometry::fromOgr(toOgr(wkt).get());
}

/// "null" where there is no geometry.
inline std::string of(const OGRGeometry *geometry)
{
    OGRWktOptions options;
    options.variant = wkbVariantIso;
    options.precision = 17;
    return geometry ? geometry->exportToWkt(options) : std::string("null");
}
inline std::string of(const CElemGeometry *geometry)
{
    return geometry ? of(OgrGeometry::toOgr(*geometry).get()) : std::string("null");
}

} // namespace Wkt
