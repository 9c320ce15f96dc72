#include "engine/symbol/TxColorFolder.h"
#include "engine/symbol/TxStockGradient.h"

#include <gtest/gtest.h>

#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

QList<COLORREF> stock(qint32 count, qint32 style, bool reverse = false)
{
    CTxColorFolder ramp;
    EXPECT_EQ(ramp.MakeStockGradient(count, style, reverse), count);
    return ramp.GetColors();
}

std::string nameOf(qint32 style)
{
    return CTxColorFolder::GetStockGradientName(style).toStdString();
}

/// The channel that differs most between two colours.
int apart(COLORREF a, COLORREF b)
{
    return std::max({std::abs(TxColorRef::red(a) - TxColorRef::red(b)),
                     std::abs(TxColorRef::green(a) - TxColorRef::green(b)),
                     std::abs(TxColorRef::blue(a) - TxColorRef::blue(b))});
}

TEST(StockGradients, HaveNamesOfTheirOwn)
{
    QSet<QString> names;
    for (qint32 style = 0; style < CTxColorFolder::GetStockGradientCount(); ++style) {
        const QString name = CTxColorFolder::GetStockGradientName(style);
        EXPECT_FALSE(name.isEmpty() || names.contains(name)) << style;
        names.insert(name);
    }
    EXPECT_GE(names.size(), 24);
    EXPECT_EQ(nameOf(static_cast<qint32>(TxStockGradient::Viridis)), "Viridis") << "rows are in the order of styles";
    EXPECT_EQ(nameOf(static_cast<qint32>(TxStockGradient::Rainbow)), "Rainbow (Not Recommended)");
    EXPECT_TRUE(CTxColorFolder::GetStockGradientName(-1).isEmpty());
    EXPECT_TRUE(CTxColorFolder::GetStockGradientName(CTxColorFolder::GetStockGradientCount()).isEmpty());
}

TEST(StockGradients, KeepTheirEndsAndTurnRoundExactlyInAnyCount)
{
    for (qint32 style = 0; style < CTxColorFolder::GetStockGradientCount(); ++style) {
        const QList<COLORREF> full = stock(256, style);
        for (const qint32 count : {1, 2, 3, 4, 7, 255, 1000, 65537}) {
            const QList<COLORREF> ramp = stock(count, style);
            ASSERT_EQ(ramp.size(), count) << nameOf(style);
            EXPECT_EQ(ramp.first(), full.first()) << nameOf(style) << count;
            if (count > 1) {
                EXPECT_EQ(ramp.last(), full.last()) << nameOf(style) << count;
            }
            QList<COLORREF> turned = stock(count, style, true);
            std::reverse(turned.begin(), turned.end());
            EXPECT_EQ(ramp, turned) << nameOf(style) << count;
        }
        if (TxGetStockGradientTraits(style).kind == TxStockGradientTraits::Cyclic) {
            EXPECT_LE(apart(full.first(), full.last()), 1) << nameOf(style);
        }
    }
}

TEST(StockGradients, OfNothingAreEmpty)
{
    const qint32 styles = CTxColorFolder::GetStockGradientCount();
    const struct
    {
        qint32 count, style;
    } rows[] = {{0, 0},  {-1, 0},     {-2147483647 - 1, 0}, {CTxColorFolder::maxGradientCount + 1, 0},
                {5, -1}, {5, styles}, {5, 2147483647},      {5, -2147483647 - 1}};
    for (const auto &[count, style] : rows) {
        CTxColorFolder ramp;
        ramp.Add(1);
        EXPECT_EQ(ramp.MakeStockGradient(count, style), 0) << count << ' ' << style;
        EXPECT_EQ(ramp.GetCount(), 0);
    }
}

TEST(StockGradients, BreakAtSeaLevelInTheMiddleAndNowhereElse)
{
    for (qint32 style = 0; style < CTxColorFolder::GetStockGradientCount(); ++style) {
        const bool hasSeaLevel = TxGetStockGradientTraits(style).hasSeaLevel;
        for (const qint32 count : {256, 257, 1000}) {
            const QList<COLORREF> ramp = stock(count, style);
            for (qint32 i = 1; i < count; ++i) {
                const bool isBreak = hasSeaLevel && i == count / 2;
                EXPECT_EQ(apart(ramp[i], ramp[i - 1]) > 40, isBreak) << nameOf(style) << ' ' << i << " of " << count;
                if (hasSeaLevel) {
                    EXPECT_EQ(TxColorRef::blue(ramp[i]) > TxColorRef::green(ramp[i]), i < count / 2)
                        << "water is blue, land is not: " << i << " of " << count;
                }
            }
        }
    }
}

} // namespace
