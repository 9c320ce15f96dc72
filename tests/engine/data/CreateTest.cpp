#include "NativeFixture.h"

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

class CreateDataSource : public NativeFixture
{
};

TEST_F(CreateDataSource, RefusesPlacesThatCannotBe)
{
    QFile file(path(QStringLiteral("file.tdb")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
    file.close();
    ASSERT_TRUE(QFile::link(path(QStringLiteral("nowhere")), path(QStringLiteral("link.tdb"))));
    ASSERT_TRUE(create());
    struct Row
    {
        QString path, alias;
        Storage::Type type;
    };
    const QString none, x = QStringLiteral("x");
    const Row rows[] = {
        {file.fileName(), x, Storage::Native},
        {path(QStringLiteral("link.tdb")), x, Storage::Native},
        {path(QStringLiteral("free.tdb")), QStringLiteral("db"), Storage::Native},
        {path(QStringLiteral("missing/new.tdb")), x, Storage::Native},
        {path(QStringLiteral("file.tdb/new.tdb")), x, Storage::Native},
        {path(QStringLiteral("new.gpkg")), x, Storage::Native},
        {path(QStringLiteral("new.geojson")), x, Storage::GeoJSON},
        {path(QStringLiteral("new.pg")), x, Storage::PostgreSQL},
        {path(QStringLiteral("new")), x, static_cast<Storage::Type>(1000)},
        {none, x, Storage::Native},
        {path(QStringLiteral("a\0b.tdb")), x, Storage::Native},
        {path(QString(300, u'n') + QStringLiteral(".tdb")), x, Storage::Native},
        {path(QString(10000, u'n')), x, Storage::Shapefile},
        {QStringLiteral("/proc/new.tdb"), x, Storage::Native},
        {QStringLiteral("/proc/new"), x, Storage::Shapefile},
    };
    const QStringList before = QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    for (const Row &row : rows) {
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(sources.Create(row.path, row.alias, row.type)) << row.path.left(200).toStdString();
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors) << row.path.left(200).toStdString();
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System), before);
    EXPECT_EQ(sources.GetCount(), 1);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "mine");
}

TEST_F(CreateDataSource, TakesOddNames)
{
    for (const QString &name : {QStringLiteral("ein Name mit Leerzeichen"), QStringLiteral("道路 🌍 \u202Eطرق"),
                                QStringLiteral("a:b?c#d%20e&f='g\"h"), QStringLiteral("UPPER")}) {
        const QString file = path(name + QStringLiteral(".TDB"));
        CTxDataSource *made = sources.Create(file, name, Storage::Native);
        ASSERT_TRUE(made) << lastError();
        EXPECT_EQ(made->GetAlias(), name);
        ASSERT_TRUE(made->CreateDataset(definition(QStringLiteral("Towns")))) << lastError();
        CTxDatasetDef grid = definition(QStringLiteral("Relief"), Info::Grid);
        grid.rasterSize = QSize(3, 2);
        grid.rasterBounds = CRect2D(0, 0, 3, 2);
        grid.pixelFormat = QStringLiteral("Float32");
        ASSERT_TRUE(made->CreateDataset(grid)) << lastError();
        ASSERT_TRUE(sources.Close(name));
        EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(file));
        made = sources.Open(file, name);
        ASSERT_TRUE(made) << lastError();
        EXPECT_EQ(made->GetDatasetCount(), 2);
        EXPECT_TRUE(made->GetDataset(QStringLiteral("Relief"))->Open()) << lastError();
    }
}

struct StorageRow
{
    Storage::Type storage;
    const char *file;
    QList<Info::Type> holds, refuses;
};

class CreateKind : public NativeFixture, public testing::WithParamInterface<StorageRow>
{
};

