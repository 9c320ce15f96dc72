#include "engine/data/DataFixture.h"
#include "engine/data/SampleFiles.h"

#include "engine/geometry/GeoPoint.h"

#include <QDir>

#include <ostream>
#include <sys/mount.h>
#include <unistd.h>

namespace {

/// A kind of storage that records are appended to.
struct Storage
{
    const char *name;
    const char *file; // of the datasource
    CTxDataSourceStorage::Type type;
};

std::ostream &operator<<(std::ostream &out, const Storage &storage)
{
    return out << storage.name;
}

class VectorAppend : public DataFixture
{
protected:
    /// Points from (1, 2) on with the fields Name (their number as a text) and Size (their number).
    CDatasetVector *makeSource(int count, const QString &name = "Towns")
    {
        CTxDataSource *from = sources.Create(path("from.tdb"), "from", CTxDataSourceStorage::Native);
        EXPECT_TRUE(from) << lastError();
        CDatasetVector *towns = makeVector(from, name);
        EXPECT_TRUE(from->BeginTrans());
        const RecordsetPtr records = query(towns);
        for (int i = 1; i <= count; ++i) {
            const CGeoPoint place(i, 2 * i);
            EXPECT_TRUE(addRecord(*records, {{"Name", CTxVariant(QString::number(i))}, {"Size", i}}, &place));
        }
        EXPECT_TRUE(from->CommitTrans());
        return towns;
    }
};

class VectorAppendTo : public VectorAppend, public testing::WithParamInterface<Storage>
{
protected:
    /// An open dataset "places" with the fields size (whole number) and name (text of 5), holding one point at (0, 0).
    CDatasetVector *makeTarget(const QString &folder = QString())
    {
        const QString file = folder.isEmpty() ? path(GetParam().file) : folder + '/' + GetParam().file;
        const bool isSqlite = GetParam().type == CTxDataSourceStorage::SQLite; // which is not made here, but filled
        EXPECT_TRUE(!isSqlite || SampleFiles::makePoints(file, "SQLite"));
        CTxDataSource *to = isSqlite ? open(file, "to") : sources.Create(file, "to", GetParam().type);
        EXPECT_TRUE(to) << lastError();
        auto *places = dynamic_cast<CDatasetVector *>(to->CreateDataset(
            definition("places", CElemDatasetInfo::Point,
                       {CTxFieldInfo("size", CTxFieldInfo::Long), CTxFieldInfo("name", CTxFieldInfo::Text, 5)})));
        EXPECT_TRUE(places && places->Open()) << lastError();
        const CGeoPoint place(0, 0);
        EXPECT_TRUE(addRecord(*query(places), {{"size", 0}, {"name", CTxVariant(QStringLiteral("zero"))}}, &place));
        return places;
    }

    /// Everything that is stored: of files without transactions every byte, else the records and fields.
    QByteArray content(CDatasetVector *places)
    {
        QByteArray all;
        if (GetParam().type == CTxDataSourceStorage::Shapefile) {
            places->GetDataSource()->Refresh(); // lets the driver write what it holds back
            const QDir folder(places->GetDataSource()->GetPath());
            for (const QString &file : folder.entryList(QDir::Files, QDir::Name))
                all += file.toUtf8() + SampleFiles::read(folder.filePath(file));
        }
        CTxFieldInfo info;
        for (int i = 0; places->GetFieldInfo(i, info); ++i)
            all += info.GetName().toUtf8() + ' ';
        for (const RecordsetPtr records = query(places); !records->IsEOF(); records->MoveNext())
            all += QByteArray::number(records->GetID()) + textOf(*records, "size").c_str() + ' ';
        const CRect2D bounds = places->GetBounds();
        return all + QByteArray::number(places->GetRecordCount()) + ' ' + QByteArray::number(bounds.right);
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
    EXPECT_EQ(steps.first(), 0);
    EXPECT_GE(steps.size(), 4);
    EXPECT_EQ(steps.last(), 2500);
    EXPECT_EQ(last, 2500);
    ASSERT_TRUE(places->Append(query(towns, "Size <= 3").get(), def)) << "the tag field is there: " << lastError();
    EXPECT_EQ(places->GetRecordCount(), 2504);
    EXPECT_EQ(places->GetBounds(), CRect2D(0, 0, 2500, 5000));

    sources.Close("to");
    places = vector(open(path(GetParam().file), "to"), "places");
    EXPECT_EQ(places->GetRecordCount(), 2504);
    EXPECT_EQ(places->GetBounds(), CRect2D(0, 0, 2500, 5000));
    const RecordsetPtr all = query(places, "Size = 2");
    EXPECT_EQ(textOf(*all, "Name"), "2");
    EXPECT_EQ(textOf(*all, places->FindField("OriginDataset") >= 0 ? "OriginDataset" : "OriginData"), "Towns");
    EXPECT_EQ(geometryOf(*all)->GetBounds(), CRect2D(2, 4, 2, 4));
    EXPECT_EQ(all->GetRecordCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(Storages, VectorAppendTo,
                         testing::Values(Storage{"Native", "to.tdb", CTxDataSourceStorage::Native},
                                         Storage{"GeoPackage", "to.gpkg", CTxDataSourceStorage::GeoPackage},
                                         Storage{"Shapefile", "to", CTxDataSourceStorage::Shapefile},
                                         Storage{"SQLite", "to.sqlite", CTxDataSourceStorage::SQLite}),
                         [](const auto &row) { return row.param.name; });

} // namespace
