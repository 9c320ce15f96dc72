#pragma once

#include <QRect>

class QPainter;
class QPushButton;

/// What push buttons that show a sample instead of a text have in common.
namespace SampleButton {

/// Paints the button without its sample, with the focus where it has it. @return where the sample goes
QRect paintFrame(const QPushButton &button, QPainter &painter);

/// The size of a button whose sample has the size @p sample.
QSize sizeFor(const QPushButton &button, const QSize &sample);

} // namespace SampleButton
