#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(GeoLine, KeepsItsPartsInOneArray)
{
    const CPoint2D first[] = {{0, 0}, {3, 4}};
    const CPoint2D second[] = {{10, 10}, {10, 11}, {10, 13}};
    CGeoLine line;
    ASSERT_TRUE(line.MakePolyline(first, 2));
    ASSERT_TRUE(line.AddSubPolyline(second, 3));
    EXPECT_EQ(line.GetPointCount(), 5);
    EXPECT_EQ(line.GetPolyCounts(), (QList<qint32>{2, 3}));
    EXPECT_EQ(line.GetPoints()[1], CPoint2D(3, 4));
    EXPECT_EQ(line.GetPoints()[2], CPoint2D(10, 10));
    EXPECT_EQ(line.GetLength(), 5 + 3);
    EXPECT_EQ(line.GetBounds(), CRect2D(0, 0, 10, 13));

    ASSERT_TRUE(line.MakePolyline(line.GetPoints() + 2, 3)); // of its own points
    EXPECT_EQ(line.GetPolyCounts(), QList<qint32>{3});
    EXPECT_EQ(line.GetPoints()[0], CPoint2D(10, 10));
}

TEST(GeoLine, ClosesOnlyWhatIsOpen)
{
    const CPoint2D open[] = {{0, 0}, {1, 0}, {1, 1}};
    const CPoint2D closed[] = {{0, 0}, {1, 0}, {0, 0}};
    const double heights[] = {5, 6, 7};
    CGeoLine line;
    ASSERT_TRUE(line.MakePolyline(open, 3, true, heights));
    EXPECT_EQ(line.GetPointCount(), 4);
    EXPECT_EQ(line.GetPoints()[3], CPoint2D(0, 0));
    EXPECT_EQ(line.GetZs()[3], 5);
    ASSERT_TRUE(line.MakePolyline(closed, 3, true));
    EXPECT_EQ(line.GetPointCount(), 3);
    EXPECT_FALSE(line.HasZ());
}

TEST(GeoLine, LeavesItselfAloneOnBadInput)
{
    const CPoint2D points[] = {{0, 0}, {1, 0}};
    CGeoLine line;
    EXPECT_EQ(line.GetPoints(), nullptr);
    EXPECT_TRUE(line.GetBounds().IsVoid());
    ASSERT_TRUE(line.MakePolyline(points, 2));
    EXPECT_FALSE(line.MakePolyline(nullptr, 2));
    EXPECT_FALSE(line.MakePolyline(points, 0));
    EXPECT_FALSE(line.AddSubPolyline(points, -1));
    EXPECT_EQ(line.GetPointCount(), 2);
}

TEST(GeoLine, FillsHeightsAndMeasuresThatAPartLacks)
{
    const CPoint2D points[] = {{0, 0}, {1, 0}};
    const double values[] = {8, 9};
    CGeoLine line;
    line.MakePolyline(points, 2);
    line.AddSubPolyline(points, 2, values, values);
    line.AddSubPolyline(points, 2);
    ASSERT_EQ(line.GetType(), CElemGeometry::Line3D);
    EXPECT_EQ(std::vector<double>(line.GetZs(), line.GetZs() + 6), (std::vector<double>{0, 0, 8, 9, 0, 0}));
    EXPECT_TRUE(std::isnan(line.GetMs()[0]) && std::isnan(line.GetMs()[5]));
    EXPECT_EQ(line.GetMs()[3], 9);
    line.SetHasZ(false);
    EXPECT_EQ(line.GetType(), CElemGeometry::Line);
}

TEST(GeoRegion, CountsHolesOut)
{
    const CPoint2D outer[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    const CPoint2D hole[] = {{1, 1}, {1, 3}, {3, 3}, {3, 1}, {1, 1}};
    CGeoRegion region;
    EXPECT_FALSE(region.AddHole(hole, 5)); // of nothing
    ASSERT_TRUE(region.MakePolygon(outer, 4));
    ASSERT_TRUE(region.AddHole(hole, 5));
    EXPECT_EQ(region.GetPolyCounts(), (QList<qint32>{5, 5}));
    EXPECT_FALSE(region.IsHole(0));
    EXPECT_TRUE(region.IsHole(1));
    EXPECT_FALSE(region.IsHole(2));
    EXPECT_EQ(region.GetArea(), 96);
    EXPECT_EQ(region.GetPerimeter(), 48);
}

TEST(GeoRegion, AreaKeepsItsDigitsFarFromTheOrigin)
{
    const double x = 5e8, y = 6e8;
    const CPoint2D ring[] = {{x, y}, {x + 0.5, y}, {x + 0.5, y + 0.5}, {x, y + 0.5}};
    CGeoRegion region;
    ASSERT_TRUE(region.MakePolygon(ring, 4));
    EXPECT_EQ(region.GetArea(), 0.25);
}

TEST(Bounds, LeaveOutWhatIsNotFinite)
{
    const CPoint2D points[] = {{noValue, 1}, {2, 3}, {infinity, 0}, {4, -infinity}, {5, 6}};
    CGeoLine line;
    line.MakePolyline(points, 5);
    EXPECT_EQ(line.GetBounds(), CRect2D(2, 3, 5, 6));
    EXPECT_TRUE(CGeoPoint(noValue, 1).GetBounds().IsVoid());
    EXPECT_TRUE(CGeoPoint(1, infinity).GetBounds().IsVoid());
    EXPECT_TRUE(CGeoPoint().IsEmpty());
    EXPECT_TRUE(CGeoText().GetBounds().IsVoid());
}

TEST(GeoCompound, SurvivesDeepNesting)
{
    auto compound = std::make_unique<CGeoCompound>();
    compound->AddGeometry(std::make_unique<CGeoPoint>(1, 2));
    for (int i = 0; i < 100000; ++i) {
        auto outer = std::make_unique<CGeoCompound>();
        outer->AddGeometry(std::move(compound));
        outer->AddGeometry(std::make_unique<CGeoText>(CPoint2D(3, 4), QStringLiteral("x"), 45, 2));
        compound = std::move(outer);
    }
    const std::unique_ptr<CElemGeometry> copy = compound->Clone();
    EXPECT_EQ(copy->GetBounds(), CRect2D(1, 2, 3, 4));
    const auto *text = dynamic_cast<CGeoText *>(static_cast<CGeoCompound &>(*copy).GetGeometry(1));
    ASSERT_TRUE(text);
    EXPECT_NE(text, compound->GetGeometry(1));
    EXPECT_EQ(text->GetText(), QStringLiteral("x"));
    EXPECT_EQ(text->GetAngle(), 45);
    EXPECT_FALSE(compound->AddGeometry(nullptr));
    EXPECT_EQ(compound->GetGeometry(2), nullptr);
    EXPECT_EQ(compound->GetGeometry(-1), nullptr);
}

} // namespace
