#include "Rows.h"
#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/Wkt.h"

namespace {

struct ThereAndBackRow
{
    const char *name, *wkt;
    CElemGeometry::Type type;
    const char *back; ///< what comes back; null for the same text
    const char *bounds = nullptr;
};

using ThereAndBack = testing::TestWithParam<ThereAndBackRow>;

TEST_P(ThereAndBack, KeepsEverything)
{
    const ThereAndBackRow &row = GetParam();
    const std::unique_ptr<OGRGeometry> source = Wkt::toOgr(row.wkt);
    const std::unique_ptr<CElemGeometry> element = OgrGeometry::fromOgr(source.get());
    ASSERT_TRUE(element);
    EXPECT_EQ(element->GetType(), row.type);
    EXPECT_EQ(Wkt::of(OgrGeometry::toOgr(*element).get()), row.back ? row.back : row.wkt);
    EXPECT_EQ(Wkt::of(OgrGeometry::toOgr(*element->Clone()).get()), row.back ? row.back : row.wkt);
    EXPECT_EQ(element->GetBounds().IsVoid(), source->IsEmpty());
    if (!source->IsEmpty()) {
        OGREnvelope envelope;
        source->getEnvelope(&envelope);
        const CRect2D expected(envelope.MinX, envelope.MinY, envelope.MaxX, envelope.MaxY);
        EXPECT_EQ(element->GetBounds(), expected);
    }
}

using E = CElemGeometry;
INSTANTIATE_TEST_SUITE_P(
    Geometries, ThereAndBack,
    testing::Values(
        ThereAndBackRow{"point", "POINT (1 2)", E::Point, nullptr},
        ThereAndBackRow{"pointZ", "POINT Z (1 2 3)", E::Point3D, nullptr},
        ThereAndBackRow{"pointM", "POINT M (1 2 4)", E::Point, nullptr},
        ThereAndBackRow{"pointZM", "POINT ZM (1 2 3 4)", E::Point3D, nullptr},
        ThereAndBackRow{"pointEmpty", "POINT EMPTY", E::Point, nullptr},
        ThereAndBackRow{"pointEmptyZ", "POINT Z EMPTY", E::Point3D, nullptr},
        ThereAndBackRow{"multiPointOfOne", "MULTIPOINT ((1 2))", E::Point, "POINT (1 2)"},
        ThereAndBackRow{"multiPoint", "MULTIPOINT ((1 2),(3 4))", E::Compound,
                        "GEOMETRYCOLLECTION (POINT (1 2),POINT (3 4))"},
        ThereAndBackRow{"line", "LINESTRING (1 2,3 4)", E::Line, nullptr},
        ThereAndBackRow{"lineOfOnePoint", "LINESTRING (1 2)", E::Line, nullptr},
        ThereAndBackRow{"lineEmpty", "LINESTRING EMPTY", E::Line, nullptr},
        ThereAndBackRow{"lineM", "LINESTRING M (1 2 0,3 4 7)", E::Line, nullptr},
        ThereAndBackRow{"lineZM", "LINESTRING ZM (1 2 5 0,3 4 6 7)", E::Line3D, nullptr},
        ThereAndBackRow{"multiLine", "MULTILINESTRING Z ((1 2 3,4 5 6),(7 8 9,0 1 2))", E::Line3D, nullptr},
        ThereAndBackRow{"multiLineEmptyPart", "MULTILINESTRING ((1 2,4 5),EMPTY)", E::Line, "LINESTRING (1 2,4 5)"},
        ThereAndBackRow{"polygonWithHole", "POLYGON ((0 0,9 0,9 9,0 0),(5 1,6 1,6 2,5 1))", E::Region, nullptr},
        ThereAndBackRow{"polygonEmpty", "POLYGON EMPTY", E::Region, nullptr},
        ThereAndBackRow{"multiPolygon", "MULTIPOLYGON (((0 0,9 0,9 9,0 0),(5 1,6 1,6 2,5 1)),((20 0,21 0,21 1,20 0)))",
                        E::Region, nullptr},
        ThereAndBackRow{"polygonZ", "POLYGON Z ((0 0 1,9 0 2,9 9 3,0 0 1))", E::Region3D, nullptr},
        ThereAndBackRow{"triangle", "TRIANGLE ((0 0,9 0,9 9,0 0))", E::Region, "POLYGON ((0 0,9 0,9 9,0 0))"},
        ThereAndBackRow{"tin", "TIN Z (((0 0 1,1 0 1,0 1 1,0 0 1)),((1 0 1,1 1 2,0 1 1,1 0 1)))", E::Region3D,
                        "MULTIPOLYGON Z (((0 0 1,1 0 1,0 1 1,0 0 1)),((1 0 1,1 1 2,0 1 1,1 0 1)))"},
        ThereAndBackRow{"collection", "GEOMETRYCOLLECTION (POINT (1 2),GEOMETRYCOLLECTION (LINESTRING (1 2,3 4)))",
                        E::Compound, nullptr},
        ThereAndBackRow{"collectionEmpty", "GEOMETRYCOLLECTION EMPTY", E::Compound, nullptr}),
    rowNames(&ThereAndBackRow::name));

TEST(OgrGeometry, MakesShortChordsOfCurves)
{
    const auto source = Wkt::toOgr("CURVEPOLYGON (COMPOUNDCURVE (CIRCULARSTRING (0 0,1 1,2 0),(2 0,0 0)))");
    const auto element = OgrGeometry::fromOgr(source.get());
    ASSERT_TRUE(element);
    ASSERT_EQ(element->GetType(), CElemGeometry::Region);
    const double halfDisc = 3.14159265358979 / 2;
    EXPECT_NEAR(static_cast<CGeoRegion &>(*element).GetArea(), halfDisc, 0.001 * halfDisc);
}

struct TargetRow
{
    const char *wkt;
    OGRwkbGeometryType target;
    const char *expected; ///< "null" where the layer cannot hold it
};

using TargetLayer = testing::TestWithParam<TargetRow>;

TEST_P(TargetLayer, DecidesTheForm)
{
    const TargetRow &row = GetParam();
    const auto element = Wkt::toElement(row.wkt);
    ASSERT_TRUE(element);
    EXPECT_EQ(Wkt::of(OgrGeometry::toOgr(*element, row.target).get()), row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Layers, TargetLayer,
    testing::Values(
        TargetRow{"POINT (1 2)", wkbPoint25D, "POINT Z (1 2 0)"}, TargetRow{"POINT Z (1 2 3)", wkbPoint, "POINT (1 2)"},
        TargetRow{"POINT (1 2)", wkbMultiPoint, "MULTIPOINT ((1 2))"},
        TargetRow{"POINT (1 2)", wkbMultiPolygon, "null"}, TargetRow{"POINT (1 2)", wkbNone, "null"},
        TargetRow{"MULTIPOINT ((1 2),(3 4))", wkbMultiPoint, "MULTIPOINT ((1 2),(3 4))"},
        TargetRow{"LINESTRING (1 2,3 4)", wkbMultiLineString, "MULTILINESTRING ((1 2,3 4))"},
        TargetRow{"LINESTRING EMPTY", wkbMultiLineString, "MULTILINESTRING EMPTY"},
        TargetRow{"LINESTRING (1 2,3 4)", wkbMultiLineStringM, "MULTILINESTRING M ((1 2 0,3 4 0))"},
        TargetRow{"LINESTRING (1 2,3 4)", wkbPolygon, "null"},
        TargetRow{"MULTILINESTRING ((1 2,3 4),(5 6,7 8))", wkbLineString, "MULTILINESTRING ((1 2,3 4),(5 6,7 8))"},
        TargetRow{"GEOMETRYCOLLECTION (LINESTRING (1 2,3 4),MULTILINESTRING ((1 2,3 4),(5 6,7 8)))", wkbMultiLineString,
                  "MULTILINESTRING ((1 2,3 4),(1 2,3 4),(5 6,7 8))"},
        TargetRow{"GEOMETRYCOLLECTION (LINESTRING (1 2,3 4),POINT (1 2))", wkbMultiLineString, "null"},
        TargetRow{"POLYGON ((0 0,9 0,9 9,0 0))", wkbMultiPolygon25D, "MULTIPOLYGON Z (((0 0 0,9 0 0,9 9 0,0 0 0)))"},
        TargetRow{"POLYGON Z ((0 0 1,9 0 1,9 9 1,0 0 1))", wkbTINZ, "TIN Z (((0 0 1,9 0 1,9 9 1,0 0 1)))"},
        TargetRow{"POLYGON Z ((0 0 1,9 0 1,9 9 1,0 9 1,0 0 1))", wkbTINZ, "null"},
        TargetRow{"LINESTRING (1 2,3 4)", wkbGeometryCollection, "GEOMETRYCOLLECTION (LINESTRING (1 2,3 4))"}));

/// A compound that holds nothing but one compound, and so on @p depth levels down to a point.
std::unique_ptr<CGeoCompound> nested(int depth)
{
    auto outer = std::make_unique<CGeoCompound>();
    CGeoCompound *place = outer.get();
    for (int i = 1; i < depth; ++i) {
        auto inner = std::make_unique<CGeoCompound>();
        CGeoCompound *next = inner.get();
        place->AddGeometry(std::move(inner));
        place = next;
    }
    place->AddGeometry(Wkt::toElement("POINT (7 8)"));
    return outer;
}

TEST(OgrGeometry, RefusesWhatIsNestedTooDeepUnlessTheLayerKeepsNoNesting)
{
    EXPECT_FALSE(OgrGeometry::toOgr(*nested(31)));
    EXPECT_FALSE(OgrGeometry::toOgr(*nested(10000), wkbGeometryCollection));
    EXPECT_EQ(Wkt::of(OgrGeometry::toOgr(*nested(10000), wkbMultiPoint).get()), "MULTIPOINT ((7 8))");
}

} // namespace
