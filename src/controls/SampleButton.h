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

/// True for the keys that open what the button chooses from, as they open a combo box, and for Enter, which is not the
/// dialog's OK on these buttons.
bool isOpeningKey(int key);

} // namespace SampleButton
