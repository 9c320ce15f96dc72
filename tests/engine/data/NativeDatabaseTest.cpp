#include "Rows.h"
#include "engine/data/DataFixture.h"

#include "engine/data/SampleFiles.h"
#include "engine/data/TdbDataSourcePlus.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QDir>
#include <QElapsedTimer>

#include <sqlite3.h>
#include <sys/stat.h>

namespace {

using Info = CElemDatasetInfo;

using NativeDatabase = DataFixture;

TEST_F(NativeDatabase, IsKnownByHeaderCatalogueAndVersion)
{
    create();
    sources.CloseAll();
    const QString file = path("new.tdb");
    EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(file));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"new.tdb"});
    for (const char *sql : {"UPDATE tdb_format SET version = 6", "DELETE FROM tdb_format",
                            // A view that never ends must not be waited for.
                            "DROP TABLE tdb_format; CREATE VIEW tdb_format AS WITH RECURSIVE n(version) AS "
                            "(SELECT 5 UNION ALL SELECT version FROM n) SELECT count(*) AS version FROM n"}) {
        sqlite3 *database = nullptr;
        ASSERT_EQ(sqlite3_open(file.toUtf8(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
        sqlite3_close(database);
        EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(file)) << sql;
    }
}

TEST_F(NativeDatabase, IsNotTakenForWhatItIsNot)
{
    makeVector(create(), "Towns");
    sources.CloseAll();
    const QByteArray whole = SampleFiles::read(path("new.tdb"));
    const qsizetype size = whole.size();
    for (const qsizetype part : {qsizetype(0), qsizetype(1), qsizetype(16), qsizetype(99), qsizetype(100),
                                 qsizetype(4096), size / 2, size - 1, size}) {
        ASSERT_TRUE(SampleFiles::write(path("cut.tdb"), whole.left(part)));
        EXPECT_EQ(CTdbDataSourcePlus::IsTdb5File(path("cut.tdb")), part == size) << part;
    }
    ASSERT_TRUE(create("plain.gpkg", CTxDataSourceStorage::GeoPackage));
    ASSERT_EQ(mkfifo(path("pipe.tdb").toUtf8(), 0600), 0);
    ASSERT_TRUE(SampleFiles::write(path("huge.tdb"), "") && SampleFiles::cut(path("huge.tdb"), qint64(1) << 40));
    QElapsedTimer timer;
    timer.start();
    for (const char *name : {"plain.gpkg", "pipe.tdb", "huge.tdb", "missing.tdb", "."})
        EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(path(name))) << name;
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(QString()));
    EXPECT_FALSE(CTdbDataSourcePlus::IsTdb5File(QString(10000, u'x')));
    EXPECT_LT(timer.elapsed(), 1000);
}

