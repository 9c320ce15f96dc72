#include "colour/ColorVision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace ColorVision;

struct Pair
{
    Lab first;
    Lab second;
    double difference;
};

// The test data of Sharma, Wu and Dalal (2005): hues that meet across 0 and 180 degrees, greys, the blue turn.
class PublishedPairs : public testing::TestWithParam<Pair>
{
};

TEST_P(PublishedPairs, HaveTheirDifference)
{
    const auto &[first, second, want] = GetParam();
    EXPECT_NEAR(difference(first, second), want, 5e-5);
    EXPECT_NEAR(difference(second, first), want, 5e-5);
}

constexpr Pair pairs[] = {
    {{50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425},
    {{50, 3.1571, -77.2803}, {50, 0, -82.7485}, 2.8615},
    {{50, 2.8361, -74.0200}, {50, 0, -82.7485}, 3.4412},
    {{50, -1.3802, -84.2814}, {50, 0, -82.7485}, 1.0000},
    {{50, -1.1848, -84.8006}, {50, 0, -82.7485}, 1.0000},
    {{50, -0.9009, -85.5211}, {50, 0, -82.7485}, 1.0000},
    {{50, 0, 0}, {50, -1, 2}, 2.3669},
    {{50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792},
    {{50, 2.49, -0.001}, {50, -2.49, 0.0010}, 7.1792},
    {{50, 2.49, -0.001}, {50, -2.49, 0.0011}, 7.2195},
    {{50, 2.49, -0.001}, {50, -2.49, 0.0012}, 7.2195},
    {{50, -0.001, 2.49}, {50, 0.0009, -2.49}, 4.8045},
    {{50, -0.001, 2.49}, {50, 0.0010, -2.49}, 4.8045},
    {{50, -0.001, 2.49}, {50, 0.0011, -2.49}, 4.7461},
    {{50, 2.5, 0}, {50, 0, -2.5}, 4.3065},
    {{50, 2.5, 0}, {73, 25, -18}, 27.1492},
    {{50, 2.5, 0}, {61, -5, 29}, 22.8977},
    {{50, 2.5, 0}, {56, -27, -3}, 31.9030},
    {{50, 2.5, 0}, {58, 24, 15}, 19.4535},
    {{50, 2.5, 0}, {50, 3.1736, 0.5854}, 1.0000},
    {{50, 2.5, 0}, {50, 3.2972, 0}, 1.0000},
    {{50, 2.5, 0}, {50, 1.8634, 0.5757}, 1.0000},
    {{50, 2.5, 0}, {50, 3.2592, 0.3350}, 1.0000},
    {{60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644},
    {{63.0109, -31.0961, -5.8663}, {62.8187, -29.7946, -4.0864}, 1.2630},
    {{61.2901, 3.7196, -5.3901}, {61.4292, 2.2480, -4.9620}, 1.8731},
    {{35.0831, -44.1164, 3.7933}, {35.0232, -40.0716, 1.5901}, 1.8645},
    {{22.7233, 20.0904, -46.6940}, {23.0331, 14.9730, -42.5619}, 2.0373},
    {{36.4612, 47.8580, 18.3852}, {36.2715, 50.5065, 21.2231}, 1.4146},
    {{90.8027, -2.0831, 1.4410}, {91.1528, -1.6435, 0.0447}, 1.4441},
    {{90.9257, -0.5406, -0.9208}, {88.6381, -0.8985, -0.7239}, 1.5381},
    {{6.7747, -0.2908, -2.4247}, {5.8714, -0.0985, -2.2286}, 0.6377},
    {{2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082},
};

INSTANTIATE_TEST_SUITE_P(Sharma, PublishedPairs, testing::ValuesIn(pairs));

TEST(ColorVision, LabOfScreenColours)
{
    // After the formulas of CIE 15 on IEC 61966-2-1, as published for the primaries.
    struct Row
    {
        COLORREF color;
        Lab lab;
    };
    const Row rows[] = {
        {0x000000, {0, 0, 0}},
        {0xFFFFFF, {100, 0, 0}},
        {0x0000FF, {53.24, 80.09, 67.20}},
        {0x00FF00, {87.73, -86.18, 83.18}},
        {0xFF0000, {32.30, 79.19, -107.86}},
    };
    for (const Row &row : rows) {
        const Lab lab = toLab(row.color);
        EXPECT_NEAR(lab.l, row.lab.l, 0.02) << row.color;
        EXPECT_NEAR(lab.a, row.lab.a, 0.06) << row.color;
        EXPECT_NEAR(lab.b, row.lab.b, 0.06) << row.color;
        EXPECT_NEAR(lightness(row.color), lab.l, 1e-9) << row.color;
    }
}

constexpr Deficiency deficiencies[] = {Deficiency::Protanopia, Deficiency::Deuteranopia, Deficiency::Tritanopia,
                                       Deficiency::Achromatopsia};

TEST(ColorVision, GreysLookTheSameToAll)
{
    for (const Deficiency deficiency : deficiencies) {
        for (int i = 0; i < 256; ++i)
            ASSERT_EQ(simulate(TxColorRef::make(i, i, i), deficiency), TxColorRef::make(i, i, i)) << i;
    }
    EXPECT_EQ(simulate(0x123456, Deficiency::None), 0x123456U);
}

TEST(ColorVision, ConfusedColoursComeTogether)
{
    // Pairs on a line through the point of the missing cone in the CIE 1931 diagram: (0.7465, 0.2535), (1.4, -0.4) and
    // (0.1748, 0) by Smith and Pokorny; reckoned without the library.
    struct Row
    {
        Deficiency deficiency;
        COLORREF first;
        COLORREF second;
    };
    constexpr auto rgb = TxColorRef::make;
    const Row rows[] = {
        {Deficiency::Protanopia, rgb(232, 114, 78), rgb(24, 141, 80)},
        {Deficiency::Protanopia, rgb(234, 103, 199), rgb(39, 133, 200)},
        {Deficiency::Deuteranopia, rgb(197, 65, 87), rgb(24, 144, 79)},
        {Deficiency::Deuteranopia, rgb(194, 60, 202), rgb(39, 139, 200)},
        {Deficiency::Tritanopia, rgb(116, 108, 233), rgb(52, 142, 34)},
        {Deficiency::Tritanopia, rgb(177, 75, 232), rgb(149, 122, 24)},
    };
    for (const Row &row : rows) {
        EXPECT_GT(difference(row.first, row.second), 15.0);
        EXPECT_LT(difference(simulate(row.first, row.deficiency), simulate(row.second, row.deficiency)), 3.0);
    }
}

TEST(ColorVision, WhatIsSeenIsSeenAgainTheSame)
{
    // Every 15th of each part. What leaves the screen's colours is brought back into them, which is seen a little
    // different the second time.
    for (const Deficiency deficiency : deficiencies) {
        double most = 0.0;
        for (int r = 0; r < 256; r += 15) {
            for (int g = 0; g < 256; g += 15) {
                for (int b = 0; b < 256; b += 15) {
                    const COLORREF once = simulate(TxColorRef::make(r, g, b), deficiency);
                    most = std::max(most, difference(once, simulate(once, deficiency)));
                }
            }
        }
        EXPECT_LT(most, 8.0) << static_cast<int>(deficiency);
    }
}

} // namespace
