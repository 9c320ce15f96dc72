#include "colour/CurrentColor.h"

#include <algorithm>
#include <array>

namespace {

struct PartRow
{
    qint32 RGBType::*ofRgb; ///< null where the part is one of HSVType
    qint32 HSVType::*ofHsv;
    int maximum;
};

// In the order of CurrentColor::Part.
constexpr std::array<PartRow, CurrentColor::partCount> parts = {{
    {&RGBType::red, nullptr, 255},
    {&RGBType::green, nullptr, 255},
    {&RGBType::blue, nullptr, 255},
    {nullptr, &HSVType::hue, 359},
    {nullptr, &HSVType::saturation, 255},
    {nullptr, &HSVType::value, 255},
}};

} // namespace

int CurrentColor::part(Part part) const
{
    const PartRow &row = parts[part];
    return row.ofRgb ? m_rgb.*row.ofRgb : m_hsv.*row.ofHsv;
}

int CurrentColor::maximum(Part part)
{
    return parts[part].maximum;
}

bool CurrentColor::setPart(Part part, int value)
{
    const PartRow &row = parts[part];
    const int inRange = std::clamp(value, 0, row.maximum);
    if (row.ofRgb) {
        RGBType rgb = m_rgb;
        rgb.*row.ofRgb = inRange;
        return setRgb(rgb);
    }
    HSVType hsv = m_hsv;
    hsv.*row.ofHsv = inRange;
    return setHsv(hsv);
}

bool CurrentColor::setRgb(const RGBType &rgb)
{
    if (rgb == m_rgb)
        return false;
    m_rgb = rgb;
    m_hsv = rgb.toHSV();
    return true;
}

bool CurrentColor::setHsv(const HSVType &hsv)
{
    if (hsv == m_hsv)
        return false;
    m_hsv = hsv;
    m_rgb = hsv.toRGB();
    return true;
}
