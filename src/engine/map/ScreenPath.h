#pragma once

#include "engine/base/TxExport.h"
#include "engine/map/MapView.h"

#include <QPolygonF>
#include <QRectF>

#include <memory>
#include <span>
#include <vector>

class TxReprojector;

/// Takes the points of geometries to pixels, for drawing: reprojects them, leaves out vertices that nobody could tell
/// from the one before, and cuts off what lies far outside the window (rasterisers get slow and wrong at coordinates
/// in the millions).
class TX_EXPORT ScreenPath
{
public:
    /// @p tolerance is the distance in pixels below which a vertex is left out, @p room how many pixels beyond the
    /// window wide lines may reach in from.
    ScreenPath(const MapView &view, std::shared_ptr<const TxReprojector> reprojector, double tolerance,
               double room = 64.0);

    const MapView &view() const { return m_view; }
    /// The place of one point; coordinates are NaN where there is none.
    QPointF point(const CPoint2D &point);
    /// The pieces of a line that are to be drawn, valid until the next call.
    const std::vector<QPolygonF> &line(std::span<const CPoint2D> points);
    /// The ring to be drawn, closed; empty when there is nothing to see. Valid until the next call.
    const QPolygonF &ring(std::span<const CPoint2D> points);
    /// What the last ring covers when it is not cut.
    QRectF ringBounds() const { return m_ringBounds; }
    /// The points of a line in one piece that nothing is cut off, for patterns that begin where the line does; empty
    /// when nothing of it is seen. Points without a place have NaN coordinates. Valid until the next call.
    const QPolygonF &whole(std::span<const CPoint2D> points);

private:
    /// The points in pixels, thinned; points without a place have NaN coordinates.
    void project(std::span<const CPoint2D> points);
    void cutLine(const QPolygonF &line);
    QRectF boundsOfProjected() const;
    bool isNearWindow(const QRectF &bounds) const;

    MapView m_view;
    std::shared_ptr<const TxReprojector> m_reprojector;
    double m_tolerance;
    QRectF m_window; // what is drawn, with room for wide lines
    std::vector<CPoint2D> m_scratch;
    QPolygonF m_projected;
    QPolygonF m_ring;
    QRectF m_ringBounds;
    std::vector<QPolygonF> m_pieces;
};
