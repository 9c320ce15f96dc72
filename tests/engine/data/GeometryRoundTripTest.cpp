// What is written to a dataset comes back as it was, from every storage that can hold it.

#include "Rows.h"
#include "engine/data/DataFixture.h"
#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/Wkt.h"

#include <limits>

namespace {

using Info = CElemDatasetInfo;
using Storage = CTxDataSourceStorage;
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct KeptRow
{
    const char *name;
    Info::Type kind;
    const char *wkt;
    bool inShapefile = true; ///< shapefiles know the kind and the form
};

using GeometryKept = WithRows<DataFixture, std::tuple<Storage::Type, KeptRow>>;

TEST_P(GeometryKept, WithAllItsPartsHeightsAndMeasures)
{
    const auto &[storage, row] = GetParam();
    if (storage == Storage::Shapefile && !row.inShapefile)
        return;
    const char *file = storage == Storage::Shapefile ? "new" : storage == Storage::GeoPackage ? "new.gpkg" : "new.tdb";
    CTxDataSource *source = create(file, storage);
    const std::unique_ptr<CElemGeometry> element = Wkt::toElement(row.wkt);
    {
        const RecordsetPtr records = query(makeVector(source, "Data", row.kind));
        ASSERT_TRUE(addRecord(*records, {}, element.get())) << lastError();
        EXPECT_EQ(Wkt::of(geometryOf(*records).get()), Wkt::of(element.get()));
    }
    const RecordsetPtr records = query(vector(reopen(file), "Data"));
    const std::unique_ptr<CElemGeometry> stored = geometryOf(*records);
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->GetType(), element->GetType());
    EXPECT_EQ(Wkt::of(stored.get()), Wkt::of(element.get()));
}

const KeptRow keptRows[] = {

    {"Point3D", Info::Point3D, "POINT Z (1 2 -3.3)"},

    {"LineOfParts", Info::Line, "MULTILINESTRING ((1 2,3 4),(5 6,7 8,9 9))"},
    {"LineOfEqualPoints", Info::Line, "LINESTRING (1 2,1 2)"},
    {"Line3D", Info::Line3D, "MULTILINESTRING Z ((1 2 3,4 5 6),(7 8 9,0 1 2))"},
    {"CadLine3DMeasured", Info::CAD, "LINESTRING ZM (1 2 5 0,3 4 6 7)", false},
    {"Route", Info::Route, "MULTILINESTRING M ((1 2 0,3 4 5),(3 4 5,8 8 9))"},

    {"RegionOfParts", Info::Region, "MULTIPOLYGON (((0 0,0 9,9 9,0 0),(1 5,2 6,1 6,1 5)),((20 0,21 1,21 0,20 0)))"},
    {"Region3D", Info::Region3D, "POLYGON Z ((0 0 1,0 9 2,9 9 3,0 0 1))"},
    {"Tin", Info::TIN, "TIN Z (((0 0 1,1 0 1,0 1 1,0 0 1)),((1 0 1,1 1 2,0 1 1,1 0 1)))", false},

    {"CadCompound", Info::CAD,
     "GEOMETRYCOLLECTION (POINT (1 2),GEOMETRYCOLLECTION (LINESTRING (1 2,3 4),POLYGON ((0 0,0 9,9 9,0 0))),POINT (5 "
     "6))",
     false}};

INSTANTIATE_TEST_SUITE_P(Kinds, GeometryKept,
                         testing::Combine(testing::Values(Storage::Native, Storage::GeoPackage, Storage::Shapefile),
                                          testing::ValuesIn(keptRows)),
                         [](const auto &row) {
                             const Storage::Type storage = std::get<0>(row.param);
                             return std::string(std::get<1>(row.param).name) + "In" +
                                    (storage == Storage::Shapefile    ? "Shapefile"
                                     : storage == Storage::GeoPackage ? "GeoPackage"
                                                                      : "Native");
                         });

using GeometryStorage = DataFixture;

TEST_F(GeometryStorage, KeepsWhatIsEmptyAndRefusesWhatIsNotFinite)
{
    const RecordsetPtr records = query(makeVector(create(), "Data", Info::CAD));
    const CPoint2D odd[] = {{0, 0}, {noValue, 1}, {1, 1}, {infinity, 2}, {2, 2}};
    CGeoLine broken;
    broken.MakePolyline(odd, 3);
    CGeoRegion endless;
    endless.MakePolygon(odd + 2, 3);
    CGeoCompound compound;
    compound.AddGeometry(std::make_unique<CGeoPoint>(1, -infinity));
    for (const CElemGeometry *each : std::initializer_list<const CElemGeometry *>{&broken, &endless, &compound}) {
        EXPECT_FALSE(addRecord(*records, {}, each));
        EXPECT_NE(lastError().find("infinite"), std::string::npos) << lastError();
    }
    const CGeoPoint nowhere;
    const CGeoLine empty;
    for (const CElemGeometry *each : std::initializer_list<const CElemGeometry *>{&nowhere, &empty}) {
        ASSERT_TRUE(addRecord(*records, {}, each)) << lastError();
        EXPECT_EQ(Wkt::of(geometryOf(*records).get()), Wkt::of(each));
    }
}

TEST_F(GeometryStorage, RefusesCompoundsThatAreNestedTooDeep)
{
    const RecordsetPtr records = query(makeVector(create(), "Data", Info::CAD));
    for (const int depth : {30, 31, 10000}) {
        auto nested = std::make_unique<CGeoCompound>();
        nested->AddGeometry(std::make_unique<CGeoPoint>(7, 8));
        for (int i = 1; i < depth; ++i) {
            auto outer = std::make_unique<CGeoCompound>();
            outer->AddGeometry(std::move(nested));
            nested = std::move(outer);
        }
        ASSERT_TRUE(records->AddNew());
        ASSERT_EQ(records->SetGeometry(nested.get()), depth <= 30) << depth;
        if (depth > 30) {
            EXPECT_NE(lastError().find("30"), std::string::npos) << lastError();
            continue;
        }
        ASSERT_TRUE(records->Update()) << lastError();
        EXPECT_EQ(Wkt::of(geometryOf(*records).get()), Wkt::of(nested.get()));
    }
}

} // namespace
