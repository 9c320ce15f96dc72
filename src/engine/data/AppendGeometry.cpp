#include "engine/data/AppendGeometry.h"

#include "engine/geometry/OgrClip.h"
#include "engine/geometry/OgrGeometry.h"
#include "engine/projection/TxReprojector.h"

#include <cmath>
#include <vector>

namespace {

/// What a geometry consists of.
enum class Family { Points, Lines, Areas, Mixed };

Family familyOf(OGRwkbGeometryType type)
{
    const OGRwkbGeometryType flat = wkbFlatten(type);
    if (flat == wkbPoint || flat == wkbMultiPoint)
        return Family::Points;
    if (OGR_GT_IsCurve(flat) || OGR_GT_IsSubClassOf(flat, wkbMultiCurve))
        return Family::Lines;
    if (OGR_GT_IsSurface(flat) || OGR_GT_IsSubClassOf(flat, wkbMultiSurface))
        return Family::Areas;
    return Family::Mixed;
}

QString nameOf(Family family)
{
    switch (family) {
    case Family::Points:
        return QStringLiteral("a point");
    case Family::Lines:
        return QStringLiteral("a line");
    case Family::Areas:
        return QStringLiteral("a region");
    case Family::Mixed:
        break;
    }
    return QStringLiteral("a compound");
}

/// Calls @p visit for every simple curve and point of @p geometry.
template<class OnCurve, class OnPoint>
void forEachPart(OGRGeometry &geometry, OnCurve onCurve, OnPoint onPoint)
{
    struct Visitor : OGRDefaultGeometryVisitor
    {
        Visitor(OnCurve &curveCall, OnPoint &pointCall) : m_onCurve(curveCall), m_onPoint(pointCall) {}
        void visit(OGRPoint *point) override { m_onPoint(*point); }
        void visit(OGRLineString *line) override { m_onCurve(*line); }
        void visit(OGRLinearRing *ring) override { m_onCurve(*ring); }
        void visit(OGRCircularString *arc) override { m_onCurve(*arc); }
        using OGRDefaultGeometryVisitor::visit;
        OnCurve &m_onCurve;
        OnPoint &m_onPoint;
    };
    Visitor visitor(onCurve, onPoint);
    geometry.accept(&visitor);
}

} // namespace

AppendGeometry::AppendGeometry(const OGRFeatureDefn &layer, bool takesParts, const TxReprojector *reprojector,
                               const CRect2D &bounds)
    : m_layer(layer), m_takesParts(takesParts), m_reprojector(reprojector), m_bounds(bounds)
{
}

AppendGeometry::Result AppendGeometry::fit(std::unique_ptr<OGRGeometry> &geometry)
{
    m_type = m_layer.GetGeomType();
    if (m_type == wkbNone)
        geometry.reset();
    if (!geometry)
        return Result::Fits;
    if (geometry->hasCurveGeometry(TRUE))
        geometry.reset(geometry->getLinearGeometry());
    const Family wanted = familyOf(m_type);
    const Family given = geometry ? familyOf(geometry->getGeometryType()) : wanted;
    if (wanted != Family::Mixed && given != Family::Mixed && given != wanted && !geometry->IsEmpty()) {
        m_reason = QStringLiteral("is %1, not %2").arg(nameOf(given), nameOf(wanted));
        return Result::Refused;
    }
    if (m_reprojector && geometry && !reproject(*geometry))
        return Result::Refused;
    if (!m_bounds.IsVoid()) {
        if (!clip(geometry))
            return Result::Refused;
        if (!geometry)
            return Result::Outside;
    }
    return adapt(geometry) ? Result::Fits : Result::Refused;
}

bool AppendGeometry::reproject(OGRGeometry &geometry)
{
    bool done = true;
    std::vector<CPoint2D> points;
    static_assert(sizeof(CPoint2D) == 2 * sizeof(double));
    forEachPart(
        geometry,
        [&](OGRSimpleCurve &curve) {
            const int count = curve.getNumPoints();
            points.resize(static_cast<size_t>(count));
            if (count == 0)
                return;
            curve.getPoints(&points[0].x, sizeof(CPoint2D), &points[0].y, sizeof(CPoint2D));
            done = m_reprojector->transform(points) && done;
            for (int i = 0; i < count; ++i) // heights and measures stay
                curve.setPoint(i, points[static_cast<size_t>(i)].x, points[static_cast<size_t>(i)].y);
        },
        [&](OGRPoint &point) {
            if (point.IsEmpty())
                return;
            CPoint2D place(point.getX(), point.getY());
            done = m_reprojector->transform(std::span(&place, 1)) && done;
            point.setX(place.x);
            point.setY(place.y);
        });
    if (!done)
        m_reason = QStringLiteral("lies where the coordinate system of the target has no place for it");
    return done;
}

bool AppendGeometry::clip(std::unique_ptr<OGRGeometry> &geometry)
{
    if (geometry->IsEmpty()) {
        geometry.reset();
        return true;
    }
    OGREnvelope box;
    geometry->getEnvelope(&box);
    const CRect2D extent(box.MinX, box.MinY, box.MaxX, box.MaxY);
    if (!extent.Intersects(m_bounds)) {
        geometry.reset();
        return true;
    }
    if (m_bounds.Contains({extent.left, extent.bottom}) && m_bounds.Contains({extent.right, extent.top}))
        return true;
    bool failed = false;
    geometry = OgrClip::toRectangle(*geometry, m_bounds, failed);
    if (failed)
        m_reason = QStringLiteral("cannot be cut at the edge of the rectangle");
    return !failed;
}

bool AppendGeometry::adapt(std::unique_ptr<OGRGeometry> &geometry)
{
    const OGRwkbGeometryType wanted = wkbFlatten(m_type);
    if (wanted == wkbUnknown)
        return true;
    const OGRwkbGeometryType given = wkbFlatten(geometry->getGeometryType());
    if (given == wanted) {
        // as it is, but for its dimensions
    } else if (wanted == OGR_GT_GetCollection(given)) {
        std::unique_ptr<OGRGeometry> many(OGRGeometryFactory::createGeometry(wanted));
        if (!geometry->IsEmpty())
            many->toGeometryCollection()->addGeometryDirectly(geometry.release());
        geometry = std::move(many);
    } else if (given == OGR_GT_GetCollection(wanted) &&
               (m_takesParts || geometry->toGeometryCollection()->getNumGeometries() == 1)) {
        if (!m_takesParts) {
            OGRGeometryCollection &parts = *geometry->toGeometryCollection();
            std::unique_ptr<OGRGeometry> only(parts.getGeometryRef(0));
            parts.removeGeometry(0, FALSE);
            geometry = std::move(only);
        }
    } else { // surfaces, collections: by way of the engine's elements
        const std::unique_ptr<CElemGeometry> element = OgrGeometry::fromOgr(geometry.get());
        std::unique_ptr<OGRGeometry> made = element ? OgrGeometry::toOgr(*element, m_type) : nullptr;
        const bool hasParts = made && OGR_GT_IsSubClassOf(made->getGeometryType(), wkbGeometryCollection) &&
                              !OGR_GT_IsSubClassOf(wanted, wkbGeometryCollection);
        if (!made || (hasParts && !m_takesParts)) {
            m_reason = made ? QStringLiteral("has several parts, and the target keeps one")
                            : QStringLiteral("has no form in the target");
            return false;
        }
        geometry = std::move(made);
    }
    if (wanted != wkbGeometryCollection) {
        geometry->set3D(OGR_GT_HasZ(m_type));
        geometry->setMeasured(OGR_GT_HasM(m_type));
    }
    return true;
}
