#pragma once

#include <QLineF>
#include <QList>
#include <QPen>

class QPainter;
class QPolygonF;

/// Strokes lines as QPainter::drawPolyline() does, and joins the ends of closed ones.
///
/// On pixels the opaque pens of more than a pixel go segment by segment: QPainter draws single segments in a tenth of
/// the time that it needs for the outline of a whole stroke. Each reaches as far beyond its corners as makes the sides
/// of both meet, so that together they cover what the mitred stroke does; sharper corners are drawn by QPainter.
class LineStroker
{
public:
    /// @param pen a solid one with flat caps and mitred joins, or with both of them round
    LineStroker(QPainter &painter, const QPen &pen);
    /// Draws what is not drawn yet. The painter has a pen of the stroker's then.
    ~LineStroker();
    LineStroker(const LineStroker &) = delete;
    LineStroker &operator=(const LineStroker &) = delete;

    void add(const QPolygonF &line);

private:
    void addCorner(const QPointF &before, const QPointF &corner, const QPointF &after);
    void addEnd(const QPointF &end);
    void flush();

    QPainter &m_painter;
    QPen m_pen;
    double m_pixels; // the width of the pen
    bool m_isQuick;
    QList<QLineF> m_segments; // of equal colour: drawn in any order
};
