#include "engine/data/DataFixture.h"
#include "engine/data/SampleFiles.h"

#include <QDir>
#include <QFile>

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

namespace {

using Info = CElemDatasetInfo;

class Listing : public DataFixture
{
protected:
    /// The names of the listed datasets, joined by blanks.
    static std::string names(const CTxDataSource *source)
    {
        QStringList list;
        for (qint32 index = 0; source && index < source->GetDatasetCount(); ++index)
            list.append(source->GetDatasetAt(index)->GetName());
        return list.join(u' ').toStdString();
    }
};

struct KindRow
{
    OGRwkbGeometryType geometry;
    Info::Type kind;
};

TEST_F(Listing, KindsFollowTheGeometryTypes)
{
    const KindRow rows[] = {{wkbNone, Info::Tabular},
                            {wkbPoint, Info::Point},
                            {wkbMultiPointM, Info::Point},
                            {wkbPoint25D, Info::Point3D},
                            {wkbLineString, Info::Line},
                            {wkbCompoundCurve, Info::Line},
                            {wkbMultiLineStringM, Info::Route},
                            {wkbMultiLineStringZM, Info::Line3D},
                            {wkbPolygon, Info::Region},
                            {wkbMultiPolygon25D, Info::Region3D},
                            {wkbCurvePolygon, Info::Region},
                            {wkbPolyhedralSurfaceZ, Info::Region3D},
                            {wkbTINZ, Info::TIN},
                            {wkbUnknown, Info::CAD},
                            {wkbGeometryCollection, Info::CAD}};
    GDALAllRegister();
    {
        const GDALDatasetUniquePtr file(GetGDALDriverManager()->GetDriverByName("GPKG")->Create(
            path("kinds.gpkg").toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
        for (const KindRow &row : rows)
            ASSERT_NE(file->CreateLayer(OGRGeometryTypeToName(row.geometry), nullptr, row.geometry, nullptr), nullptr);
    }
    const CTxDataSource *source = open(path("kinds.gpkg"));
    ASSERT_TRUE(source);
    for (const KindRow &row : rows) {
        const CTxDataset *dataset = source->GetDataset(OGRGeometryTypeToName(row.geometry));
        ASSERT_TRUE(dataset);
        EXPECT_EQ(dataset->GetType(), row.kind) << OGRGeometryTypeToName(row.geometry);
    }
    EXPECT_EQ(source->GetDatasetAt(-1), nullptr);
    EXPECT_EQ(source->GetDatasetAt(source->GetDatasetCount()), nullptr);
}

TEST_F(Listing, AFileOfVectorsAndRastersShowsBoth)
{
    ASSERT_TRUE(SampleFiles::makePoints(path("both.gpkg"), "GPKG"));
    ASSERT_TRUE(SampleFiles::makeRaster(path("cells.tif"), "GTiff", 300, 300));
    {
        const GDALDatasetUniquePtr from(GDALDataset::Open(path("cells.tif").toUtf8()));
        for (const char *table : {"RASTER_TABLE=photo", "RASTER_TABLE=map"}) {
            const char *options[] = {table, "APPEND_SUBDATASET=YES", "TILE_FORMAT=PNG", nullptr};
            const GDALDatasetUniquePtr copy(GetGDALDriverManager()->GetDriverByName("GPKG")->CreateCopy(
                path("both.gpkg").toUtf8(), from.get(), FALSE, const_cast<char **>(options), nullptr, nullptr));
            ASSERT_TRUE(copy);
        }
    }
    CTxDataSource *source = open(path("both.gpkg"));
    ASSERT_EQ(names(source), "points photo map");
    for (const char *name : {"photo", "map"})
        EXPECT_EQ(raster(source, name)->GetSize(), QSize(300, 300));
}

TEST_F(Listing, FindsNamesExactlyFirstThenWithoutRegardToCase)
{
    QDir(m_folder.path()).mkdir("shapes");
    for (const char *name : {"Roads", "roads", "Rivers", "ö 🗺"}) {
        ASSERT_TRUE(SampleFiles::makePoints(path("shapes/") + name + ".shp", "ESRI Shapefile", name));
    }
    const CTxDataSource *source = open(path("shapes"));
    ASSERT_TRUE(source);
    EXPECT_EQ(source->GetDatasetCount(), 4);
    const std::pair<const char *, const char *> rows[] = {{"Roads", "Roads"},
                                                          {"roads", "roads"},
                                                          {"ROADS", ""}, // two would answer
                                                          {"RIVERS", "Rivers"},
                                                          {"ö 🗺", "ö 🗺"}};
    for (const auto &[asked, found] : rows) {
        const CTxDataset *dataset = source->GetDataset(asked);
        EXPECT_EQ(dataset ? dataset->GetName() : QString(""), found) << asked;
    }
    EXPECT_FALSE(source->IsAvailableDatasetName("ROADS"));
    EXPECT_EQ(source->GetUnoccupiedDatasetName("roads").toStdString(), "roads_1");
}

TEST_F(Listing, KnowsWhichNamesNewDatasetsMayBear)
{
    ASSERT_TRUE(SampleFiles::makePoints(path("p.gpkg"), "GPKG"));
    const CTxDataSource *source = open(path("p.gpkg"));
    const QStringList taken = {"Wanted"};
    for (const char *good : {"a", "_1", "Straße_2", "道路"})
        EXPECT_TRUE(source->IsAvailableDatasetName(good)) << good;
    for (const char *bad : {"", "1a", "a b", "a-b", "a.b", "a\"b", "points", "POINTS", "gpkg_x", "SQLITE_x", "rtree_a",
                            "tdb_format", "🗺"})
        EXPECT_FALSE(source->IsAvailableDatasetName(bad)) << bad;
    EXPECT_FALSE(source->IsAvailableDatasetName("wanted", &taken));
    EXPECT_TRUE(source->IsAvailableDatasetName(QString(63, u'a')));
    EXPECT_FALSE(source->IsAvailableDatasetName(QString(64, u'a')));
    for (const char *proposal : {"", "points", "gpkg_contents", "1 road-map", "sqlite_", "🗺"}) {
        const QString made = source->GetUnoccupiedDatasetName(proposal, &taken);
        EXPECT_TRUE(source->IsAvailableDatasetName(made, &taken)) << made.toStdString();
    }
    EXPECT_TRUE(source->IsAvailableDatasetName(source->GetUnoccupiedDatasetName(QString(10000, u'x'))));
    auto *points = dynamic_cast<CDatasetVector *>(source->GetDataset("points"));
    for (const char *bad : {"", "TxID", "txlength", "NAME", "select", "a b"})
        EXPECT_FALSE(points->IsAvailableFieldName(bad)) << bad;
    EXPECT_TRUE(points->IsAvailableFieldName("TxUserID"));
}

TEST_F(Listing, AliasesAreUniqueAndOpeningModesAreKept)
{
    ASSERT_TRUE(SampleFiles::makePoints(path("p.gpkg"), "GPKG"));
    CTxDataSource *first = open(path("p.gpkg"));
    CTxDataSource *second = sources.Open(path("p.gpkg"), QString(), CTxDataSource::OpenReadOnly);
    CTxDataSource *third = sources.Open(path("p.gpkg"), "x/\u202e y", CTxDataSource::Internal);
    ASSERT_TRUE(first && second && third);
    EXPECT_EQ(first->GetAlias().toStdString(), "p");
    EXPECT_EQ(second->GetAlias().toStdString(), "p_1");
    EXPECT_EQ(sources.Open(path("p.gpkg"), "p"), nullptr);
    EXPECT_EQ(first->GetOpenOptions(), quint32(CTxDataSource::Normal));
    EXPECT_EQ(second->GetOpenOptions(), quint32(CTxDataSource::Normal | CTxDataSource::OpenReadOnly));
    EXPECT_EQ(third->GetOpenOptions(), quint32(CTxDataSource::Internal));
    EXPECT_TRUE(first->HasCapability(CTxDataSource::CanTransact));
    EXPECT_FALSE(second->HasCapability(CTxDataSource::CanTransact));
    EXPECT_FALSE(first->HasCapability(99));
    EXPECT_TRUE(sources.Rename("p", "q"));
    EXPECT_EQ(first->GetAlias().toStdString(), "q");
    EXPECT_FALSE(sources.Rename("q", "p_1"));
    EXPECT_FALSE(sources.Rename("q", QString()));
    EXPECT_FALSE(sources.Close("p"));
    EXPECT_TRUE(sources.Close("q"));
    EXPECT_EQ(sources.GetCount(), 2);
}

TEST_F(Listing, RefreshFindsWhatCameAndWent)
{
    ASSERT_TRUE(SampleFiles::makePoints(path("f"), "ESRI Shapefile", "a"));
    CTxDataSource *source = open(path("f"));
    ASSERT_EQ(names(source), "a");
    CTxDataset *kept = source->GetDatasetAt(0);
    ASSERT_TRUE(SampleFiles::makePoints(path("f/b.shp"), "ESRI Shapefile", "b"));
    ASSERT_TRUE(source->Refresh());
    EXPECT_EQ(names(source), "a b");
    EXPECT_EQ(source->GetDatasetAt(0), kept);
    EXPECT_TRUE(kept->Open()) << "a dataset that stays can be read on";
    for (const char *extension : {"shp", "shx", "dbf", "prj"})
        QFile::remove(path("f/b.") + QLatin1String(extension));
    ASSERT_TRUE(source->Refresh());
    EXPECT_EQ(names(source), "a");
}

TEST_F(Listing, DelimitedTextsHaveTypedFields)
{
    ASSERT_TRUE(SampleFiles::write(path("t.csv"), "x,y,name\n1,2.5,\"a, b\"\n2,3.5,\xC3\xB6\n"));
    CTxDataSource *source = open(path("t.csv"));
    ASSERT_EQ(names(source), "t") << "a table of numbers is no grid";
    const CDatasetVector *table = vector(source);
    EXPECT_EQ(table->GetType(), Info::Tabular);
    CTxFieldInfo info;
    const qint16 types[] = {CTxFieldInfo::Long, CTxFieldInfo::Long, CTxFieldInfo::Double, CTxFieldInfo::Text};
    for (int index = 0; index < 4; ++index) {
        ASSERT_TRUE(table->GetFieldInfo(index, info));
        EXPECT_EQ(info.GetType(), types[index]) << index;
    }
}

} // namespace
