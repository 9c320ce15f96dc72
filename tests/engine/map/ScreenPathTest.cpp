#include "engine/map/ScreenPath.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const MapView view(CPoint2D(50, 50), 1.0, QSizeF(100, 100)); // map units are pixels, (0, 0) lower left

double area(const QPolygonF &ring)
{
    double sum = 0;
    for (qsizetype i = 1; i < ring.size(); ++i)
        sum += ring[i - 1].x() * ring[i].y() - ring[i].x() * ring[i - 1].y();
    return std::abs(sum) / 2;
}

TEST(ScreenPath, LeavesOutWhatNobodyCanSeeButNeverTheEnd)
{
    ScreenPath path(view, nullptr, 0.5);
    std::vector<CPoint2D> points;
    for (int i = 0; i <= 10000; ++i)
        points.emplace_back(10 + i * 0.001, 20);
    const auto &pieces = path.line(points);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_LE(pieces[0].size(), 22);
    EXPECT_EQ(pieces[0].front(), QPointF(10, 80));
    EXPECT_EQ(pieces[0].back(), QPointF(20, 80));
}

TEST(ScreenPath, LinesAreCutNearTheWindow)
{
    ScreenPath path(view, nullptr, 0.5);
    const CPoint2D across[] = {{-1e12, 50}, {1e12, 50}};
    const auto &pieces = path.line(across);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_GT(pieces[0].boundingRect().left(), -1000);
    EXPECT_LT(pieces[0].boundingRect().left(), 0);
    EXPECT_GT(pieces[0].boundingRect().right(), 100);
    EXPECT_NEAR(pieces[0].front().y(), 50, 1e-3);

    const CPoint2D outAndIn[] = {{50, 50}, {5000, 50}, {5000, 60}, {50, 60}};
    EXPECT_EQ(path.line(outAndIn).size(), 2U);
    const CPoint2D beside[] = {{5000, 0}, {6000, 100}};
    EXPECT_TRUE(path.line(beside).empty());
    EXPECT_TRUE(path.line({}).empty());
}

TEST(ScreenPath, RingsKeepWhatIsInTheWindow)
{
    struct Row
    {
        const char *name;
        std::vector<CPoint2D> ring;
        double least, most; // area in pixels
    };
    const Row rows[] = {
        {"inside", {{10, 10}, {20, 10}, {20, 20}, {10, 20}, {10, 10}}, 100, 100},
        {"around everything", {{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}, 10000, 100000},
        {"beside", {{500, 0}, {600, 0}, {600, 100}}, 0, 0},
        {"one corner of the window inside", {{-1e6, -1e6}, {50, -1e6}, {50, 50}, {-1e6, 50}}, 2500, 20000},
        {"too few points", {{10, 10}}, 0, 0},
    };
    ScreenPath path(view, nullptr, 0.5);
    for (const Row &row : rows) {
        const QPolygonF &ring = path.ring(row.ring);
        EXPECT_GE(area(ring), row.least - 1e-6) << row.name;
        EXPECT_LE(area(ring), row.most + 1e-6) << row.name;
        EXPECT_TRUE(ring.isEmpty() || ring.front() == ring.back()) << row.name;
    }
}

TEST(ScreenPath, PointsWithoutAPlaceBreakLinesAndLeaveRings)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    ScreenPath path(view, nullptr, 0.5);
    const CPoint2D line[] = {{10, 10}, {20, 10}, {none, none}, {30, 10}, {40, 10}, {none, 5}, {50, 10}};
    EXPECT_EQ(path.line(line).size(), 2U);
    const CPoint2D ring[] = {{10, 10}, {20, 10}, {none, none}, {20, 20}, {10, 20}, {10, 10}};
    EXPECT_EQ(area(path.ring(ring)), 100);
    const CPoint2D nothing[] = {{none, none}, {none, none}};
    EXPECT_TRUE(path.ring(nothing).isEmpty());
    EXPECT_TRUE(path.line(nothing).empty());
}

} // namespace
