#include "engine/symbol/TxFillStyle.h"

#include "engine/symbol/FillStyles.h"
#include "engine/symbol/TxBrushStyleFolder.h"
#include "engine/symbol/TxFillStyleLib.h"
#include "engine/symbol/TxGeoStyle.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace {

/// The most pixels on each side of a tile.
constexpr int largestTile = 2048;

int pixelsOf(double length)
{
    return std::clamp(static_cast<int>(std::lround(std::min(length, double(largestTile)))), 1, largestTile);
}

} // namespace

struct CTxFillStyle::Private
{
    const FillStyles::Row &row;
    QColor fore;
    QColor back;
    double size;
    double angle;
    double tileScale = 0; // pixels a unit that the tile is made for
    QImage tile;

    const QImage &tileFor(double scale)
    {
        if (!tile.isNull() && tileScale == scale)
            return tile;
        tileScale = scale;
        const double unit = size / FillStyles::tileWidth * scale;
        tile = QImage(pixelsOf(FillStyles::tileWidth * unit), pixelsOf(row.tileHeight * unit),
                      QImage::Format_ARGB32_Premultiplied);
        tile.fill(Qt::transparent);
        QPainter painter(&tile);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(tile.width() / FillStyles::tileWidth, tile.height() / row.tileHeight);
        // Wider than a pixel: thinner pens draw segment by segment, and it shows where segments lie on one another.
        const double thinnest = std::min(1.01 / unit, FillStyles::tileWidth / 4);
        // Opaque, made transparent as a whole: crossings are no darker than the lines that cross.
        QColor opaque = fore;
        opaque.setAlpha(255);
        const QSizeF tileSize(FillStyles::tileWidth, row.tileHeight);
        StyleDrawing(row.shapes).repeated(tileSize).paint(painter, opaque, thinnest);
        const QRectF all(QPointF(), tileSize);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(all, QColor(0, 0, 0, fore.alpha()));
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        painter.fillRect(all, back);
        return tile;
    }
};

CTxFillStyle::CTxFillStyle(qint32 style, const QColor &fore, const QColor &back, double size, double angle)
{
    CTxGeoStyle wanted;
    wanted.fillSize = size;
    wanted.fillAngle = angle;
    wanted = wanted.inRange();
    d.reset(new Private{FillStyles::row(style), fore, back, wanted.fillSize, wanted.fillAngle, 0, QImage()});
}

CTxFillStyle::~CTxFillStyle() = default;

QBrush CTxFillStyle::GetBrush(const QPainter &painter)
{
    if (d->row.kind != FillStyles::Kind::Pattern)
        return d->row.kind == FillStyles::Kind::Solid ? QBrush(d->fore) : QBrush(Qt::NoBrush);
    const QTransform transform = painter.deviceTransform();
    const double area = std::abs(transform.determinant());
    const double scale = area > 0 && std::isfinite(area) ? std::clamp(std::sqrt(area), 1e-3, 1e3) : 1;
    QBrush brush(d->tileFor(scale));
    QTransform toPainter = QTransform::fromScale(1 / scale, transform.determinant() < 0 ? -1 / scale : 1 / scale);
    brush.setTransform(QTransform().rotate(-d->angle) * toPainter);
    return brush;
}

bool CTxFillStyle::FillPath(QPainter *painter, const QPainterPath &path)
{
    if (!painter || !painter->isActive())
        return false;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::SmoothPixmapTransform, d->angle != 0);
    painter->fillPath(path, GetBrush(*painter));
    painter->restore();
    return true;
}

bool CTxFillStyle::Polygon(QPainter *painter, const QPointF *points, qint32 count)
{
    if (!points || count < 3)
        return false;
    QPolygonF polygon;
    polygon.reserve(count);
    for (qint32 i = 0; i < count; ++i) {
        if (!std::isfinite(points[i].x()) || !std::isfinite(points[i].y()))
            return false;
        polygon.append(points[i]);
    }
    QPainterPath path;
    path.addPolygon(polygon);
    path.closeSubpath();
    return FillPath(painter, path);
}

void CTxFillStyle::ReleaseBMP()
{
    d->tile = QImage();
}

CTxFillStyleLib::CTxFillStyleLib()
    : CTxStyleLibrary(static_cast<qint32>(FillStyles::rows().size()),
                      [](qint32 index) { return FillStyles::rows()[static_cast<size_t>(index)].key; })
{
}

std::unique_ptr<CTxFillStyle> CTxFillStyleLib::CreateFillStyle(QPainter *painter, qint32 style, const QColor &fore,
                                                               const QColor &back, double size, double angle) const
{
    auto fill = std::make_unique<CTxFillStyle>(style, fore, back, size, angle);
    if (painter && painter->isActive())
        fill->GetBrush(*painter); // makes the tile
    return fill;
}

bool CTxBrushStyleFolder::CreateBrush(QBrush &brush, qint32 style, const QColor &color)
{
    if (CTxFillStyleLib().FindByID(style) < 0)
        return false;
    QImage one(1, 1, QImage::Format_ARGB32_Premultiplied);
    const QPainter painter(&one);
    brush = CTxFillStyle(style, color, Qt::transparent, CTxGeoStyle().fillSize, 0).GetBrush(painter);
    return true;
}
