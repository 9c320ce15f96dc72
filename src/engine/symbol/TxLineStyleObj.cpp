#include "engine/symbol/TxLineStyleObj.h"

#include "engine/symbol/LineGeometry.h"
#include "engine/symbol/LineStroker.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxLineStyleEngine.h"
#include "engine/symbol/TxLineStyleLib.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <numbers>

using LineGeometry::Piece;
using LineStyles::Ink;

namespace {

/// The opacity of a tint.
constexpr double tint = 0.3;
/// What repeats itself more often than every half pixel cannot be told from a plain line, and would take for ever.
constexpr double leastPeriod = 0.5;
/// The largest dots, in pixels, that are drawn as squares.
constexpr double largestSquareDot = 2.5;

/// True for dashes of no length, which are round dots.
bool isDotted(const LineStyles::Stroke &stroke)
{
    return !stroke.dash.empty() && stroke.dash.front() == 0;
}

QColor colorOf(Ink ink, const CTxGeoStyle &style)
{
    QColor color = ink == Ink::Back ? style.lineBackColor : style.lineColor;
    if (ink == Ink::Tint)
        color.setAlphaF(static_cast<float>(color.alphaF() * tint));
    return color;
}

struct Stroke
{
    const LineStyles::Stroke &row;
    QPen pen;
};

struct Mark
{
    const LineStyles::Mark &row;
    QPainterPath path;
    QPen pen;
    QBrush brush;
};

} // namespace

struct CTxLineStyleObj::Private
{
    double width = 1;
    double reach = 0;
    std::vector<Stroke> strokes;
    std::vector<Mark> marks;

    /// @param pixels how many a unit has
    void draw(QPainter &painter, const Stroke &stroke, const std::vector<Piece> &pieces, double pixels) const
    {
        const LineStyles::Stroke &row = stroke.row;
        if (isDotted(row) && row.dash.back() * width * pixels >= leastPeriod) {
            drawDots(painter, stroke, pieces, pixels);
            return;
        }
        const bool isDashed = !row.dash.empty() && row.dash.back() * width * pixels >= leastPeriod;
        const bool isSwinging = !row.swings.empty() && row.swings.back().along * width * pixels >= leastPeriod;
        LineStroker stroker(painter, stroke.pen);
        const auto add = [&](const QPolygonF &line) {
            stroker.add(row.offset == 0 ? line : LineGeometry::parallel(line, row.offset * width));
        };
        for (const Piece &piece : pieces) {
            if (isSwinging)
                stroker.add(LineGeometry::swung(piece, row.swings, width));
            else if (isDashed)
                // Before they move aside: so what is seen of the line does not count, and both rails of a track agree.
                std::ranges::for_each(LineGeometry::dashes(piece, row.dash, width), add);
            else
                add(piece.points);
        }
    }

    /// Small dots are squares of the same area: nobody sees the difference, and they take a tenth of the time.
    void drawDots(QPainter &painter, const Stroke &stroke, const std::vector<Piece> &pieces, double pixels) const
    {
        const double side = stroke.pen.widthF() * std::sqrt(std::numbers::pi) / 2;
        const bool isSmall = side * pixels <= largestSquareDot;
        QList<QLineF> squares;
        QList<QPointF> dots;
        for (const Piece &piece : pieces) {
            LineGeometry::visitEvery(piece, stroke.row.dash.back() * width, 0,
                                     [&](const QPointF &place, const QPointF &along) {
                                         if (isSmall)
                                             squares.append({place - along * side / 2, place + along * side / 2});
                                         else
                                             dots.append(place);
                                     });
        }
        painter.setPen(isSmall ? QPen(stroke.pen.brush(), side, Qt::SolidLine, Qt::FlatCap) : stroke.pen);
        painter.drawLines(squares);
        painter.drawPoints(dots.constData(), static_cast<int>(dots.size()));
    }

    void draw(QPainter &painter, const Mark &mark, const std::vector<Piece> &pieces) const
    {
        painter.setPen(mark.pen);
        painter.setBrush(mark.brush);
        const QTransform before = painter.transform();
        for (const Piece &piece : pieces) {
            LineGeometry::visitEvery(
                piece, mark.row.period * width, mark.row.first * width,
                [&](const QPointF &place, const QPointF &along) {
                    painter.setTransform(QTransform(along.x(), along.y(), -along.y(), along.x(), place.x(), place.y()) *
                                         before);
                    painter.drawPath(mark.path);
                });
        }
        painter.setTransform(before);
    }
};

