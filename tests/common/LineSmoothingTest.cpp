#include "common/TdCommMethods.h"
#include "engine/data/DataFixture.h"
#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"

#include <sqlite3.h>

#include <cmath>

namespace {

using Info = CElemDatasetInfo;

/// A zigzag of @p count points.
CGeoLine zigzag(int count, double left = 0)
{
    CPoint2Ds points;
    for (int i = 0; i < count; ++i)
        points.emplace_back(left + i, i % 2);
    CGeoLine line;
    line.MakePolyline(points.data(), count);
    return line;
}

class LineSmoothing : public DataFixture
{
protected:
    /// The lines of the dataset in the order of their identifiers.
    static std::vector<std::unique_ptr<CElemGeometry>> geometries(CDatasetVector *dataset)
    {
        std::vector<std::unique_ptr<CElemGeometry>> all;
        for (const RecordsetPtr records = query(dataset); !records->IsEOF(); records->MoveNext())
            all.push_back(geometryOf(*records));
        return all;
    }
    static const CGeoLine &line(const std::unique_ptr<CElemGeometry> &geometry)
    {
        return dynamic_cast<const CGeoLine &>(*geometry);
    }
};

class LineSmoothingIn : public LineSmoothing, public testing::WithParamInterface<CTxDataSourceStorage::Type>
{
};

TEST_P(LineSmoothingIn, SmoothsEachLineOnceAndKeepsItsEnds)
{
    CTxDataSource *source = create(GetParam() == CTxDataSourceStorage::Shapefile    ? "lines"
                                   : GetParam() == CTxDataSourceStorage::GeoPackage ? "lines.gpkg"
                                                                                    : "lines.tdb",
                                   GetParam());
    CDatasetVector *dataset = makeVector(source, "Lines", Info::Line);
    constexpr int count = 60;
    {
        const RecordsetPtr records = query(dataset);
        for (int i = 0; i < count; ++i) {
            CGeoLine part = zigzag(5 + i % 7, i);
            const CGeoLine second = zigzag(4, i + 100);
            part.AddSubPolyline(second.GetPoints(), second.GetPointCount());
            ASSERT_TRUE(addRecord(*records, {{"Size", CTxVariant(i)}}, &part)) << lastError();
        }
        ASSERT_TRUE(addRecord(*records, {{"Size", CTxVariant(count)}})) << lastError(); // without a geometry
    }
    CTxQueryDef query;
    query.orderBy = {"Size DESC"};
    query.bounds = CRect2D(-1e6, -1e6, 1e6, 1e6);
    query.options = CTxQueryDef::AnyOrder;
    for (const bool isOrdered : {true, false}) {
        if (!isOrdered)
            query.orderBy.clear(); // by the spatial index, which the changes touch
        const std::vector<std::unique_ptr<CElemGeometry>> before = geometries(dataset);
        const RecordsetPtr records = DataFixture::query(dataset, query);
        ASSERT_TRUE(CTdCommMethods::LineMakeSmooth(records.get())) << lastError();
        EXPECT_TRUE(records->IsEOF());
        const std::vector<std::unique_ptr<CElemGeometry>> after = geometries(dataset);
        ASSERT_EQ(after.size(), before.size());
        for (size_t i = 0; i < before.size() - 1; ++i) {
            const CGeoLine &old = line(before[i]);
            const CGeoLine &smooth = line(after[i]);
            ASSERT_EQ(smooth.GetPartCount(), 2);
            const CPoint2D *oldPart = old.GetPoints();
            const CPoint2D *part = smooth.GetPoints();
            for (int p = 0; p < 2; ++p) {
                const qint32 n = old.GetPolyCounts()[p];
                const qint32 m = smooth.GetPolyCounts()[p];
                ASSERT_EQ(m, 8 * (n + 1) + 1) << i; // smoothed once, not twice
                EXPECT_EQ(part[0], oldPart[0]);
                EXPECT_EQ(part[m - 1], oldPart[n - 1]);
                oldPart += n;
                part += m;
            }
            EXPECT_LT(smooth.GetLength(), old.GetLength());
            EXPECT_TRUE(old.GetBounds().Contains({smooth.GetBounds().left, smooth.GetBounds().top}));
        }
        EXPECT_FALSE(after.back());
    }
    EXPECT_FALSE(source->IsTransStarted());
}

INSTANTIATE_TEST_SUITE_P(Storages, LineSmoothingIn,
                         testing::Values(CTxDataSourceStorage::Native, CTxDataSourceStorage::GeoPackage,
                                         CTxDataSourceStorage::Shapefile));

TEST_F(LineSmoothing, LeavesOtherGeometriesAlone)
{
    CDatasetVector *dataset = makeVector(create(), "Drawing", Info::CAD);
    const CGeoLine short2 = zigzag(2);
    CGeoLine spatial = zigzag(5);
    spatial.SetHasZ(true);
    CGeoCompound compound;
    compound.AddGeometry(short2.Clone());
    const CGeoLine longest = zigzag(3000);
    const CGeoLine tooLong = zigzag(3001);
    const CGeoLine *lines[] = {&spatial, &tooLong, &longest, &short2};
    {
        const RecordsetPtr records = query(dataset);
        for (const CGeoLine *each : lines)
            ASSERT_TRUE(addRecord(*records, {}, each)) << lastError();
        ASSERT_TRUE(addRecord(*records, {}, &compound)) << lastError();
    }
    const RecordsetPtr records = query(dataset);
    ASSERT_TRUE(CTdCommMethods::LineMakeSmooth(records.get())) << lastError();
    const std::vector<std::unique_ptr<CElemGeometry>> after = geometries(dataset);
    EXPECT_EQ(line(after[0]).GetPointCount(), 5);
    EXPECT_EQ(line(after[1]).GetPointCount(), 3001);
    EXPECT_EQ(line(after[2]).GetPointCount(), 8 * 3001 + 1);
    EXPECT_EQ(line(after[3]).GetPointCount(), 8 * 3 + 1);
    EXPECT_DOUBLE_EQ(line(after[3]).GetLength(), std::sqrt(2)); // a straight line stays one
    EXPECT_EQ(after[4]->GetType(), CElemGeometry::Compound);
}

TEST_F(LineSmoothing, MeasuresGoWithTheirPlaces)
{
    CDatasetVector *dataset = makeVector(create(), "Drawing", Info::CAD);
    const CPoint2D points[] = {{0, 0}, {10, 0}, {20, 0}, {30, 0}};
    const double measures[] = {100, 110, 120, 130};
    CGeoLine route;
    route.MakePolyline(points, 4, false, nullptr, measures);
    const RecordsetPtr records = query(dataset);
    ASSERT_TRUE(addRecord(*records, {}, &route)) << lastError();
    ASSERT_TRUE(CTdCommMethods::LineMakeSmooth(records.get())) << lastError();
    const std::vector<std::unique_ptr<CElemGeometry>> after = geometries(dataset);
    const CGeoLine &smooth = line(after[0]);
    ASSERT_TRUE(smooth.GetMs());
    for (qint32 i = 0; i < smooth.GetPointCount(); ++i)
        EXPECT_NEAR(smooth.GetMs()[i], smooth.GetPoints()[i].x + 100, 1e-12);
}

TEST_F(LineSmoothing, RefusesWhatIsNoLiveRecordsetOfLines)
{
    CTxDataSource *source = create();
    EXPECT_FALSE(CTdCommMethods::LineMakeSmooth(nullptr));
    const RecordsetPtr points = query(makeVector(source, "Points", Info::Point));
    EXPECT_FALSE(CTdCommMethods::LineMakeSmooth(points.get()));
    CDatasetVector *lines = makeVector(source, "Lines", Info::Line);
    const RecordsetPtr none = query(lines);
    EXPECT_TRUE(CTdCommMethods::LineMakeSmooth(none.get())); // nothing to do
    CTxRecordset *released = query(lines).release();
    ASSERT_TRUE(lines->ReleaseRecordset(released));
    EXPECT_FALSE(CTdCommMethods::LineMakeSmooth(released));
}

// The third line cannot be written: the first two come back.
TEST_F(LineSmoothing, FailureTakesEverythingBack)
{
    CDatasetVector *dataset = makeVector(create(), "Lines", Info::Line);
    for (int i = 0; i < 3; ++i) {
        const CGeoLine each = zigzag(5);
        ASSERT_TRUE(addRecord(*query(dataset), {{"Size", CTxVariant(i)}}, &each)) << lastError();
    }
    ASSERT_TRUE(sources.Close("db"));
    sqlite3 *database = nullptr;
    ASSERT_EQ(sqlite3_open(path("new.tdb").toUtf8(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database,
                           "CREATE TRIGGER keep BEFORE UPDATE ON Lines WHEN OLD.Size = 2 "
                           "BEGIN SELECT RAISE(ABORT, 'no change here'); END",
                           nullptr, nullptr, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
    CTxDataSource *source = open(path("new.tdb"), "db");
    dataset = vector(source, "Lines");
    const RecordsetPtr records = query(dataset);
    EXPECT_FALSE(CTdCommMethods::LineMakeSmooth(records.get()));
    EXPECT_NE(lastError().find("no change"), std::string::npos) << lastError();
    EXPECT_TRUE(records->IsEOF());
    EXPECT_FALSE(source->IsTransStarted());
    for (const auto &each : geometries(vector(source, "Lines")))
        EXPECT_EQ(line(each).GetPointCount(), 5);
}

} // namespace
