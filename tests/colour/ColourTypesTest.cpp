#include "colour/HSVType.h"
#include "colour/RGBType.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The sectors by a table: what stands in red, green and blue of the value (v), the low (l), and the part that moves
/// from the multiple of 60 degrees that stands behind it, upwards or downwards from the low.
RGBType byTable(int h, int s, int v)
{
    struct Sector
    {
        int last;
        const char *parts; // m: the part that moves
        double from;
        int sign;
    };
    constexpr Sector sectors[] = {{60, "vml", 0, 1},   {119, "mvl", 2, -1}, {179, "lvm", 2, 1},
                                  {239, "lmv", 4, -1}, {300, "mlv", 4, 1},  {359, "vlm", 6, -1}};
    const double delta = double(s) * v / 255;
    const double low = v - delta;
    const Sector &sector = *std::find_if(std::begin(sectors), std::end(sectors), [h](auto &x) { return h <= x.last; });
    // The last sector counts whole degrees from 360, the others parts of 60.
    const double turn = sector.from == 6 ? (h - 360) / 60.0 : h / 60.0 - sector.from;
    const double moved = low + sector.sign * turn * delta;
    const auto part = [&](int i) {
        const char c = sector.parts[i];
        return static_cast<qint32>(std::trunc(c == 'v' ? v : c == 'l' ? low : moved));
    };
    return {part(0), part(1), part(2)};
}

TEST(ColourTypes, HsvFollowsItsSectors)
{
    // Every hue, with all ends and every fifth of the others: 360 x 53 x 53 of 360 x 256 x 256.
    for (int h = 0; h < 360; ++h) {
        for (int s = 0; s <= 255; s += s < 250 ? 5 : 1) {
            for (int v = 0; v <= 255; v += v < 250 ? 5 : 1)
                ASSERT_EQ(HSVType(h, s, v).toRGB(), byTable(h, s, v)) << h << ' ' << s << ' ' << v;
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

TEST(ColourTypes, RgbToHsvIsItsInverseButForWhatIsCutOff)
{
    // Every seventh of each part: 37 cubed of 256 cubed. A whole degree is at most 255/60 = 4.25 of a part, and each
    // cut-off of saturation and result takes less than 1 more.
    for (int r = 0; r < 256; r += 7) {
        for (int g = 0; g < 256; g += 7) {
            for (int b = 0; b < 256; b += 7) {
                const HSVType hsv = RGBType(r, g, b).toHSV();
                ASSERT_TRUE(hsv.hue >= 0 && hsv.hue < 360 && hsv.saturation >= 0 && hsv.saturation < 256);
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
