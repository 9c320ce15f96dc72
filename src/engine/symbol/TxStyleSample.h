#pragma once

#include "engine/base/TxExport.h"

class QPainter;
class QRectF;
struct CTxGeoStyle;

/// Samples of styles, for buttons, lists and legends. Each stays within its rectangle: what is too large for it is
/// drawn smaller. Nothing is drawn on a painter that is not active.
namespace TxStyleSample {

/// A stretch of the line of @p style, from side to side.
TX_EXPORT void drawLine(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style);
/// A rectangle with the fill of @p style, and with its line around it when @p outlined.
TX_EXPORT void drawFill(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style, bool outlined = true);
/// The symbol of @p style in the middle.
TX_EXPORT void drawSymbol(QPainter &painter, const QRectF &rect, const CTxGeoStyle &style);

} // namespace TxStyleSample
