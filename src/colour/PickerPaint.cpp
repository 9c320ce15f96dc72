#include "colour/PickerPaint.h"

#include <QPainter>
#include <QPalette>

namespace PickerPaint {

void drawMarker(QPainter &painter, const QPointF &point, const QColor &color)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0, 0, 0, 200), 3.5));
    painter.setBrush(color);
    painter.drawEllipse(point, markerRadius, markerRadius);
    painter.setPen(QPen(Qt::white, 2.0));
    painter.drawEllipse(point, markerRadius, markerRadius);
}

QColor outlineColor(const QPalette &palette)
{
    QColor color = palette.color(QPalette::WindowText);
    color.setAlpha(110);
    return color;
}

QColor focusColor(const QPalette &palette)
{
    return palette.color(QPalette::Highlight);
}

} // namespace PickerPaint
