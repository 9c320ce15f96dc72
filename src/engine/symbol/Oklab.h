#pragma once

#include "engine/base/TxColorRef.h"

/// The colour space OKLab, in which equal distances look about equally far apart.
/// Source: Björn Ottosson, "A perceptual color space for image processing", 2020 (the matrices are free for any use);
/// the curve between stored and linear light is that of IEC 61966-2-1 (sRGB).
namespace Oklab {

/// Red, green and blue in linear light, 0 to 1 each where the screen can show them.
struct LinearRgb
{
    double red, green, blue;
};

/// Lightness 0 to 1, and the greenish-reddish and bluish-yellowish parts, about -0.4 to 0.4.
struct Lab
{
    double lightness, a, b;
};

LinearRgb toLinear(COLORREF color);
/// Linear light of stored parts, 0 to 1 each; what lies beyond is cut.
LinearRgb fromStored(double red, double green, double blue);
/// Parts below 0 or above 1 are colours that the screen cannot show.
LinearRgb toLinear(const Lab &color);
/// The nearest stored colour; what the screen cannot show is cut at its limits.
COLORREF toColor(const LinearRgb &color);
Lab toLab(COLORREF color);
COLORREF toColor(const Lab &color);
/// How far two colours are apart: about 0.01 is just noticeable.
double distance(const Lab &first, const Lab &second);

} // namespace Oklab
