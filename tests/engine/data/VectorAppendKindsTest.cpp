#include "Rows.h"
#include "engine/data/DataFixture.h"
#include "engine/data/SampleFiles.h"

#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/Wkt.h"

#include <QDir>

#include <gdal_priv.h>

#include <array>
#include <ostream>

namespace {

using Info = CElemDatasetInfo;
using Field = CTxFieldInfo;

/// What records become in a dataset of another kind, in other fields, in another place.
class VectorAppendKinds : public DataFixture
{
protected:
    void SetUp() override { m_database = create(); }

    CDatasetVector *make(const char *name, Info::Type type, const CTxFieldInfos &fields = {},
                         const QString &coordSys = QString())
    {
        auto *made =
            dynamic_cast<CDatasetVector *>(m_database->CreateDataset(definition(name, type, fields, coordSys)));
        EXPECT_TRUE(made && made->Open()) << lastError();
        return made;
    }

    static std::unique_ptr<CGeoLine> line(const QList<CPoint2D> &points, const double *zs = nullptr,
                                          const double *ms = nullptr)
    {
        auto made = std::make_unique<CGeoLine>();
        EXPECT_TRUE(made->MakePolyline(points.data(), qint32(points.size()), false, zs, ms));
        return made;
    }

    CTxDataSource *m_database = nullptr;

