#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/SampleFiles.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/ElemGeometry.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <gdal_priv.h>
#include <memory>
#include <ogrsf_frmts.h>
#include <ostream>

namespace {

/// A storage of towns and countries, read in each of the ways that records are walked.
struct StorageRow
{
    const char *title;
    const char *driver;
    const char *file;
};

void PrintTo(const StorageRow &row, std::ostream *out)
{
    *out << row.title;
}

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

class Recordsets : public testing::TestWithParam<StorageRow>
{
protected:
    void SetUp() override
    {
        const QString path = m_folder.filePath(QString::fromLatin1(GetParam().file));
        ASSERT_TRUE(makeTowns(path, GetParam().driver));
        m_source = m_dataSources.Open(path);
        ASSERT_NE(m_source, nullptr) << TxGetErrorMsgObj().GetErrorMessage().toStdString();
        m_towns = dynamic_cast<CDatasetVector *>(m_source->GetDataset(QStringLiteral("towns")));
        ASSERT_NE(m_towns, nullptr);
        ASSERT_TRUE(m_towns->Open());
    }

    CTxRecordset *query(const CTxQueryDef &definition)
    {
        CTxRecordset *records = m_towns->Query(definition);
        EXPECT_NE(records, nullptr) << TxGetErrorMsgObj().GetErrorMessage().toStdString();
        return records;
    }

    /// The values of @p field of all records, joined by blanks.
    static std::string column(CTxRecordset *records, const char *field)
    {
        QStringList list;
        CTxVariant value;
        for (; records && !records->IsEOF(); records->MoveNext())
            list.append(records->GetFieldValue(QString::fromLatin1(field), value) ? value.toText()
                                                                                  : QStringLiteral("?"));
        return list.join(u' ').toStdString();
    }

    std::string namesWhere(const QString &filter)
    {
        CTxQueryDef definition;
        definition.filter = filter;
        return column(query(definition), "name");
    }

