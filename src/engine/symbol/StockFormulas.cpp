#include "engine/symbol/StockFormulas.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

/// What an eye answers to light of one wavelength, in nanometres.
struct Response
{
    double wavelength, x, y, z;
};

/// A bell of height 1 at @p middle, whose widths differ below and above it.
double bell(double wavelength, double middle, double below, double above)
{
    const double offset = (wavelength - middle) / (wavelength < middle ? below : above);
    return std::exp(-offset * offset / 2);
}

const std::vector<Response> &responses()
{
    static const std::vector<Response> all = [] {
        std::vector<Response> list;
        for (int i = 380; i <= 780; i += 10) {
            const double w = i;
            list.push_back({w,
                            1.056 * bell(w, 599.8, 37.9, 31.0) + 0.362 * bell(w, 442.0, 16.0, 26.7) -
                                0.065 * bell(w, 501.1, 20.4, 26.2),
                            0.821 * bell(w, 568.8, 46.9, 40.5) + 0.286 * bell(w, 530.9, 16.3, 31.1),
                            1.217 * bell(w, 437.0, 11.8, 36.0) + 0.681 * bell(w, 459.0, 26.0, 13.8)});
        }
        return list;
    }();
    return all;
}

} // namespace

Oklab::LinearRgb StockFormulas::cubehelix(double place)
{
    constexpr double start = 0.5, rotations = -1.5, strength = 1.0;
    const double angle = 2 * std::numbers::pi * (start / 3 + rotations * place);
    const double amplitude = strength * place * (1 - place) / 2;
    const double c = amplitude * std::cos(angle), s = amplitude * std::sin(angle);
    return Oklab::fromStored(place - 0.14861 * c + 1.78277 * s, place - 0.29227 * c - 0.90649 * s, place + 1.97294 * c);
}

Oklab::LinearRgb StockFormulas::blackBody(double place)
{
    constexpr double coldest = 1000, hottest = 20000; // kelvin
    const double inverse = (1 - place) / coldest + place / hottest;
    double x = 0, y = 0, z = 0;
    for (const Response &response : responses()) {
        constexpr double secondRadiation = 1.438777e7; // nanometre kelvin
        const double power =
            std::pow(response.wavelength, -5) / std::expm1(secondRadiation * inverse / response.wavelength);
        x += response.x * power;
        y += response.y * power;
        z += response.z * power;
    }
    const Oklab::LinearRgb color{std::max(0.0, 3.2406 * x - 1.5372 * y - 0.4986 * z),
                                 std::max(0.0, -0.9689 * x + 1.8758 * y + 0.0415 * z),
                                 std::max(0.0, 0.0557 * x - 0.2040 * y + 1.0570 * z)};
    const double brightest = std::max({color.red, color.green, color.blue});
    return {color.red / brightest, color.green / brightest, color.blue / brightest};
}

Oklab::LinearRgb StockFormulas::hueCircle(double place)
{
    constexpr double lightness = 0.74, strength = 0.12, first = 29.0 / 180 * std::numbers::pi; // red
    const double angle = first + 2 * std::numbers::pi * (place < 1 ? place : 0);
    return Oklab::toLinear(Oklab::Lab{lightness, strength * std::cos(angle), strength * std::sin(angle)});
}
