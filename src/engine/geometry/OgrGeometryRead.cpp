#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/OgrGeometry.h"

#include <ogr_geometry.h>

#include <type_traits>
#include <vector>

namespace {

/// The vertices of one OGR curve in the layout of the engine's elements.
struct Vertices
{
    std::vector<CPoint2D> points;
    std::vector<double> zs;
    std::vector<double> ms;

    explicit Vertices(const OGRSimpleCurve &curve)
    {
        const auto count = static_cast<size_t>(curve.getNumPoints());
        points.resize(count);
        if (curve.Is3D())
            zs.resize(count);
        if (curve.IsMeasured())
            ms.resize(count);
        if (count == 0)
            return;
        constexpr int pointStride = sizeof(CPoint2D);
        constexpr int valueStride = sizeof(double);
        curve.getPoints(&points[0].x, pointStride, &points[0].y, pointStride, z(), valueStride, m(), valueStride);
    }

    qint32 count() const { return static_cast<qint32>(points.size()); }
    double *z() { return zs.empty() ? nullptr : zs.data(); }
    double *m() { return ms.empty() ? nullptr : ms.data(); }
};

std::unique_ptr<CGeoPoint> readPoint(const OGRPoint &point)
{
    if (point.IsEmpty()) {
        auto empty = std::make_unique<CGeoPoint>();
        if (point.Is3D())
            empty->SetZ(0.0);
        return empty;
    }
    auto made = std::make_unique<CGeoPoint>(point.getX(), point.getY());
    if (point.Is3D())
        made->SetZ(point.getZ());
    if (point.IsMeasured())
        made->SetM(point.getM());
    return made;
}

std::unique_ptr<CElemGeometry> readMultiPoint(const OGRMultiPoint &points)
{
    if (points.getNumGeometries() == 1)
        return readPoint(*points.getGeometryRef(0));
    auto compound = std::make_unique<CGeoCompound>();
    for (const OGRPoint *point : points) {
        if (!point->IsEmpty())
            compound->AddGeometry(readPoint(*point));
    }
    return compound;
}

void addPart(CGeoLine &line, const OGRSimpleCurve &curve)
{
    Vertices part(curve);
    line.AddSubPolyline(part.points.data(), part.count(), part.z(), part.m());
}

void addPart(CGeoRegion &region, const OGRPolygon &polygon)
{
    bool outer = true;
    for (const OGRLinearRing *ring : polygon) {
        Vertices part(*ring);
        if (outer && part.count() == 0)
            return; // holes of nothing
        if (outer)
            region.AddSubPolygon(part.points.data(), part.count(), part.z(), part.m());
        else
            region.AddHole(part.points.data(), part.count(), part.z(), part.m());
        outer = false;
    }
}

/// Gives an element without points the dimensions of its source; the others have them from their points.
template<class Parts>
std::unique_ptr<CElemGeometry> finished(std::unique_ptr<Parts> parts, const OGRGeometry &source)
{
    if (source.Is3D())
        parts->SetHasZ(true);
    if (source.IsMeasured())
        parts->SetHasM(true);
    return parts;
}

/// Makes one element of a part or of a collection of parts.
template<class Element, class Source>
std::unique_ptr<CElemGeometry> readParts(const Source &source)
{
    auto element = std::make_unique<Element>();
    if constexpr (std::is_base_of_v<OGRGeometryCollection, Source>) {
        for (const auto *part : source)
            addPart(*element, *part);
    } else {
        addPart(*element, source);
    }
    return finished(std::move(element), source);
}

std::unique_ptr<CElemGeometry> readFaces(const OGRPolyhedralSurface &surface)
{
    auto region = std::make_unique<CGeoRegion>();
    for (const OGRPolygon *face : surface)
        addPart(*region, *face);
    region->SetHasZ(true);
    return finished(std::move(region), surface);
}

/// Reads everything but collections.
std::unique_ptr<CElemGeometry> readSimple(const OGRGeometry &source)
{
    switch (wkbFlatten(source.getGeometryType())) {
    case wkbPoint:
        return readPoint(*source.toPoint());
    case wkbMultiPoint:
        return readMultiPoint(*source.toMultiPoint());
    case wkbLineString:
        return readParts<CGeoLine>(*source.toLineString());
    case wkbMultiLineString:
        return readParts<CGeoLine>(*source.toMultiLineString());
    case wkbPolygon:
    case wkbTriangle:
        return readParts<CGeoRegion>(*source.toPolygon());
    case wkbMultiPolygon:
        return readParts<CGeoRegion>(*source.toMultiPolygon());
    case wkbPolyhedralSurface:
    case wkbTIN:
        return readFaces(*source.toPolyhedralSurface());
    default: { // the curve types; their linear form is one of the above
        const std::unique_ptr<OGRGeometry> linear(source.getLinearGeometry());
        const bool plain = linear && !OGR_GT_IsNonLinear(linear->getGeometryType());
        return plain ? OgrGeometry::fromOgr(linear.get()) : nullptr;
    }
    }
}

} // namespace

std::unique_ptr<CElemGeometry> OgrGeometry::fromOgr(const OGRGeometry *geometry)
{
    if (!geometry)
        return nullptr;
    if (wkbFlatten(geometry->getGeometryType()) != wkbGeometryCollection)
        return readSimple(*geometry);

    auto root = std::make_unique<CGeoCompound>();
    struct Pair
    {
        const OGRGeometryCollection *source;
        CGeoCompound *target;
    };
    std::vector<Pair> pending = {{geometry->toGeometryCollection(), root.get()}};
    while (!pending.empty()) {
        const Pair pair = pending.back();
        pending.pop_back();
        for (const OGRGeometry *member : *pair.source) {
            if (wkbFlatten(member->getGeometryType()) == wkbGeometryCollection) {
                auto inner = std::make_unique<CGeoCompound>();
                pending.push_back({member->toGeometryCollection(), inner.get()});
                pair.target->AddGeometry(std::move(inner));
            } else if (!member->IsEmpty()) {
                pair.target->AddGeometry(readSimple(*member));
            }
        }
    }
    return root;
}
