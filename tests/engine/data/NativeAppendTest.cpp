// Records that go from one GeoPackage's table to another as they are stored. That they do is seen by what the driver
// would not have written itself: a point with bounds before it.

#include "Rows.h"
#include "engine/data/DataFixture.h"
#include "engine/data/SqliteCheck.h"

#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/Wkt.h"

#include <QDateTime>

namespace {

class NativeAppend : public DataFixture
{
protected:
    CTxDataSource *make(const QString &alias, const QString &suffix = "tdb",
                        CTxDataSourceStorage::Type type = CTxDataSourceStorage::Native)
    {
        CTxDataSource *made = sources.Create(path(alias + '.' + suffix), alias, type);
        EXPECT_TRUE(made) << lastError();
        return made;
    }

    /// A dataset "data" with a field of every kind of value, open.
    static CDatasetVector *makeData(CTxDataSource *source, CElemDatasetInfo::Type type = CElemDatasetInfo::Point,
                                    const QString &coordSys = QString())
    {
        auto *made = dynamic_cast<CDatasetVector *>(source->CreateDataset(
            definition("data", type,
                       {CTxFieldInfo("whole", CTxFieldInfo::Long), CTxFieldInfo("real", CTxFieldInfo::Double),
                        CTxFieldInfo("said", CTxFieldInfo::Text, 5), CTxFieldInfo("yes", CTxFieldInfo::Boolean),
                        CTxFieldInfo("day", CTxFieldInfo::Date), CTxFieldInfo("bytes", CTxFieldInfo::LongBinary)},
                       coordSys)));
        EXPECT_TRUE(made && made->Open()) << lastError();
        return made;
    }

    static std::unique_ptr<CElemGeometry> shape(CElemDatasetInfo::Type type, double at)
    {
        const QByteArray x = QByteArray::number(at, 'g', 17), x3 = QByteArray::number(at + 3, 'g', 17);
        const QByteArray corners = x + " 1," + x3 + " 1," + x3 + " 5.25";
        switch (type) {
        case CElemDatasetInfo::Tabular:
            return nullptr;
        case CElemDatasetInfo::Line:
            return Wkt::toElement(("LINESTRING (" + corners + ')').toStdString());
        case CElemDatasetInfo::Region:
        case CElemDatasetInfo::CAD:
            return Wkt::toElement(("POLYGON ((" + corners + ',' + x + " 1))").toStdString());
        case CElemDatasetInfo::Text:
            return std::make_unique<CGeoText>(CPoint2D(at, 1), QStringLiteral("Où?"), 30, 2);
        default:
            return std::make_unique<CGeoPoint>(at, at / 4);
        }
    }

    /// Adds @p count records, the third of each hundred without values and geometry.
    static void fill(CDatasetVector *data, int count, double from = 0)
    {
        CTxDataSource *source = data->GetDataSource();
        EXPECT_TRUE(source->BeginTrans());
        const RecordsetPtr records = query(data);
        for (int i = 0; i < count; ++i) {
            const std::unique_ptr<CElemGeometry> geometry = shape(data->GetType(), from + i);
            const QDateTime day(QDate(2001, 2, 3), QTime(4, 5, 6, 700), Qt::UTC);
            const bool done = i % 100 == 2 ? addRecord(*records)
                                           : addRecord(*records,
                                                       {{"whole", -i},
                                                        {"real", CTxVariant(i / 3.0)},
                                                        {"said", CTxVariant(QStringLiteral("é%1").arg(i % 1000))},
                                                        {"yes", CTxVariant(i % 2 == 0)},
                                                        {"day", CTxVariant(day)},
                                                        {"bytes", CTxVariant(QByteArray("\0\1x", i % 4))}},
                                                       geometry.get());
            EXPECT_TRUE(done) << lastError();
        }
        EXPECT_TRUE(source->CommitTrans()) << lastError();
    }

    /// Gives the first point of the source bounds, as no driver writes them: it shows whether a record was copied as it
    /// is stored.
    void mark(const QString &file) const
    {
        EXPECT_TRUE(SqliteCheck(path(file))
                        .run("UPDATE data SET TxGeometry = CAST(x'4750000300000000' || zeroblob(32) || "
                             "substr(TxGeometry, 9) AS BLOB) "
                             "WHERE TxID = 1"));
    }
    bool isMarked(const QString &file, int id) const
    {
        return SqliteCheck(path(file))
                   .text(QStringLiteral("SELECT length(TxGeometry) FROM data WHERE TxID = %1").arg(id)) == "61";
    }

