#include "colour/HueSaturationDisc.h"
#include "colour/RGBType.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double fullSaturation = 255.0;

double degrees(double radians)
{
    const double angle = radians * 180.0 / M_PI;
    const double turned = angle < 0.0 ? angle + 360.0 : angle;
    return turned < 360.0 ? turned : 0.0; // the smallest negative angles turn to 360 itself
}

struct PureColor
{
    float red;
    float green;
    float blue;
};

/// How many pure colours to a degree: neighbours differ by about half of what a pixel can tell.
constexpr int pureColorsADegree = 8;

/// The pure colours once around and the first again, by the conversion that picked colours go through, and linear
/// between its whole degrees.
std::vector<PureColor> pureColors()
{
    std::vector<PureColor> colors;
    colors.reserve(360 * pureColorsADegree + 1);
    for (int place = 0; place <= 360 * pureColorsADegree; ++place) {
        const int degree = place / pureColorsADegree;
        const float part = static_cast<float>(place % pureColorsADegree) / pureColorsADegree;
        const RGBType from = HSVType(degree % 360, 255, 255).toRGB();
        const RGBType to = HSVType((degree + 1) % 360, 255, 255).toRGB();
        const auto mixed = [part](int first, int second) {
            return static_cast<float>(first) + static_cast<float>(second - first) * part;
        };
        colors.push_back({mixed(from.red, to.red), mixed(from.green, to.green), mixed(from.blue, to.blue)});
    }
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
    const std::vector<PureColor> pure = pureColors();
    const float radius = static_cast<float>(pixels) / 2.0F;
    constexpr float placesARadian = static_cast<float>(pureColorsADegree * 180.0 / M_PI);
    const float turn = static_cast<float>(pureColorsADegree * 360);
    for (int y = 0; y < pixels; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        const float up = radius - (static_cast<float>(y) + 0.5F);
        for (int x = 0; x < pixels; ++x) {
            const float right = static_cast<float>(x) + 0.5F - radius;
            const float distance = std::sqrt(right * right + up * up);
            const float coverage = std::min(radius - distance + 0.5F, 1.0F);
            if (coverage <= 0.0F) {
                line[x] = 0;
                continue;
            }
            const float place = std::atan2(up, right) * placesARadian;
            const PureColor &full = pure[static_cast<std::size_t>((place < 0.0F ? place + turn : place) + 0.5F)];
            // From white in the centre to the pure colour at the rim.
            const float saturation = std::min(distance / radius, 1.0F);
            const float white = 255.0F * (1.0F - saturation);
            const auto mixed = [&](float part) {
                return static_cast<int>((white + part * saturation) * coverage + 0.5F);
            };
            line[x] =
                qRgba(mixed(full.red), mixed(full.green), mixed(full.blue), static_cast<int>(coverage * 255.0F + 0.5F));
        }
    }
    return image;
}
