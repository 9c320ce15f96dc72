#include "Rows.h"
#include "engine/geometry/TxSpatialOperators.h"

#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/Wkt.h"

#include <limits>

namespace {

constexpr char square[] = "POLYGON ((0 0,10 0,10 10,0 10,0 0))";
constexpr char ring[] = "POLYGON ((0 0,10 0,10 10,0 10,0 0),(2 2,2 8,8 8,8 2,2 2))";
constexpr char bowTie[] = "POLYGON ((0 0,10 10,10 0,0 10,0 0))";

struct AreaRow
{
    const char *name, *a, *b;
    bool overlap;
};

using AreaIntersect = testing::TestWithParam<AreaRow>;

TEST_P(AreaIntersect, AsksForCommonInterior)
{
    const auto a = Wkt::toElement(GetParam().a);
    const auto b = Wkt::toElement(GetParam().b);
    EXPECT_EQ(CTxSpatialOperators::IsAreaIntersect(a.get(), b.get()), GetParam().overlap);
    EXPECT_EQ(CTxSpatialOperators::IsAreaIntersect(b.get(), a.get()), GetParam().overlap);
}

INSTANTIATE_TEST_SUITE_P(
    Areas, AreaIntersect,
    testing::Values(AreaRow{"Overlap", square, "POLYGON ((5 5,15 5,15 15,5 5))", true},
                    AreaRow{"Same", square, square, true},
                    AreaRow{"Inside", square, "POLYGON ((4 4,5 4,5 5,4 4))", true},
                    AreaRow{"CommonEdge", square, "POLYGON ((10 0,20 0,20 10,10 10,10 0))", false},
                    AreaRow{"CommonCorner", square, "POLYGON ((10 10,20 10,20 20,10 10))", false},
                    AreaRow{"BoundsAlone", "POLYGON ((0 0,10 0,0 10,0 0))", "POLYGON ((9 9,9 8,8 9,9 9))", false},
                    AreaRow{"InTheHole", ring, "POLYGON ((3 3,7 3,7 7,3 3))", false},
                    AreaRow{"SecondPart", "MULTIPOLYGON (((20 0,21 0,21 1,20 0)),((0 0,10 0,10 10,0 0)))",
                            "POLYGON ((5 1,6 1,6 2,5 1))", true},
                    AreaRow{"BowTieWing", bowTie, "POLYGON ((8 4,9 4,9 6,8 4))", true},
                    AreaRow{"BetweenTheWings", bowTie, "POLYGON ((4 0,6 0,5 2,4 0))", false},
                    AreaRow{"InCompounds",
                            "GEOMETRYCOLLECTION (POINT (1 1),GEOMETRYCOLLECTION (POLYGON ((0 0,4 0,4 4,0 0))))",
                            "GEOMETRYCOLLECTION (POLYGON ((90 0,94 0,94 4,90 0)),POLYGON ((1 0,4 0,4 3,1 0)))", true},
                    AreaRow{"LineIsNoArea", square, "LINESTRING (1 1,9 9)", false},
                    AreaRow{"FlatRing", square, "POLYGON ((1 1,9 9,5 5,1 1))", false},
                    AreaRow{"Faces", "TIN Z (((0 0 1,1 0 1,0 1 1,0 0 1)),((1 0 1,1 1 2,0 1 1,1 0 1)))",
                            "POLYGON ((0.6 0.6,0.9 0.6,0.9 0.9,0.6 0.6))", true},
                    AreaRow{"Empty", square, "POLYGON EMPTY", false}),
    rowNames(&AreaRow::name));

TEST(SpatialOperators, LeaveOutWhatCannotBeReckonedWith)
{
    constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto other = Wkt::toElement(square);
    const CPoint2D corners[] = {{1, 1}, {noValue, 2}, {3, 1}, {3, -infinity}, {1e160, 2}, {3, 3}};
    CGeoRegion region;
    region.MakePolygon(corners, 6);
    region.AddHole(corners, 2);
    EXPECT_TRUE(CTxSpatialOperators::IsAreaIntersect(&region, other.get()));
    region.MakePolygon(corners, 3); // two places are left
    region.AddHole(corners, 5);
    EXPECT_FALSE(CTxSpatialOperators::IsAreaIntersect(&region, other.get()));
    const CPoint2D huge[] = {{-1e308, -1e308}, {1e308, -1e308}, {1e308, 1e308}, {-1e308, 1e308}};
    region.MakePolygon(huge, 4);
    EXPECT_FALSE(CTxSpatialOperators::IsAreaIntersect(&region, other.get()));
    EXPECT_FALSE(CTxSpatialOperators::IsAreaIntersect(nullptr, other.get()));
    EXPECT_FALSE(CTxSpatialOperators::IsAreaIntersect(other.get(), nullptr));
}

} // namespace
