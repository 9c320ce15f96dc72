#include "Rows.h"
#include "engine/data/DataFixture.h"

#include "engine/data/SampleFiles.h"
#include "engine/data/TdbDataSourcePlus.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QDir>
#include <QFile>

#include <sys/mount.h>
#include <unistd.h>

namespace {

using Info = CElemDatasetInfo;
using Storage = CTxDataSourceStorage;

using CreateDataSource = DataFixture;

TEST_F(CreateDataSource, RefusesPlacesThatCannotBe)
{
    const QString mine = path("mine.tdb");
    ASSERT_TRUE(SampleFiles::write(mine, "mine"));
    ASSERT_TRUE(QFile::link(path("nowhere"), path("link.tdb")));
    ASSERT_TRUE(create());
    struct Row
    {
        QString path, alias;
        Storage::Type type;
    };
    const QString x = "x";
    const Row rows[] = {{mine, x, Storage::Native},
                        {path("link.tdb"), x, Storage::Native},
                        {path("free.tdb"), "db", Storage::Native},
                        {path("missing/new.tdb"), x, Storage::Native},
                        {path("mine.tdb/new.tdb"), x, Storage::Native},
                        {path("new.gpkg"), x, Storage::Native},
                        {path("new.geojson"), x, Storage::GeoJSON},
                        {path("new.pg"), x, Storage::PostgreSQL},
                        {path("new"), x, static_cast<Storage::Type>(1000)},
                        {QString(), x, Storage::Native},
                        {path(QStringLiteral("a\0b.tdb")), x, Storage::Native},
                        {path(QString(300, u'n') + ".tdb"), x, Storage::Native},
                        {path(QString(10000, u'n')), x, Storage::Shapefile},
                        {"/proc/new.tdb", x, Storage::Native},
                        {"/proc/new", x, Storage::Shapefile}};
    const QStringList before = QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    for (const Row &row : rows) {
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(sources.Create(row.path, row.alias, row.type)) << row.path.left(200).toStdString();
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors) << row.path.left(200).toStdString();
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System), before);
    EXPECT_EQ(sources.GetCount(), 1);
    EXPECT_EQ(SampleFiles::read(mine), "mine");
}

TEST_F(CreateDataSource, TakesOddNames)
{
    for (const char *text : {"ein Name mit Leerzeichen", "道路 🌍 \u202Eطرق", "a:b?c#d%20e&f='g\"h", "UPPER"}) {
        const QString name = text, file = path(name + ".TDB");
        CTxDataSource *made = sources.Create(file, name, Storage::Native);
        ASSERT_TRUE(made) << lastError();
        EXPECT_EQ(made->GetAlias(), name);
        ASSERT_TRUE(made->CreateDataset(definition("Towns"))) << lastError();
        ASSERT_TRUE(made->CreateDataset(rasterDefinition("Relief", CRect2D(0, 0, 3, 2)))) << lastError();
        ASSERT_TRUE(sources.Close(name));
        EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(file));
        made = open(file, name);
        ASSERT_TRUE(made);
        EXPECT_EQ(made->GetDatasetCount(), 2);
        EXPECT_TRUE(raster(made, "Relief"));
    }
}