CTxLineStyleObj::CTxLineStyleObj(const CTxGeoStyle &wanted) : d(std::make_unique<Private>())
{
    const CTxGeoStyle style = wanted.inRange();
    const LineStyles::Row &row = LineStyles::row(style.lineStyle);
    d->width = style.lineWidth;
    d->reach = LineStyles::reach(row) * d->width;
    for (const LineStyles::Stroke &stroke : row.strokes) {
        // Round ends would fill the gaps between dashes and stand out of casings; dots are nothing but round ends.
        const bool isDots = isDotted(stroke);
        const bool isPlain = row.strokes.size() == 1 && stroke.dash.empty();
        QPen pen(colorOf(stroke.ink, style), stroke.width * d->width, Qt::SolidLine,
                 isDots || isPlain ? Qt::RoundCap : Qt::FlatCap,
                 (isPlain && stroke.swings.empty()) || isDots ? Qt::RoundJoin : Qt::MiterJoin);
        // Beyond right angles QPainter cuts mitres off where they would be as long; casings are even there, too.
        pen.setMiterLimit(0.5);
        d->strokes.push_back({stroke, pen});
    }
    for (const LineStyles::Mark &mark : row.marks) {
        const QColor color = colorOf(mark.ink, style);
        const double pen = mark.shape.pen * d->width;
        d->marks.push_back({mark, QTransform::fromScale(d->width, d->width).map(StyleDrawing::parsed(mark.shape.path)),
                            pen > 0 ? QPen(color, pen, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin) : QPen(Qt::NoPen),
                            pen > 0 ? QBrush(Qt::NoBrush) : QBrush(color)});
    }
}

CTxLineStyleObj::~CTxLineStyleObj() = default;

double CTxLineStyleObj::GetReach() const
{
    return d->reach;
}

bool CTxLineStyleObj::Polyline(QPainter *painter, const QPointF *points, qint32 count) const
{
    if (!painter || !painter->isActive() || !points || count < 2)
        return false;
    // Twice the reach: the mitre of a parallel line just outside stands in.
    const double margin = 2 * d->reach + 1;
    const QRectF window = LineGeometry::window(*painter).adjusted(-margin, -margin, margin, margin);
    const std::span<const QPointF> line(points, static_cast<size_t>(count));
    const std::vector<Piece> pieces = LineGeometry::visible(line, window);
    const std::vector<Piece> joined = LineGeometry::joined(pieces, line);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    const double pixels = std::sqrt(std::abs(painter->deviceTransform().determinant()));
    for (const Stroke &stroke : d->strokes)
        d->draw(*painter, stroke, stroke.row.dash.empty() && stroke.row.swings.empty() ? joined : pieces, pixels);
    for (const Mark &mark : d->marks) {
        if (mark.row.period * d->width * pixels >= leastPeriod)
            d->draw(*painter, mark, pieces);
    }
    painter->restore();
    return true;
}

bool CTxLineStyleObj::Polyline(const QPointF *points, qint32 count) const
{
    return Polyline(gLineStyleEngine.GetDC(), points, count);
}

CTxLineStyleEngine gLineStyleEngine;

bool CTxLineStyleEngine::KeepDC(QPainter *painter)
{
    if (!painter || !painter->isActive())
        return false;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    m_painters.append(painter);
    return true;
}

bool CTxLineStyleEngine::RestoreDC()
{
    if (m_painters.isEmpty())
        return false;
    QPainter *painter = m_painters.takeLast();
    if (painter->isActive()) // else it has ended, and has no state any more
        painter->restore();
    return true;
}

CTxLineStyleLib::CTxLineStyleLib()
    : CTxStyleLibrary(static_cast<qint32>(LineStyles::rows().size()),
                      [](qint32 index) { return LineStyles::rows()[static_cast<size_t>(index)].key; })
{
}

std::unique_ptr<CTxLineStyleObj> CTxLineStyleLib::CreateLineStyle(const CTxGeoStyle &style) const
{
    return std::make_unique<CTxLineStyleObj>(style);
}
