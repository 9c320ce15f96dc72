#include "colour/HSVType.h"
#include "colour/RGBType.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// The rules as they are told in words, step by step. Compared once with all 360 x 256 x 256 and 256 x 256 x 256 colours
// (no difference); the tests sample.

RGBType rgbByRule(double h, double s, double v)
{
    const double delta = s * v / 255;
    const double low = v - delta;
    const auto cut = [](double r, double g, double b) { return RGBType(int(r), int(g), int(b)); };
    if (h > 300 || h < 61)
        return h < 301 ? cut(v, h / 60 * delta + low, low) : cut(v, low, low - (h - 360) / 60 * delta);
    if (h >= 180)
        return h < 240 ? cut(low, low - (h / 60 - 4) * delta, v) : cut(low + (h / 60 - 4) * delta, low, v);
    return h >= 120 ? cut(low, v, low + (h / 60 - 2) * delta) : cut(low - (h / 60 - 2) * delta, v, low);
}

HSVType hsvByRule(double r, double g, double b)
{
    const double max = std::max({r, g, b});
    const double delta = max - std::min({r, g, b});
    if (delta == 0)
        return {0, 0, int(max)};
    double h = (b - r) / delta + 2;
    if (r == max)
        h = (g - b) / delta;
    else if (g != max)
        h = (r - g) / delta + 4;
    h *= 60;
    if (h < 0)
        h += 360;
    return {h == 360.0 ? 0 : int(h), int(delta / max * 255), int(max)};
}

TEST(ColourTypes, HsvFollowsItsSectors)
{
    // Every hue, with all ends and every fifth of the others: 360 x 53 x 53 of 360 x 256 x 256.
    for (int h = 0; h < 360; ++h) {
        for (int s = 0; s <= 255; s += s < 250 ? 5 : 1) {
            for (int v = 0; v <= 255; v += v < 250 ? 5 : 1)
                ASSERT_EQ(HSVType(h, s, v).toRGB(), rgbByRule(h, s, v)) << h << ' ' << s << ' ' << v;
        }
    }
}

TEST(ColourTypes, HsvSectorsEndWhereUsersColoursWereStored)
{
    EXPECT_EQ(HSVType(60, 255, 255).toRGB(), RGBType(255, 255, 0));
    EXPECT_EQ(HSVType(61, 255, 255).toRGB(), RGBType(250, 255, 0)); // -(61/60 - 2) * 255 = 250.75
    EXPECT_EQ(HSVType(300, 255, 255).toRGB(), RGBType(255, 0, 255));
    EXPECT_EQ(HSVType(301, 255, 255).toRGB(), RGBType(255, 0, 250));
    EXPECT_EQ(HSVType(77, 0, 93).toRGB(), RGBType(93, 93, 93));
}

TEST(ColourTypes, HueIsThatOfTheLargestPartRedThenGreenWinningTies)
{
    struct Row
    {
        RGBType rgb;
        HSVType hsv;
    };
    const Row rows[] = {
        {{0, 0, 0}, {0, 0, 0}},          {{200, 200, 200}, {0, 0, 200}},   {{255, 0, 0}, {0, 255, 255}},
        {{255, 255, 0}, {60, 255, 255}}, {{0, 255, 255}, {180, 255, 255}}, {{255, 0, 255}, {300, 255, 255}},
        {{255, 0, 1}, {359, 255, 255}},  {{10, 20, 30}, {210, 170, 30}},   {{30, 20, 10}, {30, 170, 30}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(row.rgb.toHSV(), row.hsv) << testing::PrintToString(row.rgb.color());
}

TEST(ColourTypes, RgbToHsvFollowsItsRuleAndIsInvertedButForWhatIsCutOff)
{
    // Every fifth of each part: 52 cubed of 256 cubed. A whole degree is at most 255/60 = 4.25 of a part, and each
    // cut-off of saturation and result takes less than 1 more.
    for (int r = 0; r < 256; r += 5) {
        for (int g = 0; g < 256; g += 5) {
            for (int b = 0; b < 256; b += 5) {
                const HSVType hsv = RGBType(r, g, b).toHSV();
                ASSERT_EQ(hsv, hsvByRule(r, g, b)) << r << ' ' << g << ' ' << b;
                const RGBType back = hsv.toRGB();
                ASSERT_LE(std::max({std::abs(back.red - r), std::abs(back.green - g), std::abs(back.blue - b)}), 6)
                    << r << ' ' << g << ' ' << b;
            }
        }
    }
}

TEST(ColourTypes, ColorTakesTheLowBytes)
{
    EXPECT_EQ(RGBType(1, 2, 3).color(), 0x030201U);
    EXPECT_EQ(RGBType(257, -1, 512).color(), 0x00FF01U);
    EXPECT_EQ(RGBType(COLORREF(0x7F030201)), RGBType(1, 2, 3));
}

TEST(ColourTypes, ValuesOutOfRangeAreSafe)
{
    constexpr qint32 most = std::numeric_limits<qint32>::max();
    constexpr qint32 least = std::numeric_limits<qint32>::min();
    for (const qint32 h : {least, -1, 360, most}) {
        for (const qint32 s : {least, -1, 256, most}) {
            for (const qint32 v : {least, -1, 256, most}) {
                HSVType(h, s, v).toRGB().toHSV();
                RGBType(h, s, v).toHSV();
            }
        }
    }
    EXPECT_EQ(HSVType(0, 0, most).toRGB(), RGBType(most, most, most));
}

} // namespace
