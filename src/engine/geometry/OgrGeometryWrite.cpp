#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/OgrGeometry.h"

#include <ogr_geometry.h>

#include <vector>

namespace {

static_assert(sizeof(CPoint2D) == sizeof(OGRRawPoint));

/// Copies @p count points, beginning with number @p first of @p parts, into an OGR curve.
void setPoints(OGRSimpleCurve &curve, const CGeoParts &parts, qint32 first, qint32 count)
{
    const auto *points = reinterpret_cast<const OGRRawPoint *>(parts.GetPoints() + first);
    const double *zs = parts.GetZs() ? parts.GetZs() + first : nullptr;
    const double *ms = parts.GetMs() ? parts.GetMs() + first : nullptr;
    if (zs && ms)
        curve.setPoints(count, points, zs, ms);
    else if (ms)
        curve.setPointsM(count, points, ms);
    else
        curve.setPoints(count, points, zs);
}

std::unique_ptr<OGRGeometry> writePoint(const CGeoPoint &point)
{
    auto made = std::make_unique<OGRPoint>();
    if (!point.IsEmpty()) {
        made->setX(point.GetPoint().x);
        made->setY(point.GetPoint().y);
    }
    if (point.GetZ() && !point.IsEmpty())
        made->setZ(*point.GetZ());
    else if (point.GetZ())
        made->set3D(TRUE);
    if (point.GetM() && !point.IsEmpty())
        made->setM(*point.GetM());
    return made;
}

std::unique_ptr<OGRGeometry> writeLine(const CGeoLine &line)
{
    auto lines = std::make_unique<OGRMultiLineString>();
    qint32 first = 0;
    for (const qint32 count : line.GetPolyCounts()) {
        auto part = std::make_unique<OGRLineString>();
        setPoints(*part, line, first, count);
        first += count;
        if (line.GetPartCount() == 1)
            return part;
        lines->addGeometryDirectly(part.release());
    }
    if (line.GetPartCount() == 0)
        return std::make_unique<OGRLineString>();
    return lines;
}

/// The outer rings of @p region with their holes, one @p Face each, added to @p faces.
template<class Face>
void writeFaces(const CGeoRegion &region, std::vector<std::unique_ptr<Face>> &faces)
{
    qint32 first = 0;
    for (qint32 part = 0; part < region.GetPartCount(); ++part) {
        const qint32 count = region.GetPolyCounts().at(part);
        auto ring = std::make_unique<OGRLinearRing>();
        setPoints(*ring, region, first, count);
        first += count;
        if (!region.IsHole(part))
            faces.push_back(std::make_unique<Face>());
        faces.back()->addRingDirectly(ring.release());
    }
}

std::unique_ptr<OGRGeometry> writeRegion(const CGeoRegion &region)
{
    std::vector<std::unique_ptr<OGRPolygon>> faces;
    writeFaces(region, faces);
    if (faces.empty())
        return std::make_unique<OGRPolygon>();
    if (faces.size() == 1)
        return std::move(faces.front());
    auto polygons = std::make_unique<OGRMultiPolygon>();
    for (std::unique_ptr<OGRPolygon> &face : faces)
        polygons->addGeometryDirectly(face.release());
    return polygons;
}

/// @p region as a surface of faces; null where a TIN is wanted and a face is no triangle.
std::unique_ptr<OGRGeometry> writeSurface(const CGeoRegion &region, bool triangles)
{
    std::vector<std::unique_ptr<OGRPolygon>> faces;
    writeFaces(region, faces);
    std::unique_ptr<OGRPolyhedralSurface> surface;
    if (triangles)
        surface = std::make_unique<OGRTriangulatedSurface>();
    else
        surface = std::make_unique<OGRPolyhedralSurface>();
    for (const std::unique_ptr<OGRPolygon> &face : faces) {
        OGRErr status = OGRERR_NONE;
        if (triangles) {
            if (face->getNumInteriorRings() > 0 || face->getExteriorRing()->getNumPoints() != 4)
                return nullptr;
            const OGRTriangle triangle(*face, status);
            if (status == OGRERR_NONE)
                status = surface->addGeometry(&triangle);
        } else {
            status = surface->addGeometry(face.get());
        }
        if (status != OGRERR_NONE)
            return nullptr;
    }
    return surface;
}

std::unique_ptr<OGRGeometry> writeSimple(const CElemGeometry &geometry)
{
    switch (geometry.GetType()) {
    case CElemGeometry::Point:
    case CElemGeometry::Point3D:
        return writePoint(static_cast<const CGeoPoint &>(geometry));
    case CElemGeometry::Line:
    case CElemGeometry::Line3D:
        return writeLine(static_cast<const CGeoLine &>(geometry));
    case CElemGeometry::Region:
    case CElemGeometry::Region3D:
        return writeRegion(static_cast<const CGeoRegion &>(geometry));
    case CElemGeometry::Text:
    case CElemGeometry::Text3D:
        return writePoint(static_cast<const CGeoText &>(geometry).GetAnchor());
    case CElemGeometry::Compound:
        break;
    }
    return nullptr;
}

/// @p compound, which is not nested too deep, as a collection.
std::unique_ptr<OGRGeometry> writeCompound(const CGeoCompound &compound)
{
    auto root = std::make_unique<OGRGeometryCollection>();
    struct Step
    {
        const CGeoCompound *source;
        OGRGeometryCollection *target;
    };
    std::vector<Step> pending = {{&compound, root.get()}};
    bool spatial = false;
    bool measured = false;
    while (!pending.empty()) {
        const Step step = pending.back();
        pending.pop_back();
        for (qint32 i = 0; i < step.source->GetGeometryCount(); ++i) {
            const CElemGeometry &member = *step.source->GetGeometry(i);
            if (member.GetType() != CElemGeometry::Compound) {
                std::unique_ptr<OGRGeometry> made = writeSimple(member);
                spatial = spatial || made->Is3D();
                measured = measured || made->IsMeasured();
                step.target->addGeometryDirectly(made.release());
                continue;
            }
            auto *made = new OGRGeometryCollection; // the target's from the next line on
            step.target->addGeometryDirectly(made);
            pending.push_back({static_cast<const CGeoCompound *>(&member), made});
        }
    }
    if (spatial)
        root->set3D(TRUE);
    if (measured)
        root->setMeasured(TRUE);
    return root;
}

/// What a geometry type holds: 0 points, 1 lines, 2 areas, -1 anything.
int familyOf(OGRwkbGeometryType type)
{
    switch (wkbFlatten(type)) {
    case wkbPoint:
    case wkbMultiPoint:
        return 0;
    case wkbGeometryCollection:
    case wkbUnknown:
        return -1;
    default:
        if (OGR_GT_IsCurve(type) || OGR_GT_IsSubClassOf(type, wkbMultiCurve))
            return 1;
        return 2;
    }
}

/// The leaves of @p compound as one multi geometry of @p type; null when one does not belong there.
std::unique_ptr<OGRGeometry> gathered(const CGeoCompound &compound, OGRwkbGeometryType type)
{
    std::unique_ptr<OGRGeometry> made(OGRGeometryFactory::createGeometry(type));
    OGRGeometryCollection *target = made->toGeometryCollection();
    for (const CElemGeometry *leaf : compound.GetLeaves()) {
        std::unique_ptr<OGRGeometry> member = writeSimple(*leaf);
        const OGRwkbGeometryType memberType = wkbFlatten(member->getGeometryType());
        if (familyOf(memberType) != familyOf(type))
            return nullptr;
        if (OGR_GT_IsSubClassOf(memberType, wkbGeometryCollection)) {
            for (const OGRGeometry *part : *member->toGeometryCollection())
                target->addGeometry(part);
        } else if (!member->IsEmpty()) {
            target->addGeometryDirectly(member.release());
        }
    }
    return made;
}

/// Gives @p geometry the dimensions of a layer of type @p target.
void adaptDimensions(OGRGeometry &geometry, OGRwkbGeometryType target)
{
    geometry.set3D(OGR_GT_HasZ(target) ? TRUE : FALSE);
    geometry.setMeasured(OGR_GT_HasM(target) ? TRUE : FALSE);
}

} // namespace

