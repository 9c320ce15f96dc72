#include "common/TdCommMethods.h"
#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoPoint.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using C = CTdCommMethods;
using std::numbers::pi;
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Planar, DistanceIsCutOff)
{
    EXPECT_EQ(C::Distance({1, 2}, {4, 6}), 5);
    EXPECT_EQ(C::Distance({0, 0}, {1, 1}), 1);
    EXPECT_EQ(C::Distance({0, 0}, {46340, 0}), 46340);
}

TEST(Planar, DistanceWrapsItsSquaresIn32Bits)
{
    EXPECT_EQ(C::Distance({0, 0}, {65536, 3}), 3);                     // 2^32 wraps to 0
    EXPECT_EQ(C::Distance({0, 0}, {65537, 0}), 362);                   // 2^32 + 2^17 + 1
    EXPECT_EQ(C::Distance({0, 0}, {46341, 0}), 0);                     // a negative square has no root
    EXPECT_EQ(C::Distance({INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}), 1); // the difference wraps too
}

TEST(Planar, AngleFromPointLooksBackWithYUpwards)
{
    const QPoint b(10, 10);
    EXPECT_EQ(C::AngleFromPoint(b, b), 0.0);
    EXPECT_EQ(C::AngleFromPoint({20, 10}, b), 0.0);
    EXPECT_DOUBLE_EQ(C::AngleFromPoint({10, 0}, b), pi / 2);
    EXPECT_DOUBLE_EQ(C::AngleFromPoint({0, 10}, b), pi);
    EXPECT_DOUBLE_EQ(C::AngleFromPoint({10, 20}, b), -pi / 2);
    EXPECT_DOUBLE_EQ(C::AngleFromPoint({INT_MIN, INT_MAX}, {INT_MAX, INT_MIN}), -3 * pi / 4);
}

TEST(Planar, PtFromAngleScalesLengthsBy100To255)
{
    EXPECT_EQ(C::PtFromAngle(90, 255, {10, 10}), QPoint(10, -90));
    EXPECT_EQ(C::PtFromAngle(180, 510, {10, 10}), QPoint(-190, 10));
    EXPECT_EQ(C::PtFromAngle(-45, 255, {0, 0}), QPoint(70, 70)); // 70.7 cut off
    EXPECT_EQ(C::PtFromAngle(0, 1e300, {5, 5}), QPoint(INT_MAX, 5));
    EXPECT_EQ(C::PtFromAngle(180, 1e300, {-5, 5}).x(), INT_MIN);
    EXPECT_EQ(C::PtFromAngle(infinity, 1, {5, 6}), QPoint(5, 6));
}

TEST(Planar, SlopeOfAVerticalLineIsAMillion)
{
    EXPECT_EQ(C::Slope({3, 1}, {3, 9}), 1e6);
    EXPECT_EQ(C::Slope({0, 0}, {4, -2}), -0.5);
    EXPECT_EQ(C::Slope({INT_MIN, 0}, {INT_MAX, INT_MAX}), 2147483647.0 / 4294967295.0);
}

TEST(Planar, FindCOfAVerticalLineIsItsY)
{
    LineDesc vertical{3, 7, LineDesc::vertical, 42};
    EXPECT_EQ(C::FindC(vertical), 7);
    EXPECT_EQ(vertical.c, 42);
    LineDesc line{3, 7, 2, 42};
    EXPECT_EQ(C::FindC(line), 1);
    EXPECT_EQ(line.c, 1);
}

struct IntersectionRow
{
    const char *name;
    LineDesc l1, l2;
    QPoint expected;
};

class PlanarIntersection : public testing::TestWithParam<IntersectionRow>
{
};

TEST_P(PlanarIntersection, IsCutOff)
{
    EXPECT_EQ(C::Intersection(GetParam().l1, GetParam().l2), GetParam().expected);
}

