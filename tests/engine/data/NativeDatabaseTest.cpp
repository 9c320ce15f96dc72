#include "NativeFixture.h"

#include "engine/data/TdbDataSourcePlus.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <sqlite3.h>
#include <sys/stat.h>

namespace {

using Info = CElemDatasetInfo;

class NativeDatabase : public NativeFixture
{
protected:
    /// Runs SQL on a file behind the engine's back.
    void tamper(const QString &file, const char *sql) const
    {
        sqlite3 *database = nullptr;
        ASSERT_EQ(sqlite3_open(path(file).toUtf8().constData(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
        sqlite3_close(database);
    }

    /// The file @p source with its first @p size bytes alone.
    QString cut(const QString &source, qint64 size) const
    {
        const QString target = path(QStringLiteral("cut.tdb"));
        QFile::remove(target);
        QFile::copy(path(source), target);
        EXPECT_TRUE(QFile::resize(target, size));
        return target;
    }
};

TEST_F(NativeDatabase, IsKnownByHeaderCatalogueAndVersion)
{
    create();
    sources.CloseAll();
    const QString file = path(QStringLiteral("new.tdb"));
    EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(file));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("new.tdb")});

    tamper(QStringLiteral("new.tdb"), "UPDATE tdb_format SET version = 6");
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(file));
    tamper(QStringLiteral("new.tdb"), "DELETE FROM tdb_format");
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(file));
    // A view that never ends must not be waited for.
    tamper(QStringLiteral("new.tdb"), "DROP TABLE tdb_format; CREATE VIEW tdb_format AS WITH RECURSIVE n(version) AS "
                                      "(SELECT 5 UNION ALL SELECT version FROM n) SELECT count(*) AS version FROM n");
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(file));
}

TEST_F(NativeDatabase, IsNotTakenForWhatItIsNot)
{
    create();
    makeVector(sources.find(QStringLiteral("db")), QStringLiteral("Towns"));
    sources.CloseAll();
    const QString whole = QStringLiteral("new.tdb");
    const qint64 size = QFileInfo(path(whole)).size();
    for (const qint64 part :
         {qint64(0), qint64(1), qint64(16), qint64(99), qint64(100), qint64(4096), size / 2, size - 1})
        EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(cut(whole, part))) << part;
    EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(cut(whole, size)));

    ASSERT_TRUE(sources.Create(path(QStringLiteral("plain.gpkg")), QString(), CTxDataSourceStorage::GeoPackage));
    ASSERT_EQ(mkfifo(path(QStringLiteral("pipe.tdb")).toUtf8().constData(), 0600), 0);
    QFile huge(path(QStringLiteral("huge.tdb")));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(qint64(1) << 40)); // a hole of a terabyte
    huge.close();
    QElapsedTimer timer;
    timer.start();
    for (const QString &name : {QStringLiteral("plain.gpkg"), QStringLiteral("pipe.tdb"), QStringLiteral("huge.tdb"),
                                QStringLiteral("missing.tdb"), QStringLiteral(".")})
        EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(path(name))) << name.toStdString();
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(QString()));
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(QString(10000, u'x')));
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(NativeDatabase, LookingAtAnOpenFileDropsNoLock)
{
    CTxDataSource *source = create();
    CTxDatasetDef grid = definition(QStringLiteral("Relief"), Info::Grid);
    grid.rasterSize = QSize(3, 2);
    grid.rasterBounds = CRect2D(0, 0, 3, 2);
    grid.pixelFormat = QStringLiteral("Float32");
    ASSERT_TRUE(source->CreateDataset(grid)) << lastError();
    CDatasetVector *towns = makeVector(source, QStringLiteral("Towns"));
    ASSERT_TRUE(source->BeginTrans());
    RecordsetPtr records = query(towns);
    ASSERT_TRUE(records->AddNew() && records->Update());
    EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(source->GetPath()));
    EXPECT_TRUE(source->GetDataset(QStringLiteral("Relief"))->Open()) << lastError();
    EXPECT_TRUE(source->GetDataset(QStringLiteral("Relief"))->Close());
    EXPECT_EQ(source->GetDataset(QStringLiteral("Relief"))->GetBounds(), grid.rasterBounds);

    // Another process must still find the file locked.
    const QByteArray command = "python3 -c \"import sqlite3,sys; c=sqlite3.connect(sys.argv[1],timeout=0);"
                               "c.execute('BEGIN IMMEDIATE')\" " +
                               source->GetPath().toUtf8() + " 2>/dev/null";
    EXPECT_NE(system(command.constData()), 0);
    EXPECT_TRUE(source->CommitTrans());
    EXPECT_EQ(system(command.constData()), 0);
}