    QTemporaryDir m_folder;
    CTxDataSources m_dataSources;
    CTxDataSource *m_source = nullptr;
    CDatasetVector *m_towns = nullptr;
};

TEST_P(Recordsets, GiveEveryRecordWithItsIdentifierFirst)
{
    CTxRecordset *records = query({});
    ASSERT_EQ(records->GetFieldCount(), 5);
    CTxFieldInfo info;
    ASSERT_TRUE(records->GetFieldInfo(0, info));
    EXPECT_EQ(info.GetName().toStdString(), "TxID");
    EXPECT_TRUE(info.IsSystemField());
    EXPECT_FALSE(info.CanUpdate());
    EXPECT_FALSE(records->GetFieldInfo(5, info));
    EXPECT_FALSE(records->GetFieldInfo(-1, info));
    EXPECT_EQ(records->FindField(QStringLiteral("PEOPLE")), 3) << "letter case is ignored";
    EXPECT_EQ(records->GetRecordCount(), 4);

    CTxVariant value;
    ASSERT_TRUE(records->GetFieldValue(0, value));
    EXPECT_EQ(value, CTxVariant(qint32(records->GetID())));
    ASSERT_TRUE(records->GetFieldValue(3, value));
    EXPECT_EQ(value, CTxVariant(120));
    ASSERT_TRUE(records->GetFieldValue(4, value));
    EXPECT_EQ(value, CTxVariant(QDateTime(QDate(1320, 2, 3), QTime(0, 0), Qt::UTC)));
    EXPECT_EQ(column(records, "name"), "Ulm Bern K\xC3\xB6ln's Nowhere");

    EXPECT_TRUE(records->IsEOF());
    EXPECT_FALSE(records->MoveNext());
    EXPECT_EQ(records->GetID(), -1);
    const CTxVariant kept = value;
    EXPECT_FALSE(records->GetFieldValue(0, value));
    EXPECT_EQ(value, kept) << "a failure leaves the value as it was";
    ASSERT_TRUE(records->MoveFirst()) << "a walk can be begun anew";
    EXPECT_EQ(column(records, "country"), "de ch de ") << "the last is null";
}

TEST_P(Recordsets, AreFilteredBySqlConditions)
{
    EXPECT_EQ(namesWhere(QStringLiteral("people > 125")), "Bern K\xC3\xB6ln's");
    EXPECT_EQ(namesWhere(QStringLiteral("[people] > 125 AND \"country\" = 'de'")), "K\xC3\xB6ln's");
    EXPECT_EQ(namesWhere(QStringLiteral("name = 'K\u00f6ln''s'")), "K\xC3\xB6ln's");
    EXPECT_EQ(namesWhere(QStringLiteral("country IS NULL")), "Nowhere");
    EXPECT_EQ(namesWhere(QStringLiteral("name LIKE 'U%' OR people = 0")), "Ulm Nowhere");
    EXPECT_EQ(namesWhere(QStringLiteral("people = 7")), "");
    CTxRecordset *records = query({});
    ASSERT_TRUE(records->MoveNext());
    EXPECT_EQ(namesWhere(QStringLiteral("TxID = %1").arg(records->GetID())), "Bern");
    EXPECT_EQ(namesWhere(QStringLiteral("name = 'TxID'")), "") << "texts are not names";
}

TEST_P(Recordsets, RefuseWhatIsNoCondition)
{
    for (const char *filter : {"people >", "nothere = 1", "\"nothere\" = 1", "name = 'open",
                               "people > 1; DROP TABLE towns", "1=1) OR (1=1", "people > 1) --", "/* never closed"}) {
        CTxQueryDef definition;
        definition.filter = QString::fromLatin1(filter);
        TxGetErrorMsgObj().Clear();
        EXPECT_EQ(m_towns->Query(definition), nullptr) << filter;
        EXPECT_FALSE(TxGetErrorMsgObj().GetErrorMessage().isEmpty()) << filter;
    }
    EXPECT_EQ(m_towns->GetRecordCount(), 4);
    CTxQueryDef unknown;
    unknown.fields = {QStringLiteral("nothere")};
    EXPECT_EQ(m_towns->Query(unknown), nullptr);
    unknown = {};
    unknown.orderBy = {QStringLiteral("nothere DESC")};
    EXPECT_EQ(m_towns->Query(unknown), nullptr);
}

TEST_P(Recordsets, GiveTheWantedFieldsInTheWantedOrder)
{
    CTxQueryDef definition;
    definition.fields = {QStringLiteral("people"), QStringLiteral("NAME")};
    CTxRecordset *records = query(definition);
    ASSERT_EQ(records->GetFieldCount(), 3);
    EXPECT_EQ(records->FindField(QStringLiteral("people")), 1);
    EXPECT_EQ(records->FindField(QStringLiteral("name")), 2);
    EXPECT_EQ(column(records, "name"), "Ulm Bern K\xC3\xB6ln's Nowhere");
    definition.options = CTxQueryDef::SkipAttributes;
    EXPECT_EQ(query(definition)->GetFieldCount(), 1);
}

TEST_P(Recordsets, AreOrdered)
{
    CTxQueryDef definition;
    definition.orderBy = {QStringLiteral("country desc"), QStringLiteral("people DESC")};
    definition.filter = QStringLiteral("people > 0");
    CTxRecordset *records = query(definition);
    EXPECT_EQ(records->GetRecordCount(), 3);
    const qint64 first = records->GetID();
    EXPECT_EQ(column(records, "name"), "K\xC3\xB6ln's Ulm Bern");
    CTxRecordset *plain = query({});
    ASSERT_TRUE(plain->MoveToID(first)) << "the identifiers are those of the dataset";
    CTxVariant value;
    ASSERT_TRUE(plain->GetFieldValue(QStringLiteral("name"), value));
    EXPECT_EQ(value.toText().toStdString(), "K\xC3\xB6ln's");
}

TEST_P(Recordsets, AreJoinedToOtherDatasets)
{
    CTxQueryDef definition;
    definition.joins = {
        {QStringLiteral("countries"), QStringLiteral("country"), QStringLiteral("code"), CTxJoinItem::LeftJoin}};
    definition.orderBy = {QStringLiteral("people")};
    CTxRecordset *records = query(definition);
    ASSERT_NE(records, nullptr);
    EXPECT_EQ(records->GetRecordCount(), 4);
    EXPECT_EQ(column(records, "countries.name"), " Germany Switzerland Germany");
    definition.joins[0].kind = CTxJoinItem::InnerJoin;
    definition.filter = QStringLiteral("countries.name = 'Germany' AND name <> 'Ulm'");
    records = query(definition);
    ASSERT_NE(records, nullptr);
    EXPECT_EQ(records->GetRecordCount(), 1);
    EXPECT_EQ(column(records, "name"), "K\xC3\xB6ln's") << "a bare name is the queried dataset's";
    for (const CTxJoinItem &bad :
         {CTxJoinItem{QStringLiteral("none"), QStringLiteral("name"), QStringLiteral("name")},
          CTxJoinItem{QStringLiteral("towns"), QStringLiteral("name"), QStringLiteral("name")},
          CTxJoinItem{QStringLiteral("countries"), QStringLiteral("x"), QStringLiteral("code")},
          CTxJoinItem{QStringLiteral("countries"), QStringLiteral("name"), QStringLiteral("x")}}) {
        definition.joins = {bad};
        EXPECT_EQ(m_towns->Query(definition), nullptr);
    }
}

TEST_P(Recordsets, AreChosenByRectangle)
{
    CTxQueryDef definition;
    definition.bounds = CRect2D(15, 15, 30, 30);
    CTxRecordset *records = query(definition);
    EXPECT_EQ(records->GetRecordCount(), 2);
    EXPECT_EQ(column(records, "name"), "Bern K\xC3\xB6ln's") << "an edge belongs to it";
    definition.filter = QStringLiteral("people < 200");
    definition.orderBy = {QStringLiteral("name")};
    EXPECT_EQ(column(query(definition), "name"), "Bern");
}

TEST_P(Recordsets, GiveGeometriesThatTheCallerOwns)
{
    CTxRecordset *records = query({});
    ASSERT_TRUE(records->MoveNext());
    CElemGeometry *raw = nullptr;
    ASSERT_TRUE(records->GetGeometry(raw));
    const std::unique_ptr<CElemGeometry> geometry(raw);
    EXPECT_EQ(geometry->GetType(), CElemGeometry::Point);
    EXPECT_EQ(geometry->GetBounds(), CRect2D(20, 20, 20, 20));
    CTxQueryDef definition;
    definition.options = CTxQueryDef::SkipGeometry;
    EXPECT_FALSE(query(definition)->GetGeometry(raw));
    EXPECT_EQ(raw, nullptr);
}

TEST_P(Recordsets, GoToAnIdentifierAndBackToTheirWalk)
{
    CTxQueryDef definition;
    definition.filter = QStringLiteral("people > 0");
    CTxRecordset *records = query(definition);
    QList<qint64> ids;
    for (CTxRecordset *all = query({}); !all->IsEOF(); all->MoveNext())
        ids.append(all->GetID());
    ASSERT_EQ(ids.size(), 4);
    ASSERT_TRUE(records->MoveToID(ids.at(2)));
    EXPECT_EQ(records->GetID(), ids.at(2));
    EXPECT_FALSE(records->MoveToID(ids.at(3))) << "the query does not give it";
    EXPECT_FALSE(records->MoveToID(4711));
    EXPECT_FALSE(records->MoveToID(-1));
    EXPECT_EQ(records->GetID(), ids.at(2)) << "the place is kept";
    ASSERT_TRUE(records->MoveNext());
    EXPECT_EQ(records->GetID(), ids.at(1)) << "the walk stood on the first record";
}

TEST_P(Recordsets, DoNotDisturbOneAnother)
{
    CTxRecordset *outer = query({});
    std::string seen;
    CTxVariant value;
    for (; !outer->IsEOF(); outer->MoveNext()) {
        ASSERT_TRUE(outer->GetFieldValue(QStringLiteral("people"), value));
        CTxQueryDef more;
        more.filter = QStringLiteral("people > %1").arg(value.toInt32());
        CTxRecordset *inner = query(more);
        seen += column(inner, "name") + "|";
        EXPECT_EQ(m_towns->GetRecordCount(), 4);
        EXPECT_TRUE(m_towns->ReleaseRecordset(inner));
    }
    EXPECT_EQ(seen, "Bern K\xC3\xB6ln's|K\xC3\xB6ln's||Ulm Bern K\xC3\xB6ln's|");
}

TEST_P(Recordsets, DieWithTheirDatasetAndAreRefusedThen)
{
    CTxRecordset *records = query({});
    EXPECT_EQ(m_towns->GetRecordsetCount(), 1);
    EXPECT_TRUE(m_towns->Close());
    EXPECT_EQ(m_towns->GetRecordsetCount(), 0);
    EXPECT_FALSE(m_towns->ReleaseRecordset(records));
    EXPECT_FALSE(m_towns->ReleaseRecordset(nullptr));
    EXPECT_EQ(m_towns->Query({}), nullptr) << "the dataset is closed";
    ASSERT_TRUE(m_towns->Open());
    query({}); // never given back
    EXPECT_TRUE(m_dataSources.Close(m_source->GetAlias()));
}

INSTANTIATE_TEST_SUITE_P(Storages, Recordsets,
                         testing::Values(StorageRow{"statement on GeoPackage", "GPKG", "towns.gpkg"},
                                         StorageRow{"layer of shapefiles", "ESRI Shapefile", "towns"},
                                         StorageRow{"layer of SQLite", "SQLite", "towns.sqlite"}));

} // namespace
