#include "engine/symbol/Oklab.h"

#include <algorithm>
#include <cmath>

namespace {

double linearOf(double stored)
{
    const double part = std::clamp(stored, 0.0, 1.0);
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

int storedOf(double linear)
{
    const double part = std::clamp(linear, 0.0, 1.0);
    const double stored = part <= 0.0031308 ? part * 12.92 : 1.055 * std::pow(part, 1 / 2.4) - 0.055;
    return static_cast<int>(std::lround(stored * 255));
}

double cubed(double value)
{
    return value * value * value;
}

} // namespace

Oklab::LinearRgb Oklab::toLinear(COLORREF color)
{
    return fromStored(TxColorRef::red(color) / 255.0, TxColorRef::green(color) / 255.0,
                      TxColorRef::blue(color) / 255.0);
}

Oklab::LinearRgb Oklab::fromStored(double red, double green, double blue)
{
    return {linearOf(red), linearOf(green), linearOf(blue)};
}

COLORREF Oklab::toColor(const LinearRgb &color)
{
    return TxColorRef::make(storedOf(color.red), storedOf(color.green), storedOf(color.blue));
}

Oklab::Lab Oklab::toLab(COLORREF color)
{
    const auto [red, green, blue] = toLinear(color);
    const double l = std::cbrt(0.4122214708 * red + 0.5363325363 * green + 0.0514459929 * blue);
    const double m = std::cbrt(0.2119034982 * red + 0.6806995451 * green + 0.1073969566 * blue);
    const double s = std::cbrt(0.0883024619 * red + 0.2817188376 * green + 0.6299787005 * blue);
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s};
}

Oklab::LinearRgb Oklab::toLinear(const Lab &color)
{
    const double l = cubed(color.lightness + 0.3963377774 * color.a + 0.2158037573 * color.b);
    const double m = cubed(color.lightness - 0.1055613458 * color.a - 0.0638541728 * color.b);
    const double s = cubed(color.lightness - 0.0894841775 * color.a - 1.2914855480 * color.b);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s};
}

COLORREF Oklab::toColor(const Lab &color)
{
    return toColor(toLinear(color));
}

double Oklab::distance(const Lab &first, const Lab &second)
{
    return std::hypot(first.lightness - second.lightness, first.a - second.a, first.b - second.b);
}