TEST_F(CreateDataSource, TakesEverySystemInAnyOrder)
{
    // Some have no old-style text, for which the driver widens its table of systems, in whatever connection it is.
    const QString custom = QStringLiteral(
        "PROJCS[\"Old UTM\",GEOGCS[\"Clarke\",DATUM[\"unknown\",SPHEROID[\"clrk66\",6378206.4,294.9786982138982],"
        "EXTENSION[\"PROJ4_GRIDS\",\"@conus,@null\"]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],"
        "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"latitude_of_origin\",0],PARAMETER[\"central_meridian\",-75],"
        "PARAMETER[\"scale_factor\",0.9996],PARAMETER[\"false_easting\",500000],PARAMETER[\"false_northing\",0],"
        "UNIT[\"Meter\",1]]");
    const QString rotated = "+proj=ob_tran +o_proj=longlat +o_lon_p=0 +o_lat_p=39 +lon_0=18 +R=6371229 +type=crs";
    const QStringList systems = {"EPSG:2056",
                                 custom,
                                 rotated,
                                 "EPSG:4979",
                                 "EPSG:3857+5773",
                                 "LOCAL_CS[\"Site\",UNIT[\"metre\",1]]",
                                 "+proj=laea +lat_0=7 +lon_0=3 +type=crs",
                                 "+proj=utm +zone=31 +type=crs"};
    const qsizetype count = 2 * systems.size(); // each for a vector dataset and for a raster
    for (const auto type : {Storage::Native, Storage::GeoPackage}) {
        for (const bool isBackward : {false, true}) {
            CTxDataSource *made =
                create(QString::number(isBackward) + (type == Storage::Native ? ".tdb" : ".gpkg"), type);
            ASSERT_TRUE(made);
            for (qsizetype i = 0; i < count; ++i) {
                const qsizetype at = isBackward ? count - 1 - i : i;
                CTxDatasetDef def = at % 2 == 1 ? rasterDefinition(QStringLiteral("r%1").arg(at), CRect2D(0, 0, 3, 2))
                                                : definition(QStringLiteral("v%1").arg(at));
                def.coordSys = systems[at / 2];
                const CTxDataset *dataset = made->CreateDataset(def);
                ASSERT_TRUE(dataset) << lastError() << ' ' << def.coordSys.toStdString();
                CTxPJCoordSys kept;
                dataset->GetProjection(kept);
                EXPECT_FALSE(kept.ToWkt().isEmpty()) << def.coordSys.toStdString();
            }
            ASSERT_TRUE(sources.Close("db"));
        }
    }
}

struct StorageRow
{
    Storage::Type storage;
    const char *file;
    QList<Info::Type> holds, refuses;
};

using CreateKind = WithRows<DataFixture, StorageRow>;

TEST_P(CreateKind, HoldsOnlyWhatItWillKnowAgain)
{
    const StorageRow &row = GetParam();
    CTxDataSource *source = create(row.file, row.storage);
    ASSERT_TRUE(source);
    const auto def = [](Info::Type type) {
        return definition(QStringLiteral("T%1").arg(type), type, {CTxFieldInfo("Name", CTxFieldInfo::Text, 9)});
    };
    for (const Info::Type type : row.holds)
        EXPECT_TRUE(source->CreateDataset(def(type))) << type << ' ' << lastError();
    for (const Info::Type type : row.refuses)
        EXPECT_FALSE(source->CreateDataset(def(type))) << type;
    for (const bool again : {false, true}) {
        if (again)
            source = reopen(row.file);
        ASSERT_TRUE(source);
        EXPECT_EQ(source->GetEngineType(), row.storage);
        EXPECT_EQ(source->GetDatasetCount(), row.holds.size());
        for (const Info::Type type : row.holds)
            EXPECT_EQ(vector(source, def(type).name)->GetType(), type) << again;
    }
}

INSTANTIATE_TEST_SUITE_P(Storages, CreateKind,
                         testing::Values(StorageRow{Storage::GeoPackage,
                                                    "new.gpkg",
                                                    {Info::Tabular, Info::Point, Info::Line, Info::Region, Info::Route,
                                                     Info::Point3D, Info::Line3D, Info::Region3D, Info::CAD},
                                                    {Info::Network, Info::Text, Info::Parcel, Info::MrSID}},
                                         StorageRow{
                                             Storage::Shapefile,
                                             "folder",
                                             {Info::Tabular, Info::Point, Info::Line, Info::Region, Info::Point3D},
                                             {Info::Network, Info::Text, Info::CAD, Info::Image}}));

