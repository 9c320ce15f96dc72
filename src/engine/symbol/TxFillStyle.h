#pragma once

#include "engine/base/TxExport.h"

#include <QBrush>

#include <memory>

class QPainter;
class QPainterPath;
class QPointF;

/// A fill in its colours, made by CTxFillStyleLib: solid, empty or a pattern of tiles.
///
/// The tiles are whole pixels of what is drawn on, so that lines in them are sharp; they begin at the painter's origin,
/// so that neighbouring areas go on in one another. One fill serves all areas of a layer. Not for several threads at a
/// time.
class TX_EXPORT CTxFillStyle
{
public:
    /// @param size the width of a tile
    /// @param angle by which the pattern is turned, in degrees counter-clockwise
    CTxFillStyle(qint32 style, const QColor &fore, const QColor &back, double size, double angle);
    ~CTxFillStyle();
    CTxFillStyle(const CTxFillStyle &) = delete;
    CTxFillStyle &operator=(const CTxFillStyle &) = delete;

    /// Fills the polygon of @p count points, by the odd-even rule; its outline is not drawn.
    /// @return false, and nothing is drawn, when the painter is null or not active, when there are fewer than three
    /// points, or when one of them is no number
    bool Polygon(QPainter *painter, const QPointF *points, qint32 count);
    /// Fills a path by its own rule.
    bool FillPath(QPainter *painter, const QPainterPath &path);

    /// The brush that fills with it on @p painter as the painter's transformation is now.
    QBrush GetBrush(const QPainter &painter);
    /// Forgets the tile; it is made anew when it is needed.
    void ReleaseBMP();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
