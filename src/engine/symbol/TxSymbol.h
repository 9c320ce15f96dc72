#pragma once

#include "engine/base/TxExport.h"

#include <QtGlobal>

#include <memory>

class QPainter;
class QPointF;
class QRectF;
struct CTxGeoStyle;

/// A point symbol in one size and colour, made by CTxSymbolLib.
///
/// It keeps pictures of itself, so that drawing it many times costs hardly more than copying pixels: one symbol serves
/// all points of a layer. Not for several threads at a time.
class TX_EXPORT CTxSymbol
{
public:
    explicit CTxSymbol(const CTxGeoStyle &style);
    ~CTxSymbol();
    CTxSymbol(const CTxSymbol &) = delete;
    CTxSymbol &operator=(const CTxSymbol &) = delete;

    /// Draws it with the middle of its box at @p point, turned by @p angle degrees counter-clockwise on top of the
    /// style's own angle. On pixels it goes to the nearest whole pixel, so that its edges are sharp. It stands upright
    /// where the painter's y axis points up, too.
    /// @return false, and nothing is drawn, when the painter is null or not active or the place is no number
    bool Draw(QPainter *painter, const QPointF &point, double angle = 0) const;

    /// What it covers at most when it is drawn at (0, 0), at any angle.
    QRectF GetBounds() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
