#include "colour/ColorVision.h"
#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using Traits = TxStockGradientTraits;

/// Calls @p check with the ramp in @p count colours, the traits and the name of every stock ramp.
template<typename Check>
void forAllRamps(qint32 count, Check check)
{
    for (qint32 style = 0; style < CTxColorFolder::GetStockGradientCount(); ++style) {
        CTxColorFolder ramp;
        ramp.MakeStockGradient(count, style);
        check(ramp.GetColors(), TxGetStockGradientTraits(style),
              CTxColorFolder::GetStockGradientName(style).toStdString());
    }
}

TEST(StockGradientClaims, SequentialOnesOnlyEverGetLighterOrDarker)
{
    forAllRamps(256, [](const QList<COLORREF> &ramp, const Traits &traits, const std::string &name) {
        if (traits.kind != Traits::Sequential)
            return;
        const double sign = ColorVision::lightness(ramp.last()) > ColorVision::lightness(ramp.first()) ? 1 : -1;
        double reached = -1000, back = 0;
        for (const COLORREF color : ramp) {
            const double lightness = sign * ColorVision::lightness(color);
            back = std::max(back, reached - lightness);
            reached = std::max(reached, lightness);
        }
        EXPECT_LE(back, 0.3) << name << ": less than one stored step";
    });
}

TEST(StockGradientClaims, UniformOnesHaveStepsThatLookAlike)
{
    // They are made even in another space than the one they are measured in; a rainbow has 14 here.
    static constexpr double mostRatio = 2.4;
    forAllRamps(17, [](const QList<COLORREF> &ramp, const Traits &traits, const std::string &name) {
        if (!traits.isUniform)
            return;
        double least = 1000, most = 0;
        for (qsizetype i = 1; i < ramp.size(); ++i) {
            if (traits.hasSeaLevel && i == ramp.size() / 2)
                continue;
            const double step = ColorVision::difference(ramp[i - 1], ramp[i]);
            least = std::min(least, step);
            most = std::max(most, step);
        }
        EXPECT_LE(most / least, mostRatio) << name;
    });
}

TEST(StockGradientClaims, SafeOnesKeepNineColoursApartForEverybody)
{
    using ColorVision::Deficiency;
    static constexpr double leastDifference = 4; // of CIEDE2000; 1 is just noticeable
    forAllRamps(9, [](const QList<COLORREF> &ramp, const Traits &traits, const std::string &name) {
        if (!traits.isColorBlindSafe)
            return;
        const qsizetype last = traits.kind == Traits::Cyclic ? ramp.size() - 1 : ramp.size(); // the ends are the same
        for (const Deficiency deficiency : {Deficiency::Protanopia, Deficiency::Deuteranopia, Deficiency::Tritanopia}) {
            for (qsizetype i = 0; i < last; ++i) {
                for (qsizetype j = 0; j < i; ++j) {
                    EXPECT_GE(ColorVision::difference(ColorVision::simulate(ramp[i], deficiency),
                                                      ColorVision::simulate(ramp[j], deficiency)),
                              leastDifference)
                        << name << ' ' << j << ' ' << i << " deficiency " << static_cast<int>(deficiency);
                }
            }
        }
    });
}

TEST(StockGradientClaims, DivergingOnesMirrorTheirLightnessAtTheMiddle)
{
    forAllRamps(256, [](const QList<COLORREF> &ramp, const Traits &traits, const std::string &name) {
        if (traits.kind != Traits::Diverging)
            return;
        for (qsizetype i = 0; i < 128; ++i) {
            const double left = ColorVision::lightness(ramp[i]), right = ColorVision::lightness(ramp[255 - i]);
            EXPECT_NEAR(left, right, 8) << name << ' ' << i;
            EXPECT_LE(std::max(left, right), ColorVision::lightness(ramp[127]) + 8)
                << name << ": lightest in the middle";
        }
    });
}

} // namespace
