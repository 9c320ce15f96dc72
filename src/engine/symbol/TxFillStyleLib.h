#pragma once

#include "engine/symbol/TxFillStyle.h"
#include "engine/symbol/TxStyleLibrary.h"

#include <QColor>

#include <memory>

/// The library of fills. docs/symbols.md shows them all.
class TX_EXPORT CTxFillStyleLib : public CTxStyleLibrary
{
public:
    CTxFillStyleLib();

    /// The fill @p style in the given colours (make those of a COLORREF with TxColorRef::toQColor); @p back may be
    /// transparent.
    /// @param painter for whose pixels the pattern is prepared; may be null
    /// @param size the width of a pattern's tile, see CTxGeoStyle
    /// @param angle by which it is turned, in degrees counter-clockwise
    std::unique_ptr<CTxFillStyle> CreateFillStyle(QPainter *painter, qint32 style, const QColor &fore,
                                                  const QColor &back, double size, double angle) const;
};
