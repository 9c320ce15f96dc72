#include "Rows.h"
#include "engine/data/DataFixture.h"

#include "engine/data/SampleFiles.h"
#include "engine/projection/TxPJCoordSys.h"

namespace {

using Info = CTxFieldInfo;
using Storage = CTxDataSourceStorage;

/// How a storage keeps the field types: as which type each is known again. Types that are not listed are kept as they
/// are.
struct KeepsRow
{
    Storage::Type storage;
    const char *file;
    QList<std::pair<qint16, qint16>> changes; ///< type, what it becomes (-1: refused)
    qint32 textBound;                         ///< what a bound of 1000 characters becomes
    int mostFields;                           ///< how many a table can have beside those that are there
};

class FieldCreate : public DataFixture, public testing::WithParamInterface<KeepsRow>
{
protected:
    /// An open dataset with the field "name" in a new datasource "db".
    CDatasetVector *makeTarget()
    {
        const KeepsRow &row = GetParam();
        if (row.storage != Storage::SQLite)
            return makeVector(create(row.file, row.storage), "points");
        EXPECT_TRUE(SampleFiles::makePoints(path(row.file), "SQLite")); // we write into such files, but make none
        return vector(open(path(row.file), "db"));
    }

    /// A field of type @p type, "F" and the type's code.
    static CTxFieldInfo fieldOfType(qint16 type)
    {
        return CTxFieldInfo(QStringLiteral("F%1").arg(type), type, type == Info::Numeric ? 10 : 0);
    }

    /// What a field of type @p type is known as again, -1 when it is refused.
    static qint16 becomes(qint16 type)
    {
        for (const auto &[from, to] : GetParam().changes) {
            if (from == type)
                return to;
        }
        return type;
    }

    /// Every field as "name:type:size".
    static std::string described(const CDatasetVector &dataset)
    {
        QString all;
        CTxFieldInfo info;
        for (int i = 0; dataset.GetFieldInfo(i, info); ++i)
            all += QStringLiteral("%1:%2:%3 ").arg(info.GetName()).arg(info.GetType()).arg(info.GetSize());
        return all.toStdString();
    }

