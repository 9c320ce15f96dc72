#include "common/TdCommMethods.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

CPoint2Ds parallel(const CPoint2Ds &points, double distance)
{
    CPoint2Ds out;
    EXPECT_TRUE(CTdCommMethods::ParallelLine(points.data(), static_cast<qint32>(points.size()), distance, out));
    return out;
}

void expectNear(const CPoint2Ds &line, const CPoint2Ds &expected, double tolerance)
{
    ASSERT_EQ(line.size(), expected.size());
    for (size_t i = 0; i < line.size(); ++i) {
        EXPECT_NEAR(line[i].x, expected[i].x, tolerance) << "point " << i;
        EXPECT_NEAR(line[i].y, expected[i].y, tolerance) << "point " << i;
    }
}

struct LineRow
{
    const char *name;
    CPoint2Ds points;
    double distance;
    CPoint2Ds expected;
};

void expectLines(const std::vector<LineRow> &rows)
{
    for (const LineRow &row : rows) {
        SCOPED_TRACE(row.name);
        expectNear(parallel(row.points, row.distance), row.expected, 1e-12);
    }
}

TEST(ParallelLine, JoinsItsSegments)
{
    expectLines(
        {{"one segment", {{0, 0}, {10, 0}}, 1, {{0, 1}, {10, 1}}},
         {"left of a left turn", {{0, 0}, {10, 0}, {10, 10}}, 1, {{0, 1}, {9, 1}, {9, 10}}},
         {"right of a left turn", {{0, 0}, {10, 0}, {10, 10}}, -1, {{0, -1}, {11, -1}, {11, 10}}},
         {"straight on", {{0, 0}, {4, 0}, {10, 0}}, 2, {{0, 2}, {4, 2}, {10, 2}}},
         {"mitre of 4.6", {{0, 0}, {10, 0}, {-67, 36}}, -1, {{0, -1}, {14.5, -1}, {-67 + 36. / 85, 36 + 77. / 85}}},
         {"bevel in place of a mitre of 5.1",
          {{0, 0}, {24, 0}, {0, 10}},
          -1,
          {{0, -1}, {24, -1}, {24 + 5. / 13, 12. / 13}, {5. / 13, 10 + 12. / 13}}},
         {"within the same turn", {{0, 0}, {24, 0}, {0, 10}}, 1, {{0, 1}, {19, 1}, {-5. / 13, 10 - 12. / 13}}},
         {"bevel where a leg is too short for it",
          {{0, 0}, {24, 0}, {20.4, 1.5}},
          1,
          {{0, 1}, {24, 1}, {24 - 5. / 13, -12. / 13}, {20.4 - 5. / 13, 1.5 - 12. / 13}}},
         {"doubled back", {{0, 0}, {10, 0}, {5, 0}}, 1, {{0, 1}, {10, 1}, {10, -1}, {5, -1}}},
         {"narrower than the distance", {{0, 0}, {10, 0}, {10, 1}, {20, 1}}, 3, {{0, 3}, {7, 3}, {7, 4}, {20, 4}}}});
}

TEST(ParallelLine, SkipsSegmentsWithoutLength)
{
    expectLines({{"repeated points",
                  {{0, 0}, {0, 0}, {10, 0}, {10, 0}, {10, 0}, {10, 10}, {10, 10}},
                  1,
                  {{0, 1}, {9, 1}, {9, 10}}},
                 {"begins where the first segment does", {{1e-6, 3e-6}, {0, 0}, {10, 0}}, 1, {{0, 1}, {10, 1}}},
                 {"ends where the last segment does", {{0, 0}, {10, 0}, {10, 5e-6}}, 1, {{0, 1}, {10, 1}}},
                 {"a step keeps both sides at their distance",
                  {{0, 0}, {10, 0}, {10, 8e-6}, {20, 8e-6}},
                  1,
                  {{0, 1}, {10, 1}, {10, 1 + 8e-6}, {20, 1 + 8e-6}}},
                 {"longer than that", {{0, 0}, {2e-5, 0}}, 1, {{0, 1}, {2e-5, 1}}}});
}

