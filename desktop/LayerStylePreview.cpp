#include "LayerStylePreview.h"

#include "engine/symbol/TxGDIMaker.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

// Places in a square of side 1.
constexpr QPointF region[] = {{0.08, 0.3}, {0.4, 0.08}, {0.9, 0.2}, {0.8, 0.62}, {0.5, 0.9}, {0.14, 0.75}, {0.08, 0.3}};
constexpr QPointF road[] = {{0.02, 0.8}, {0.25, 0.45}, {0.55, 0.6}, {0.7, 0.3}, {0.98, 0.18}};
constexpr QPointF street[] = {{0.2, 0.02}, {0.35, 0.3}, {0.8, 0.7}, {0.9, 0.98}};
constexpr QPointF places[] = {{0.25, 0.3}, {0.7, 0.22}, {0.5, 0.52}, {0.2, 0.75}, {0.78, 0.78}};

template<size_t count>
QPolygonF scaled(const QPointF (&points)[count], const QSizeF &size)
{
    QPolygonF polygon;
    for (const QPointF &point : points)
        polygon.append({point.x() * size.width(), point.y() * size.height()});
    return polygon;
}

void drawParts(QPainter &painter, const QSizeF &size, quint32 parts, const CTxGeoStyle &style)
{
    CTxGDIMaker maker;
    if (!maker.PrepareGDIs(&painter, CTxLineStyleLib(), CTxSymbolLib(), style))
        return;
    const auto stroke = [&](const QPolygonF &line) {
        maker.GetLineStyleObject()->Polyline(&painter, line.constData(), static_cast<qint32>(line.size()));
    };
    if (parts & TxStyleParts::Fill) {
        QPainterPath path;
        path.addPolygon(scaled(region, size));
        maker.FillPath(path);
        stroke(scaled(region, size));
    } else if (parts & TxStyleParts::Line) {
        stroke(scaled(road, size));
        stroke(scaled(street, size));
    }
    if (parts & TxStyleParts::Symbol) {
        const QPolygonF points = scaled(places, size);
        for (const QPointF &point : points)
            maker.GetSymbolObject()->Draw(&painter, point);
    }
    maker.ReleaseGDIs();
    if (parts == TxStyleParts::Text) {
        painter.setPen(style.lineColor);
        painter.drawText(QRectF(QPointF(), size), Qt::AlignCenter | Qt::TextWordWrap,
                         LayerStylePreview::tr("A text on the map"));
    }
}

} // namespace

LayerStylePreview::LayerStylePreview(quint32 parts, const QColor &background, QWidget *parent)
    : QWidget(parent), m_parts(parts), m_background(background)
{
    constexpr int least = 140;
    setMinimumSize(least, least);
    setAccessibleName(tr("Preview"));
}

void LayerStylePreview::setStyle(const TxLayerStyle &style)
{
    m_style = style;
    update();
}

QSize LayerStylePreview::sizeHint() const
{
    constexpr int side = 220;
    return QSize(side, side);
}

void LayerStylePreview::paintEvent(QPaintEvent *)
{
    QImage image(size() * devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatioF());
    image.fill(Qt::transparent);
    QPainter onImage(&image);
    onImage.setFont(font());
    const double side = std::min(width(), height());
    onImage.translate((width() - side) / 2, (height() - side) / 2);
    // As the map draws it: points need no legible line.
    const bool hasLines = m_parts & ~TxStyleParts::Symbol;
    drawParts(onImage, QSizeF(side, side), m_parts,
              (hasLines ? legibleStyle(m_style, m_background) : m_style).geoStyle);
    onImage.end();

    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Mid)); // its edge, also where a pixel is half a unit
    painter.setClipRect(rect().adjusted(1, 1, -1, -1));
    painter.fillRect(rect(), m_background);
    painter.setOpacity(m_style.opacity);
    painter.drawImage(QPointF(), image);
}
