#include "engine/symbol/LineGeometry.h"

#include <QPaintDevice>
#include <QPainter>
#include <QTransform>

#include <iterator>
#include <numeric>

namespace {

/// Farther places are drawn as if they were here: lengths are still exact to a thousandth.
constexpr double farthest = 1e12;
/// How many times its offset a corner of a parallel line may stand out.
constexpr double longestMitre = 3;

/// The part of the segment from @p from to @p to in @p window, as parts of its length.
/// @return false when there is none
bool clip(const QPointF &from, const QPointF &to, const QRectF &window, double &begin, double &end)
{
    begin = 0;
    end = 1;
    const auto cut = [&](double start, double step, double lowest, double highest) {
        if (step == 0)
            return start >= lowest && start <= highest;
        const double a = (lowest - start) / step;
        const double b = (highest - start) / step;
        begin = std::max(begin, std::min(a, b));
        end = std::min(end, std::max(a, b));
        return begin <= end;
    };
    return cut(from.x(), to.x() - from.x(), window.left(), window.right()) &&
           cut(from.y(), to.y() - from.y(), window.top(), window.bottom());
}

QPointF kept(const QPointF &point)
{
    return {std::clamp(point.x(), -farthest, farthest), std::clamp(point.y(), -farthest, farthest)};
}

/// To the right of @p step as seen where y goes downwards.
QPointF normal(const QPointF &step)
{
    const double length = std::hypot(step.x(), step.y());
    return length > 0 ? QPointF(-step.y() / length, step.x() / length) : QPointF();
}

} // namespace

QRectF LineGeometry::window(const QPainter &painter)
{
    const QPaintDevice &device = *painter.device();
    const QRectF all(-1e6, -1e6, 2e6, 2e6);
    // Windows tell their size in units that may be several pixels, pictures in pixels; the transformation is to pixels.
    const double unit = device.devType() == QInternal::Widget ? device.devicePixelRatioF() : 1;
    const QRectF pixels =
        device.devType() == QInternal::Picture ? all : QRectF(0, 0, device.width() * unit, device.height() * unit);
    bool isInvertible = false;
    const QTransform back = painter.combinedTransform().inverted(&isInvertible);
    return isInvertible ? back.mapRect(pixels) : QRectF();
}

std::vector<LineGeometry::Piece> LineGeometry::visible(std::span<const QPointF> line, const QRectF &window)
{
    std::vector<Piece> pieces;
    bool isOpen = false;
    bool hasStart = false;
    QPointF from;
    double passed = 0;
    for (const QPointF &point : line) {
        if (std::isnan(point.x()) || std::isnan(point.y())) {
            isOpen = hasStart = false;
            continue;
        }
        const QPointF to = kept(point);
        if (hasStart && from != to) {
            const QPointF step = to - from;
            const double length = std::hypot(step.x(), step.y());
            double begin = 0;
            double end = 0;
            if (clip(from, to, window, begin, end)) {
                if (!isOpen || begin > 0)
                    pieces.push_back({{from + step * begin}, passed + length * begin});
                pieces.back().points.append(end < 1 ? from + step * end : to);
                isOpen = end == 1;
            } else {
                isOpen = false;
            }
            passed += length;
        } else if (hasStart && line.size() == 2 && window.contains(to)) {
            pieces.push_back({{to, to}, 0});
        }
        hasStart = true;
        from = to;
    }
    return pieces;
}

std::vector<LineGeometry::Piece> LineGeometry::joined(std::vector<Piece> pieces, std::span<const QPointF> line)
{
    const bool isOneRing = pieces.size() > 1 && line.front() == line.back() &&
                           pieces.front().points.first() == line.front() && pieces.back().points.last() == line.back();
    if (isOneRing) {
        pieces.back().points += pieces.front().points.sliced(1);
        pieces.erase(pieces.begin());
    }
    return pieces;
}

