#include "colour/RgbCubePicker.h"

#include <algorithm>

RgbCubePicker::RgbCubePicker(QWidget *parent) : QWidget(parent) {}

RgbCubePicker::~RgbCubePicker() = default;

void RgbCubePicker::setColor(const RGBType &color)
{
    m_color = {std::clamp(color.red, 0, 255), std::clamp(color.green, 0, 255), std::clamp(color.blue, 0, 255)};
    update();
}

QSize RgbCubePicker::sizeHint() const
{
    return {260, 220};
}

QSize RgbCubePicker::minimumSizeHint() const
{
    return {160, 120};
}