    /// Everything that @p file tells of its table "data", and whether the index agrees with the records.
    std::string state(const QString &file) const
    {
        SqliteCheck db(path(file));
        std::string all = db.text("SELECT group_concat(TxID || ' ' || ifnull(whole, '-')) FROM data") + " count " +
                          db.text("SELECT ifnull(feature_count, 0) FROM gpkg_ogr_contents WHERE table_name = 'data'") +
                          " bounds " +
                          db.text("SELECT ifnull(min_x, '') || ' ' || ifnull(max_x, '') || ' ' || ifnull(min_y, '') || "
                                  "' ' || ifnull(max_y, '') FROM gpkg_contents WHERE table_name = 'data'") +
                          " triggers " +
                          db.text("SELECT group_concat(sql) FROM (SELECT sql FROM sqlite_master WHERE type = 'trigger' "
                                  "AND tbl_name = 'data' ORDER BY name)");
        if (db.text("SELECT count(*) FROM sqlite_master WHERE name = 'rtree_data_TxGeometry'") == "1")
            all += " index " + db.text("SELECT rtreecheck('rtree_data_TxGeometry')") + ' ' +
                   db.text("SELECT count(*) FROM rtree_data_TxGeometry");
        return all;
    }

    /// The target, closed and opened again.
    CTxDataSource *reopened()
    {
        EXPECT_TRUE(sources.Close("to"));
        return open(path("to.tdb"), "to");
    }

