#include "Rows.h"
#include "engine/data/DataFixture.h"
#include "engine/data/SampleFiles.h"

#include "engine/geometry/GeoPoint.h"

#include <ogrsf_frmts.h>

#include <QDir>

#include <csignal>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Type = CTxDataSourceStorage::Type;

/// A kind of storage that records are appended to.
struct Storage
{
    const char *name;
    const char *file; // of the datasource
    Type type;
};

class VectorAppendTo : public DataFixture, public testing::WithParamInterface<Storage>
{
protected:
    /// Points from (1, 2) on with the fields Name (their number as a text) and Size (their number). If @p odd is given
    /// sizes are real numbers, and that record's is half a one more.
    CDatasetVector *makeSource(int count, int odd = 0)
    {
        CTxDataSource *from = sources.Create(path("from.tdb"), "from", CTxDataSourceStorage::Native);
        auto *towns = dynamic_cast<CDatasetVector *>(from->CreateDataset(
            definition("Towns", CElemDatasetInfo::Point,
                       {CTxFieldInfo("Name", CTxFieldInfo::Text, 20),
                        CTxFieldInfo("Size", odd > 0 ? CTxFieldInfo::Double : CTxFieldInfo::Long)})));
        EXPECT_TRUE(towns && towns->Open() && from->BeginTrans()) << lastError();
        const RecordsetPtr records = query(towns);
        for (int i = 1; i <= count; ++i) {
            const CGeoPoint place(i, 2 * i);
            EXPECT_TRUE(addRecord(*records,
                                  {{"Name", CTxVariant(QString::number(i))}, {"Size", i == odd ? i + 0.5 : double(i)}},
                                  &place));
        }
        EXPECT_TRUE(from->CommitTrans());
        return towns;
    }

    /// An open dataset "places" with the fields size (whole number) and name (text of 5), holding one point at (-1, -1)
    /// whose size is 0.
    CDatasetVector *makeTarget(const QString &folder = QString())
    {
        const QString file = folder.isEmpty() ? path(GetParam().file) : folder + '/' + GetParam().file;
        const bool isSqlite = GetParam().type == CTxDataSourceStorage::SQLite; // which is not made here, but filled
        EXPECT_TRUE(!isSqlite || SampleFiles::makePoints(file, "SQLite"));
        CTxDataSource *to = isSqlite ? open(file, "to") : sources.Create(file, "to", GetParam().type);
        auto *places = dynamic_cast<CDatasetVector *>(to->CreateDataset(
            definition("places", CElemDatasetInfo::Point,
                       {CTxFieldInfo("size", CTxFieldInfo::Long), CTxFieldInfo("name", CTxFieldInfo::Text, 5)})));
        EXPECT_TRUE(places && places->Open()) << lastError();
        const CGeoPoint place(-1, -1);
        EXPECT_TRUE(addRecord(*query(places), {{"size", 0}, {"name", CTxVariant(QStringLiteral("zero"))}}, &place));
        return places;
    }

    /// Everything that is stored: of files without transactions every byte, else the records and fields.
    std::string content(CDatasetVector *places)
    {
        QByteArray all;
        if (GetParam().type == CTxDataSourceStorage::Shapefile) {
            EXPECT_TRUE(places->GetDataSource()->Refresh()); // the driver writes what it holds back
            EXPECT_TRUE(places->Open());
            const QDir folder(places->GetDataSource()->GetPath());
            for (const QString &file : folder.entryList(QDir::Files, QDir::Name))
                all += file.toUtf8() + SampleFiles::read(folder.filePath(file));
        }
        CTxFieldInfo info;
        for (int i = 0; places->GetFieldInfo(i, info); ++i)
            all += info.GetName().toUtf8() + ' ';
        all += column(*query(places), "size").c_str();
        const CRect2D bounds = places->GetBounds();
        all += ' ' + QByteArray::number(places->GetRecordCount()) + ' ' + QByteArray::number(bounds.right);
        return all.toStdString();
    }

    static qint64 countWithin(CDatasetVector *dataset, const CRect2D &bounds)
    {
        CTxQueryDef def;
        def.bounds = bounds;
        return query(dataset, def)->GetRecordCount();
    }
};