struct KindRow
{
    Info::Type type;
    const char *systemFields; ///< in order
};

class NativeKind : public NativeFixture, public testing::WithParamInterface<KindRow>
{
};

TEST_P(NativeKind, IsStillKnownAfterReopening)
{
    const KindRow &row = GetParam();
    CTxDatasetDef def = definition(QStringLiteral("Data"), row.type);
    def.encType = CElemDataEnc::SWC;
    def.coordSys = QStringLiteral("EPSG:32610");
    def.fields = {CTxFieldInfo(QStringLiteral("Name"), CTxFieldInfo::Text, 20)};
    ASSERT_TRUE(create()->CreateDataset(def)) << lastError();
    CTxDataSource *source = reopen();
    CDatasetVector *data = vector(source, QStringLiteral("Data"));
    ASSERT_TRUE(data);
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_EQ(data->GetType(), row.type);
    EXPECT_EQ(data->GetEncType(), CElemDataEnc::SWC);
    QStringList names;
    CTxFieldInfo info;
    for (int i = 0; i < data->GetFieldCount() && data->GetFieldInfo(i, info); ++i)
        names.append(info.GetName());
    EXPECT_EQ(names.join(u' ').toStdString(), std::string(row.systemFields) + " Name");
    CTxPJCoordSys coordSys;
    data->GetProjection(coordSys);
    EXPECT_EQ(coordSys.GetType(), row.type == Info::Tabular ? CTxPJCoordSys::None : CTxPJCoordSys::Projected);
}

INSTANTIATE_TEST_SUITE_P(Kinds, NativeKind,
                         testing::Values(KindRow{Info::Tabular, "TxID TxUserID"}, KindRow{Info::Point, "TxID TxUserID"},
                                         KindRow{Info::Line, "TxID TxUserID TxLength"},
                                         KindRow{Info::Network, "TxID TxUserID TxLength TxEdgeID TxFNode TxTNode"},
                                         KindRow{Info::Region, "TxID TxUserID TxArea TxPerimeter"},
                                         KindRow{Info::Parcel, "TxID TxUserID TxArea TxPerimeter"},
                                         KindRow{Info::Text, "TxID TxUserID TxText TxTextAngle TxTextHeight"},
                                         KindRow{Info::Traverse, "TxID TxUserID TxLength"},
                                         KindRow{Info::Route, "TxID TxUserID TxLength TxRouteID"},
                                         KindRow{Info::Point3D, "TxID TxUserID"},
                                         KindRow{Info::Line3D, "TxID TxUserID TxLength"},
                                         KindRow{Info::Region3D, "TxID TxUserID TxArea TxPerimeter"},
                                         KindRow{Info::Text3D, "TxID TxUserID TxText TxTextAngle TxTextHeight"},
                                         KindRow{Info::PointGL3D, "TxID TxUserID"}, KindRow{Info::TIN, "TxID TxUserID"},
                                         KindRow{Info::CAD, "TxID TxUserID TxText TxTextAngle TxTextHeight"}));

TEST_F(NativeDatabase, NetworkHasNodesThatOthersMayReplace)
{
    CTxDataSource *source = create();
    CTxDataset *ferries = source->CreateDataset(definition(QStringLiteral("Ferries"), Info::Network));
    ASSERT_TRUE(ferries && ferries->GetChildDataset()) << lastError();
    EXPECT_EQ(ferries->GetChildDataset()->GetName(), QStringLiteral("Ferries_Node"));
    CTxDatasetDef piers = definition(QStringLiteral("Piers"));
    piers.parentDataset = QStringLiteral("Ferries");
    ASSERT_TRUE(source->CreateDataset(piers)) << lastError();

    source = reopen();
    ferries = source->GetDataset(QStringLiteral("Ferries"));
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_FALSE(source->GetDataset(QStringLiteral("Ferries_Node")));
    ASSERT_TRUE(ferries->GetChildDataset());
    EXPECT_EQ(ferries->GetChildDataset()->GetName(), QStringLiteral("Piers"));
    EXPECT_EQ(ferries->GetChildDataset()->GetParentDataset(), ferries);
    EXPECT_GE(vector(source, QStringLiteral("Piers"))->FindField(QStringLiteral("TxNodeID")), 0);

    // Nodes with records stay.
    RecordsetPtr nodes = query(vector(source, QStringLiteral("Piers")));
    ASSERT_TRUE(nodes->AddNew() && nodes->SetFieldValue(QStringLiteral("TxNodeID"), 7) && nodes->Update())
        << lastError();
    nodes.reset();
    piers.name = QStringLiteral("Other");
    EXPECT_FALSE(source->CreateDataset(piers));
}

