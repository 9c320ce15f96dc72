#include "engine/map/MapView.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const QSizeF size(400, 200);

TEST(MapView, FittingShowsAllInTheMiddle)
{
    struct Row
    {
        const char *name;
        CRect2D bounds;
        double scale;
    };
    const Row rows[] = {{"wide", CRect2D(0, 0, 760, 100), 2.0},
                        {"high", CRect2D(0, 0, 10, 900), 5.0},
                        {"a line without height", CRect2D(-190, 7, 190, 7), 1.0},
                        {"a point", CRect2D(500, 100, 500, 100), 1.0 / 380},
                        {"the origin", CRect2D(0, 0, 0, 0), 0.002 / 380}};
    for (const Row &row : rows) {
        const MapView view = MapView::fitting(row.bounds, size, 10);
        EXPECT_NEAR(view.scale(), row.scale, row.scale * 1e-12) << row.name;
        EXPECT_EQ(view.center(), row.bounds.CenterPoint()) << row.name;
        EXPECT_TRUE(view.bounds().Contains(CPoint2D(row.bounds.left, row.bounds.top))) << row.name;
    }
}

TEST(MapView, FittingNothingOrTheInfiniteGivesAUsableView)
{
    constexpr double most = std::numeric_limits<double>::max();
    for (const CRect2D &bounds : {CRect2D(), CRect2D(-most, -most, most, most)}) {
        const MapView view = MapView::fitting(bounds, size);
        EXPECT_EQ(view.scale(), 1.0);
        EXPECT_EQ(view.center(), CPoint2D());
    }
}

TEST(MapView, ZoomStopsAtTheEndsAndIgnoresNonsense)
{
    MapView in(CPoint2D(1, 1), 1, size);
    MapView out = in;
    for (int i = 0; i < 200; ++i) {
        in = in.zoomed(10, QPointF(13, 17));
        out = out.zoomed(0.1, QPointF(13, 17));
    }
    EXPECT_EQ(in.scale(), MapView::minimumScale);
    EXPECT_EQ(out.scale(), MapView::maximumScale);
    EXPECT_TRUE(std::isfinite(out.center().x));
    for (const double factor :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(in.zoomed(factor, QPointF()), in);
}

} // namespace
