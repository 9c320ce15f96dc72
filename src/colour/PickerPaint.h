#pragma once

#include <QColor>

class QPainter;
class QPalette;
class QPointF;

/// What the colour pickers draw alike.
namespace PickerPaint {

constexpr double markerRadius = 6.0;
constexpr double focusWidth = 2.0;
/// Opacity of a picker that is disabled.
constexpr double disabledOpacity = 0.35;

/// A ring around @p point, filled with the picked colour; it shows on any colour.
void drawMarker(QPainter &painter, const QPointF &point, const QColor &color);
/// The thin line around coloured areas, which tells black and white from the window.
QColor outlineColor(const QPalette &palette);
/// The line around what has the keyboard.
QColor focusColor(const QPalette &palette);

} // namespace PickerPaint