TEST_P(VectorAppendTo, TakesRecordsWithTheirFieldsAndATag)
{
    CDatasetVector *towns = makeSource(2500);
    CDatasetVector *places = makeTarget();
    CTxAppendDef def;
    def.tagField = "OriginDataset";
    QList<qint64> steps;
    qint64 last = 0;
    def.progress = [&](qint64 done, qint64 total) {
        steps.append(done);
        last = total;
        return true;
    };
    const RecordsetPtr records = query(towns);
    ASSERT_TRUE(places->Append(records.get(), def)) << lastError();
    EXPECT_TRUE(records->IsEOF());
    EXPECT_GE(steps.size(), 4);
    EXPECT_EQ(steps.first(), 0);
    EXPECT_EQ(steps.last(), 2500);
    EXPECT_EQ(last, 2500);
    ASSERT_TRUE(places->Append(query(towns, "Size <= 3").get(), def)) << "the tag field is there: " << lastError();
    EXPECT_EQ(places->GetRecordCount(), 2504);
    EXPECT_EQ(places->GetBounds(), CRect2D(-1, -1, 2500, 5000));

    sources.Close("to");
    places = vector(open(path(GetParam().file), "to"), "places");
    EXPECT_EQ(places->GetRecordCount(), 2504);
    EXPECT_EQ(places->GetBounds(), CRect2D(-1, -1, 2500, 5000));
    EXPECT_EQ(countWithin(places, CRect2D(100, 0, 109.5, 9999)), 10);
    const RecordsetPtr all = query(places, "Size = 2");
    EXPECT_EQ(textOf(*all, "Name"), "2");
    EXPECT_EQ(textOf(*all, places->FindField("OriginDataset") >= 0 ? "OriginDataset" : "OriginData"), "Towns");
    EXPECT_EQ(geometryOf(*all)->GetBounds(), CRect2D(2, 4, 2, 4));
    EXPECT_EQ(all->GetRecordCount(), 2);
}

TEST_P(VectorAppendTo, FailureHalfWayLeavesItAsItWas)
{
    CDatasetVector *towns = makeSource(2000, 1800);
    CDatasetVector *places = makeTarget();
    const std::string before = content(places);
    for (const char *tag : {"", "origin"}) {
        CTxAppendDef def;
        def.tagField = tag;
        EXPECT_FALSE(places->Append(query(towns).get(), def));
        for (const char *word : {"1800", "Towns", "size", "1800.5", "whole number", "1799"})
            EXPECT_NE(lastError().find(word), std::string::npos) << lastError();
        EXPECT_EQ(content(places), before) << tag;

        def.progress = [](qint64 done, qint64) { return done < 1000; };
        EXPECT_FALSE(places->Append(query(towns, "Size <> 1800.5").get(), def));
        EXPECT_NE(lastError().find("stopped"), std::string::npos) << lastError();
        EXPECT_EQ(content(places), before) << tag;
    }
    EXPECT_TRUE(places->Append(query(towns, "Size <> 1800.5").get())) << "work goes on: " << lastError();
    EXPECT_EQ(places->GetRecordCount(), 2000);
    EXPECT_EQ(countWithin(places, CRect2D(100, 0, 109.5, 9999)), 10);
}

/// Another process appends and is killed in the middle.
TEST_P(VectorAppendTo, KilledWriterLeavesItAsItWas)
{
    makeSource(3000);
    makeTarget();
    sources.CloseAll();
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        CDatasetVector *towns = vector(open(path("from.tdb"), "from"), "Towns");
        CTxAppendDef def;
        def.progress = [](qint64 done, qint64) { return done < 2500 || kill(getpid(), SIGKILL) == 0; };
        vector(open(path(GetParam().file), "to"), "places")->Append(query(towns).get(), def);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    CDatasetVector *places = vector(open(path(GetParam().file), "to"), "places");
    EXPECT_EQ(places->GetRecordCount(), 1);
    EXPECT_EQ(column(*query(places), "size"), "0");
    EXPECT_EQ(places->GetBounds().right, -1);
    CDatasetVector *towns = vector(open(path("from.tdb"), "from"), "Towns");
    EXPECT_TRUE(places->Append(query(towns).get())) << lastError();
    EXPECT_EQ(places->GetRecordCount(), 3001);
}