TEST_F(NativeDatabase, LibraryGoesWithItsIndexAndTiles)
{
    CTxDataSource *source = create();
    CTxDatasetDef sheets = definition(QStringLiteral("Sheets"), Info::Region);
    sheets.options = CTxDataset::Library;
    ASSERT_TRUE(source->CreateDataset(sheets)) << lastError();
    CTxDatasetDef tile = definition(QStringLiteral("SheetA"), Info::Region);
    tile.options = CTxDataset::Internal;
    ASSERT_TRUE(source->CreateDataset(tile));
    ASSERT_TRUE(source->CreateDataset(definition(QStringLiteral("Towns"))));

    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 2);
    CDatasetVector *library = vector(source, QStringLiteral("Sheets"));
    EXPECT_TRUE(library->GetOptions() & CTxDataset::Library);
    ASSERT_EQ(library->GetTileIndexName(), QStringLiteral("Sheets_Tile"));
    {
        RecordsetPtr index = query(vector(source, QStringLiteral("Sheets_Tile")));
        for (const QString &name : {QStringLiteral("SheetA"), QStringLiteral("Towns"), QStringLiteral("Missing")})
            ASSERT_TRUE(index->AddNew() && index->SetFieldValue(QStringLiteral("TxLibTileName"), name) &&
                        index->Update())
                << lastError();
    }
    ASSERT_TRUE(source->DeleteDataset(QStringLiteral("Sheets"))) << lastError();
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    for (const char *gone : {"Sheets", "Sheets_Tile", "SheetA"})
        EXPECT_FALSE(source->GetDataset(QString::fromLatin1(gone))) << gone;
    EXPECT_TRUE(source->GetDataset(QStringLiteral("Towns"))) << "listed by the index, but a dataset of its own";
}

TEST_F(NativeDatabase, RenamingFollowsWhereverTheNameStands)
{
    CTxDataSource *source = create();
    CTxDatasetDef sheets = definition(QStringLiteral("Sheets"), Info::Region);
    sheets.options = CTxDataset::Library;
    ASSERT_TRUE(source->CreateDataset(sheets));
    ASSERT_TRUE(source->CreateDataset(definition(QStringLiteral("Ferries"), Info::Network)));
    CTxDataset *ferries = source->GetDataset(QStringLiteral("Ferries"));
    ASSERT_TRUE(source->RenameDataset(QStringLiteral("Ferries"), QStringLiteral("Fähren"))) << lastError();
    ASSERT_TRUE(source->RenameDataset(QStringLiteral("Sheets_Tile"), QStringLiteral("Index"))) << lastError();
    EXPECT_EQ(source->GetDataset(QStringLiteral("Fähren")), ferries);
    EXPECT_TRUE(ferries->Open()) << lastError();
    EXPECT_FALSE(source->RenameDataset(QStringLiteral("Fähren"), QStringLiteral("X"))) << "it is open";
    EXPECT_FALSE(source->RenameDataset(QStringLiteral("Sheets"), QStringLiteral("index"))) << "taken but for case";

    source = reopen();
    ASSERT_TRUE(source->GetDataset(QStringLiteral("Fähren")));
    EXPECT_TRUE(source->GetDataset(QStringLiteral("Fähren"))->GetChildDataset());
    EXPECT_EQ(source->GetDataset(QStringLiteral("Fähren"))->GetType(), Info::Network);
    EXPECT_EQ(vector(source, QStringLiteral("Sheets"))->GetTileIndexName(), QStringLiteral("Index"));
}