TEST(ParallelLine, ClosedLinesBeginBesideTheirFirstVertex)
{
    const CPoint2Ds square{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};
    expectLines({{"outside", square, -1, {{0, -1}, {11, -1}, {11, 11}, {-1, 11}, {-1, -1}, {0, -1}}},
                 {"inside", square, 1, {{0, 1}, {9, 1}, {9, 9}, {1, 9}, {1, 1}, {0, 1}}},
                 {"from the middle of a side",
                  {{5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}, {5, 0}},
                  1,
                  {{5, 1}, {9, 1}, {9, 9}, {1, 9}, {1, 1}, {5, 1}}},
                 {"there and back", {{0, 0}, {10, 0}, {0, 0}}, 1, {{0, 1}, {10, 1}, {10, -1}, {0, -1}, {0, 1}}},
                 {"closed but for rounding",
                  {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 1e-11}},
                  -1,
                  {{0, -1}, {11, -1}, {11, 11}, {-1, 11}, {-1, -1}, {0, -1}}}});
    // The join at the closing vertex: a bevel, and none on a slanted side.
    expectNear(parallel({{24, 0}, {0, 10}, {0, 0}, {24, 0}}, -1),
               {{24 + 5. / 13, 12. / 13}, {-1, 11.5}, {-1, -1}, {24, -1}, {24 + 5. / 13, 12. / 13}}, 1e-12);
    for (int i = 1; i < 40; ++i) {
        const CPoint2D begin(0.1 * i, 0.3 * i);
        EXPECT_EQ(parallel({begin, {4, 12}, {-2, 12}, {-1.1, -3.3}, begin}, 0.1).size(), 5) << i;
    }
}

TEST(ParallelLine, RefusesWhatHasNoParallel)
{
    const CPoint2Ds good{{0, 0}, {10, 0}, {10, 10}};
    const struct
    {
        const char *name;
        CPoint2Ds points;
        double distance;
    } rows[] = {{"no point", {}, 1},
                {"one point", {{0, 0}}, 1},
                {"a distance of nothing", good, 0},
                {"hardly a distance", good, -1e-11},
                {"distance not a number", good, nan},
                {"infinite distance", good, -infinite},
                {"distance whose square overflows", good, 1e200},
                {"points of one place", {{3, 4}, {3, 4}, {3, 4 + 1e-6}}, 1},
                {"first not a number", {{nan, 0}, {10, 0}, {20, 0}}, 1},
                {"middle not a number", {{0, 0}, {10, nan}, {20, 0}}, 1},
                {"last infinite", {{0, 0}, {10, 0}, {infinite, 0}}, 1},
                {"infinite side by side", {{0, 0}, {infinite, 0}, {infinite, 0}}, 1},
                {"length overflows", {{-1e200, 0}, {1e200, 0}}, 1}};
    for (const auto &row : rows) {
        CPoint2Ds out{{7, 7}};
        EXPECT_FALSE(
            CTdCommMethods::ParallelLine(row.points.data(), static_cast<qint32>(row.points.size()), row.distance, out))
            << row.name;
        EXPECT_EQ(out, (CPoint2Ds{{7, 7}})) << row.name;
    }
    CPoint2Ds out;
    EXPECT_FALSE(CTdCommMethods::ParallelLine(nullptr, 2, 1, out));
    EXPECT_FALSE(CTdCommMethods::ParallelLine(good.data(), -1, 1, out));
}

TEST(ParallelLine, AddsToWhatIsThere)
{
    CPoint2Ds line{{0, 0}, {10, 0}};
    EXPECT_TRUE(CTdCommMethods::ParallelLine(line.data(), 2, 1, line));
    EXPECT_EQ(line, (CPoint2Ds{{0, 0}, {10, 0}, {0, 1}, {10, 1}}));
}

/// A line of turns of every sharpness and segments of all lengths.
CPoint2Ds randomLine(std::mt19937 &random)
{
    std::uniform_real_distribution<double> turn(-std::numbers::pi, std::numbers::pi);
    std::uniform_real_distribution<double> magnitude(-3, 2);
    CPoint2Ds line{{500, -300}};
    double direction = 0;
    for (int i = 0; i < 40; ++i) {
        direction += i % 3 == 0 ? turn(random) : turn(random) / 20;
        const double length = std::pow(10, magnitude(random));
        line.push_back({line.back().x + length * std::cos(direction), line.back().y + length * std::sin(direction)});
    }
    return line;
}

TEST(ParallelLine, EverySegmentIsAtTheDistance)
{
    std::mt19937 random(20);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        CPoint2Ds line = randomLine(random);
        if (round % 4 == 0) // closed
            line.push_back(line.front());
        const double distance = (round % 2 == 0 ? 1 : -1) * std::pow(10, round % 5 - 3);
        const CPoint2Ds out = parallel(line, distance);
        size_t next = 0; // where the line for the next segment may begin, by a bevel one point later
        for (size_t i = 1; i < line.size(); ++i) {
            const double length = std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
            const auto isBeside = [&](size_t k) {
                const double side = ((line[i].x - line[i - 1].x) * (out[k].y - line[i - 1].y) -
                                     (line[i].y - line[i - 1].y) * (out[k].x - line[i - 1].x)) /
                                    length;
                return std::abs(side - distance) < 1e-8;
            };
            while (next + 1 < out.size() && !(isBeside(next) && isBeside(next + 1)))
                ++next;
            ASSERT_LT(next + 1, out.size()) << "nothing runs along segment " << i;
            ++next;
        }
        ASSERT_LE(out.size(), 2 * line.size() + 1);
    }
}

} // namespace