TEST_P(VectorAppendTo, FullDiskLeavesItAsItWas)
{
    const QString small = path("small");
    ASSERT_TRUE(QDir().mkdir(small));
    if (geteuid() != 0 || mount("none", small.toUtf8().constData(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "a small file system can be made by root only";
    CDatasetVector *towns = makeSource(40000);
    CDatasetVector *places = makeTarget(small);
    const std::string before = content(places);
    EXPECT_FALSE(places->Append(query(towns).get()));
    EXPECT_NE(lastError().find("Nothing was appended"), std::string::npos) << lastError();
    EXPECT_EQ(content(places), before);
    EXPECT_TRUE(places->Append(query(towns, "Size <= 5").get())) << "there is room again: " << lastError();
    sources.Close("to");
    EXPECT_EQ(vector(open(small + '/' + GetParam().file, "to"), "places")->GetRecordCount(), 6);
    sources.CloseAll();
    EXPECT_EQ(umount2(small.toUtf8().constData(), MNT_DETACH), 0);
}

TEST_P(VectorAppendTo, KeepsWhatTheUsersTransactionDidBefore)
{
    CDatasetVector *towns = makeSource(1000, 900);
    CDatasetVector *places = makeTarget();
    CTxDataSource *to = places->GetDataSource();
    if (!to->HasCapability(CTxDataSource::CanTransact))
        GTEST_SKIP() << "knows no transactions";
    ASSERT_TRUE(to->BeginTrans());
    const CGeoPoint place(5, 5);
    ASSERT_TRUE(addRecord(*query(places), {{"size", 1}}, &place));
    const std::string before = content(places);
    EXPECT_FALSE(places->Append(query(towns).get()));
    EXPECT_TRUE(to->IsTransStarted());
    EXPECT_EQ(content(places), before);
    CTxAppendDef tagged;
    tagged.tagField = "origin";
    EXPECT_FALSE(places->Append(query(towns, "Size < 900").get(), tagged)) << "structure changes on its own";
    EXPECT_EQ(content(places), before);
    ASSERT_TRUE(places->Append(query(towns, "Size < 900").get())) << lastError();
    ASSERT_TRUE(to->CommitTrans()) << lastError();
    sources.Close("to");
    places = vector(open(path(GetParam().file), "to"), "places");
    EXPECT_EQ(places->GetRecordCount(), 901);
    EXPECT_EQ(countWithin(places, CRect2D(100, 0, 109.5, 9999)), 10);
    EXPECT_EQ(countWithin(places, CRect2D(900, 0, 9999, 9999)), 0);
}

TEST_P(VectorAppendTo, TakesItsOwnRecordsOnce)
{
    CDatasetVector *towns = makeSource(1500);
    CDatasetVector *places = makeTarget();
    ASSERT_TRUE(places->Append(query(towns).get())) << lastError();
    ASSERT_TRUE(places->Append(query(places).get())) << lastError();
    EXPECT_EQ(places->GetRecordCount(), 3002);
    CTxQueryDef def;
    def.filter = "size > 1498";
    def.orderBy = QStringList{"size DESC"};
    ASSERT_TRUE(places->Append(query(places, def).get())) << lastError();
    EXPECT_EQ(places->GetRecordCount(), 3006);
    RecordsetPtr records = query(places, def);
    CTxAppendDef tagged;
    tagged.tagField = "origin";
    ASSERT_TRUE(places->Append(records.get(), tagged)) << lastError();
    EXPECT_FALSE(records->MoveFirst()) << "the fields it knows are no more";
    records.reset();
    EXPECT_EQ(column(*query(places, "size = 1499 AND origin IS NOT NULL"), "name"), "1499 1499 1499 1499");
    EXPECT_EQ(places->GetRecordCount(), 3014);
}

INSTANTIATE_TEST_SUITE_P(Storages, VectorAppendTo,
                         testing::Values(Storage{"Native", "to.tdb", CTxDataSourceStorage::Native},
                                         Storage{"GeoPackage", "to.gpkg", CTxDataSourceStorage::GeoPackage},
                                         Storage{"Shapefile", "to", CTxDataSourceStorage::Shapefile},
                                         Storage{"SQLite", "to.sqlite", CTxDataSourceStorage::SQLite}),
                         rowNames(&Storage::name));

} // namespace
