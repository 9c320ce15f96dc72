#include "colour/HsbPicker.h"

#include <algorithm>

HsbPicker::HsbPicker(QWidget *parent) : QWidget(parent) {}

HsbPicker::~HsbPicker() = default;

void HsbPicker::setColor(const HSVType &color)
{
    m_color = {std::clamp(color.hue, 0, 359), std::clamp(color.saturation, 0, 255), std::clamp(color.value, 0, 255)};
    update();
}

QSize HsbPicker::sizeHint() const
{
    return {260, 220};
}

QSize HsbPicker::minimumSizeHint() const
{
    return {160, 120};
}
