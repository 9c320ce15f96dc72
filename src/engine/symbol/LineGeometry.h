#pragma once

#include "engine/symbol/LineStyles.h"

#include <QPolygonF>
#include <QRectF>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

class QPainter;

/// What drawing along a line needs to know of its course. Lengths are in the painter's units.
namespace LineGeometry {

/// A stretch of a line.
struct Piece
{
    QPolygonF points;
    double start; ///< how far from the line's beginning it begins
};

/// What of the plane @p painter can show at all.
QRectF window(const QPainter &painter);

/// The stretches of a line that may be seen in @p window. Points that are no numbers part it. A line without length is
/// one piece of two equal points.
std::vector<Piece> visible(std::span<const QPointF> line, const QRectF &window);

/// @p line without points that equal the one before them.
QPolygonF withoutRepetitions(const QPolygonF &line);

/// The line at @p offset to the right of @p line, mitred at its corners, the sharp ones bevelled; that of a closed line
/// is closed.
QPolygonF parallel(const QPolygonF &line, double offset);

/// The @p pieces of @p line such that they run on through the point where a closed line begins and ends. What is
/// counted from the line's beginning cannot be drawn on them.
std::vector<Piece> joined(std::vector<Piece> pieces, std::span<const QPointF> line);

/// The dashes of @p piece. @p pattern has the lengths of dash, gap, dash … in @p unit, counted from the line's
/// beginning.
std::vector<QPolygonF> dashes(const Piece &piece, std::span<const double> pattern, double unit);

/// A line that swings about @p piece as @p swings say, in lengths of @p unit.
QPolygonF swung(const Piece &piece, std::span<const LineStyles::Swing> swings, double unit);

/// Calls @p visit with the place and the direction (of length 1) of every @p period from @p first on, measured from the
/// line's beginning.
template<class Visit>
void visitEvery(const Piece &piece, double period, double first, Visit visit)
{
    double passed = piece.start;
    for (qsizetype i = 1; i < piece.points.size(); ++i) {
        const QPointF step = piece.points[i] - piece.points[i - 1];
        const double length = std::hypot(step.x(), step.y());
        for (double n = std::max(0.0, std::ceil((passed - first) / period)); first + n * period < passed + length; ++n)
            visit(piece.points[i - 1] + step * ((first + n * period - passed) / length), step / length);
        passed += length;
    }
}

} // namespace LineGeometry
