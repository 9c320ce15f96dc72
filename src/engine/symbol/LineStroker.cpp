#include "engine/symbol/LineStroker.h"

#include "engine/symbol/LineGeometry.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace {

/// By how many pixels a corner or an end may stand out from a round one.
constexpr double roundTolerance = 0.3;
/// The widest pen, in pixels, whose round ends are drawn square, of the same area.
constexpr double widestSquareEnd = 2.5;
/// How many segments wait to be drawn at a time.
constexpr qsizetype mostWaiting = 1024;

QPointF direction(const QPointF &from, const QPointF &to)
{
    const QPointF step = to - from;
    return step / std::hypot(step.x(), step.y());
}

} // namespace

LineStroker::LineStroker(QPainter &painter, const QPen &pen) : m_painter(painter), m_pen(pen)
{
    m_pixels = pen.widthF() * std::sqrt(std::abs(painter.deviceTransform().determinant()));
    m_isQuick = painter.paintEngine()->type() == QPaintEngine::Raster && pen.color().alpha() == 255 && m_pixels > 1.001;
    painter.setPen(pen);
}

LineStroker::~LineStroker()
{
    flush();
}

void LineStroker::flush()
{
    if (m_segments.isEmpty())
        return;
    QPen pen = m_pen;
    pen.setCapStyle(Qt::FlatCap);
    m_painter.setPen(pen);
    m_painter.drawLines(m_segments);
    m_painter.setPen(m_pen);
    m_segments.clear();
}

void LineStroker::addCorner(const QPointF &before, const QPointF &corner, const QPointF &after)
{
    const auto near = [&](const QPointF &end) {
        const double length = std::hypot(end.x() - corner.x(), end.y() - corner.y());
        return corner + (end - corner) * std::min(1.0, m_pen.widthF() / length);
    };
    const QPointF points[] = {near(before), corner, near(after)};
    QPen pen = m_pen;
    pen.setCapStyle(Qt::FlatCap);
    m_painter.setPen(pen);
    m_painter.drawPolyline(points, 3);
    m_painter.setPen(m_pen);
}

void LineStroker::addEnd(const QPointF &end)
{
    if (m_pen.capStyle() == Qt::RoundCap && m_pixels > widestSquareEnd)
        m_painter.drawPoint(end);
}

void LineStroker::add(const QPolygonF &line)
{
    const bool isClosed = line.size() > 3 && line.isClosed();
    if (!m_isQuick) {
        if (isClosed) {
            QPainterPath path;
            path.addPolygon(line);
            path.closeSubpath();
            m_painter.strokePath(path, m_pen);
        } else {
            m_painter.drawPolyline(line);
        }
        return;
    }
    const QPolygonF points = LineGeometry::withoutRepetitions(line);
    const qsizetype last = points.size() - 1;
    if (last < 1) {
        m_painter.drawPolyline(line); // a line without length is a dot, or nothing
        return;
    }
    const double half = m_pen.widthF() / 2;
    const bool isRound = m_pen.capStyle() == Qt::RoundCap;
    const double endReach = isRound && m_pixels <= widestSquareEnd ? half * M_PI_4 : 0;
    // How far two segments reach beyond the corner between them, or 0 after drawing the corner otherwise.
    const auto reachAt = [&](const QPointF &before, const QPointF &corner, const QPointF &after) {
        const double cosine = QPointF::dotProduct(direction(before, corner), direction(corner, after));
        const double standsOut = isRound ? m_pixels / 2 * (std::sqrt(2 / (1 + cosine)) - 1) : 0;
        if (cosine >= 0 && standsOut <= roundTolerance)
            return half * std::sqrt((1 - std::min(cosine, 1.0)) / (1 + cosine)); // half * tan(turn / 2)
        addCorner(before, corner, after);
        return 0.0;
    };
    double reach = isClosed ? reachAt(points[last - 1], points[0], points[1]) : endReach;
    const double lastReach = reach;
    for (qsizetype i = 1; i <= last; ++i) {
        const double next = i < last ? reachAt(points[i - 1], points[i], points[i + 1]) : lastReach;
        const QPointF along = direction(points[i - 1], points[i]);
        m_segments.append(QLineF(points[i - 1] - along * reach, points[i] + along * next));
        reach = next;
        if (m_segments.size() >= mostWaiting)
            flush();
    }
    if (!isClosed) {
        addEnd(points.first());
        addEnd(points.last());
    }
}
