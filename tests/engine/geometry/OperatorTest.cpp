#include "Rows.h"
#include "engine/geometry/TxOperator.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace {

using Op = CTxOperator;
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct OnSegmentRow
{
    const char *name;
    CPoint2D p, a, b;
    bool expected;
};

using OnSegment = testing::TestWithParam<OnSegmentRow>;

TEST_P(OnSegment, WithinTheTolerance)
{
    const OnSegmentRow &row = GetParam();
    EXPECT_EQ(Op::IsPntOnLinesect(row.p, row.a, row.b), row.expected);
    EXPECT_EQ(Op::IsPntOnLinesect(row.p, row.b, row.a), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Points, OnSegment,
                         testing::Values(OnSegmentRow{"Middle", {1, 1}, {0, 0}, {2, 2}, true},
                                         OnSegmentRow{"End", {2, 2}, {0, 0}, {2, 2}, true},
                                         OnSegmentRow{"OnTheLineBeyond", {3, 3}, {0, 0}, {2, 2}, false},

                                         OnSegmentRow{"AsideWithin", {1, 0.9e-10}, {0, 0}, {2, 0}, true},
                                         OnSegmentRow{"AsideBeyond", {1, 1.1e-10}, {0, 0}, {2, 0}, false},
                                         OnSegmentRow{"PastTheEndWithin", {2 + 0.9e-10, 0}, {0, 0}, {2, 0}, true},
                                         OnSegmentRow{"PastTheEndBeyond", {2 + 1.1e-10, 0}, {0, 0}, {2, 0}, false},
                                         OnSegmentRow{"MapWithin", {5e6, 1e7 + 0.9e-6}, {4e6, 1e7}, {6e6, 1e7}, true},
                                         OnSegmentRow{"MapBeyond", {5e6, 1e7 + 1.1e-6}, {4e6, 1e7}, {6e6, 1e7}, false},
                                         OnSegmentRow{"FarPointOfASmallSegment", {1e20, 0}, {0, 0}, {1, 0}, false},
                                         OnSegmentRow{"OnePlace", {3, 4}, {3, 4}, {3, 4}, true},

                                         OnSegmentRow{
                                             "ShorterThanNumbersCanTell", {0, 1e-3}, {0, 0}, {1e-170, 0}, false},
                                         OnSegmentRow{"Huge", {1e200, 1e200}, {0, 0}, {3e200, 3e200}, true},

                                         OnSegmentRow{"NaNPoint", {noValue, 1}, {0, 0}, {2, 2}, false},

                                         OnSegmentRow{"InfiniteEnd", {5, 0}, {0, 0}, {infinity, 0}, false}),
                         rowNames(&OnSegmentRow::name));

struct CrossingRow
{
    const char *name;
    CPoint2D a1, a2, b1, b2;
    bool meets;
    CPoint2D where;
};

using Crossing = testing::TestWithParam<CrossingRow>;

TEST_P(Crossing, IsFoundInEitherOrder)
{
    const CrossingRow &row = GetParam();
    const CPoint2D untouched(-77, -78);
    CPoint2D out = untouched;
    EXPECT_EQ(Op::IntersectLine(row.a1, row.a2, row.b1, row.b2, out), row.meets);
    EXPECT_EQ(out, row.meets ? row.where : untouched);
    EXPECT_EQ(Op::IntersectLine(row.a1, row.a2, row.b2, row.b1, out), row.meets);
    EXPECT_EQ(out, row.meets ? row.where : untouched);
    EXPECT_EQ(Op::IntersectLine(row.b1, row.b2, row.a1, row.a2, out), row.meets); // the place may be another
    EXPECT_EQ(Op::IntersectLine(row.a2, row.a1, row.b1, row.b2, out), row.meets);
}

INSTANTIATE_TEST_SUITE_P(
    Segments, Crossing,
    testing::Values(CrossingRow{"Cross", {0, 0}, {4, 4}, {0, 4}, {4, 0}, true, {2, 2}},
                    CrossingRow{"LinesMeetSegmentsDoNot", {0, 0}, {1, 1}, {0, 4}, {4, 0}, false, {}},
                    CrossingRow{"Touch", {0, 0}, {4, 0}, {1, 0}, {1, 5}, true, {1, 0}},
                    CrossingRow{"AlmostTouch", {0, 0}, {4, 0}, {1, 1e-9}, {1, 5}, false, {}},
                    CrossingRow{"CommonEnd", {0, 0}, {0.1, 0.7}, {0.1, 0.7}, {9, 9}, true, {0.1, 0.7}},
                    CrossingRow{"Parallel", {0, 0}, {4, 4}, {0, 1}, {4, 5}, false, {}},
                    CrossingRow{"OnOneLineApart", {0, 0}, {1, 1}, {2, 2}, {3, 3}, false, {}},
                    CrossingRow{"OnOneLineApartButForRounding",
                                {-1.8874951890255782, -0.35122905645189589},
                                {-7.3021799298824908, -1.3588049292664146},
                                {-16.348391261027984, -3.0421428730007047},
                                {-12.597256817786608, -2.3441239223913302},
                                false,
                                {}},
                    CrossingRow{"OverlapFromTheFirstCommonPlace", {0, 0}, {4, 4}, {3, 3}, {9, 9}, true, {3, 3}},
                    CrossingRow{"OverlapFromA1", {2, 2}, {4, 4}, {0, 0}, {9, 9}, true, {2, 2}},
                    CrossingRow{"Inside", {0, 0}, {9, 9}, {2, 2}, {4, 4}, true, {2, 2}},
                    CrossingRow{"EndToEnd", {0, 0}, {1, 1}, {1, 1}, {3, 3}, true, {1, 1}},
                    CrossingRow{"OnePlaceOnASegment", {2, 2}, {2, 2}, {0, 0}, {9, 9}, true, {2, 2}},

                    CrossingRow{"TwoEqualPlaces", {2, 3}, {2, 3}, {2, 3}, {2, 3}, true, {2, 3}},

                    CrossingRow{"Huge", {-1e200, 0}, {1e200, 0}, {0, -1e200}, {0, 1e200}, true, {0, 0}},
                    CrossingRow{"HugeAlmostTouch", {-1e200, 0}, {1e200, 0}, {0, 1e188}, {0, 1e200}, false, {}},
                    CrossingRow{"NaN", {0, 0}, {noValue, 4}, {0, 0}, {4, 0}, false, {}},
                    CrossingRow{"Infinite", {0, 0}, {infinity, 0}, {1, -1}, {1, 1}, false, {}}),
    rowNames(&CrossingRow::name));

// Wherever two segments meet, the place is on both of them, and a segment that ends there still reaches it.
TEST(Operator, CrossingsLieOnBothSegmentsFarFromTheOrigin)
{
    std::mt19937 random(1); // NOLINT: the same segments in each run
    std::uniform_real_distribution<double> unit(0, 1);
    const auto place = [&] { return CPoint2D(5e5 + 100 * unit(random), 5e6 + 100 * unit(random)); };
    int met = 0;
    for (int i = 0; i < 20000; ++i) {
        const CPoint2D a1 = place(), a2 = place(), b1 = place(), b2 = place();
        CPoint2D at;
        if (!Op::IntersectLine(a1, a2, b1, b2, at))
            continue;
        ++met;
        ASSERT_TRUE(Op::IsPntOnLinesect(at, a1, a2) && Op::IsPntOnLinesect(at, b1, b2)) << i;
        CPoint2D again;
        ASSERT_TRUE(Op::IntersectLine(a1, at, b1, b2, again)) << i;
    }
    EXPECT_GT(met, 4000);
}

TEST(Operator, SplineHasDensityPointsForEachPieceAndOneMore)
{
    const CPoint2D points[] = {{0, 0}, {1, 0}, {2, 6}, {3, 0}, {4, 0}};
    CPoint2Ds spline = {{9, 9}};
    qint32 count = 0;
    ASSERT_TRUE(Op::BSpline2Line(points, 5, spline, count, 4));
    ASSERT_EQ(count, 2 * 4 + 1);
    ASSERT_EQ(spline.size(), size_t(count));
    EXPECT_DOUBLE_EQ(spline[0].x, 1); // (p0 + 4 p1 + p2) / 6
    EXPECT_DOUBLE_EQ(spline[0].y, 1);
    EXPECT_DOUBLE_EQ(spline[4].x, 2);
    EXPECT_DOUBLE_EQ(spline[4].y, 4);
    EXPECT_DOUBLE_EQ(spline[8].x, 3);
    EXPECT_DOUBLE_EQ(spline[8].y, 1);
    EXPECT_DOUBLE_EQ(spline[2].y, (23 * 0 + 23 * 6 + 1 * 0 + 1 * 0) / 48.0); // t = 1/2: 1, 23, 23, 1 of 48
    // Out of its own points.
    CPoint2Ds own(points, points + 5);
    ASSERT_TRUE(Op::BSpline2Line(own.data(), 5, own, count, 4));
    EXPECT_EQ(own, spline);
    EXPECT_TRUE(Op::BSpline2Line(points, 4, spline, count, 1) && count == 2);
}

TEST(Operator, SplineRefusesWhatCannotBeAndChangesNothing)
{
    const CPoint2D points[] = {{0, 0}, {1, 0}, {2, 6}, {3, 0}};
    CPoint2Ds spline = {{9, 9}};
    qint32 count = 7;
    EXPECT_FALSE(Op::BSpline2Line(nullptr, 4, spline, count, 8));
    EXPECT_FALSE(Op::BSpline2Line(points, 3, spline, count, 8));
    EXPECT_FALSE(Op::BSpline2Line(points, -1, spline, count, 8));
    EXPECT_FALSE(Op::BSpline2Line(points, 4, spline, count, 0));
    EXPECT_FALSE(Op::BSpline2Line(points, 4, spline, count, Op::maximumDensity + 1));
    EXPECT_FALSE(Op::BSpline2Line(points, std::numeric_limits<qint32>::max(), spline, count, 1000));
    EXPECT_EQ(count, 7);
    EXPECT_EQ(spline, CPoint2Ds({{9, 9}}));
}

using GeoMapMode = testing::TestWithParam<double>;

TEST_P(GeoMapMode, MakesTenthsOfMillimetresWithYUpwards)
{
    QImage image(200, 100, QImage::Format_RGB32);
    image.setDotsPerMeterX(10000); // 10 pixels a millimetre: a unit is a pixel
    image.setDotsPerMeterY(10000);
    image.setDevicePixelRatio(GetParam());
    const double unit = GetParam(); // logical pixels are larger
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int i = 0; i < 2; ++i) { // it does not add up
        ASSERT_TRUE(CTxOperator::SetGeoMapMode(&painter));
        const QPointF origin = painter.deviceTransform().map(QPointF(0, 0));
        EXPECT_NEAR(origin.x(), 0, 1e-9);
        EXPECT_NEAR(origin.y(), 100, 1e-9);
        const QPointF place = painter.deviceTransform().map(QPointF(10, 20));
        EXPECT_NEAR(place.x(), 10 * unit, 0.01);
        EXPECT_NEAR(place.y(), 100 - 20 * unit, 0.01);
    }
    painter.fillRect(QRectF(0, 0, 10, 10), Qt::black);
    painter.end();
    EXPECT_EQ(image.pixel(2, 97), QColor(Qt::black).rgb());
    EXPECT_EQ(image.pixel(2, 2), QColor(Qt::white).rgb());
    EXPECT_FALSE(CTxOperator::SetGeoMapMode(&painter)); // no longer active
    EXPECT_FALSE(CTxOperator::SetGeoMapMode(nullptr));
}

INSTANTIATE_TEST_SUITE_P(PixelRatios, GeoMapMode, testing::Values(1.0, 2.0));

} // namespace
