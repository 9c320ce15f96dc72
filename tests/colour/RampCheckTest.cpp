#include "colour/RampCheck.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace {

using ColorVision::Deficiency;
using RampCheck::Finding;
using RampCheck::Kind;

constexpr auto rgb = TxColorRef::make;
constexpr COLORREF black = 0;
constexpr COLORREF white = 0xFFFFFF;
constexpr Finding turnAt(qsizetype stop)
{
    return {Kind::LightnessNotMonotone, Deficiency::None, stop};
}
constexpr Finding alike(Deficiency deficiency, qsizetype stop)
{
    return {Kind::NeighboursAlike, deficiency, stop};
}

struct Row
{
    const char *name;
    std::vector<COLORREF> stops;
    std::vector<Finding> findings;
};

class RampCheckRow : public testing::TestWithParam<Row>
{
};

TEST_P(RampCheckRow, IsFoundWhole)
{
    EXPECT_EQ(RampCheck::check(GetParam().stops), GetParam().findings) << GetParam().name;
}

const Row rows[] = {
    {"empty", {}, {}},
    {"one", {white}, {}},
    {"greys", {black, rgb(90, 90, 90), white}, {}},
    {"flat piece", {black, rgb(90, 90, 90), rgb(90, 90, 90), white}, {}},
    {"less than is seen", {black, rgb(90, 90, 90), rgb(89, 89, 89), white}, {}},
    {"down and up", {white, black, black, white}, {turnAt(1)}}, // where the flat piece begins
    {"up, down, up", {black, white, rgb(80, 80, 80), white}, {turnAt(1), turnAt(2)}},
    {"dips between stops", {rgb(255, 0, 0), rgb(0, 255, 0)}, {turnAt(0)}},
    {"brown to olive",
     {rgb(128, 64, 0), rgb(64, 96, 0)},
     {alike(Deficiency::Deuteranopia, 0), alike(Deficiency::Achromatopsia, 0)}},
    {"blue to teal",
     {black, rgb(0, 128, 255), rgb(0, 150, 140), white},
     {alike(Deficiency::Tritanopia, 1), alike(Deficiency::Achromatopsia, 1)}},
};

INSTANTIATE_TEST_SUITE_P(RampCheck, RampCheckRow, testing::ValuesIn(rows));

TEST(RampCheck, OfTenThousandStopsIsQuick)
{
    std::vector<COLORREF> stops;
    for (int i = 0; i < 10000; ++i)
        stops.push_back(rgb(i * 37, i * 71, i * 113)); // all neighbours differ much
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(RampCheck::check(stops).empty());
    EXPECT_LT(timer.elapsed(), 2000); // 40 ms here, under -O1
    stops.resize(1000000);
    EXPECT_TRUE(RampCheck::check(stops).empty()); // too many to be seen one by one
}

} // namespace