    /// Tries to create fields that must be refused, with a reason of its own each time and without a trace.
    static void expectRefusal(CDatasetVector &dataset, const CTxFieldInfos &infos)
    {
        const std::string before = described(dataset);
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        EXPECT_FALSE(dataset.CreateFields(infos)) << infos.last().GetName().toStdString();
        EXPECT_EQ(TxGetErrorMsgObj().GetErrorCount(), errors + 1) << infos.last().GetName().toStdString();
        EXPECT_EQ(described(dataset), before);
    }
};

constexpr qint16 allTypes[] = {Info::Boolean,    Info::Byte,          Info::Short,     Info::Long,    Info::Currency,
                               Info::Single,     Info::Double,        Info::Date,      Info::Binary,  Info::Text,
                               Info::LongBinary, Info::Memo,          Info::Character, Info::Numeric, Info::Float,
                               Info::Time,       Info::GeometryBinary};

TEST_P(FieldCreate, EveryTypeComesBackAsTheStorageKeepsIt)
{
    const KeepsRow &row = GetParam();
    CDatasetVector *points = makeTarget();
    ASSERT_TRUE(points);
    QList<std::pair<QByteArray, qint16>> expected;
    for (const qint16 type : allTypes) {
        const qint16 kept = becomes(type);
        const CTxFieldInfo info = fieldOfType(type);
        if (kept < 0) {
            expectRefusal(*points, {info});
            continue;
        }
        EXPECT_TRUE(points->CreateField(info)) << type << ' ' << lastError();
        expected.append({info.GetName().toUtf8(), kept});
    }
    EXPECT_TRUE(points->CreateField("Wide", Info::Text, 1000, 0)) << lastError();
    points = vector(reopen(row.file), "points");
    for (const auto &[name, type] : expected)
        EXPECT_EQ(fieldOf(*points, name).GetType(), type) << name.constData();
    EXPECT_EQ(fieldOf(*points, "Wide").GetSize(), row.textBound);
}

TEST_P(FieldCreate, AllOrNoneWhateverIsWrongWithOne)
{
    CDatasetVector *points = makeTarget();
    ASSERT_TRUE(points);
    const CTxFieldInfo good("Good", Info::Long);
    CTxFieldInfo badDefault("Default", Info::Long);
    badDefault.SetDefault("many");
    CTxFieldInfos wrong = {badDefault,
                           {"Bad", Info::Text, -1},
                           {"Bad", Info::Numeric, 100000},
                           {"Bad", Info::Text, std::numeric_limits<qint32>::min()},
                           {QString(300, u'n'), Info::Long},
                           {QString(), Info::Long},
                           good};
    for (const qint16 type : {0, -1, 13, 999})
        wrong.append({"Bad", type});
    for (const char *name : {" ", "a b", "a\"b", "a'b", "a;b", "1a", "select", "🌍", "TxID", "txarea", "NAME"})
        wrong.append({name, Info::Long});
    for (const CTxFieldInfo &info : wrong)
        expectRefusal(*points, {good, info});
    CTxFieldInfos many;
    for (int i = 0; i <= GetParam().mostFields; ++i)
        many.append(CTxFieldInfo(QStringLiteral("F%1").arg(i), Info::Long));
    expectRefusal(*points, many);
    CTxFieldInfos wider = many;
    for (int i = 0; i < 100; ++i)
        wider.append(CTxFieldInfo(QStringLiteral("G%1").arg(i), Info::Long));
    EXPECT_FALSE(points->GetDataSource()->CreateDataset(definition("Wide", CElemDatasetInfo::Tabular, wider)));
    EXPECT_LT(lastError().size(), 1000U);
    {
        const RecordsetPtr records = query(points);
        expectRefusal(*points, {good});
    }
    points->Close();
    EXPECT_TRUE(points->CreateFields({good})) << "a closed dataset can be changed too: " << lastError();
    EXPECT_TRUE(points->CreateFields({})) << lastError();
    EXPECT_GE(fieldOf(*vector(reopen(GetParam().file), "points"), "Good").GetType(), 0);
}

TEST_P(FieldCreate, ACopyHasRoomForTheValuesOfItsTemplate)
{
    CTxDataSource *to = makeTarget()->GetDataSource();
    ASSERT_TRUE(SampleFiles::write(path("wide.geojson"),
                                   R"({"type": "Feature", "geometry": {"type": "Point", "coordinates": [1, 2]},
        "properties": {"whole": -2147483648, "id": 123456789012345678, "area": 123456789012.5, "note": ")" +
                                       QByteArray(250, 'n') + "\"}}"));
    CDatasetVector *from = vector(open(path("wide.geojson")));
    ASSERT_TRUE(to->CreateDatasetFrom("Wide", from, CElemDataEnc::NONE)) << lastError();
    CDatasetVector *copy = vector(to, "Wide");
    ASSERT_TRUE(copy->Append(query(from).get())) << lastError();
    for (const char *field : {"whole", "id", "area", "note"})
        EXPECT_EQ(column(*query(copy), field), column(*query(from), field)) << field;
}

TEST_P(FieldCreate, ATemplateOfAnotherStorageIsCopiedWholeOrRefused)
{
    const KeepsRow &row = GetParam();
    CTxDataSource *to = makeTarget()->GetDataSource();
    CTxDataSource *from = sources.Create(path("from.tdb"), "from", Storage::Native);
    ASSERT_TRUE(from) << lastError();
    CTxFieldInfos fields;
    for (const qint16 type : allTypes) {
        if (becomes(type) >= 0)
            fields.append(fieldOfType(type));
    }
    const auto copied = [&](const char *name, const CTxFieldInfos &infos) {
        const CTxDataset *made = from->CreateDataset(definition(name, CElemDatasetInfo::Line, infos, "EPSG:32610"));
        EXPECT_TRUE(made) << lastError();
        return to->CreateDatasetFrom(name, made, CElemDataEnc::NONE) != nullptr;
    };
    ASSERT_TRUE(copied("Roads", fields)) << lastError();
    if (row.storage == Storage::Shapefile) {
        const qint32 count = to->GetDatasetCount();
        EXPECT_FALSE(copied("Blobs", {{"Blob", Info::LongBinary}}));
        EXPECT_EQ(to->GetDatasetCount(), count);
    }
    const CDatasetVector *roads = vector(reopen(row.file), "Roads");
    EXPECT_EQ(roads->GetType(), CElemDatasetInfo::Line);
    CTxPJCoordSys coordSys;
    roads->GetProjection(coordSys);
    EXPECT_EQ(coordSys.GetType(), CTxPJCoordSys::Projected);
    for (const CTxFieldInfo &info : fields)
        EXPECT_EQ(fieldOf(*roads, info.GetName().toUtf8()).GetType(), becomes(info.GetType())) << info.GetType();
}

using Changes = QList<std::pair<qint16, qint16>>;
const Changes ofDatabases = {{Info::Byte, Info::Short},        {Info::Currency, Info::Double},
                             {Info::Binary, Info::LongBinary}, {Info::GeometryBinary, Info::LongBinary},
                             {Info::Memo, Info::Text},         {Info::Character, Info::Text},
                             {Info::Numeric, Info::Double},    {Info::Float, Info::Double}};
const Changes ofShapefiles = {{Info::Boolean, Info::Long},
                              {Info::Byte, Info::Long},
                              {Info::Short, Info::Long},
                              {Info::Currency, Info::Double},
                              {Info::Single, Info::Double},
                              {Info::Binary, -1},
                              {Info::LongBinary, -1},
                              {Info::GeometryBinary, -1},
                              {Info::Memo, Info::Text},
                              {Info::Character, Info::Text},
                              {Info::Numeric, Info::Long},
                              {Info::Float, Info::Double},
                              {Info::Time, -1}};

INSTANTIATE_TEST_SUITE_P(Storages, FieldCreate,
                         testing::Values(KeepsRow{Storage::Native, "new.tdb", {}, 1000, 1995},
                                         KeepsRow{Storage::GeoPackage, "new.gpkg",
                                                  ofDatabases + Changes{{Info::Time, Info::Text}}, 1000, 1996},
                                         KeepsRow{Storage::SQLite, "new.sqlite",
                                                  ofDatabases + Changes{{Info::Single, Info::Double}}, 0, 1995},
                                         KeepsRow{Storage::Shapefile, "folder", ofShapefiles, 254, 2045}),
                         rowNames(&KeepsRow::file));

} // namespace
