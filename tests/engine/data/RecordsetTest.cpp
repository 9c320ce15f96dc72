#include "Rows.h"
#include "engine/data/DataFixture.h"
#include "engine/geometry/GeoPoint.h"

#include <algorithm>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

namespace {

/// A storage of towns and countries, read in each of the ways that records are walked.
struct StorageRow
{
    const char *title;
    const char *driver;
    const char *file;
};

/// "towns" (points: name, country, people, since) and "countries" (a table: code, name), where two fields share a name.
bool makeTowns(const QString &path, const char *driverName)
{
    GDALAllRegister();
    GDALDriver *driver = GetGDALDriverManager()->GetDriverByName(driverName);
    const GDALDatasetUniquePtr file(driver->Create(path.toUtf8(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRLayer *towns = file->CreateLayer("towns", nullptr, wkbPoint, nullptr);
    OGRLayer *countries = file->CreateLayer("countries", nullptr, wkbNone, nullptr);
    const auto addField = [](OGRLayer *layer, const char *name, OGRFieldType type) {
        OGRFieldDefn field(name, type);
        return layer->CreateField(&field) == OGRERR_NONE;
    };
    bool good = addField(towns, "name", OFTString) && addField(towns, "country", OFTString) &&
                addField(towns, "people", OFTInteger) && addField(towns, "since", OFTDate) &&
                addField(countries, "code", OFTString) && addField(countries, "name", OFTString);
    const auto addTown = [&](const char *name, const char *country, int people, double x) {
        OGRFeature town(towns->GetLayerDefn());
        town.SetField("name", name);
        if (country)
            town.SetField("country", country);
        town.SetField("people", people);
        town.SetField("since", 1200 + people, 2, 3);
        OGRPoint point(x, x);
        town.SetGeometry(&point);
        good = towns->CreateFeature(&town) == OGRERR_NONE && good;
    };
    addTown("Ulm", "de", 120, 10);
    addTown("Bern", "ch", 130, 20);
    addTown("K\xC3\xB6ln's", "de", 1000, 30);
    addTown("Nowhere", nullptr, 0, 40);
    for (const auto &[code, name] : {std::pair("de", "Germany"), std::pair("ch", "Switzerland")}) {
        OGRFeature country(countries->GetLayerDefn());
        country.SetField("code", code);
        country.SetField("name", name);
        good = countries->CreateFeature(&country) == OGRERR_NONE && good;
    }
    return good;
}

class Recordsets : public DataFixture, public testing::WithParamInterface<StorageRow>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(makeTowns(path(GetParam().file), GetParam().driver));
        m_source = open(path(GetParam().file));
        ASSERT_TRUE(m_source);
        m_towns = vector(m_source, "towns");
        ASSERT_TRUE(m_towns);
    }

    RecordsetPtr records(const CTxQueryDef &definition = {}) { return query(m_towns, definition); }
    std::string names(const CTxQueryDef &definition) { return column(*records(definition), "name"); }
    std::string namesWhere(const QString &filter) { return column(*query(m_towns, filter), "name"); }

    CTxDataSource *m_source = nullptr;
    CDatasetVector *m_towns = nullptr;
};

TEST_P(Recordsets, GiveEveryRecordWithItsIdentifierFirst)
{
    const RecordsetPtr all = records();
    ASSERT_EQ(all->GetFieldCount(), 5);
    CTxFieldInfo info;
    ASSERT_TRUE(all->GetFieldInfo(0, info));
    EXPECT_EQ(info.GetName().toStdString(), "TxID");
    EXPECT_TRUE(info.IsSystemField() && !info.CanUpdate());
    EXPECT_FALSE(all->GetFieldInfo(5, info) || all->GetFieldInfo(-1, info));
    EXPECT_EQ(all->FindField("PEOPLE"), 3) << "letter case is ignored";
    EXPECT_EQ(all->GetRecordCount(), 4);

    const CTxVariant expected[] = {CTxVariant(qint32(all->GetID())), CTxVariant(QStringLiteral("Ulm")),
                                   CTxVariant(QStringLiteral("de")), CTxVariant(120),
                                   CTxVariant(QDateTime(QDate(1320, 2, 3), QTime(0, 0), Qt::UTC))};
    CTxVariant value;
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(all->GetFieldValue(i, value));
        EXPECT_EQ(value, expected[i]) << i;
    }
    EXPECT_EQ(column(*all, "name"), "Ulm Bern Köln's Nowhere");

    EXPECT_TRUE(all->IsEOF());
    EXPECT_FALSE(all->MoveNext());
    EXPECT_EQ(all->GetID(), -1);
    EXPECT_FALSE(all->GetFieldValue(0, value));
    EXPECT_EQ(value, expected[4]) << "a failure leaves the value as it was";
    ASSERT_TRUE(all->MoveFirst()) << "a walk can be begun anew";
    EXPECT_EQ(column(*all, "country"), "de ch de ") << "the last is null";
}

TEST_P(Recordsets, AreFilteredBySqlConditions)
{
    const RecordsetPtr second = records();
    ASSERT_TRUE(second->MoveNext());
    const std::pair<QString, const char *> rows[] = {
        {"people > 125", "Bern Köln's"},
        {"[people] > 125 AND \"country\" = 'de'", "Köln's"},
        {"name = 'Köln''s'", "Köln's"},
        {"country IS NULL", "Nowhere"},
        {"name LIKE 'U%' OR people = 0", "Ulm Nowhere"},
        {"people = 7", ""},
        {QStringLiteral("TxID = %1").arg(second->GetID()), "Bern"},
        {"name = 'TxID'", ""}, // texts are not names
    };
    for (const auto &[filter, expected] : rows)
        EXPECT_EQ(namesWhere(filter), expected) << filter.toStdString();
}

TEST_P(Recordsets, RefuseWhatIsNoQuery)
{
    for (const char *filter : {"people >", "nothere = 1", "\"nothere\" = 1", "name = 'open",
                               "people > 1; DROP TABLE towns", "1=1) OR (1=1", "people > 1) --", "/* never closed"}) {
        CTxQueryDef definition;
        definition.filter = filter;
        TxGetErrorMsgObj().Clear();
        EXPECT_EQ(m_towns->Query(definition), nullptr) << filter;
        EXPECT_FALSE(lastError().empty()) << filter;
    }
    for (const CTxJoinItem &join : {CTxJoinItem{"none", "name", "name"}, CTxJoinItem{"towns", "name", "name"},
                                    CTxJoinItem{"countries", "x", "code"}, CTxJoinItem{"countries", "name", "x"}}) {
        CTxQueryDef definition;
        definition.joins = {join};
        EXPECT_EQ(m_towns->Query(definition), nullptr) << join.foreignDataset.toStdString();
    }
    CTxQueryDef unknownField, unknownOrder;
    unknownField.fields = {"nothere"};
    unknownOrder.orderBy = {"nothere DESC"};
    EXPECT_EQ(m_towns->Query(unknownField), nullptr);
    EXPECT_EQ(m_towns->Query(unknownOrder), nullptr);
    EXPECT_EQ(m_towns->GetRecordCount(), 4);
}

TEST_P(Recordsets, GiveTheWantedFieldsInTheWantedOrder)
{
    CTxQueryDef definition;
    definition.fields = {"people", "NAME"};
    const RecordsetPtr some = records(definition);
    ASSERT_EQ(some->GetFieldCount(), 3);
    EXPECT_EQ(some->FindField("people"), 1);
    EXPECT_EQ(some->FindField("name"), 2);
    EXPECT_EQ(column(*some, "name"), "Ulm Bern Köln's Nowhere");
    definition.options = CTxQueryDef::SkipAttributes;
    EXPECT_EQ(records(definition)->GetFieldCount(), 1);
}

TEST_P(Recordsets, AreOrdered)
{
    CTxQueryDef definition;
    definition.orderBy = {"country desc", "people DESC"};
    definition.filter = "people > 0";
    const RecordsetPtr ordered = records(definition), plain = records();
    EXPECT_EQ(ordered->GetRecordCount(), 3);
    ASSERT_TRUE(plain->MoveToID(ordered->GetID())) << "the identifiers are those of the dataset";
    EXPECT_EQ(textOf(*plain, "name"), "Köln's");
    EXPECT_EQ(column(*ordered, "name"), "Köln's Ulm Bern");
}

TEST_P(Recordsets, AreJoinedToOtherDatasets)
{
    CTxQueryDef definition;
    definition.joins = {{"countries", "country", "code", CTxJoinItem::LeftJoin}};
    definition.orderBy = {"people"};
    RecordsetPtr joined = records(definition);
    ASSERT_TRUE(joined);
    EXPECT_EQ(joined->GetRecordCount(), 4);
    EXPECT_EQ(column(*joined, "countries.name"), " Germany Switzerland Germany");
    definition.joins[0].kind = CTxJoinItem::InnerJoin;
    definition.filter = "countries.name = 'Germany' AND name <> 'Ulm'";
    joined = records(definition);
    ASSERT_TRUE(joined);
    EXPECT_EQ(joined->GetRecordCount(), 1);
    EXPECT_EQ(column(*joined, "name"), "Köln's") << "a bare name is the queried dataset's";
}

TEST_P(Recordsets, AreChosenByRectangle)
{
    CTxQueryDef definition;
    definition.bounds = CRect2D(15, 15, 30, 30);
    EXPECT_EQ(records(definition)->GetRecordCount(), 2);
    EXPECT_EQ(names(definition), "Bern Köln's") << "an edge belongs to it";
    definition.filter = "people < 200";
    definition.orderBy = {"name"};
    EXPECT_EQ(names(definition), "Bern");
}

TEST_P(Recordsets, GiveGeometriesThatTheCallerOwns)
{
    RecordsetPtr towns = records();
    ASSERT_TRUE(towns->MoveNext());
    const std::unique_ptr<CElemGeometry> geometry = geometryOf(*towns);
    ASSERT_TRUE(geometry);
    towns.reset();
    EXPECT_EQ(geometry->GetType(), CElemGeometry::Point);
    EXPECT_EQ(geometry->GetBounds(), CRect2D(20, 20, 20, 20));
    CTxQueryDef definition;
    definition.options = CTxQueryDef::SkipGeometry;
    EXPECT_FALSE(geometryOf(*records(definition)));
}

TEST_P(Recordsets, GoToAnIdentifierAndBackToTheirWalk)
{
    QList<qint64> ids;
    for (const RecordsetPtr all = records(); !all->IsEOF(); all->MoveNext())
        ids.append(all->GetID());
    ASSERT_EQ(ids.size(), 4);
    const RecordsetPtr some = query(m_towns, "people > 0");
    ASSERT_TRUE(some->MoveToID(ids.at(2)));
    EXPECT_EQ(some->GetID(), ids.at(2));
    for (const qint64 id : {ids.at(3), qint64(4711), qint64(-1)})
        EXPECT_FALSE(some->MoveToID(id)) << "the query does not give it: " << id;
    EXPECT_EQ(some->GetID(), ids.at(2)) << "the place is kept";
    ASSERT_TRUE(some->MoveNext());
    EXPECT_EQ(some->GetID(), ids.at(1)) << "the walk stood on the first record";
}

TEST_P(Recordsets, DoNotDisturbOneAnother)
{
    std::string seen;
    for (const RecordsetPtr outer = records(); !outer->IsEOF(); outer->MoveNext()) {
        seen += namesWhere(QStringLiteral("people > %1").arg(textOf(*outer, "people").c_str())) + "|";
        EXPECT_EQ(m_towns->GetRecordCount(), 4);
    }
    EXPECT_EQ(seen, "Bern Köln's|Köln's||Ulm Bern Köln's|");
}

TEST_P(Recordsets, GoOnAfterTheirRecordIsDeleted)
{
    std::string seen;
    for (const RecordsetPtr doomed = records(); !doomed->IsEOF(); doomed->MoveNext()) {
        seen += textOf(*doomed, "name") + "|";
        EXPECT_TRUE(doomed->Delete()) << lastError();
    }
    EXPECT_EQ(seen, "Ulm|Bern|Köln's|Nowhere|");
    EXPECT_EQ(namesWhere("people >= 0"), "");
}

TEST_P(Recordsets, DieWithTheirDatasetAndAreRefusedThen)
{
    CTxRecordset *dead = m_towns->Query({});
    EXPECT_EQ(m_towns->GetRecordsetCount(), 1);
    EXPECT_TRUE(m_towns->Close());
    EXPECT_EQ(m_towns->GetRecordsetCount(), 0);
    EXPECT_FALSE(m_towns->ReleaseRecordset(dead));
    EXPECT_FALSE(m_towns->ReleaseRecordset(nullptr));
    EXPECT_EQ(m_towns->Query({}), nullptr) << "the dataset is closed";
    ASSERT_TRUE(m_towns->Open());
    EXPECT_TRUE(m_towns->Query({})); // never given back
    EXPECT_TRUE(sources.Close(m_source->GetAlias()));
}

INSTANTIATE_TEST_SUITE_P(Storages, Recordsets,
                         testing::Values(StorageRow{"statement on GeoPackage", "GPKG", "towns.gpkg"},
                                         StorageRow{"layer of shapefiles", "ESRI Shapefile", "towns"},
                                         StorageRow{"layer of SQLite", "SQLite", "towns.sqlite"}),
                         rowNames(&StorageRow::title));

class AnyOrder : public DataFixture
{
protected:
    static QList<qint64> idsOf(CTxRecordset &records)
    {
        QList<qint64> ids;
        for (; !records.IsEOF(); records.MoveNext())
            ids.append(records.GetID());
        return ids;
    }
};

TEST_F(AnyOrder, GivesTheSameRecordsByTheSpatialIndex)
{
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(
        definition("places", CElemDatasetInfo::Point, {CTxFieldInfo("id", CTxFieldInfo::Long)}))); // as the index's own
    CDatasetVector *places = vector(source, "places");
    RecordsetPtr records = query(places);
    for (int i = 0; i < 400; ++i) {
        const CGeoPoint point(i * 7 % 20, i / 20.0);
        ASSERT_TRUE(addRecord(*records, {{"id", i % 2}}, &point));
    }
    CTxQueryDef def;
    def.bounds = CRect2D(3.5, 2.5, 9.5, 11.5);
    for (const char *filter : {"", "id = 1"}) {
        def.filter = filter;
        def.options = CTxQueryDef::NoOption;
        const QList<qint64> ordered = idsOf(*query(places, def));
        EXPECT_GT(ordered.size(), 20) << filter;
        def.options = CTxQueryDef::AnyOrder;
        records = query(places, def);
        EXPECT_EQ(records->GetRecordCount(), ordered.size());
        EXPECT_TRUE(records->MoveToID(ordered.back()));
        EXPECT_FALSE(records->MoveToID(1)) << "not in the rectangle";
        QList<qint64> any = idsOf(*query(places, def));
        std::sort(any.begin(), any.end());
        EXPECT_EQ(any, ordered) << filter;
    }
}

} // namespace