TEST_F(NativeDatabase, LookingAtAnOpenFileDropsNoLock)
{
    CTxDataSource *source = create();
    const CTxDatasetDef grid = rasterDefinition("Relief", CRect2D(0, 0, 3, 2));
    ASSERT_TRUE(source->CreateDataset(grid)) << lastError();
    CDatasetVector *towns = makeVector(source, "Towns");
    ASSERT_TRUE(source->BeginTrans());
    ASSERT_TRUE(addRecord(*query(towns)));
    EXPECT_TRUE(CTdbDataSourcePlus::IsTdb5File(source->GetPath()));
    EXPECT_TRUE(source->GetDataset("Relief")->Open()) << lastError();
    EXPECT_TRUE(source->GetDataset("Relief")->Close());
    EXPECT_EQ(source->GetDataset("Relief")->GetBounds(), grid.rasterBounds);

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

using NativeKind = WithRows<DataFixture, KindRow>;

TEST_P(NativeKind, IsStillKnownAfterReopening)
{
    const KindRow &row = GetParam();
    CTxDatasetDef def = definition("Data", row.type, {CTxFieldInfo("Name", CTxFieldInfo::Text, 20)}, "EPSG:32610");
    def.encType = CElemDataEnc::SWC;
    ASSERT_TRUE(create()->CreateDataset(def)) << lastError();
    CTxDataSource *source = reopen();
    CDatasetVector *data = vector(source, "Data");
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

TEST_F(NativeDatabase, ACopyOfANetworkIsTiedAsItWas)
{
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(definition("Ferries", Info::Network))) << lastError();
    CDatasetVector *ferries = vector(source, "Ferries");
    ASSERT_TRUE(addRecord(*query(ferries), {{"TxEdgeID", 5}, {"TxFNode", 36}, {"TxTNode", 34}})) << lastError();
    ASSERT_TRUE(source->CreateDatasetFrom("Copy", ferries, CElemDataEnc::NONE)) << lastError();
    CDatasetVector *copy = vector(source, "Copy");
    ASSERT_TRUE(copy->Append(query(ferries).get())) << lastError();
    EXPECT_EQ(column(*query(copy), "TxEdgeID") + column(*query(copy), "TxTNode"), "534");
    ASSERT_TRUE(copy->Append(query(ferries).get())) << lastError();
    EXPECT_EQ(column(*query(copy), "TxFNode"), "36 ") << "other edges may have the number already";
}

TEST_F(NativeDatabase, NetworkHasNodesThatOthersMayReplace)
{
    CTxDataSource *source = create();
    CTxDataset *ferries = source->CreateDataset(definition("Ferries", Info::Network));
    ASSERT_TRUE(ferries && ferries->GetChildDataset()) << lastError();
    EXPECT_EQ(ferries->GetChildDataset()->GetName(), "Ferries_Node");
    CTxDatasetDef piers = definition("Piers");
    piers.parentDataset = "Ferries";
    ASSERT_TRUE(source->CreateDataset(piers)) << lastError();

    source = reopen();
    ferries = source->GetDataset("Ferries");
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_FALSE(source->GetDataset("Ferries_Node"));
    ASSERT_TRUE(ferries->GetChildDataset());
    EXPECT_EQ(ferries->GetChildDataset()->GetName(), "Piers");
    EXPECT_EQ(ferries->GetChildDataset()->GetParentDataset(), ferries);
    EXPECT_GE(vector(source, "Piers")->FindField("TxNodeID"), 0);

    // Nodes with records stay.
    ASSERT_TRUE(addRecord(*query(vector(source, "Piers")), {{"TxNodeID", 7}})) << lastError();
    piers.name = "Other";
    EXPECT_FALSE(source->CreateDataset(piers));
}

TEST_F(NativeDatabase, LibraryGoesWithItsIndexAndTiles)
{
    CTxDataSource *source = create();
    CTxDatasetDef sheets = definition("Sheets", Info::Region);
    sheets.options = CTxDataset::Library;
    ASSERT_TRUE(source->CreateDataset(sheets)) << lastError();
    CTxDatasetDef tile = definition("SheetA", Info::Region);
    tile.options = CTxDataset::Internal;
    ASSERT_TRUE(source->CreateDataset(tile));
    ASSERT_TRUE(source->CreateDataset(definition("Towns")));

    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 2);
    CDatasetVector *library = vector(source, "Sheets");
    EXPECT_TRUE(library->GetOptions() & CTxDataset::Library);
    ASSERT_EQ(library->GetTileIndexName(), "Sheets_Tile");
    for (const char *name : {"SheetA", "Towns", "Missing"})
        ASSERT_TRUE(addRecord(*query(vector(source, "Sheets_Tile")), {{"TxLibTileName", QString(name)}}))
            << lastError();
    ASSERT_TRUE(source->DeleteDataset("Sheets")) << lastError();
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    for (const char *gone : {"Sheets", "Sheets_Tile", "SheetA"})
        EXPECT_FALSE(source->GetDataset(gone)) << gone;
    EXPECT_TRUE(source->GetDataset("Towns")) << "listed by the index, but a dataset of its own";
}

