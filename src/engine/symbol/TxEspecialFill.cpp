#include "engine/symbol/TxEspecialFill.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// More colours than these are sampled: nobody sees more steps, and each one costs time.
constexpr qint32 mostStops = 128;

QGradientStops stopsOf(const CTxColorFolder &colors)
{
    const qint32 count = std::min(colors.GetCount(), mostStops);
    QGradientStops stops;
    for (qint32 i = 0; i < count; ++i) {
        const qint64 index = count > 1 ? qint64(i) * (colors.GetCount() - 1) / (count - 1) : 0;
        stops.append({count > 1 ? double(i) / (count - 1) : 0, TxColorRef::toQColor(colors.GetAt(qint32(index)))});
    }
    return stops;
}

/// Both ends of a line through the middle of @p bounds, at whose ends the corners of the bounds are met squarely.
QLineF across(const QRectF &bounds, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180;
    const QPointF direction(std::cos(angle), -std::sin(angle));
    const double half = (std::abs(direction.x()) * bounds.width() + std::abs(direction.y()) * bounds.height()) / 2;
    return QLineF(bounds.center() - direction * half, bounds.center() + direction * half);
}

template<class Gradient>
QBrush withStops(Gradient gradient, const QGradientStops &stops)
{
    gradient.setStops(stops);
    return gradient;
}

QBrush brushOf(const QRectF &bounds, TxGradientKind kind, QGradientStops stops, double angle)
{
    if (stops.isEmpty())
        return Qt::NoBrush;
    if (!std::isfinite(angle))
        angle = 0;
    const QLineF line = across(bounds, angle);
    switch (kind) {
    case TxGradientKind::Linear:
        return withStops(QLinearGradient(line.p1(), line.p2()), stops);
    case TxGradientKind::Radial:
        return withStops(QRadialGradient(bounds.center(), std::hypot(bounds.width(), bounds.height()) / 2), stops);
    case TxGradientKind::Conical:
        return withStops(QConicalGradient(bounds.center(), std::fmod(angle, 360.0)), stops);
    case TxGradientKind::None:
        break;
    }
    return stops.first().second;
}

} // namespace

QBrush CTxEspecialFill::GradientBrush(const QRectF &bounds, TxGradientKind kind, const CTxColorFolder &colors,
                                      double angle)
{
    return brushOf(bounds, kind, stopsOf(colors), angle);
}

QBrush CTxEspecialFill::GradientBrush(const QRectF &bounds, const CTxGeoStyle &style)
{
    const QGradientStops twoStops = {{0, style.fillColor}, {1, style.fillBackColor}};
    return brushOf(bounds, style.fillGradient,
                   style.gradientColors.GetCount() > 0 ? stopsOf(style.gradientColors) : twoStops, style.fillAngle);
}

void CTxEspecialFill::FillPath(QPainter &painter, const QPainterPath &path, const QBrush &brush)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrushOrigin(0, 0);
    painter.fillPath(path, brush);
    painter.restore();
}

bool CTxEspecialFill::GradientPolygon(QPainter *painter, const QPointF *points, qint32 count, TxGradientKind kind,
                                      const CTxColorFolder &colors, double angle)
{
    const auto isPlace = [](const QPointF &point) { return std::isfinite(point.x()) && std::isfinite(point.y()); };
    if (!painter || !painter->isActive() || !points || count < 3 || colors.GetCount() == 0 ||
        !std::all_of(points, points + count, isPlace))
        return false;
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
    path.closeSubpath();
    FillPath(*painter, path, GradientBrush(path.boundingRect(), kind, colors, angle));
    return true;
}
