#pragma once

#include "engine/base/TxExport.h"
#include "engine/symbol/TxGeoStyle.h"

#include <QBrush>

class QPainter;
class QPainterPath;
class QPointF;
class QRectF;

/// Fills areas with gradients.
class TX_EXPORT CTxEspecialFill
{
public:
    CTxEspecialFill() = delete;

    /// Fills the polygon of @p count points with @p colors, evenly spread over its bounds.
    /// @param kind how they run; None fills with the first one
    /// @param angle in degrees counter-clockwise: the direction in which a linear gradient runs (0: to the right) and
    /// where a conical one begins
    /// @return false, and nothing is drawn, when the painter is null or not active, when there are fewer than three
    /// points or no colours, or when a point is no number
    static bool GradientPolygon(QPainter *painter, const QPointF *points, qint32 count, TxGradientKind kind,
                                const CTxColorFolder &colors, double angle = 0);
    /// The brush that fills @p bounds so.
    static QBrush GradientBrush(const QRectF &bounds, TxGradientKind kind, const CTxColorFolder &colors, double angle);
    /// The brush that fills @p bounds with the gradient of @p style, with the opacity of its colours.
    static QBrush GradientBrush(const QRectF &bounds, const CTxGeoStyle &style);
    /// Fills @p path with a brush made for its bounds, wherever the painter's brushes begin.
    static void FillPath(QPainter &painter, const QPainterPath &path, const QBrush &brush);
};