TEST_F(NativeDatabase, FailedCreationLeavesNothingBehind)
{
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(definition(QStringLiteral("Towns"))));
    CTxDatasetDef badField = definition(QStringLiteral("BadField"), Info::Network);
    badField.fields = {CTxFieldInfo(QStringLiteral("Good"), CTxFieldInfo::Text),
                       CTxFieldInfo(QStringLiteral("Bad"), 77)};
    CTxDatasetDef badDefault = definition(QStringLiteral("BadDefault"));
    badDefault.fields = {CTxFieldInfo(QStringLiteral("Size"), CTxFieldInfo::Long)};
    badDefault.fields[0].SetDefault(QStringLiteral("many"));
    CTxDatasetDef twice = definition(QStringLiteral("Twice"));
    twice.fields = {CTxFieldInfo(QStringLiteral("a"), CTxFieldInfo::Text),
                    CTxFieldInfo(QStringLiteral("A"), CTxFieldInfo::Text)};
    CTxDatasetDef badSystem = definition(QStringLiteral("BadSystem"));
    badSystem.coordSys = QStringLiteral("EPSG:nonsense");
    CTxDatasetDef wide = definition(QStringLiteral("Wide"));
    for (int i = 0; i < 3000; ++i) // more columns than a table can have
        wide.fields.append(CTxFieldInfo(QStringLiteral("F%1").arg(i), CTxFieldInfo::Long));
    CTxDatasetDef orphan = definition(QStringLiteral("Orphan"));
    orphan.parentDataset = QStringLiteral("Nobody");
    CTxDatasetDef flatRaster = definition(QStringLiteral("FlatRaster"), Info::Grid);
    CTxDatasetDef reserved = definition(QStringLiteral("Reserved"));
    reserved.fields = {CTxFieldInfo(QStringLiteral("select"), CTxFieldInfo::Text)};

    for (const CTxDatasetDef &def :
         {badField, badDefault, twice, badSystem, wide, orphan, flatRaster, reserved,
          definition(QStringLiteral("Wavelets"), Info::MrSID), definition(QStringLiteral("towns")),
          definition(QString()), definition(QStringLiteral("gpkg_x")), definition(QStringLiteral("a b")),
          definition(QString(10000, u'n'))}) {
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(source->CreateDataset(def)) << def.name.left(20).toStdString();
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors);
        EXPECT_FALSE(TxGetErrorMsgObj().GetErrorMessage().isEmpty());
        EXPECT_EQ(source->GetDatasetCount(), 1);
    }
    EXPECT_TRUE(source->GetDataset(QStringLiteral("Towns"))->Open()) << "the datasource works on";
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_FALSE(source->GetDataset(QStringLiteral("BadField_Node")));
    EXPECT_TRUE(source->CreateDataset(definition(QStringLiteral("BadField"), Info::Network))) << lastError();
}

TEST_F(NativeDatabase, TemporaryDatasetsGoWithTheDataSource)
{
    CTxDataSource *source = create();
    CTxDatasetDef scratch = definition(QStringLiteral("Scratch"), Info::Network);
    scratch.options = CTxDataset::Temporary;
    ASSERT_TRUE(source->CreateDataset(scratch)) << lastError();
    ASSERT_TRUE(source->CreateDataset(definition(QStringLiteral("Towns"))));
    RecordsetPtr records = query(vector(source, QStringLiteral("Scratch")));
    ASSERT_TRUE(source->BeginTrans() && records->AddNew() && records->Update()) << lastError();
    records.reset();
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_FALSE(source->GetDataset(QStringLiteral("Scratch_Node")));
}

TEST_F(NativeDatabase, NamesOfAllScriptsAreKept)
{
    const QStringList names = {QStringLiteral("Straßen"), QStringLiteral("道路"), QStringLiteral("طرق"),
                               QStringLiteral("_1"), QString(63, u'n')};
    CTxDataSource *source = create();
    for (const QString &name : names)
        ASSERT_TRUE(makeVector(source, name)) << name.toStdString();
    EXPECT_FALSE(source->CreateDataset(definition(QStringLiteral("🌍"))));
    source = reopen();
    ASSERT_EQ(source->GetDatasetCount(), names.size());
    for (qint32 i = 0; i < names.size(); ++i)
        EXPECT_EQ(source->GetDatasetAt(i)->GetName(), names.at(i));
}

} // namespace