bool OgrGeometry::isNestedTooDeep(const CElemGeometry &geometry)
{
    if (geometry.GetType() != CElemGeometry::Compound)
        return false;
    struct Step
    {
        const CGeoCompound *compound;
        int depth;
    };
    std::vector<Step> pending = {{static_cast<const CGeoCompound *>(&geometry), 1}};
    while (!pending.empty()) {
        const Step step = pending.back();
        pending.pop_back();
        if (step.depth > maximumDepth)
            return true;
        for (qint32 i = 0; i < step.compound->GetGeometryCount(); ++i) {
            const CElemGeometry *member = step.compound->GetGeometry(i);
            if (member->GetType() == CElemGeometry::Compound)
                pending.push_back({static_cast<const CGeoCompound *>(member), step.depth + 1});
        }
    }
    return false;
}

std::unique_ptr<OGRGeometry> OgrGeometry::toOgr(const CElemGeometry &geometry, OGRwkbGeometryType target)
{
    static constexpr OGRwkbGeometryType multiTypes[] = {wkbMultiPoint, wkbMultiLineString, wkbMultiPolygon};
    const OGRwkbGeometryType wanted = wkbFlatten(target);
    const int family = familyOf(target);
    const bool isCompound = geometry.GetType() == CElemGeometry::Compound;
    const bool isRegion = geometry.GetType() == CElemGeometry::Region || geometry.GetType() == CElemGeometry::Region3D;
    std::unique_ptr<OGRGeometry> made;
    if (isRegion && (wanted == wkbTIN || wanted == wkbPolyhedralSurface))
        made = writeSurface(static_cast<const CGeoRegion &>(geometry), wanted == wkbTIN);
    else if (isCompound && family >= 0)
        made = gathered(static_cast<const CGeoCompound &>(geometry), multiTypes[family]);
    else if (isCompound && !isNestedTooDeep(geometry))
        made = writeCompound(static_cast<const CGeoCompound &>(geometry));
    else if (!isCompound)
        made = writeSimple(geometry);
    if (!made || wanted == wkbUnknown || target == wkbNone)
        return target == wkbNone ? nullptr : std::move(made);
    if (family >= 0 && familyOf(made->getGeometryType()) != family)
        return nullptr;

    const bool wantsMany = OGR_GT_IsSubClassOf(wanted, wkbGeometryCollection);
    if (wantsMany && !OGR_GT_IsSubClassOf(wkbFlatten(made->getGeometryType()), wkbGeometryCollection)) {
        auto many = std::unique_ptr<OGRGeometry>(
            OGRGeometryFactory::createGeometry(family < 0 ? wkbGeometryCollection : multiTypes[family]));
        if (!made->IsEmpty())
            many->toGeometryCollection()->addGeometryDirectly(made.release());
        made = std::move(many);
    }
    if (family >= 0)
        adaptDimensions(*made, target);
    return made;
}