TEST_F(NativeDatabase, RenamingFollowsWhereverTheNameStands)
{
    CTxDataSource *source = create();
    CTxDatasetDef sheets = definition("Sheets", Info::Region);
    sheets.options = CTxDataset::Library;
    ASSERT_TRUE(source->CreateDataset(sheets));
    ASSERT_TRUE(source->CreateDataset(definition("Ferries", Info::Network)));
    CTxDataset *ferries = source->GetDataset("Ferries");
    ASSERT_TRUE(source->RenameDataset("Ferries", "Fähren")) << lastError();
    ASSERT_TRUE(source->RenameDataset("Sheets_Tile", "Index")) << lastError();
    EXPECT_EQ(source->GetDataset("Fähren"), ferries);
    EXPECT_TRUE(ferries->Open()) << lastError();
    EXPECT_FALSE(source->RenameDataset("Fähren", "X")) << "it is open";
    EXPECT_FALSE(source->RenameDataset("Sheets", "index")) << "taken but for case";

    source = reopen();
    ASSERT_TRUE(source->GetDataset("Fähren"));
    EXPECT_TRUE(source->GetDataset("Fähren")->GetChildDataset());
    EXPECT_EQ(source->GetDataset("Fähren")->GetType(), Info::Network);
    EXPECT_EQ(vector(source, "Sheets")->GetTileIndexName(), "Index");
}

TEST_F(NativeDatabase, FailedCreationLeavesNothingBehind)
{
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(definition("Towns")));
    using Field = CTxFieldInfo;
    CTxFieldInfo badDefault("Size", Field::Long);
    badDefault.SetDefault("many");
    CTxFieldInfos columns; // more than a table can have
    for (int i = 0; i < 3000; ++i)
        columns.append(Field(QStringLiteral("F%1").arg(i), Field::Long));
    CTxDatasetDef orphan = definition("Orphan");
    orphan.parentDataset = "Nobody";
    for (const CTxDatasetDef &def :
         {definition("BadField", Info::Network, {Field("Good", Field::Text), Field("Bad", 77)}),
          definition("BadDefault", Info::Point, {badDefault}),
          definition("Twice", Info::Point, {Field("a", Field::Text), Field("A", Field::Text)}),
          definition("BadSystem", Info::Point, {}, "EPSG:nonsense"), definition("Wide", Info::Point, columns), orphan,
          definition("FlatRaster", Info::Grid), definition("Reserved", Info::Point, {Field("select", Field::Text)}),
          definition("Wavelets", Info::MrSID), definition("towns"), definition(QString()), definition("gpkg_x"),
          definition("a b"), definition("🌍"), definition(QString(10000, u'n'))}) {
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(source->CreateDataset(def)) << def.name.left(20).toStdString();
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors);
        EXPECT_FALSE(TxGetErrorMsgObj().GetErrorMessage().isEmpty());
        EXPECT_EQ(source->GetDatasetCount(), 1);
    }
    EXPECT_TRUE(source->GetDataset("Towns")->Open()) << "the datasource works on";
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_FALSE(source->GetDataset("BadField_Node"));
    EXPECT_TRUE(source->CreateDataset(definition("BadField", Info::Network))) << lastError();
}

TEST_F(NativeDatabase, TemporaryDatasetsGoWithTheDataSource)
{
    CTxDataSource *source = create();
    CTxDatasetDef scratch = definition("Scratch", Info::Network);
    scratch.options = CTxDataset::Temporary;
    ASSERT_TRUE(source->CreateDataset(scratch)) << lastError();
    ASSERT_TRUE(source->CreateDataset(definition("Towns")));
    ASSERT_TRUE(source->BeginTrans() && addRecord(*query(vector(source, "Scratch")))) << lastError();
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_FALSE(source->GetDataset("Scratch_Node"));
}

} // namespace
