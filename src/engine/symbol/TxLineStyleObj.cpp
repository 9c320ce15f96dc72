#include "engine/symbol/TxLineStyleObj.h"

#include "engine/symbol/LineGeometry.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxLineStyleEngine.h"
#include "engine/symbol/TxLineStyleLib.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <numeric>

using LineGeometry::Piece;
using LineStyles::Ink;

namespace {

/// The opacity of a tint.
constexpr double tint = 0.3;

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

    void draw(QPainter &painter, const Stroke &stroke, const std::vector<Piece> &pieces) const
    {
        painter.setPen(stroke.pen);
        for (const Piece &piece : pieces) {
            if (!stroke.row.dash.empty()) {
                QPen pen = stroke.pen; // dashes are counted from the line's beginning
                const double cycle = std::accumulate(stroke.row.dash.begin(), stroke.row.dash.end(), 0.0) * width;
                pen.setDashOffset(std::fmod(piece.start, cycle) / pen.widthF());
                painter.setPen(pen);
            }
            if (!stroke.row.swings.empty())
                painter.drawPolyline(LineGeometry::swung(piece, stroke.row.swings, width));
            else if (stroke.row.offset != 0)
                painter.drawPolyline(LineGeometry::parallel(piece.points, stroke.row.offset * width));
            else
                painter.drawPolyline(piece.points);
        }
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
        const bool isDots = !stroke.dash.empty() && stroke.dash.front() == 0;
        const bool isPlain = row.strokes.size() == 1 && stroke.dash.empty();
        QPen pen(colorOf(stroke.ink, style), stroke.width * d->width, Qt::SolidLine,
                 isDots || isPlain ? Qt::RoundCap : Qt::FlatCap,
                 (isPlain && stroke.swings.empty()) || isDots ? Qt::RoundJoin : Qt::MiterJoin);
        QList<qreal> dashes;
        for (const double length : stroke.dash)
            dashes.append(std::max(length / stroke.width, 0.001)); // a dash of no length is not drawn at all
        if (!dashes.isEmpty())
            pen.setDashPattern(dashes);
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
    const std::vector<Piece> pieces = LineGeometry::visible(std::span(points, static_cast<size_t>(count)), window);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    for (const Stroke &stroke : d->strokes)
        d->draw(*painter, stroke, pieces);
    for (const Mark &mark : d->marks)
        d->draw(*painter, mark, pieces);
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
    m_painters.takeLast()->restore();
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
