#include "colour/ColorVision.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

using ColorVision::Deficiency;
using ColorVision::Lab;

struct Vector
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

constexpr double dot(const Vector &a, const Vector &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

constexpr Vector cross(const Vector &a, const Vector &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

struct Matrix
{
    Vector rows[3];

    constexpr Vector operator*(const Vector &v) const { return {dot(rows[0], v), dot(rows[1], v), dot(rows[2], v)}; }
    constexpr Vector column(int i) const
    {
        constexpr Vector units[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        return *this * units[i];
    }
    constexpr Matrix operator*(const Matrix &other) const
    {
        const Matrix t = {{other.column(0), other.column(1), other.column(2)}};
        return {{t * rows[0], t * rows[1], t * rows[2]}};
    }
    constexpr Matrix inverse() const
    {
        const Vector c[] = {cross(rows[1], rows[2]), cross(rows[2], rows[0]), cross(rows[0], rows[1])};
        const double d = dot(rows[0], c[0]);
        return {{{c[0].x / d, c[1].x / d, c[2].x / d},
                 {c[0].y / d, c[1].y / d, c[2].y / d},
                 {c[0].z / d, c[1].z / d, c[2].z / d}}};
    }
};

/// Light in red, green and blue to CIE 1931 XYZ: IEC 61966-2-1 (sRGB).
constexpr Matrix rgbToXyz = {{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};
constexpr Vector white = rgbToXyz * Vector{1, 1, 1};

/// The light of each part of a colour, 0 to 1: IEC 61966-2-1.
const std::array<double, 256> &lightOfParts()
{
    static const auto table = [] {
        std::array<double, 256> lights;
        for (size_t i = 0; i < lights.size(); ++i) {
            const double part = static_cast<double>(i) / 255.0;
            lights[i] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        }
        return lights;
    }();
    return table;
}

Vector lightOf(COLORREF color)
{
    const std::array<double, 256> &lights = lightOfParts();
    return {lights[static_cast<size_t>(TxColorRef::red(color))], lights[static_cast<size_t>(TxColorRef::green(color))],
            lights[static_cast<size_t>(TxColorRef::blue(color))]};
}

/// The part of a colour that gives the light nearest to @p light, by a table as fine as the darkest parts need.
int partOfLight(double light)
{
    constexpr int steps = 4096;
    static const auto table = [] {
        std::array<quint8, steps + 1> parts;
        for (size_t i = 0; i < parts.size(); ++i) {
            const double x = static_cast<double>(i) / steps;
            const double part = x <= 0.0031308 ? x * 12.92 : 1.055 * std::pow(x, 1.0 / 2.4) - 0.055;
            parts[i] = static_cast<quint8>(std::lround(part * 255.0));
        }
        return parts;
    }();
    return table[static_cast<size_t>(std::clamp(light, 0.0, 1.0) * steps + 0.5)];
}

COLORREF colorOfLight(const Vector &light)
{
    return TxColorRef::make(partOfLight(light.x), partOfLight(light.y), partOfLight(light.z));
}

// Dichromats confuse all colours that differ only in what their missing cones would have seen. Which colour of those
// they see is known from people with one dichromatic eye: it lies on one of two half planes that meet at the greys and
// pass through two pure lights that look the same to both eyes.
// Brettel, Vienot, Mollon: Computerized simulation of color appearance for dichromats. J. Opt. Soc. Am. A 14 (1997).

/// CIE 1931 XYZ to the cones' responses to long, middle and short waves: Smith and Pokorny (1975), as matrix in Vienot,
/// Brettel, Mollon: Digital video colourmaps for checking the legibility of displays by dichromats. Color Research and
/// Application 24 (1999).
constexpr Matrix xyzToCones = {{{0.15514, 0.54312, -0.03286}, {-0.15514, 0.45684, 0.03286}, {0.0, 0.0, 0.00801}}};
constexpr Matrix rgbToCones = xyzToCones * rgbToXyz;
constexpr Matrix conesToRgb = rgbToCones.inverse();

// Pure lights in CIE 1931 XYZ, by nanometre.
constexpr Vector light475 = {0.1421, 0.1126, 1.0419};
constexpr Vector light485 = {0.05795, 0.1693, 0.6162};
constexpr Vector light575 = {0.8425, 0.9154, 0.0018};
constexpr Vector light660 = {0.1649, 0.0610, 0.0000};

/// What one kind of dichromat sees, as two linear maps of light in red, green and blue.
struct Dichromat
{
    Vector divide;    ///< colours on its positive side are seen through the first map
    Matrix toSeen[2]; ///< one for each half plane
};

/// The projection onto the plane of white and @p light along the axis of the missing cone.
constexpr Matrix projection(int missing, const Vector &light)
{
    const Vector plane = cross(rgbToCones * Vector{1, 1, 1}, xyzToCones * light);
    Matrix onto = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    if (missing == 0)
        onto.rows[0] = {0, -plane.y / plane.x, -plane.z / plane.x};
    else if (missing == 1)
        onto.rows[1] = {-plane.x / plane.y, 0, -plane.z / plane.y};
    else
        onto.rows[2] = {-plane.x / plane.z, -plane.y / plane.z, 0};
    return conesToRgb * onto * rgbToCones;
}

constexpr Dichromat dichromat(int missing, const Vector &first, const Vector &second)
{
    // The plane of the greys and of the missing cone's axis divides the two.
    const Vector axis = Matrix{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}.column(missing);
    Vector divide = cross(rgbToCones * Vector{1, 1, 1}, axis);
    if (dot(divide, xyzToCones * first) < 0)
        divide = {-divide.x, -divide.y, -divide.z};
    const Vector inRgb = {dot(divide, rgbToCones.column(0)), dot(divide, rgbToCones.column(1)),
                          dot(divide, rgbToCones.column(2))};
    return {inRgb, {projection(missing, first), projection(missing, second)}};
}

/// By deficiency, from Protanopia on.
constexpr Dichromat dichromats[] = {
    dichromat(0, light475, light575),
    dichromat(1, light475, light575),
    dichromat(2, light485, light660),
};

constexpr double degree = std::numbers::pi / 180.0;

/// CIE 15: the non-linear part of L*a*b*.
double labPart(double ratio)
{
    constexpr double limit = 216.0 / 24389.0;
    return ratio > limit ? std::cbrt(ratio) : (24389.0 / 27.0 * ratio + 16.0) / 116.0;
}

double power7(double x)
{
    const double cube = x * x * x;
    return cube * cube * x;
}

double lengthOf(double a, double b)
{
    return std::sqrt(a * a + b * b);
}

double hueOf(double a, double b)
{
    const double hue = a == 0.0 && b == 0.0 ? 0.0 : std::atan2(b, a) / degree;
    return hue < 0.0 ? hue + 360.0 : hue;
}

} // namespace

COLORREF ColorVision::simulate(COLORREF color, Deficiency deficiency)
{
    if (deficiency == Deficiency::None)
        return color;
    const Vector light = lightOf(color);
    if (deficiency == Deficiency::Achromatopsia) {
        const int grey = partOfLight(dot(rgbToXyz.rows[1], light));
        return TxColorRef::make(grey, grey, grey);
    }
    const Dichromat &eye = dichromats[static_cast<int>(deficiency) - static_cast<int>(Deficiency::Protanopia)];
    return colorOfLight(eye.toSeen[dot(eye.divide, light) >= 0.0 ? 0 : 1] * light);
}

Lab ColorVision::toLab(COLORREF color)
{
    const Vector xyz = rgbToXyz * lightOf(color);
    const double x = labPart(xyz.x / white.x);
    const double y = labPart(xyz.y / white.y);
    const double z = labPart(xyz.z / white.z);
    return {116.0 * y - 16.0, 500.0 * (x - y), 200.0 * (y - z)};
}

double ColorVision::lightness(COLORREF color)
{
    return 116.0 * labPart(dot(rgbToXyz.rows[1], lightOf(color))) - 16.0;
}

// After Sharma, Wu, Dalal: The CIEDE2000 color-difference formula: implementation notes, supplementary test data, and
// mathematical observations. Color Research and Application 30 (2005). The names are those of the paper.
double ColorVision::difference(const Lab &first, const Lab &second)
{
    constexpr double power7of25 = 6103515625.0;
    const double c7 = power7((lengthOf(first.a, first.b) + lengthOf(second.a, second.b)) / 2.0);
    const double stretch = 1.0 + 0.5 * (1.0 - std::sqrt(c7 / (c7 + power7of25)));
    const double a1 = first.a * stretch;
    const double a2 = second.a * stretch;
    const double c1 = lengthOf(a1, first.b);
    const double c2 = lengthOf(a2, second.b);
    const double h1 = hueOf(a1, first.b);
    const double h2 = hueOf(a2, second.b);

    const bool isGrey = c1 * c2 == 0.0;
    double dh = isGrey ? 0.0 : h2 - h1;
    double h = isGrey ? h1 + h2 : (h1 + h2) / 2.0;
    if (std::abs(dh) > 180.0) { // the shorter way round, and the mean upon it
        dh += dh > 0.0 ? -360.0 : 360.0;
        h += h1 + h2 < 360.0 ? 180.0 : -180.0;
    }
    const double dL = second.l - first.l;
    const double dC = c2 - c1;
    const double dH = 2.0 * std::sqrt(c1 * c2) * std::sin(dh / 2.0 * degree);

    const double l50 = ((first.l + second.l) / 2.0 - 50.0) * ((first.l + second.l) / 2.0 - 50.0);
    const double c = (c1 + c2) / 2.0;
    const double t = 1.0 - 0.17 * std::cos((h - 30.0) * degree) + 0.24 * std::cos(2.0 * h * degree) +
                     0.32 * std::cos((3.0 * h + 6.0) * degree) - 0.20 * std::cos((4.0 * h - 63.0) * degree);
    const double sL = 1.0 + 0.015 * l50 / std::sqrt(20.0 + l50);
    const double sC = 1.0 + 0.045 * c;
    const double sH = 1.0 + 0.015 * c * t;
    const double turn = (h - 275.0) / 25.0;
    const double rC = 2.0 * std::sqrt(power7(c) / (power7(c) + power7of25));
    const double rT = -std::sin(60.0 * std::exp(-turn * turn) * degree) * rC;
    const double l = dL / sL;
    const double chroma = dC / sC;
    const double hue = dH / sH;
    return std::sqrt(l * l + chroma * chroma + hue * hue + rT * chroma * hue);
}

double ColorVision::difference(COLORREF first, COLORREF second)
{
    return (first & 0xFFFFFFU) == (second & 0xFFFFFFU) ? 0.0 : difference(toLab(first), toLab(second));
}
