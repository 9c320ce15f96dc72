#include "Rows.h"
#include "engine/data/DataFixture.h"

#include "engine/base/TxVariant.h"
#include "engine/data/SampleFiles.h"

namespace {

using Info = CTxFieldInfo;
using Storage = CTxDataSourceStorage;

struct StorageRow
{
    Storage::Type storage;
    const char *file;
    bool hasTypes; ///< keeps short numbers, currency, bytes and times
};

class Distinct : public DataFixture, public testing::WithParamInterface<StorageRow>
{
protected:
    /// The values joined by blanks; "-" for null, "!" for a failure.
    static std::string distinct(const CDatasetVector &dataset, const char *field, qint64 limit = -1,
                                const QString &filter = QString())
    {
        QList<CTxVariant> values;
        if (!dataset.GetDistinctValues(QString::fromUtf8(field), values, limit, filter))
            return "!";
        QStringList texts;
        for (const CTxVariant &value : values)
            texts.append(value.IsNull() ? "-" : value.toText().isEmpty() ? value.toBytes() : value.toText());
        return texts.join(' ').toStdString();
    }
};

TEST_P(Distinct, ValuesOfEveryKindAscendAfterNull)
{
    const StorageRow &row = GetParam();
    CTxFieldInfos fields = {
        {"Text", Info::Text, 20}, {"Whole", Info::Long}, {"Real", Info::Double}, {"Day", Info::Date}};
    if (row.hasTypes)
        fields += {{"Flag", Info::Boolean},
                   {"Short", Info::Short},
                   {"Single", Info::Single},
                   {"Money", Info::Currency},
                   {"Bytes", Info::LongBinary}};
    CTxDataSource *source = create(row.file, row.storage);
    ASSERT_TRUE(source && source->CreateDataset(definition("Towns", CElemDatasetInfo::Tabular, fields))) << lastError();
    CDatasetVector *towns = vector(source, "Towns");
    {
        const RecordsetPtr records = query(towns);
        const char *texts[] = {"Zug", "Aarau", "zug", "Aarburg", "Ä", "Aarau"};
        const double reals[] = {1.5, -2.25, 100, -0.0, 0.0, 1.5};
        for (int i = 0; i < 6; ++i) {
            QList<std::pair<const char *, CTxVariant>> values = {
                {"Text", QString::fromUtf8(texts[i])},
                {"Whole", i % 2 == 0 ? -i : 1000000 + i},
                {"Real", reals[i]},
                {"Day", QDateTime(QDate(2020 - i / 2, 1, 1), QTime(0, 0), Qt::UTC)}};
            if (row.hasTypes)
                values += {{"Flag", i % 3 == 0},
                           {"Short", qint16(-i / 2)},
                           {"Single", float(i % 4) / 4},
                           {"Money", CTxVariant::fromInteger(CTxVariant::Currency, 10000 * (i % 3) - 5000)},
                           {"Bytes", QByteArray(i % 3, 'a')}};
            ASSERT_TRUE(addRecord(*records, values)) << lastError();
        }
        ASSERT_TRUE(addRecord(*records)) << lastError();
    }
    EXPECT_EQ(distinct(*towns, "text"), "- Aarau Aarburg Zug zug Ä");
    EXPECT_EQ(distinct(*towns, "Whole"), "- -4 -2 0 1000001 1000003 1000005");
    EXPECT_EQ(distinct(*towns, "Real").substr(0, 8), "- -2.25 ");
    EXPECT_EQ(distinct(*towns, "Real", 99, "\"Real\" > 0"), "1.5 100");
    EXPECT_EQ(distinct(*towns, "Text", 3), "- Aarau Aarburg");
    EXPECT_EQ(distinct(*towns, "Text", 2, "\"Whole\" > 0"), "Aarau Aarburg");
    EXPECT_EQ(distinct(*towns, "Text", 0), "");
    EXPECT_EQ(distinct(*towns, "Text", -1, "\"Whole\" > 5000000"), "");
    QList<CTxVariant> days;
    ASSERT_TRUE(towns->GetDistinctValues("Day", days));
    ASSERT_EQ(days.size(), 4);
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(days[i].toDateTime().date(), QDate(2017 + i, 1, 1));
    EXPECT_EQ(distinct(*towns, "TxID", 2), row.storage == Storage::Shapefile ? "0 1" : "1 2");
    if (row.hasTypes) {
        EXPECT_EQ(distinct(*towns, "Flag"), "- false true");
        EXPECT_EQ(distinct(*towns, "Short"), "- -2 -1 0");
        EXPECT_EQ(distinct(*towns, "Single"), "- 0 0.25 0.5 0.75");
        EXPECT_EQ(distinct(*towns, "Money"), "- -0.5 0.5 1.5");
        EXPECT_EQ(distinct(*towns, "Bytes"), "-  a aa");
    }
}

INSTANTIATE_TEST_SUITE_P(Storages, Distinct,
                         testing::Values(StorageRow{Storage::Native, "new.tdb", true},
                                         StorageRow{Storage::GeoPackage, "new.gpkg", false},
                                         StorageRow{Storage::Shapefile, "folder", false}),
                         rowNames(&StorageRow::file));

class DistinctOfMany : public DataFixture
{
protected:
    /// 70,000 records whose "N" are all different, in no order.
    CDatasetVector *makeMany()
    {
        CTxDataSource *source = create();
        CDatasetVector *towns = makeVector(source, "Towns", CElemDatasetInfo::Tabular);
        EXPECT_TRUE(source->BeginTrans());
        const RecordsetPtr records = query(towns);
        for (int i = 0; i < count; ++i)
            EXPECT_TRUE(records->AddNew() && records->SetFieldValue("Size", i * 7919 % count) && records->Update());
        EXPECT_TRUE(source->CommitTrans());
        return towns;
    }
    static constexpr int count = 70000;
};

TEST_F(DistinctOfMany, LimitKeepsTheSmallestAndProgressCanStop)
{
    const CDatasetVector *towns = makeMany();
    QList<CTxVariant> values;
    for (const int limit : {10, 60000, count + 1}) {
        ASSERT_TRUE(towns->GetDistinctValues("Size", values, limit)) << lastError();
        ASSERT_EQ(values.size(), std::min(limit, count));
        for (int i = 0; i < values.size(); ++i)
            ASSERT_EQ(values[i].toInt32(), i);
    }
    const QList<CTxVariant> before = values;
    qint64 last = -1;
    const auto stopInTheMiddle = [&last](qint64 done, qint64 total) {
        EXPECT_GT(done, last);
        EXPECT_EQ(total, count);
        last = done;
        return done < total / 2;
    };
    EXPECT_FALSE(towns->GetDistinctValues("Size", values, -1, {}, stopInTheMiddle));
    EXPECT_GE(last, count / 2);
    EXPECT_EQ(values, before);
    EXPECT_EQ(towns->GetRecordsetCount(), 0);
    const auto closeInTheMiddle = [this](qint64 done, qint64) { return done == 0 || sources.Close("db"); };
    EXPECT_FALSE(towns->GetDistinctValues("Size", values, -1, {}, closeInTheMiddle));
}

TEST_F(DistinctOfMany, RefusalsSayWhy)
{
    CDatasetVector *towns = makeVector(create(), "Towns");
    const auto expectRefusal = [towns](const QString &field, const QString &filter) {
        QList<CTxVariant> values = {CTxVariant(1)};
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(towns->GetDistinctValues(field, values, -1, filter)) << filter.toStdString();
        EXPECT_GT(TxGetErrorMsgObj().GetErrorCount(), errors);
        EXPECT_EQ(values.size(), 1);
    };
    expectRefusal("Nowhere", {});
    expectRefusal({}, {});
    for (const char *filter : {"Nowhere = 1", "Size = ", "1); DROP TABLE \"Towns\"; --", "'"})
        expectRefusal("Size", filter);
    towns->Close();
    expectRefusal("Size", {});
}

} // namespace