    /// A geometry as datasets of @p kind hold it, null for tables.
    static std::unique_ptr<CElemGeometry> sample(Info::Type kind)
    {
        if (kind == Info::Text)
            return std::make_unique<CGeoText>(CPoint2D(1, 2), QStringLiteral("here"), 30.0, 2.5);
        const std::pair<Info::Type, const char *> texts[] = {
            {Info::Line, "LINESTRING (0 0,3 0,3 4)"},
            {Info::Line3D, "LINESTRING Z (0 0 5,3 0 6,3 4 7)"},
            {Info::Route, "LINESTRING M (0 0 5,3 0 6,3 4 7)"},
            {Info::Region, "POLYGON ((0 0,2 0,2 2,0 2,0 0))"},
            {Info::Region3D, "POLYGON ((0 0,2 0,2 2,0 2,0 0))"},
            {Info::CAD, "GEOMETRYCOLLECTION (LINESTRING (0 0,3 0,3 4),LINESTRING (8 8,9 9))"},
            {Info::Point, "POINT (1 2)"}};
        for (const auto &[type, text] : texts)
            if (type == kind)
                return Wkt::toElement(text);
        return nullptr;
    }
};

struct KindRow
{
    Info::Type from, to;
    const char *refusal; // a word of it; null when it is converted
};

std::ostream &operator<<(std::ostream &out, const KindRow &row)
{
    return out << row.from << " to " << row.to;
}

using VectorAppendKind = WithRows<VectorAppendKinds, KindRow>;

TEST_P(VectorAppendKind, IsConvertedOrRefused)
{
    const auto [fromKind, toKind, refusal] = GetParam();
    CDatasetVector *from = make("From", fromKind);
    const std::unique_ptr<CElemGeometry> given = sample(fromKind);
    ASSERT_TRUE(addRecord(*query(from), {{"TxUserID", 7}}, given.get())) << lastError();
    CDatasetVector *to = make("To", toKind);
    const bool done = to->Append(query(from).get());
    EXPECT_EQ(done, refusal == nullptr) << lastError();
    if (!done) {
        EXPECT_NE(lastError().find(refusal), std::string::npos) << lastError();
        EXPECT_EQ(to->GetRecordCount(), 0);
        return;
    }
    const RecordsetPtr records = query(to);
    EXPECT_EQ(textOf(*records, "TxUserID"), "7");
    const std::unique_ptr<CElemGeometry> got = geometryOf(*records);
    ASSERT_EQ(got != nullptr, given != nullptr && toKind != Info::Tabular);
    if (!got)
        return;
    EXPECT_EQ(got->GetBounds(), given->GetBounds());
    if (const auto *text = dynamic_cast<const CGeoText *>(got.get())) {
        EXPECT_EQ(text->GetText(), "here");
        EXPECT_EQ(text->GetAngle(), 30.0);
        EXPECT_EQ(text->GetHeight(), 2.5);
    }
    if (const auto *made = dynamic_cast<const CGeoLine *>(got.get()); made && to->FindField("TxLength") >= 0) {
        CTxVariant length;
        EXPECT_TRUE(records->GetFieldValue("TxLength", length));
        EXPECT_DOUBLE_EQ(length.toDouble(), made->GetLength());
    }
    if (dynamic_cast<const CGeoRegion *>(got.get()) && to->FindField("TxArea") >= 0) {
        EXPECT_EQ(textOf(*records, "TxArea") + ' ' + textOf(*records, "TxPerimeter"), "4 8");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, VectorAppendKind,
    testing::Values(KindRow{Info::Line, Info::Line3D, nullptr}, KindRow{Info::Line3D, Info::Line, nullptr},
                    KindRow{Info::Route, Info::Line, nullptr}, KindRow{Info::Line, Info::Route, nullptr},
                    KindRow{Info::Region, Info::Region3D, nullptr}, KindRow{Info::Region3D, Info::Region, nullptr},
                    KindRow{Info::Point, Info::CAD, nullptr}, KindRow{Info::Line, Info::CAD, nullptr},
                    KindRow{Info::Text, Info::CAD, nullptr}, KindRow{Info::Text, Info::Text3D, nullptr},
                    KindRow{Info::CAD, Info::Line, nullptr}, KindRow{Info::CAD, Info::CAD, nullptr},
                    KindRow{Info::Region, Info::Tabular, nullptr}, KindRow{Info::Tabular, Info::Point, nullptr},
                    KindRow{Info::Point, Info::Text, nullptr}, KindRow{Info::Point, Info::Region, "is a point"},
                    KindRow{Info::Line, Info::Point, "is a line"}, KindRow{Info::Region, Info::Line, "is a region"},
                    KindRow{Info::CAD, Info::Point, "no form"}, KindRow{Info::Text, Info::Point, "keeps no texts"}));

struct ValueRow
{
    qint16 from;
    CTxVariant value;
    qint16 to;
    const char *result; // null when it is refused
};

TEST_F(VectorAppendKinds, ValuesAreConvertedOrRefusedButNeverSpoilt)
{
    const auto text = [](const char *words) { return CTxVariant(QString::fromUtf8(words)); };
    const ValueRow rows[] = {
        {Field::Text, text(" 12 "), Field::Long, "12"},

        {Field::Text, text("TRUE"), Field::Boolean, "true"},
        {Field::Text, text("2024-02-29T12:30:00"), Field::Date, "2024-02-29T12:30:00Z"},

        {Field::Text, text("\u00e4\u00f6\u00fc\u4e2d\u6587"), Field::Character, "\u00e4\u00f6\u00fc\u4e2d\u6587"},
        {Field::Text, text("sixsix"), Field::Character, nullptr},

        {Field::Double, CTxVariant(3.5), Field::Long, nullptr},
        {Field::Double, CTxVariant(1e300), Field::Single, nullptr},

        {Field::Long, CTxVariant(32768), Field::Short, nullptr},

        {Field::Boolean, CTxVariant(true), Field::Long, "1"},
        {Field::LongBinary, CTxVariant(QByteArray("\x01\x02", 2)), Field::Long, nullptr},
        {Field::Long, CTxVariant::null(), Field::Double, ""}};
    int number = 0;
    for (const ValueRow &row : rows) {
        SCOPED_TRACE(number);
        const QByteArray suffix = QByteArray::number(number++);
        CDatasetVector *from = make("From" + suffix, Info::Tabular, {Field("v", row.from)});
        CDatasetVector *to = make("To" + suffix, Info::Tabular, {Field("V", row.to, 5)});
        ASSERT_TRUE(addRecord(*query(from), {{"v", row.value}})) << lastError();
        EXPECT_EQ(to->Append(query(from).get()), row.result != nullptr) << lastError();
        ASSERT_EQ(to->GetRecordCount(), row.result ? 1 : 0);
        if (row.result) {
            EXPECT_EQ(textOf(*query(to), "V"), row.result);
        } else {
            EXPECT_NE(lastError().find("“V”"), std::string::npos) << lastError();
        }
    }
}

TEST_F(VectorAppendKinds, RectangleCutsLinesAndRegions)
{
    CTxAppendDef def;
    def.bounds = CRect2D(0, 0, 10, 10);
    CDatasetVector *lines = make("Lines", Info::Route);
    const std::array<double, 3> ms = {0, 20, 40};
    for (const QList<CPoint2D> &points :
         {QList<CPoint2D>{{-5, 5}, {15, 5}, {15, 25}}, QList<CPoint2D>{{1, 1}, {2, 2}, {3, 1}},
          QList<CPoint2D>{{-5, 15}, {5, 15}, {-5, 5}}, QList<CPoint2D>{{-5, -5}, {0, 0}, {-5, 5}},
          QList<CPoint2D>{{5, 5}, {5, 20}, {6, 5}}, QList<CPoint2D>{{0, 20}, {0, 0}, {0, -20}}})
        ASSERT_TRUE(addRecord(*query(lines), {}, line(points, nullptr, ms.data()).get())) << lastError();
    CDatasetVector *cutLines = make("CutLines", Info::Route);
    ASSERT_TRUE(cutLines->Append(query(lines).get(), def)) << lastError();
    RecordsetPtr records = query(cutLines);
    ASSERT_EQ(records->GetRecordCount(), 4) << "across, within, out and in again, along the edge";
    std::unique_ptr<CElemGeometry> across = geometryOf(*records);
    EXPECT_EQ(across->GetBounds(), CRect2D(0, 5, 10, 5));
    EXPECT_EQ(textOf(*records, "TxLength"), "10");
    const auto *cut = dynamic_cast<const CGeoLine *>(across.get());
    ASSERT_TRUE(cut && cut->GetMs());
    EXPECT_EQ(cut->GetMs()[0], 5) << "measures are those of the places at the edge";
    EXPECT_EQ(cut->GetMs()[1], 15);
    ASSERT_TRUE(records->MoveNext() && records->MoveNext());
    EXPECT_EQ(dynamic_cast<const CGeoLine &>(*geometryOf(*records)).GetPartCount(), 2);

    CDatasetVector *regions = make("Regions", Info::Region);
    for (const char *region : {"POLYGON ((-5 -5,5 -5,5 5,-5 5,-5 -5))", "POLYGON ((2 2,5 2,5 5,2 5,2 2))",
                               "POLYGON ((20 20,23 20,23 23,20 20))", "POLYGON ((10 0,15 0,15 5,10 5,10 0))",
                               "POLYGON ((8 2,14 8,14 2,8 8,8 2))"})
        ASSERT_TRUE(addRecord(*query(regions), {}, Wkt::toElement(region).get()));
    CDatasetVector *cutRegions = make("CutRegions", Info::Region);
    ASSERT_TRUE(cutRegions->Append(query(regions).get(), def)) << lastError();
    EXPECT_EQ(column(*query(cutRegions), "TxArea"), "25 9 8") << "across, within, a ring that crosses itself";

    CDatasetVector *drawing = make("Drawing", Info::CAD);
    const CGeoPoint out(11, 1), in(10, 10);
    ASSERT_TRUE(addRecord(*query(drawing), {}, &out) && addRecord(*query(drawing), {}, &in) &&
                addRecord(*query(drawing), {}, sample(Info::Text).get()) && addRecord(*query(drawing)));
    CDatasetVector *cutDrawing = make("CutDrawing", Info::CAD);
    ASSERT_TRUE(cutDrawing->Append(query(drawing).get(), def) && cutDrawing->Append(query(regions).get(), def))
        << lastError();
    EXPECT_EQ(cutDrawing->GetRecordCount(), 6);
    EXPECT_EQ(cutDrawing->GetBounds(), CRect2D(0, 0, 10, 10));
}

/// Formats that are only read, with what they alone have.
TEST_F(VectorAppendKinds, OtherFormatsAreSources)
{
    ASSERT_TRUE(SampleFiles::write(path("plan.dxf"), "  0\nSECTION\n  2\nENTITIES\n  0\nTEXT\n  8\n0\n 10\n3.0\n"
                                                     " 20\n4.0\n 40\n2.0\n  1\nhere\n 50\n30.0\n  0\nENDSEC\n"
                                                     "  0\nEOF\n"));
    CDatasetVector *plan = vector(open(path("plan.dxf")));
    CDatasetVector *texts = make("Texts", Info::Text, {Field("Layer", Field::Text, 10)});
    ASSERT_TRUE(texts->Append(query(plan).get())) << lastError();
    const std::unique_ptr<CElemGeometry> got = geometryOf(*query(texts));
    const auto *text = dynamic_cast<const CGeoText *>(got.get());
    ASSERT_TRUE(text);
    EXPECT_EQ(text->GetText(), "here");
    EXPECT_EQ(text->GetAngle(), 30.0);
    EXPECT_EQ(text->GetBounds(), CRect2D(3, 4, 3, 4));
    EXPECT_EQ(textOf(*query(texts), "Layer"), "0");
}

TEST_F(VectorAppendKinds, PlacesAreThoseOfTheTargetsCoordinateSystem)
{
    CDatasetVector *degrees = make("Degrees", Info::Line3D, {}, "EPSG:4326");
    const std::array<double, 2> zs = {100, 200};
    ASSERT_TRUE(addRecord(*query(degrees), {}, line({{0, 0}, {1, 0}}, zs.data()).get()));
    ASSERT_TRUE(addRecord(*query(degrees), {}, line({{9, 0}, {10, 1}}, zs.data()).get()));
    CDatasetVector *metres = make("Metres", Info::Line3D, {}, "EPSG:3857");
    CTxAppendDef def;
    def.bounds = CRect2D(-1, -1, 200000, 1);
    ASSERT_TRUE(metres->Append(query(degrees).get(), def)) << lastError();
    const RecordsetPtr records = query(metres);
    ASSERT_EQ(records->GetRecordCount(), 1);
    const std::unique_ptr<CElemGeometry> got = geometryOf(*records);
    EXPECT_NEAR(got->GetBounds().right, 111319.49, 0.01);
    EXPECT_EQ(dynamic_cast<const CGeoLine &>(*got).GetZs()[1], 200);

    ASSERT_TRUE(addRecord(*query(degrees), {}, line({{0, 0}, {0, 95}}, zs.data()).get()));
    EXPECT_FALSE(metres->Append(query(degrees).get()));
    EXPECT_NE(lastError().find("record 3"), std::string::npos) << lastError();
    EXPECT_EQ(metres->GetRecordCount(), 1);
}

TEST_F(VectorAppendKinds, NewShapefilesTakeHeightsAndMeasures)
{
    CTxDataSource *folder = sources.Create(path("shapes"), "shapes", CTxDataSourceStorage::Shapefile);
    const std::array<double, 2> zs = {5, 6}, ms = {7, 8};
    for (const bool isMeasured : {false, true}) {
        const QString name = isMeasured ? "Measured" : "Plain";
        auto *made = dynamic_cast<CDatasetVector *>(folder->CreateDataset(definition(name, Info::Line3D)));
        ASSERT_TRUE(made && made->Open()) << lastError();
        const auto there = line({{0, 0}, {10, 0}}, zs.data(), isMeasured ? ms.data() : nullptr);
        ASSERT_TRUE(addRecord(*query(made), {}, there.get()));
        auto *copy = dynamic_cast<CDatasetVector *>(folder->CreateDatasetFrom(name + "2", made, CElemDataEnc::NONE));
        ASSERT_TRUE(copy && copy->Open() && made->Open() && copy->Append(query(made).get())) << lastError();
        const auto kept = geometryOf(*query(copy));
        const auto &got = dynamic_cast<const CGeoLine &>(*kept);
        ASSERT_TRUE(got.GetZs());
        EXPECT_EQ(got.GetZs()[1], 6);
        ASSERT_EQ(got.GetMs() != nullptr, isMeasured);
        EXPECT_TRUE(!isMeasured || got.GetMs()[1] == 8);
    }
}

TEST_F(VectorAppendKinds, ShapefilesMadeAlikeTakeEveryField)
{
    const QString letters = QString::fromUtf8("\u4e2d\u6587\u4e2d\u6587"); // twelve bytes
    CDatasetVector *native = make("Native", Info::Point,
                                  {Field("Population2010", Field::Long), Field("Population2020", Field::Double),
                                   Field("Populati_1", Field::Text, 9), Field(letters, Field::Currency),
                                   Field("POPULATION", Field::Short), Field("Ratio", Field::Single)});
    const CGeoPoint place(1, 2);
    ASSERT_TRUE(addRecord(*query(native),
                          {{"Population2010", 2147483647},
                           {"Population2020", -123456789012.5},
                           {"Populati_1", QStringLiteral("x")},
                           {letters.toUtf8().constData(), 900000000000.25},
                           {"POPULATION", 7},
                           {"Ratio", 1e9}},
                          &place));
    CTxDataSource *folder = sources.Create(path("shapes"), "shapes", CTxDataSourceStorage::Shapefile);
    auto *copy = dynamic_cast<CDatasetVector *>(folder->CreateDatasetFrom("copy", native, CElemDataEnc::NONE));
    ASSERT_TRUE(copy && copy->Open() && copy->Append(query(native).get())) << lastError();
    const std::pair<const char *, const char *> kept[] = {
        {"Populati_2", "2147483647"}, {"Populati_3", "-123456789012.5"},
        {"Populati_1", "x"},          {"\u4e2d\u6587\u4e2d", "900000000000.25"},
        {"POPULATION", "7"},          {"Ratio", "1e+09"}};
    for (const auto &[name, value] : kept)
        EXPECT_EQ(textOf(*query(copy), name), value) << name;
    ASSERT_TRUE(native->Append(query(copy).get())) << lastError();
    for (const char *name : {"Population2010", "Population2020", "Populati_1", "POPULATION", "Ratio"}) {
        const std::string both = column(*query(native), name);
        EXPECT_EQ(both.substr(0, both.find(' ')), both.substr(both.find(' ') + 1)) << name;
    }
}

TEST_F(VectorAppendKinds, ShapefilesMatchCutNamesAndWidenTexts)
{
    CDatasetVector *native =
        make("Native", Info::Point, {Field("Population2020", Field::Long), Field("Label", Field::Text, 6)});
    CTxDataSource *folder = sources.Create(path("shapes"), "shapes", CTxDataSourceStorage::Shapefile);
    auto *shape = dynamic_cast<CDatasetVector *>(folder->CreateDataset(
        definition("towns", Info::Point, {Field("Population", Field::Long), Field("Label", Field::Text, 6)})));
    ASSERT_TRUE(shape && shape->Open()) << lastError();
    const CGeoPoint place(1, 2);
    const QString wide = QString::fromUtf8("\u4e2d\u6587\u4e2d\u6587"); // four characters, twelve bytes
    ASSERT_TRUE(addRecord(*query(native), {{"Population2020", 77}, {"Label", wide}}, &place));
    ASSERT_TRUE(addRecord(*query(shape), {{"Population", 1}}, &place));
    ASSERT_TRUE(folder->Refresh() && shape->Open());
    {
        GDALDatasetUniquePtr file(GDALDataset::Open(path("shapes").toUtf8(), GDAL_OF_VECTOR | GDAL_OF_UPDATE));
        file->ExecuteSQL("CREATE SPATIAL INDEX ON towns", nullptr, nullptr);
    }
    const auto stored = [this] {
        return SampleFiles::read(path("shapes/towns.dbf")) + SampleFiles::read(path("shapes/towns.shp")) +
               SampleFiles::read(path("shapes/towns.shx")) + SampleFiles::read(path("shapes/towns.qix"));
    };
    const QByteArray before = stored();
    ASSERT_TRUE(QFileInfo::exists(path("shapes/towns.qix")));

    CTxAppendDef def;
    def.progress = [](qint64 done, qint64) { return done == 0; };
    EXPECT_FALSE(shape->Append(query(native).get(), def)) << "stopped behind the widening of the field";
    ASSERT_TRUE(folder->Refresh() && shape->Open());
    EXPECT_EQ(stored(), before);
    ASSERT_TRUE(shape->Append(query(native).get())) << lastError();
    EXPECT_EQ(column(*query(shape), "Population"), "1 77");
    EXPECT_EQ(textOf(*query(shape, "Population = 77"), "Label"), wide.toStdString());
    EXPECT_TRUE(QFileInfo::exists(path("shapes/towns.qix"))) << "the index is made anew";
    EXPECT_EQ(QDir(path("shapes")).entryList({"*before*"}).size(), 0);
    ASSERT_TRUE(native->Append(query(shape).get())) << lastError();
    EXPECT_EQ(column(*query(native), "Population2020"), "77 1 77");

    ASSERT_TRUE(SampleFiles::makePoints(path("latin.shp"), "ESRI Shapefile")); // whose texts are Latin-1
    CDatasetVector *latin = vector(open(path("latin.shp")));
    CDatasetVector *names = make("Names", Info::Point, {Field("name", Field::Text)});
    ASSERT_TRUE(addRecord(*query(names), {{"name", CTxVariant(QString::fromUtf8("\u00e4"))}}, &place));
    EXPECT_TRUE(latin->Append(query(names).get())) << lastError();
    EXPECT_EQ(column(*query(latin), "name"), "one two three \u00e4");
    ASSERT_TRUE(addRecord(*query(names), {{"name", CTxVariant(wide)}}, &place));
    EXPECT_FALSE(latin->Append(query(names).get()));
    EXPECT_NE(lastError().find("encoding"), std::string::npos) << lastError();
    EXPECT_EQ(latin->GetRecordCount(), 4);
}

TEST_F(VectorAppendKinds, MisuseIsRefusedAndHarmless)
{
    CDatasetVector *from = make("From", Info::Point);
    CDatasetVector *to = make("To", Info::Point);
    const CGeoPoint place(1, 2);
    ASSERT_TRUE(addRecord(*query(from), {}, &place));
    while (from->GetRecordCount() < 2000)
        ASSERT_TRUE(from->Append(query(from).get())) << lastError();
    EXPECT_FALSE(to->Append(nullptr));
    CTxRecordset *released = query(from).get();
    EXPECT_FALSE(to->Append(released));
    EXPECT_TRUE(to->Close());
    EXPECT_FALSE(to->Append(query(from).get())) << "closed";
    ASSERT_TRUE(to->Open());

    // A progress function that pulls the ground away.
    RecordsetPtr records = query(from);
    CTxAppendDef def;
    def.progress = [&](qint64, qint64) {
        EXPECT_FALSE(from->Close() || to->Close() || sources.Close("db"));
        EXPECT_FALSE(to->GetDataSource()->BeginTrans() || to->CreateField("F", Field::Long, 0, 0));
        EXPECT_FALSE(to->Append(records.get()));
        return true;
    };
    EXPECT_TRUE(to->Append(records.get(), def)) << lastError();
    EXPECT_EQ(to->GetRecordCount(), from->GetRecordCount());
    const qint64 count = to->GetRecordCount();
    for (const qint64 moment : {0, 1000}) {
        records = query(from);
        def.progress = [&](qint64 done, qint64) {
            if (done >= moment)
                records = query(from); // another one, perhaps at the same address
            return true;
        };
        EXPECT_FALSE(to->Append(records.get(), def)) << moment;
        EXPECT_EQ(to->GetRecordCount(), count);
    }
    CTxDataSource *again = open(path("new.tdb"), "again");
    EXPECT_TRUE(to->Append(query(vector(again, "From"), "TxID <= 2").get())) << "the same file: " << lastError();
    sources.Close("again");
    EXPECT_EQ(to->GetRecordCount(), count + 2);
    CTxQueryDef joined;
    joined.joins = {{"To", "TxUserID", "TxUserID", CTxJoinItem::LeftJoin}};
    joined.filter = "TxID = 1";
    EXPECT_TRUE(to->Append(query(from, joined).get())) << "its partners grow while it is read: " << lastError();
    EXPECT_EQ(to->GetRecordCount(), 2 * (count + 2));
}

} // namespace
