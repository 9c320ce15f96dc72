#include "common/TdCommMethods.h"

#include <geos_c.h>

#include <gtest/gtest.h>

#include <memory>

// Where a line and its parallel neither cross themselves nor come nearer to each other than the distance, parallel line
// and mitred offset curve are the same; docs/parallel-lines.md tells where they are not.

namespace {

class ParallelLineGeos : public testing::Test
{
protected:
    ParallelLineGeos() : m_geos(GEOS_init_r()) {}
    ~ParallelLineGeos() override { GEOS_finish_r(m_geos); }

    struct Destroy
    {
        GEOSContextHandle_t geos;
        void operator()(GEOSGeometry *geometry) const { GEOSGeom_destroy_r(geos, geometry); }
    };
    using Geometry = std::unique_ptr<GEOSGeometry, Destroy>;

    Geometry lineString(const CPoint2Ds &points) const
    {
        const auto count = static_cast<unsigned>(points.size());
        GEOSCoordSequence *sequence = GEOSCoordSeq_create_r(m_geos, count, 2);
        for (unsigned i = 0; i < count; ++i)
            GEOSCoordSeq_setXY_r(m_geos, sequence, i, points[i].x, points[i].y);
        return own(GEOSGeom_createLineString_r(m_geos, sequence));
    }
    Geometry offsetCurve(const CPoint2Ds &points, double distance) const
    {
        constexpr double mitreLimit = 5.0;
        return own(GEOSOffsetCurve_r(m_geos, lineString(points).get(), distance, 8, GEOSBUF_JOIN_MITRE, mitreLimit));
    }
    /// The greatest distance of a point of one line from the other; -1 when there is none.
    double apart(const Geometry &a, const Geometry &b) const
    {
        double distance = -1.0;
        if (a && b)
            GEOSHausdorffDistance_r(m_geos, a.get(), b.get(), &distance);
        return distance;
    }

private:
    Geometry own(GEOSGeometry *geometry) const { return Geometry(geometry, Destroy{m_geos}); }

    GEOSContextHandle_t m_geos;
};

TEST_F(ParallelLineGeos, AgreesWithTheMitredOffsetCurve)
{
    const struct
    {
        const char *name;
        CPoint2Ds points;
        double distance;
    } rows[] = {
        {"segment", {{3, 1}, {40, 17}}, 5},
        {"collinear", {{0, 0}, {5, 0}, {30, 0}, {31, 0}}, 2},
        {"corner", {{0, 0}, {60, 0}, {60, 45}}, 12},
        {"zigzag", {{0, 0}, {30, 12}, {55, -4}, {90, 20}, {130, 3}}, 4},
        {"zigzag as sharp as mitres go", {{0, 0}, {40, 18}, {2, 30}, {45, 50}}, 1.5},
        {"spiral", {{0, 0}, {100, 0}, {100, 80}, {15, 80}, {15, 30}, {70, 30}}, 6},
        {"bay", {{0, 0}, {50, 0}, {50, -40}, {80, -40}, {80, 0}, {130, 0}}, 7},
        {"curve", {{0, 0}, {10, 1}, {20, 4}, {29, 9}, {37, 16}, {43, 25}, {47, 35}, {49, 46}}, 8},
        {"map coordinates", {{512340, 5403210}, {512390, 5403214}, {512431, 5403260}, {512500, 5403249}}, 9},
        {"repeated points", {{0, 0}, {20, 0}, {20, 0}, {35, 12}, {35, 12}, {60, 12}}, 3},
    };
    for (const auto &row : rows) {
        for (const double distance : {row.distance, -row.distance}) {
            CPoint2Ds line;
            ASSERT_TRUE(CTdCommMethods::ParallelLine(row.points.data(), static_cast<qint32>(row.points.size()),
                                                     distance, line));
            const double difference = apart(lineString(line), offsetCurve(row.points, distance));
            EXPECT_GE(difference, 0.0) << row.name << ' ' << distance;
            EXPECT_LT(difference, 1e-8) << row.name << ' ' << distance;
        }
    }
}

/// The outside of a cut corner: the mitres of the cut lie within the sides of the offset curve.
TEST_F(ParallelLineGeos, AgreesOutsideOfACutCorner)
{
    const CPoint2Ds line{{120, 10}, {14, 10}, {10, 14}, {10, 150}};
    CPoint2Ds out;
    ASSERT_TRUE(CTdCommMethods::ParallelLine(line.data(), static_cast<qint32>(line.size()), 20, out));
    EXPECT_LT(apart(lineString(out), offsetCurve(line, 20)), 1e-9);
}

} // namespace
