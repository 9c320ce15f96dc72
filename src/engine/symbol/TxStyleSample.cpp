#include "engine/symbol/TxStyleSample.h"

#include "engine/symbol/TxGDIMaker.h"
#include "engine/symbol/TxGeoStyle.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

/// Calls @p draw with a prepared maker, and lets nothing out of @p rect.
template<class Draw>
void drawPrepared(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style, quint32 parts, Draw draw)
{
    if (!painter.isActive() || !(rect.width() > 0 && rect.height() > 0))
        return;
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    CTxGDIMaker maker;
    if (maker.PrepareGDIs(&painter, CTxLineStyleLib(), CTxSymbolLib(), style, parts))
        draw(maker);
    maker.ReleaseGDIs();
    painter.restore();
}

} // namespace

void TxStyleSample::drawLine(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style)
{
    CTxGeoStyle fitting = style.inRange();
    const double reach = CTxLineStyleObj(fitting).GetReach();
    fitting.lineWidth *= std::min(1.0, std::max(0.0, rect.height() / 2 / reach));
    drawPrepared(painter, rect, fitting, CTxGDIMaker::Line, [&](const CTxGDIMaker &maker) {
        const double y = rect.center().y();
        const QPointF ends[] = {{rect.left() + fitting.lineWidth / 2, y}, {rect.right() - fitting.lineWidth / 2, y}};
        maker.GetLineStyleObject()->Polyline(&painter, ends, 2);
    });
}

void TxStyleSample::drawFill(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style, bool outlined)
{
    CTxGeoStyle fitting = style.inRange();
    fitting.lineWidth = std::min({fitting.lineWidth, rect.width() / 4, rect.height() / 4});
    const double half = outlined ? fitting.lineWidth / 2 : 0;
    const QRectF area = rect.adjusted(half, half, -half, -half);
    drawPrepared(painter, rect, fitting, CTxGDIMaker::Line | CTxGDIMaker::Fill, [&](const CTxGDIMaker &maker) {
        QPainterPath path;
        path.addRect(area);
        painter.setBrushOrigin(area.topLeft());
        maker.FillPath(path);
        if (outlined) {
            const QPolygonF ring(area);
            maker.GetLineStyleObject()->Polyline(&painter, ring.constData(), static_cast<qint32>(ring.size()));
        }
    });
}

void TxStyleSample::drawSymbol(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style)
{
    CTxGeoStyle fitting = style.inRange();
    // A turned box is wider.
    const double angle = std::fmod(fitting.symbolAngle, 90.0) * std::numbers::pi / 180;
    const double wider = std::cos(angle) + std::sin(angle);
    const double room = std::min(rect.width(), rect.height());
    fitting.symbolOutlineWidth = std::min(fitting.symbolOutlineWidth, room / 4);
    fitting.symbolSize = std::min(fitting.symbolSize, (room - 2 * fitting.symbolOutlineWidth) / wider);
    drawPrepared(painter, rect, fitting, CTxGDIMaker::Symbol,
                 [&](const CTxGDIMaker &maker) { maker.GetSymbolObject()->Draw(&painter, rect.center()); });
}