TEST_P(CreateKind, HoldsOnlyWhatItWillKnowAgain)
{
    const StorageRow &row = GetParam();
    const QString file = path(QString::fromLatin1(row.file));
    CTxDataSource *source = sources.Create(file, QStringLiteral("db"), row.storage);
    ASSERT_TRUE(source) << lastError();
    CTxDatasetDef def;
    def.fields = {CTxFieldInfo(QStringLiteral("Name"), CTxFieldInfo::Text, 9)};
    for (const Info::Type type : row.holds) {
        def.name = QStringLiteral("T%1").arg(type);
        def.type = type;
        ASSERT_TRUE(source->CreateDataset(def)) << type << ' ' << lastError();
        EXPECT_EQ(source->GetDataset(def.name)->GetType(), type);
    }
    for (const Info::Type type : row.refuses) {
        def.name = QStringLiteral("T%1").arg(type);
        def.type = type;
        EXPECT_FALSE(source->CreateDataset(def)) << type;
    }
    ASSERT_TRUE(sources.Close(QStringLiteral("db")));
    source = sources.Open(file, QStringLiteral("db"));
    ASSERT_TRUE(source) << lastError();
    EXPECT_EQ(source->GetEngineType(), row.storage);
    EXPECT_EQ(source->GetDatasetCount(), row.holds.size());
    for (const Info::Type type : row.holds)
        EXPECT_EQ(vector(source, QStringLiteral("T%1").arg(type))->GetType(), type);
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
    CTxDataSource *folder = sources.Create(path(QStringLiteral("folder")), QStringLiteral("db"), Storage::Shapefile);
    ASSERT_TRUE(folder) << lastError();
    CTxDatasetDef def = definition(QStringLiteral("Towns"));
    def.fields = {CTxFieldInfo(QStringLiteral("LongerThanTen"), CTxFieldInfo::Long)};
    EXPECT_FALSE(folder->CreateDataset(def));
    EXPECT_EQ(QDir(path(QStringLiteral("folder"))).entryList(QDir::Files), QStringList());
    CDatasetVector *towns = makeVector(folder, QStringLiteral("Towns"));
    ASSERT_TRUE(towns);
    EXPECT_FALSE(towns->CreateFields({CTxFieldInfo(QStringLiteral("Good"), CTxFieldInfo::Long),
                                      CTxFieldInfo(QStringLiteral("LongerThanTen"), CTxFieldInfo::Long)}));
    EXPECT_EQ(towns->FindField(QStringLiteral("Good")), -1);
    EXPECT_FALSE(folder->BeginTrans()) << "it knows no transactions";
    RecordsetPtr records = query(towns);
    const CGeoPoint place(1, 2);
    ASSERT_TRUE(records->AddNew() &&
                records->SetFieldValue(QStringLiteral("Name"), CTxVariant(QStringLiteral("äöüß"))) &&
                records->SetGeometry(&place) && records->Update())
        << lastError();
    EXPECT_FALSE(records->Edit() &&
                 records->SetFieldValue(QStringLiteral("Name"), CTxVariant(QStringLiteral("äöüßä x"))));
    records.reset();
    ASSERT_TRUE(sources.Close(QStringLiteral("db")));
    folder = sources.Open(path(QStringLiteral("folder")), QStringLiteral("db"));
    ASSERT_TRUE(folder) << lastError();
    EXPECT_EQ(vector(folder, QStringLiteral("Towns"))->GetRecordCount(), 1);
}

TEST_F(CreateDataSource, FromATemplateOfAnotherStorage)
{
    CTxDataSource *other =
        sources.Create(path(QStringLiteral("other.gpkg")), QStringLiteral("other"), Storage::GeoPackage);
    ASSERT_TRUE(other) << lastError();
    CTxDatasetDef def = definition(QStringLiteral("Roads"), Info::Line);
    def.coordSys = QStringLiteral("EPSG:32610");
    def.fields = {CTxFieldInfo(QStringLiteral("Name"), CTxFieldInfo::Text, 9),
                  CTxFieldInfo(QStringLiteral("Width"), CTxFieldInfo::Single)};
    const CTxDataset *roads = other->CreateDataset(def);
    ASSERT_TRUE(roads) << lastError();
    CTxDataSource *source = create();
    EXPECT_FALSE(source->CreateDatasetFrom(QStringLiteral("Copy"), nullptr, CElemDataEnc::NONE));
    auto *copy =
        dynamic_cast<CDatasetVector *>(source->CreateDatasetFrom(QStringLiteral("Copy"), roads, CElemDataEnc::STC));
    ASSERT_TRUE(copy) << lastError();
    EXPECT_EQ(copy->GetType(), Info::Line);
    EXPECT_EQ(copy->GetEncType(), CElemDataEnc::STC);
    EXPECT_FALSE(source->CreateDatasetFrom(QStringLiteral("Odd"), roads, static_cast<CElemDataEnc::encType>(6)));
    CTxFieldInfo info;
    ASSERT_TRUE(copy->GetFieldInfo(copy->FindField(QStringLiteral("Width")), info));
    EXPECT_EQ(info.GetType(), CTxFieldInfo::Single);
    CTxPJCoordSys coordSys;
    copy->GetProjection(coordSys);
    EXPECT_EQ(coordSys.GetName(), QStringLiteral("WGS 84 / UTM zone 10N"));
    auto *again =
        dynamic_cast<CDatasetVector *>(source->CreateDatasetFrom(QStringLiteral("Again"), copy, CElemDataEnc::NONE));
    ASSERT_TRUE(again) << lastError();
    EXPECT_EQ(again->GetFieldCount(), copy->GetFieldCount()) << "what the engine keeps is not copied as well";
}

