#include "tests/engine/data/DataFixture.h"

#include <QDir>

#include <sqlite3.h>

#include <array>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class DeleteDataset : public DataFixture
{
protected:
    /// A folder of the shapefiles Towns and Townships of one record each, with files beside them.
    CTxDataSource *createShapefiles()
    {
        CTxDataSource *source = create("shapes", CTxDataSourceStorage::Shapefile);
        for (const char *name : {"Towns", "Townships"})
            EXPECT_TRUE(addRecord(*query(makeVector(source, name)), {{"Name", QString(name).left(5)}})) << lastError();
        for (const char *name : {"Towns.qix", "Towns.shp.xml", "Towns.txt", "Towns.old.shp"}) {
            QFile file(path("shapes/") + name);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        return source;
    }
    QStringList files() const
    {
        return QDir(path("shapes")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(DeleteDataset, OfSeveralFilesTakesThemAllAndNoOthers)
{
    CTxDataSource *source = createShapefiles();
    ASSERT_TRUE(source->DeleteDataset("Towns")) << lastError();
    EXPECT_FALSE(source->GetDataset("Towns"));
    const QStringList left = files();
    EXPECT_TRUE(left.contains("Towns.txt") && left.contains("Towns.old.shp") && left.contains("Townships.dbf"));
    for (const QString &file : left)
        EXPECT_FALSE(file.startsWith("Towns.") && file != "Towns.txt" && file != "Towns.old.shp") << qPrintable(file);
    EXPECT_EQ(textOf(*query(vector(source, "Townships")), "Name"), "Towns");
}

TEST_F(DeleteDataset, OfSeveralFilesThatFailsHalfWayLeavesThemAll)
{
    createShapefiles();
    CTxDataSource *source = reopen("shapes");
    ASSERT_TRUE(source);
    const QStringList before = files();
    // In a sticky folder everybody takes away files of his own alone: here all parts but the last.
    constexpr uid_t nobody = 65534;
    const bool isRoot = geteuid() == 0 && chmod(qPrintable(path("shapes")), 01777) == 0 &&
                        chmod(qPrintable(m_folder.path()), 0755) == 0;
    for (const char *part : {"Towns.cpg", "Towns.dbf", "Towns.prj", "Towns.qix", "Towns.shp", "Towns.shp.xml"}) {
        const bool isGiven = chown(qPrintable(path("shapes/") + part), nobody, nobody) == 0;
        EXPECT_TRUE(isGiven || !isRoot || !before.contains(part)) << part;
    }
    if (!isRoot)
        GTEST_SKIP() << "only root can be another user";
    setfsuid(nobody);
    const bool deleted = source->DeleteDataset("Towns");
    const std::string error = lastError();
    setfsuid(0);
    EXPECT_FALSE(deleted);
    EXPECT_NE(error.find("Towns.shx"), std::string::npos) << error;
    EXPECT_EQ(files(), before);
    EXPECT_EQ(textOf(*query(vector(source, "Towns")), "Name"), "Towns") << lastError();
    EXPECT_TRUE(source->DeleteDataset("Towns")) << lastError();
}

TEST_F(DeleteDataset, WithItsFamilyIsAllOrNothing)
{
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(definition("Roads", CElemDatasetInfo::Network))) << lastError();
    CDatasetVector *nodes = dynamic_cast<CDatasetVector *>(source->GetDataset("Roads")->GetChildDataset());
    ASSERT_TRUE(nodes && nodes->Open() && addRecord(*query(nodes), {{"TxNodeID", 7}})) << lastError();
    CDatasetVector *towns = makeVector(source, "Towns");
    ASSERT_TRUE(addRecord(*query(towns), {{"Name", QString("A")}}));
    // The catalogue refuses when the tables have gone already.
    sqlite3 *other = nullptr;
    ASSERT_EQ(sqlite3_open(path("new.tdb").toUtf8().constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other,
                           "CREATE TRIGGER refuse BEFORE DELETE ON tdb_datasets "
                           "BEGIN SELECT RAISE(ABORT, 'not this one'); END",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    RecordsetPtr reader = query(towns);
    const CTxDataset *child = nodes;
    const QString childName = nodes->GetName();
    EXPECT_FALSE(source->DeleteDataset("Roads"));
    EXPECT_NE(lastError().find("not this one"), std::string::npos) << lastError();
    EXPECT_EQ(source->GetDataset("Roads")->GetChildDataset(), child);
    EXPECT_EQ(source->GetDataset(childName), child);
    EXPECT_EQ(query(vector(source, childName))->GetRecordCount(), 1) << lastError();
    EXPECT_TRUE(reader->IsEOF()) << "a recordset of another dataset stands at its end";
    reader = query(towns);
    EXPECT_EQ(textOf(*reader, "Name"), "A");

    reader.reset();
    ASSERT_EQ(sqlite3_exec(other, "DROP TRIGGER refuse", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(other);
    ASSERT_TRUE(source->DeleteDataset(childName)) << lastError();
    EXPECT_EQ(source->GetDataset("Roads")->GetChildDataset(), nullptr) << "a child goes alone";
    ASSERT_TRUE(source->DeleteDataset("Roads")) << lastError();
    source = reopen();
    EXPECT_EQ(source->GetDatasetCount(), 1);
    EXPECT_EQ(query(vector(source, "Towns"))->GetRecordCount(), 1);
}

} // namespace
