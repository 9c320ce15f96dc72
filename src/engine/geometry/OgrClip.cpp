#include "engine/geometry/OgrClip.h"

#include "engine/base/TxGdal.h"

#include <ogr_geometry.h>

#include <utility>

namespace {

/// The part of the segment from parameter 0 to 1 that lies in a rectangle (Liang and Barsky's algorithm).
struct Interval
{
    double from = 0.0;
    double to = 1.0;

    /// Keeps the side where @p distance + t * @p slope is not negative. @return false when nothing is left.
    bool keep(double distance, double slope)
    {
        if (slope == 0.0)
            return distance >= 0.0;
        const double at = -distance / slope;
        if (slope > 0.0)
            from = std::max(from, at);
        else
            to = std::min(to, at);
        return from <= to;
    }
};

class LineClipper
{
public:
    LineClipper(const OGRLineString &line, const CRect2D &bounds) : m_line(line), m_bounds(bounds) {}

    /// Adds the pieces to @p pieces.
    void run(OGRMultiLineString &pieces)
    {
        for (int i = 1; i < m_line.getNumPoints(); ++i) {
            m_line.getPoint(i - 1, &m_a);
            m_line.getPoint(i, &m_b);
            Interval inside;
            const double dx = m_b.getX() - m_a.getX();
            const double dy = m_b.getY() - m_a.getY();
            const bool meets =
                inside.keep(m_a.getX() - m_bounds.left, dx) && inside.keep(m_bounds.right - m_a.getX(), -dx) &&
                inside.keep(m_a.getY() - m_bounds.bottom, dy) && inside.keep(m_bounds.top - m_a.getY(), -dy);
            if (!meets) {
                finish(pieces);
                continue;
            }
            if (inside.from > 0.0)
                finish(pieces);
            if (!m_piece)
                add(inside.from);
            add(inside.to);
            if (inside.to < 1.0)
                finish(pieces);
        }
        finish(pieces);
    }

private:
    void add(double t)
    {
        if (!m_piece) {
            m_piece = std::make_unique<OGRLineString>();
            m_piece->set3D(m_line.Is3D());
            m_piece->setMeasured(m_line.IsMeasured());
        }
        OGRPoint point = t <= 0.0 ? m_a : m_b;
        if (t > 0.0 && t < 1.0) {
            const auto between = [t](double a, double b) { return a + t * (b - a); };
            // On the edge itself, whatever the arithmetic leaves.
            point.setX(std::clamp(between(m_a.getX(), m_b.getX()), m_bounds.left, m_bounds.right));
            point.setY(std::clamp(between(m_a.getY(), m_b.getY()), m_bounds.bottom, m_bounds.top));
            if (m_line.Is3D())
                point.setZ(between(m_a.getZ(), m_b.getZ()));
            if (m_line.IsMeasured())
                point.setM(between(m_a.getM(), m_b.getM()));
        }
        m_piece->addPoint(&point);
    }

    void finish(OGRMultiLineString &pieces)
    {
        if (m_piece && m_piece->get_Length() > 0.0)
            pieces.addGeometryDirectly(m_piece.release());
        m_piece.reset();
    }

    const OGRLineString &m_line;
    const CRect2D &m_bounds;
    OGRPoint m_a, m_b; // the ends of the segment
    std::unique_ptr<OGRLineString> m_piece;
};

std::unique_ptr<OGRGeometry> unlessEmpty(std::unique_ptr<OGRGeometryCollection> collection)
{
    return collection->IsEmpty() ? nullptr : std::move(collection);
}

std::unique_ptr<OGRGeometry> clippedLine(const OGRLineString &line, const CRect2D &bounds)
{
    auto pieces = std::make_unique<OGRMultiLineString>();
    LineClipper(line, bounds).run(*pieces);
    return unlessEmpty(std::move(pieces));
}

/// Moves the polygons of @p from to @p to.
void gatherPolygons(const OGRGeometry &from, OGRMultiPolygon &to)
{
    if (wkbFlatten(from.getGeometryType()) == wkbPolygon) {
        if (!from.IsEmpty())
            to.addGeometry(&from);
    } else if (OGR_GT_IsSubClassOf(from.getGeometryType(), wkbGeometryCollection)) {
        for (const OGRGeometry *member : *from.toGeometryCollection())
            gatherPolygons(*member, to);
    }
}

std::unique_ptr<OGRGeometry> clippedArea(const OGRGeometry &area, const CRect2D &bounds, bool &failed)
{
    OGRLinearRing ring;
    ring.addPoint(bounds.left, bounds.bottom);
    ring.addPoint(bounds.right, bounds.bottom);
    ring.addPoint(bounds.right, bounds.top);
    ring.addPoint(bounds.left, bounds.top);
    ring.closeRings();
    OGRPolygon window;
    window.addRing(&ring);

    const TxGdal::ErrorCollector errors; // a self-crossing ring is told by GEOS first, and mended then
    const bool isSurface = OGR_GT_IsSubClassOf(area.getGeometryType(), wkbPolyhedralSurface);
    const std::unique_ptr<OGRGeometry> faces(isSurface ? OGRGeometryFactory::forceToMultiPolygon(area.clone())
                                                       : nullptr);
    const OGRGeometry &plain = faces ? *faces : area;
    std::unique_ptr<OGRGeometry> cut(plain.Intersection(&window));
    if (!cut) {
        const std::unique_ptr<OGRGeometry> mended(plain.MakeValid());
        cut.reset(mended ? mended->Intersection(&window) : nullptr);
    }
    failed = failed || !cut;
    auto pieces = std::make_unique<OGRMultiPolygon>();
    if (cut)
        gatherPolygons(*cut, *pieces);
    if (area.Is3D())
        pieces->set3D(TRUE);
    return unlessEmpty(std::move(pieces));
}

} // namespace

std::unique_ptr<OGRGeometry> OgrClip::toRectangle(const OGRGeometry &geometry, const CRect2D &bounds, bool &failed)
{
    OGREnvelope box;
    geometry.getEnvelope(&box);
    const CRect2D extent(box.MinX, box.MinY, box.MaxX, box.MaxY);
    if (geometry.IsEmpty() || !extent.Intersects(bounds))
        return nullptr;
    if (bounds.Contains({extent.left, extent.bottom}) && bounds.Contains({extent.right, extent.top}))
        return std::unique_ptr<OGRGeometry>(geometry.clone());
    const OGRwkbGeometryType type = wkbFlatten(geometry.getGeometryType());
    if (type == wkbLineString)
        return clippedLine(*geometry.toLineString(), bounds);
    if (OGR_GT_IsSurface(type) || type == wkbMultiPolygon)
        return clippedArea(geometry, bounds, failed);
    if (!OGR_GT_IsSubClassOf(type, wkbGeometryCollection))
        return nullptr; // a point beside it
    std::unique_ptr<OGRGeometryCollection> rest(OGRGeometryFactory::createGeometry(type)->toGeometryCollection());
    for (const OGRGeometry *member : *geometry.toGeometryCollection()) {
        std::unique_ptr<OGRGeometry> left = toRectangle(*member, bounds, failed);
        if (failed)
            return nullptr;
        if (left && type == wkbMultiLineString && wkbFlatten(left->getGeometryType()) == wkbMultiLineString) {
            for (const OGRGeometry *piece : *left->toGeometryCollection())
                rest->addGeometry(piece);
        } else if (left) {
            rest->addGeometryDirectly(left.release());
        }
    }
    return unlessEmpty(std::move(rest));
}