TEST_F(CreateDataSource, ReadOnlyMeansIt)
{
    CTxDataSource *source = create();
    {
        RecordsetPtr records = query(makeVector(source, QStringLiteral("Towns")));
        ASSERT_TRUE(records->AddNew() && records->Update());
    }
    sources.CloseAll();
    QFile file(path(QStringLiteral("new.tdb")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    source = sources.Open(file.fileName(), QStringLiteral("db"), CTxDataSource::Normal | CTxDataSource::OpenReadOnly);
    ASSERT_TRUE(source) << lastError();
    CDatasetVector *towns = vector(source, QStringLiteral("Towns"));
    RecordsetPtr records = query(towns);
    EXPECT_FALSE(records->AddNew());
    EXPECT_FALSE(records->Edit());
    EXPECT_FALSE(records->Delete());
    records.reset();
    EXPECT_FALSE(towns->CreateField(QStringLiteral("F"), CTxFieldInfo::Long, 0, 0));
    EXPECT_FALSE(source->CreateDataset(definition(QStringLiteral("More"))));
    EXPECT_FALSE(source->DeleteDataset(QStringLiteral("Towns")));
    towns->Close();
    EXPECT_FALSE(source->RenameDataset(QStringLiteral("Towns"), QStringLiteral("T")));
    EXPECT_FALSE(source->BeginTrans());
    EXPECT_FALSE(source->DeleteDataset(QStringLiteral("Nothing")));
    sources.CloseAll();
    file.seek(0);
    EXPECT_EQ(file.readAll(), before);
}

TEST_F(CreateDataSource, FullDiskLosesNothingThatWasCommitted)
{
    const QString small = path(QStringLiteral("small"));
    ASSERT_TRUE(QDir().mkdir(small));
    if (geteuid() != 0 || mount("none", small.toUtf8().constData(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "a small file system can be made by root only";
    const QString file = small + QStringLiteral("/new.tdb");
    CTxDataSource *source = sources.Create(file, QStringLiteral("db"), Storage::Native);
    ASSERT_TRUE(source) << lastError();
    CTxDatasetDef def = definition(QStringLiteral("Texts"), Info::Tabular);
    def.fields = {CTxFieldInfo(QStringLiteral("Name"), CTxFieldInfo::Memo)};
    ASSERT_TRUE(source->CreateDataset(def)) << lastError();
    CDatasetVector *texts = vector(source, QStringLiteral("Texts"));
    const auto add = [&](int count) {
        const RecordsetPtr records = query(texts);
        for (int i = 0; i < count; ++i) {
            if (!records->AddNew() ||
                !records->SetFieldValue(QStringLiteral("Name"), CTxVariant(QString(20000, u'x'))) || !records->Update())
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
    source = sources.Open(file, QStringLiteral("db"));
    EXPECT_TRUE(source && vector(source, QStringLiteral("Texts"))->GetRecordCount() == 4) << lastError();
    sources.CloseAll();
    EXPECT_EQ(umount2(small.toUtf8().constData(), MNT_DETACH), 0);
}

} // namespace