    static qint64 countWithin(CDatasetVector *dataset, const CRect2D &bounds)
    {
        CTxQueryDef def;
        def.bounds = bounds;
        return query(dataset, def)->GetRecordCount();
    }
};

using NativeAppendOf = WithRows<NativeAppend, CElemDatasetInfo::Type>;

/// What arrives is, bit for bit, what was there; and counts, bounds and index tell of it.
TEST_P(NativeAppendOf, CopiesEveryKindAsItIs)
{
    CDatasetVector *from = makeData(make("from"), GetParam());
    fill(from, 5000);
    CDatasetVector *to = makeData(make("to"), GetParam());
    const bool hasPlace = GetParam() != CElemDatasetInfo::Tabular;
    ASSERT_TRUE(to->Append(query(from).get())) << lastError();
    const std::string columns = "quote(whole), quote(real), quote(said), quote(yes), quote(day), quote(bytes)";
    const QString all = QString::fromStdString("SELECT TxID, " + columns + (hasPlace ? ", quote(TxGeometry)" : "")) +
                        QLatin1String(GetParam() == CElemDatasetInfo::Line     ? ", TxLength"
                                      : GetParam() == CElemDatasetInfo::Region ? ", TxArea, TxPerimeter"
                                      : GetParam() == CElemDatasetInfo::Text   ? ", TxText, TxTextAngle, TxTextHeight"
                                                                               : "") +
                        QStringLiteral(" FROM data");
    EXPECT_EQ(SqliteCheck(path("to.tdb")).rows(all), SqliteCheck(path("from.tdb")).rows(all));
    EXPECT_EQ(to->GetRecordCount(), 5000);
    EXPECT_EQ(to->GetBounds(), from->GetBounds());
    EXPECT_EQ(state("to.tdb"), state("from.tdb"));

    // The driver goes on with it.
    const std::unique_ptr<CElemGeometry> next = shape(GetParam(), 6000.5);
    ASSERT_TRUE(addRecord(*query(to), {{"whole", 1}}, next.get())) << lastError();
    ASSERT_TRUE(to->Append(query(from, "whole <= -4990").get())) << lastError();
    EXPECT_EQ(to->GetRecordCount(), 5011);
    to = vector(reopened(), "data");
    EXPECT_EQ(to->GetRecordCount(), 5011);
    if (hasPlace) {
        EXPECT_EQ(countWithin(to, CRect2D(5500, -9e9, 7000, 9e9)), 1);
        EXPECT_GE(to->GetBounds().right, 6000.5);
        EXPECT_EQ(SqliteCheck(path("to.tdb")).text("SELECT rtreecheck('rtree_data_TxGeometry')"), "ok");
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, NativeAppendOf,
                         testing::Values(CElemDatasetInfo::Point, CElemDatasetInfo::Line, CElemDatasetInfo::Region,
                                         CElemDatasetInfo::Text, CElemDatasetInfo::CAD, CElemDatasetInfo::Tabular));

/// The coordinate system has another number in the target; a few records join many.
TEST_F(NativeAppend, FitsIntoWhatIsThere)
{
    CDatasetVector *from = makeData(make("from"), CElemDatasetInfo::Point, "EPSG:2056");
    fill(from, 300);
    mark("from.tdb");
    CTxDataSource *target = make("to");
    CDatasetVector *to = makeData(target, CElemDatasetInfo::Point, "EPSG:2056");
    fill(to, 5000, 1000.25);
    ASSERT_TRUE(SqliteCheck(path("to.tdb"))
                    .run("UPDATE gpkg_spatial_ref_sys SET srs_id = 7 WHERE srs_id = 2056;"
                         "UPDATE gpkg_geometry_columns SET srs_id = 7;"
                         "UPDATE gpkg_contents SET srs_id = 7 WHERE table_name = 'data'"));
    to = vector(reopened(), "data");
    ASSERT_TRUE(to->Append(query(from).get())) << lastError();
    EXPECT_TRUE(isMarked("to.tdb", 5001));
    EXPECT_EQ(SqliteCheck(path("to.tdb"))
                  .text("SELECT count(*) FROM data WHERE TxID > 5000 AND "
                        "substr(TxGeometry, 5, 4) = x'07000000'"),
              "297");
    EXPECT_EQ(to->GetBounds(), CRect2D(0, 0, 5999.25, 5999.25 / 4));
    EXPECT_EQ(countWithin(to, CRect2D(-1, -1, 99.5, 99)), 99);
    EXPECT_EQ(countWithin(to, CRect2D(-1, -1, 1e5, 1e5)), 297 + 4950);
    EXPECT_EQ(SqliteCheck(path("to.tdb")).text("SELECT rtreecheck('rtree_data_TxGeometry')"), "ok");
}

/// Values that need a conversion, or that another program wrote against the rules, take the general way, whole.
struct OddValue
{
    const char *sql;     ///< makes record 1500 odd
    const char *arrives; ///< "whole|real|said" of it in the target; null when the append is refused
    int places = 2029;   ///< how many records of the target have one then
};

using NativeAppendOdd = WithRows<NativeAppend, OddValue>;

TEST_P(NativeAppendOdd, TakesTheGeneralWay)
{
    CTxDataSource *source = make("from");
    fill(makeData(source), 2000);
    mark("from.tdb");
    sources.Close("from");
    ASSERT_TRUE(SqliteCheck(path("from.tdb")).run(QLatin1String(GetParam().sql) + " WHERE TxID = 1500"));
    CDatasetVector *from = vector(open(path("from.tdb"), "from"), "data");
    CDatasetVector *to = makeData(make("to"));
    fill(to, 50);
    const std::string before = state("to.tdb");
    const bool done = to->Append(query(from).get());
    EXPECT_EQ(done, GetParam().arrives != nullptr) << lastError();
    EXPECT_FALSE(isMarked("to.tdb", 51));
    if (GetParam().arrives) {
        EXPECT_EQ(SqliteCheck(path("to.tdb"))
                      .text("SELECT ifnull(whole, '-') || '|' || ifnull(real, '-') || '|' || ifnull(said, '-') "
                            "FROM data WHERE TxID = 1550"),
                  GetParam().arrives);
        EXPECT_EQ(to->GetRecordCount(), 2050);
        EXPECT_EQ(countWithin(to, CRect2D(-1, -1, 1e5, 1e5)), GetParam().places);
    } else {
        EXPECT_NE(lastError().find("the record 1500"), std::string::npos) << lastError();
        EXPECT_EQ(state("to.tdb"), before);
        EXPECT_EQ(to->GetRecordCount(), 50);
        EXPECT_EQ(to->GetBounds(), CRect2D(0, 0, 49, 49 / 4.0));
    }
    EXPECT_EQ(SqliteCheck(path("to.tdb")).text("SELECT rtreecheck('rtree_data_TxGeometry')"), "ok");
}

INSTANTIATE_TEST_SUITE_P(Values, NativeAppendOdd,
                         testing::Values(OddValue{"UPDATE data SET said = 'longer'", nullptr},
                                         OddValue{"UPDATE data SET whole = 'x', real = 2.5, said = 'a'", "0|2.5|a"},
                                         OddValue{"UPDATE data SET whole = 9, real = 'y', said = 'a'", "9|0.0|a"},
                                         OddValue{"UPDATE data SET whole = 9999999999", nullptr},
                                         OddValue{"UPDATE data SET whole = 1, real = 2, said = 3, "
                                                  "TxGeometry = 'no geometry'",
                                                  "1|2.0|3", 2028}),
                         rowNames(&OddValue::sql));

/// Within the user's own transaction nothing but the append is taken back, and what the source has not committed comes
/// along.
TEST_F(NativeAppend, JoinsTheUsersTransaction)
{
    CTxDataSource *source = make("from");
    CDatasetVector *from = makeData(source);
    fill(from, 3000);
    mark("from.tdb");
    CTxDataSource *target = make("to");
    CDatasetVector *to = makeData(target);
    const std::string empty = state("to.tdb");
    ASSERT_TRUE(target->BeginTrans() && source->BeginTrans());
    RecordsetPtr records = query(to);
    for (int i = 0; i < 200; ++i) {
        const CGeoPoint place(-i - 1, 0);
        ASSERT_TRUE(addRecord(*records, {{"whole", i}}, &place));
    }
    records.reset();
    ASSERT_TRUE(addRecord(*query(from), {{"whole", 77}}, shape(CElemDatasetInfo::Point, 9000).get()));
    CTxAppendDef stops;
    stops.progress = [](qint64 done, qint64) { return done < 2000; };
    EXPECT_FALSE(to->Append(query(from).get(), stops));
    EXPECT_NE(lastError().find("stopped"), std::string::npos) << lastError();
    EXPECT_EQ(to->GetRecordCount(), 200);
    EXPECT_EQ(countWithin(to, CRect2D(-1e4, -1, 1e4, 1e4)), 200);
    ASSERT_TRUE(to->Append(query(from).get())) << lastError();
    EXPECT_EQ(to->GetRecordCount(), 3201);
    EXPECT_EQ(countWithin(to, CRect2D(8000, -1, 1e4, 1e4)), 1);
    ASSERT_TRUE(target->RollbackTrans()) << lastError();
    EXPECT_EQ(to->GetRecordCount(), 0);
    EXPECT_EQ(state("to.tdb"), empty);

    ASSERT_TRUE(target->BeginTrans() && to->Append(query(from).get()) && target->CommitTrans()) << lastError();
    EXPECT_TRUE(isMarked("to.tdb", 1));
    EXPECT_EQ(vector(reopened(), "data")->GetRecordCount(), 3001);
    EXPECT_EQ(SqliteCheck(path("to.tdb")).text("SELECT rtreecheck('rtree_data_TxGeometry')"), "ok");
}

/// A dataset appended to itself, and to another one of the same file, with a condition and a tag.
TEST_F(NativeAppend, StaysWithinOneFile)
{
    CTxDataSource *source = make("from");
    CDatasetVector *data = makeData(source);
    fill(data, 3000);
    mark("from.tdb");
    ASSERT_TRUE(data->Append(query(data).get())) << lastError();
    EXPECT_TRUE(isMarked("from.tdb", 3001));
    EXPECT_EQ(data->GetRecordCount(), 6000);
    CDatasetVector *other = makeVector(source, "Other");
    ASSERT_TRUE(other->CreateField(CTxFieldInfo("real", CTxFieldInfo::Double)));
    CTxAppendDef def;
    def.tagField = "Name";
    ASSERT_TRUE(other->Append(query(data, "whole < -2900").get(), def)) << lastError();
    EXPECT_EQ(SqliteCheck(path("from.tdb")).text("SELECT count(*) || ' ' || min(Name) || ' ' || max(Name) FROM Other"),
              "196 data data");
    EXPECT_EQ(other->GetRecordCount(), 196);
    EXPECT_EQ(countWithin(other, CRect2D(-1, -1, 1e5, 1e5)), 196);
}

/// A trigger of the user's adds records in between; the index knows all of them by their right numbers.
TEST_F(NativeAppend, LetsTriggersOfTheUserAddRecords)
{
    CDatasetVector *from = makeData(make("from"));
    fill(from, 3000);
    makeData(make("to"));
    sources.Close("to");
    ASSERT_TRUE(SqliteCheck(path("to.tdb"))
                    .run("CREATE TRIGGER twice AFTER INSERT ON data WHEN NEW.whole = -1000 BEGIN "
                         "INSERT INTO data (whole, TxGeometry) VALUES (5, NEW.TxGeometry); END"));
    CDatasetVector *to = vector(open(path("to.tdb"), "to"), "data");
    ASSERT_TRUE(to->Append(query(from).get())) << lastError();
    EXPECT_EQ(SqliteCheck(path("to.tdb"))
                  .text("SELECT count(*) FROM data JOIN rtree_data_TxGeometry ON id = TxID AND "
                        "(minx = -whole OR whole = 5)"),
              "2971");
    EXPECT_EQ(query(to)->GetRecordCount(), 3001);
}

} // namespace