constexpr double upright = LineDesc::vertical;
INSTANTIATE_TEST_SUITE_P(
    Lines, PlanarIntersection,
    testing::Values(IntersectionRow{"Plain", {0, 0, 1, 0}, {0, 5, -0.5, 5}, {3, 3}},
                    IntersectionRow{"EqualSlopes", {0, 5, 1, 5}, {0, 9, 1, 9}, {0, 0}},
                    IntersectionRow{"TwoVerticals", {3, 0, upright, 0}, {9, 0, upright, 0}, {0, 0}},
                    IntersectionRow{"FirstVertical", {-3.9, 0, upright, 0}, {0, 1, 2, 1}, {-3, -6}},
                    IntersectionRow{"SecondVertical", {0, 1, 2, 1}, {3.9, 0, upright, 0}, {3, 8}},
                    IntersectionRow{"SecondHorizontal", {0, 0, 2, 0}, {0, 8, 0, 8}, {4, 8}},
                    IntersectionRow{"FarAway", {0, 0, 1, 0}, {0, 1, 1 - 1e-12, 1}, {INT_MAX, INT_MAX}}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(Planar, IntersectionTakesXFromTheFirstLineThoughItIsHorizontal)
{
    EXPECT_EQ(C::Intersection({0, 8, 0, 8}, {0, 0, 2, 0}), QPoint(0, 8)); // 0/0 is no x
}

TEST(Planar, PointOnLineTakesTheSideTowardsB)
{
    EXPECT_EQ(C::PointOnLine({10, 10}, {40, 50}, 5, 60), QPoint(13, 14));
    EXPECT_EQ(C::PointOnLine({100, 100}, {40, 100}, 10, 65), QPoint(90, 100)); // 70 from b on the other side
    EXPECT_EQ(C::PointOnLine({10, 10}, {10, -90}, 30, 100), QPoint(10, -20));
    EXPECT_EQ(C::PointOnLine({10, 10}, {10, 90}, 30, 80), QPoint(10, 40));               // up would be 110 from b
    EXPECT_EQ(C::PointOnLine({10, INT_MIN}, {10, INT_MIN}, 0, 0), QPoint(10, -INT_MAX)); // has no opposite
}

TEST(Planar, PointOnLineTakesTheSecondSolutionUntested)
{
    EXPECT_EQ(C::PointOnLine({0, 0}, {100, 0}, 10, 5), QPoint(-10, 0)); // 10 is too far from a as well
}

TEST(Planar, IsTheSamePointIsStrict)
{
    EXPECT_FALSE(C::IsTheSamePoint({0, 0}, {1e-10, 0}));
    EXPECT_FALSE(C::IsTheSamePoint({0, 0}, {0, -1e-10}));
    EXPECT_TRUE(C::IsTheSamePoint({0, 0}, {9.99e-11, -9.99e-11}));
    EXPECT_FALSE(C::IsTheSamePoint({noValue, 0}, {noValue, 0}));
}

TEST(Planar, AzimuthOfAPointWithItselfIsPi)
{
    EXPECT_EQ(C::CalAzimuth({5, 5}, {5, 5}), pi);
}

TEST(Planar, AzimuthIsAFullTurnCounterClockwise)
{
    for (int degree = 0; degree < 360; ++degree) {
        const double angle = degree * pi / 180;
        EXPECT_NEAR(C::CalAzimuth({3, 4}, {3 + std::cos(angle), 4 + std::sin(angle)}), angle, 1e-15 * 8) << degree;
    }
    EXPECT_EQ(C::CalAzimuth({0, 0}, {0, -1}), 3 * pi / 2);
    EXPECT_EQ(C::CalAzimuth({0, 0}, {1, -1e-300}), 0.0); // never the full turn itself
    EXPECT_EQ(C::CalAzimuth({0, 0}, {-1e300, -1e-300}), pi);
    EXPECT_TRUE(std::isnan(C::CalAzimuth({0, 0}, {1, noValue})));
}

struct FootRow
{
    const char *name;
    CPoint2D p, a, b, foot;
    bool onSegment;
};

class PlanarFoot : public testing::TestWithParam<FootRow>
{
};

TEST_P(PlanarFoot, TellsWhetherItFallsOnTheSegment)
{
    const FootRow &row = GetParam();
    CPoint2D foot;
    EXPECT_EQ(C::PointProjectToLineset(row.p, row.a, row.b, foot), row.onSegment);
    EXPECT_DOUBLE_EQ(foot.x, row.foot.x);
    EXPECT_DOUBLE_EQ(foot.y, row.foot.y);
}

INSTANTIATE_TEST_SUITE_P(Segments, PlanarFoot,
                         testing::Values(FootRow{"Oblique", {0, 4}, {0, 0}, {4, 4}, {2, 2}, true},
                                         FootRow{"BeyondTheEnd", {0, 40}, {0, 0}, {4, 4}, {20, 20}, false},
                                         FootRow{"OnTheEnd", {0, 8}, {0, 0}, {4, 4}, {4, 4}, true},
                                         FootRow{"Vertical", {5.3, 0.7}, {0.1, 0}, {0.1, 1}, {0.1, 0.7}, true},
                                         FootRow{"Horizontal", {5.3, 9}, {0.1, 0.3}, {7, 0.3}, {5.3, 0.3}, true},
                                         FootRow{"AsGoodAsHorizontal", {0.5, 9}, {0, 0}, {1, 9e-11}, {0.5, 0}, true},
                                         FootRow{
                                             "FromFarAway", {-999500, 1e9 + 0.5}, {0, 0}, {1000, 1}, {500, 0.5}, true},
                                         FootRow{"Huge", {0, 4e200}, {0, 0}, {4e200, 4e200}, {2e200, 2e200}, true},
                                         FootRow{"OnePlace", {5, 9}, {3, 3}, {3, 3}, {5, 3}, false}),
                         [](const auto &row) { return std::string(row.param.name); });

// Real map coordinates: feet inside the segment are found however flat it lies, and lie on it.
TEST(Planar, FeetAreFoundFarFromTheOrigin)
{
    std::mt19937 random(1); // NOLINT: the same points in each run
    std::uniform_real_distribution<double> unit(0, 1);
    int found = 0;
    constexpr int tries = 20000;
    for (int i = 0; i < tries; ++i) {
        const CPoint2D a(5e5 + unit(random), 5e6 + unit(random));
        const double dx = 1000 * unit(random);
        const double dy = std::pow(10.0, -9 * unit(random));
        const CPoint2D b(a.x + dx, a.y + dy);
        const double along = unit(random);
        const double aside = 100 * (unit(random) - 0.5) / std::hypot(dx, dy);
        CPoint2D foot;
        const CPoint2D p(a.x + along * dx - aside * dy, a.y + along * dy + aside * dx);
        found += C::PointProjectToLineset(p, a, b, foot);
        ASSERT_NEAR(foot.x, a.x + along * dx, 1e-6) << i;
        ASSERT_NEAR(foot.y, a.y + along * dy, 1e-6) << i;
    }
    EXPECT_EQ(found, tries);
}

TEST(Planar, SplitGeoCompoundKeepsTheOrderAtAnyDepth)
{
    CGeoCompound outer;
    QList<CElemGeometry *> leaves;
    EXPECT_FALSE(C::SplitGeoCompound(nullptr, &leaves));
    EXPECT_FALSE(C::SplitGeoCompound(&outer, &leaves));
    outer.AddGeometry(std::make_unique<CGeoPoint>(0, 0));
    auto inner = std::make_unique<CGeoCompound>();
    inner->AddGeometry(std::make_unique<CGeoPoint>(1, 0));
    for (int i = 0; i < 10000; ++i) {
        auto around = std::make_unique<CGeoCompound>();
        around->AddGeometry(std::move(inner));
        inner = std::move(around);
    }
    outer.AddGeometry(std::move(inner));
    outer.AddGeometry(std::make_unique<CGeoCompound>());
    outer.AddGeometry(std::make_unique<CGeoPoint>(2, 0));
    EXPECT_FALSE(C::SplitGeoCompound(&outer, nullptr));
    CGeoPoint first(-1, 0);
    leaves = {&first}; // what is there stays
    ASSERT_TRUE(C::SplitGeoCompound(&outer, &leaves));
    ASSERT_EQ(leaves.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(leaves[i]->GetBounds().left, i - 1);
}

} // namespace