TEST_F(CreateDataSource, ShapefileRefusesWhatItWouldCut)
{
    const CTxFieldInfo good("Good", CTxFieldInfo::Long), tooLong("LongerThanTen", CTxFieldInfo::Long);
    CTxDataSource *folder = create("folder", Storage::Shapefile);
    ASSERT_TRUE(folder);
    EXPECT_FALSE(folder->CreateDataset(definition("Towns", Info::Point, {tooLong})));
    EXPECT_EQ(QDir(path("folder")).entryList(QDir::Files), QStringList());
    CDatasetVector *towns = makeVector(folder, "Towns");
    ASSERT_TRUE(towns);
    EXPECT_FALSE(towns->CreateFields({good, tooLong}));
    EXPECT_EQ(towns->FindField("Good"), -1);
    EXPECT_FALSE(folder->BeginTrans()) << "it knows no transactions";
    RecordsetPtr records = query(towns);
    const CGeoPoint place(1, 2);
    ASSERT_TRUE(addRecord(*records, {{"Name", QStringLiteral("äöüß")}}, &place)) << lastError();
    EXPECT_FALSE(records->Edit() && records->SetFieldValue("Name", QStringLiteral("äöüßä x")));
    records.reset();
    EXPECT_EQ(vector(reopen("folder"), "Towns")->GetRecordCount(), 1);
}

TEST_F(CreateDataSource, ReadOnlyMeansIt)
{
    ASSERT_TRUE(addRecord(*query(makeVector(create(), "Towns"))));
    sources.CloseAll();
    const QByteArray before = SampleFiles::read(path("new.tdb"));
    CTxDataSource *source = sources.Open(path("new.tdb"), "db", CTxDataSource::Normal | CTxDataSource::OpenReadOnly);
    ASSERT_TRUE(source) << lastError();
    CDatasetVector *towns = vector(source, "Towns");
    RecordsetPtr records = query(towns);
    EXPECT_FALSE(records->AddNew() || records->Edit() || records->Delete());
    records.reset();
    EXPECT_FALSE(towns->CreateField("F", CTxFieldInfo::Long, 0, 0));
    EXPECT_FALSE(source->CreateDataset(definition("More")));
    EXPECT_FALSE(source->DeleteDataset("Towns"));
    towns->Close();
    EXPECT_FALSE(source->DeleteDataset("Towns") || source->RenameDataset("Towns", "T"));
    EXPECT_FALSE(source->BeginTrans());
    sources.CloseAll();
    EXPECT_EQ(SampleFiles::read(path("new.tdb")), before);
}

TEST_F(CreateDataSource, FullDiskLosesNothingThatWasCommitted)
{
    const QString small = path("small");
    ASSERT_TRUE(QDir().mkdir(small));
    if (geteuid() != 0 || mount("none", small.toUtf8().constData(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "a small file system can be made by root only";
    const QString file = small + "/new.tdb";
    CTxDataSource *source = sources.Create(file, "db", Storage::Native);
    ASSERT_TRUE(source) << lastError();
    ASSERT_TRUE(source->CreateDataset(definition("Texts", Info::Tabular, {CTxFieldInfo("Name", CTxFieldInfo::Memo)})))
        << lastError();
    CDatasetVector *texts = vector(source, "Texts");
    const auto add = [&](int count) {
        const RecordsetPtr records = query(texts);
        for (int i = 0; i < count; ++i) {
            if (!addRecord(*records, {{"Name", QString(20000, u'x')}}))
                return false;
        }
        return true;
    };
    ASSERT_TRUE(add(3)) << lastError();
    ASSERT_TRUE(source->BeginTrans());
    const bool done = add(1000) && source->CommitTrans();
    EXPECT_FALSE(done);
    EXPECT_NE(lastError().find("full"), std::string::npos) << lastError();
    EXPECT_TRUE(source->RollbackTrans()) << lastError();
    EXPECT_EQ(texts->GetRecordCount(), 3);
    EXPECT_TRUE(add(1)) << "there is room again: " << lastError();
    sources.CloseAll();
    source = sources.Open(file, "db");
    EXPECT_TRUE(source && vector(source, "Texts")->GetRecordCount() == 4) << lastError();
    sources.CloseAll();
    EXPECT_EQ(umount2(small.toUtf8().constData(), MNT_DETACH), 0);
}

} // namespace
