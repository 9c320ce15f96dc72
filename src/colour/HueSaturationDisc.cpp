#include "colour/HueSaturationDisc.h"
#include "colour/RGBType.h"

#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double fullSaturation = 255.0;

double degrees(double radians)
{
    const double angle = radians * 180.0 / M_PI;
    const double turned = angle < 0.0 ? angle + 360.0 : angle;
    return turned < 360.0 ? turned : 0.0; // the smallest negative angles turn to 360 itself
}

/// The pure colours of the 360 degrees, as the conversion of picked colours gives them, and the first one again.
std::array<RGBType, 361> pureColors()
{
    std::array<RGBType, 361> colors;
    for (int hue = 0; hue <= 360; ++hue)
        colors[static_cast<std::size_t>(hue)] = HSVType(hue % 360, 255, 255).toRGB();
    return colors;
}

} // namespace

QPointF HueSaturationDisc::pointOf(const HueSaturation &place) const
{
    const double distance = radius * place.saturation / fullSaturation;
    const double angle = qDegreesToRadians(place.hue);
    return {centre.x() + distance * std::cos(angle), centre.y() - distance * std::sin(angle)};
}

HueSaturation HueSaturationDisc::at(const QPointF &point) const
{
    const QPointF offset = point - centre;
    const double distance = std::hypot(offset.x(), offset.y());
    if (distance == 0.0 || radius <= 0.0)
        return {};
    return {degrees(std::atan2(-offset.y(), offset.x())), std::min(distance / radius, 1.0) * fullSaturation};
}

bool HueSaturationDisc::contains(const QPointF &point, double slack) const
{
    return std::hypot(point.x() - centre.x(), point.y() - centre.y()) <= radius + slack;
}

HSVType HueSaturationDisc::rounded(const HueSaturation &place, int value)
{
    return {static_cast<qint32>(std::lround(place.hue)) % 360, static_cast<qint32>(std::lround(place.saturation)),
            value};
}

QImage HueSaturationDisc::picture(int pixels)
{
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    const std::array<RGBType, 361> pure = pureColors();
    const double radius = pixels / 2.0;
    for (int y = 0; y < pixels; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        const double up = radius - (y + 0.5);
        for (int x = 0; x < pixels; ++x) {
            const double right = x + 0.5 - radius;
            const double distance = std::sqrt(right * right + up * up);
            const double coverage = std::clamp(radius - distance + 0.5, 0.0, 1.0);
            if (coverage == 0.0) {
                line[x] = 0;
                continue;
            }
            const double hue = degrees(std::atan2(up, right));
            const auto degree = static_cast<std::size_t>(hue);
            const double part = hue - static_cast<double>(degree);
            const RGBType &from = pure[degree];
            const RGBType &to = pure[degree + 1];
            const double saturation = std::min(distance / radius, 1.0);
            const auto mixed = [&](int first, int second) {
                const double full = first + (second - first) * part;
                return static_cast<int>((fullSaturation + (full - fullSaturation) * saturation) * coverage + 0.5);
            };
            line[x] = qRgba(mixed(from.red, to.red), mixed(from.green, to.green), mixed(from.blue, to.blue),
                            static_cast<int>(coverage * 255.0 + 0.5));
        }
    }
    return image;
}