std::vector<QPolygonF> LineGeometry::dashes(const Piece &piece, std::span<const double> pattern, double unit)
{
    const double cycle = std::accumulate(pattern.begin(), pattern.end(), 0.0) * unit;
    double phase = std::fmod(piece.start, cycle);
    size_t part = 0; // of the pattern: the even ones are drawn
    while (phase >= pattern[part] * unit && part + 1 < pattern.size())
        phase -= pattern[part++] * unit;
    double rest = pattern[part] * unit - phase; // of this part
    std::vector<QPolygonF> found;
    if (part % 2 == 0)
        found.push_back({piece.points.first()});
    for (qsizetype i = 1; i < piece.points.size(); ++i) {
        const QPointF step = piece.points[i] - piece.points[i - 1];
        const double length = std::hypot(step.x(), step.y());
        double at = 0;
        for (; rest <= length - at; rest = pattern[part] * unit) {
            at += rest;
            const QPointF place = piece.points[i - 1] + step * (length > 0 ? at / length : 0);
            if (part % 2 == 0)
                found.back().append(place);
            else
                found.push_back({place});
            part = (part + 1) % pattern.size();
        }
        rest -= length - at;
        if (part % 2 == 0)
            found.back().append(piece.points[i]);
    }
    return found;
}

QPolygonF LineGeometry::withoutRepetitions(const QPolygonF &line)
{
    QPolygonF points;
    points.reserve(line.size());
    std::unique_copy(line.begin(), line.end(), std::back_inserter(points));
    return points;
}

QPolygonF LineGeometry::parallel(const QPolygonF &course, double offset)
{
    const QPolygonF line = withoutRepetitions(course);
    const qsizetype last = line.size() - 1;
    if (last < 1)
        return course;
    QPolygonF side;
    side.reserve(line.size());
    const bool isClosed = last > 2 && line.isClosed();
    QPointF before = isClosed ? normal(line[last] - line[last - 1]) : normal(line[1] - line[0]);
    for (qsizetype i = 0; i <= last; ++i) {
        const QPointF after = i < last ? normal(line[i + 1] - line[i]) : isClosed ? normal(line[1] - line[0]) : before;
        const QPointF both = before + after;
        // Both normals have length 1: their sum, over half its square, reaches to where the sides meet.
        const double square = QPointF::dotProduct(both, both);
        if (square > 4 / (longestMitre * longestMitre)) {
            side.append(line[i] + both * (2 / square) * offset);
        } else {
            if (i > 0) // a closed line ends as it begins
                side.append(line[i] + before * offset);
            side.append(line[i] + after * offset);
        }
        before = after;
    }
    return side;
}

QPolygonF LineGeometry::swung(const Piece &piece, std::span<const LineStyles::Swing> swings, double unit)
{
    const double period = swings.back().along * unit;
    /// How far aside the line swings after @p distance: between two corners, so on the straight line from one to the
    /// other.
    const auto asideAt = [&](double distance) {
        const double place = (distance - std::floor(distance / period) * period) / unit;
        size_t next = 1;
        while (next + 1 < swings.size() && swings[next].along <= place)
            ++next;
        const LineStyles::Swing &from = swings[next - 1], &to = swings[next];
        const double length = to.along - from.along;
        return unit * (length > 0 ? from.aside + (to.aside - from.aside) * (place - from.along) / length : to.aside);
    };
    QPolygonF line;
    double passed = piece.start;
    double cycle = std::floor(passed / period); // the period of the next corner
    size_t next = 0;                            // that corner; the last of a period is the first of the next
    QPointF right;
    for (qsizetype i = 1; i < piece.points.size(); ++i) {
        const QPointF step = piece.points[i] - piece.points[i - 1];
        const double length = std::hypot(step.x(), step.y());
        right = normal(step);
        if (i == 1)
            line.append(piece.points.first() + right * asideAt(passed));
        for (;;) {
            const double place = cycle * period + swings[next].along * unit;
            if (place > passed + length)
                break;
            if (place > passed)
                line.append(piece.points[i - 1] + step * ((place - passed) / length) +
                            right * (swings[next].aside * unit));
            if (++next + 1 == swings.size()) {
                next = 0;
                ++cycle;
            }
        }
        passed += length;
    }
    line.append(piece.points.last() + right * asideAt(passed));
    return line;
}
