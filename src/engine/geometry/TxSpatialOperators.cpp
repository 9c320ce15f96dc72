#include "engine/geometry/TxSpatialOperators.h"

#include "engine/base/TxGdal.h"
#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/OgrGeometry.h"

#include <geos_c.h>
#include <ogr_geometry.h>

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

namespace {

/// A GEOS context; it says nothing on the terminal.
class Geos
{
public:
    Geos() : m_handle(OGRGeometry::createGEOSContext()) {}
    ~Geos() { OGRGeometry::freeGEOSContext(m_handle); }
    Geos(const Geos &) = delete;
    Geos &operator=(const Geos &) = delete;
    GEOSContextHandle_t handle() const { return m_handle; }

private:
    const GEOSContextHandle_t m_handle;
};

struct Destroyer
{
    GEOSContextHandle_t handle;
    void operator()(GEOSGeometry *geometry) const { GEOSGeom_destroy_r(handle, geometry); }
};
using GeosGeometry = std::unique_ptr<GEOSGeometry, Destroyer>;

/// True for a place that can be reckoned with. At coordinates whose products overflow GEOS may never come to an end.
bool isPlain(const CPoint2D &point)
{
    constexpr double furthest = 1e75;
    return std::abs(point.x) <= furthest && std::abs(point.y) <= furthest;
}

/// @p region without points that are no plain ones and without rings that enclose nothing.
CGeoRegion cleaned(const CGeoRegion &region)
{
    constexpr size_t smallestRing = 4; // three places, and the first again
    CGeoRegion made;
    bool hasOuter = false;
    const CPoint2D *point = region.GetPoints();
    for (qint32 part = 0; part < region.GetPartCount(); ++part) {
        std::vector<CPoint2D> ring;
        for (const CPoint2D *end = point + region.GetPolyCounts().at(part); point < end; ++point) {
            if (isPlain(*point))
                ring.push_back(*point);
        }
        if (!ring.empty() && ring.front() != ring.back())
            ring.push_back(CPoint2D(ring.front()));
        const bool encloses = ring.size() >= smallestRing;
        const auto count = static_cast<qint32>(ring.size());
        if (!region.IsHole(part))
            hasOuter = encloses && made.AddSubPolygon(ring.data(), count);
        else if (hasOuter && encloses)
            made.AddHole(ring.data(), count);
    }
    return made;
}

/// The polygons that @p repaired, made valid, consists of; its lines and points, where rings fell together, are left
/// out.
GeosGeometry polygonsOf(const Geos &geos, const GEOSGeometry *repaired)
{
    std::vector<GEOSGeometry *> polygons;
    std::vector<const GEOSGeometry *> pending = {repaired};
    while (!pending.empty()) {
        const GEOSGeometry *next = pending.back();
        pending.pop_back();
        const int type = GEOSGeomTypeId_r(geos.handle(), next);
        if (type == GEOS_POLYGON)
            polygons.push_back(GEOSGeom_clone_r(geos.handle(), next));
        const int members = type == GEOS_POLYGON ? 0 : GEOSGetNumGeometries_r(geos.handle(), next);
        for (int i = 0; i < members && type >= GEOS_MULTIPOINT; ++i)
            pending.push_back(GEOSGetGeometryN_r(geos.handle(), next, i));
    }
    return GeosGeometry(GEOSGeom_createCollection_r(geos.handle(), GEOS_MULTIPOLYGON, polygons.data(),
                                                    static_cast<unsigned>(polygons.size())),
                        {geos.handle()});
}

/// @p region as GEOS knows it, valid; null where it has no area.
GeosGeometry areaOf(const Geos &geos, const CGeoRegion &region)
{
    GeosGeometry area(nullptr, {geos.handle()});
    const std::unique_ptr<OGRGeometry> polygons = OgrGeometry::toOgr(cleaned(region));
    if (!polygons || polygons->IsEmpty())
        return area;
    area.reset(polygons->exportToGEOS(geos.handle()));
    if (!area || GEOSisValid_r(geos.handle(), area.get()) == 1)
        return area;
    const GeosGeometry repaired(GEOSMakeValid_r(geos.handle(), area.get()), {geos.handle()});
    return repaired ? polygonsOf(geos, repaired.get()) : GeosGeometry(nullptr, {geos.handle()});
}

std::vector<const CGeoRegion *> regionsOf(const CElemGeometry *geometry)
{
    std::vector<const CGeoRegion *> regions;
    const auto take = [&](const CElemGeometry *element) {
        if (const auto *region = dynamic_cast<const CGeoRegion *>(element))
            regions.push_back(region);
    };
    if (const auto *compound = dynamic_cast<const CGeoCompound *>(geometry)) {
        for (const CElemGeometry *leaf : compound->GetLeaves())
            take(leaf);
    } else {
        take(geometry);
    }
    return regions;
}

/// True when the two rectangles share more than an edge.
bool overlap(const CRect2D &a, const CRect2D &b)
{
    return a.left < b.right && b.left < a.right && a.bottom < b.top && b.bottom < a.top;
}

/// A region of the second geometry, made an area of GEOS when one of the first comes near it.
struct Other
{
    const CGeoRegion *region;
    CRect2D bounds;
    GeosGeometry area;
    bool isMade = false;
};

} // namespace

bool CTxSpatialOperators::IsAreaIntersect(const CElemGeometry *a, const CElemGeometry *b)
{
    if (!a || !b || !overlap(a->GetBounds(), b->GetBounds()))
        return false;
    const TxGdal::ErrorCollector errors;
    const Geos geos;
    std::vector<Other> others;
    for (const CGeoRegion *region : regionsOf(b))
        others.push_back({region, region->GetBounds(), GeosGeometry(nullptr, {geos.handle()})});
    for (const CGeoRegion *region : regionsOf(a)) {
        const CRect2D bounds = region->GetBounds();
        GeosGeometry area(nullptr, {geos.handle()});
        bool isMade = false;
        for (Other &other : others) {
            if (!overlap(bounds, other.bounds))
                continue;
            if (!std::exchange(isMade, true))
                area = areaOf(geos, *region);
            if (!std::exchange(other.isMade, true))
                other.area = areaOf(geos, *other.region);
            constexpr char interiorsMeet[] = "T********"; // of the nine intersections, the first
            if (area && other.area &&
                GEOSRelatePattern_r(geos.handle(), area.get(), other.area.get(), interiorsMeet) == 1)
                return true;
        }
    }
    return false;
}
