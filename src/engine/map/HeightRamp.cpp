#include "engine/map/HeightRamp.h"

#include "engine/map/TxLayerStyle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Lowland green over ochre and brown to the white of snow.
constexpr std::array<QRgb, 7> stops = {0xff6f9f78, 0xff9dbf8a, 0xffd6d7a3, 0xffe0c48b,
                                       0xffc49a6c, 0xffa88672, 0xfff4f1ee};

int mix(int a, int b, double t)
{
    return static_cast<int>(std::lround(a + (b - a) * t));
}

} // namespace

CTxColorsetEx usualColors(double floor, double ceiling)
{
    CTxColorsetEx colors;
    colors.SetZFloor(floor);
    colors.SetZCeiling(ceiling);
    for (const QRgb stop : stops)
        colors.AddColor(TxColorRef::fromRgb(stop));
    return colors;
}

QColor HeightRamp::colour(double level)
{
    const double place = std::clamp(std::isnan(level) ? 0.0 : level, 0.0, 1.0) * (stops.size() - 1);
    const size_t index = std::min(static_cast<size_t>(place), stops.size() - 2);
    const double t = place - static_cast<double>(index);
    const QRgb a = stops[index];
    const QRgb b = stops[index + 1];
    return QColor(mix(qRed(a), qRed(b), t), mix(qGreen(a), qGreen(b), t), mix(qBlue(a), qBlue(b), t));
}

const QList<QRgb> &HeightRamp::table()
{
    static const QList<QRgb> colours = [] {
        QList<QRgb> list;
        for (int i = 0; i < 256; ++i)
            list.append(colour(i / 255.0).rgb());
        return list;
    }();
    return colours;
}

double HeightRamp::shade(const CPoint2D *points, const double *zs, double range)
{
    const double ax = points[1].x - points[0].x;
    const double ay = points[1].y - points[0].y;
    const double bx = points[2].x - points[0].x;
    const double by = points[2].y - points[0].y;
    const double area = ax * by - ay * bx;
    if (area == 0 || !(range > 0))
        return 1.0;
    // The gradient of the plane through the corners. Heights and places may have different units (metres over degrees),
    // so the slope is told relative to the face: one that rises by a sixth of the whole range is steep.
    constexpr double steepness = 6.0;
    const double az = zs[1] - zs[0];
    const double bz = zs[2] - zs[0];
    const double size = std::sqrt(std::abs(area));
    const double gx = (az * by - bz * ay) / area * size / range * steepness;
    const double gy = (bz * ax - az * bx) / area * size / range * steepness;
    constexpr double side = 0.5; // the light comes from (-1, 1), 45 degrees above the horizon
    constexpr double up = 0.70710678118654752;
    const double length = std::sqrt(gx * gx + gy * gy + 1);
    const double light = (gx * side - gy * side + up) / length;
    return 0.55 + 0.45 * std::clamp(light / up, 0.0, 1.25);
}

QColor HeightRamp::shaded(const QColor &colour, double shade)
{
    const auto part = [shade](int value) { return std::clamp(static_cast<int>(std::lround(value * shade)), 0, 255); };
    return QColor(part(colour.red()), part(colour.green()), part(colour.blue()));
}
