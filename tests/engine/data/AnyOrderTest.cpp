#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoPoint.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

QList<qint64> idsOf(CDatasetVector &dataset, const CTxQueryDef &query)
{
    QList<qint64> ids;
    CTxRecordset *records = dataset.Query(query);
    EXPECT_TRUE(records);
    for (; records && !records->IsEOF(); records->MoveNext())
        ids.append(records->GetID());
    dataset.ReleaseRecordset(records);
    return ids;
}

TEST(AnyOrder, GivesTheSameRecordsByTheSpatialIndex)
{
    const QTemporaryDir folder;
    CTxDataSources dataSources;
    CTxDataSource *dataSource =
        dataSources.Create(folder.filePath(QStringLiteral("a.tdb")), QStringLiteral("a"), CTxDataSourceStorage::Native);
    ASSERT_TRUE(dataSource);
    CTxDatasetDef definition;
    definition.name = QStringLiteral("places");
    definition.fields.append(CTxFieldInfo(QStringLiteral("id"), CTxFieldInfo::Long)); // as the index calls its own
    auto *dataset = dynamic_cast<CDatasetVector *>(dataSource->CreateDataset(definition));
    ASSERT_TRUE(dataset && dataset->Open());
    CTxRecordset *writer = dataset->Query(CTxQueryDef());
    for (int i = 0; i < 400; ++i) {
        const CGeoPoint point(i * 7 % 20, i / 20.0);
        ASSERT_TRUE(writer->AddNew() && writer->SetGeometry(&point));
        ASSERT_TRUE(writer->SetFieldValue(QStringLiteral("id"), CTxVariant(qint32(i % 2))) && writer->Update());
    }
    dataset->ReleaseRecordset(writer);

    CTxQueryDef query;
    query.bounds = CRect2D(3.5, 2.5, 9.5, 11.5);
    for (const char *filter : {"", "id = 1"}) {
        query.filter = QString::fromUtf8(filter);
        query.options = CTxQueryDef::NoOption;
        const QList<qint64> ordered = idsOf(*dataset, query);
        query.options = CTxQueryDef::AnyOrder;
        QList<qint64> any = idsOf(*dataset, query);
        std::sort(any.begin(), any.end());
        EXPECT_EQ(any, ordered) << filter;
        EXPECT_GT(ordered.size(), 20) << filter;
        CTxRecordset *records = dataset->Query(query);
        ASSERT_TRUE(records);
        EXPECT_EQ(records->GetRecordCount(), ordered.size());
        EXPECT_TRUE(records->MoveToID(ordered.back()));
        EXPECT_FALSE(records->MoveToID(1)) << "not in the rectangle";
        dataset->ReleaseRecordset(records);
    }
}

} // namespace
