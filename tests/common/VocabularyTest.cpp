#include "common/TdCommMethods.h"
#include "common/VocabularyTables.h"
#include "engine/data/TxDataset.h"
#include "engine/data/TxImagePluginManager.h"

#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <bit>
#include <functional>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;

/// Every code from -2 to 200 has one bit or none, all of them together @p all; of the codes only @p sharing have a bit
/// that an earlier one has, and @p rows are those whose bit does not follow from their place.
void expectBits(const std::function<quint32(int)> &query, quint32 all, const QList<int> &sharing,
                const std::vector<TdVocabulary::BitRow> &rows)
{
    quint32 seen = 0;
    QList<int> shared;
    for (int code = -2; code <= 200; ++code) {
        const quint32 bit = query(code);
        EXPECT_TRUE(bit == 0 || std::has_single_bit(bit)) << code;
        if (seen & bit)
            shared.append(code);
        seen |= bit;
    }
    EXPECT_EQ(seen, all);
    EXPECT_EQ(shared, sharing);
    for (const auto &[code, bit] : rows)
        EXPECT_EQ(query(code), bit) << code;
}

TEST(Vocabulary, DatasetTypesHaveTheirBits)
{
    expectBits(Methods::QueryTDDTType, 0x1FFFF, {},
               {{0, 0x20}, {1, 0x1}, {4, 0x40}, {5, 0x4}, {35, 0x80}, {101, 0x4000}, {139, 0x2000}, {149, 0x10}});
}

TEST(Vocabulary, EngineTypes15And17ShareABit)
{
    expectBits(Methods::QueryTDDSType, 0x7FEDB, {17},
               {{0, 0x1}, {4, 0x40000}, {5, 0x200}, {8, 0x4000}, {14, 0x2}, {15, 0x80}, {17, 0x80}, {22, 0x20000}});
}

TEST(Vocabulary, BooleanAndMemoShareABit)
{
    expectBits([](int type) { return Methods::QueryTDFieldType(static_cast<qint16>(type)); }, 0xDFFF, {12},
               {{1, 0x20}, {4, 0x2}, {7, 0x1}, {10, 0x10}, {11, 0}, {12, 0x20}, {22, 0x8000}, {128, 0x4000}});
}

TEST(Vocabulary, IsTDuaActionOfAnUnknownActionIsTrue)
{
    expectBits(Methods::QueryTDuaAction, 0x1FFF, {}, {{8, 0x80}, {9, 0}, {17, 0x1000}, {21, 0x100}, {102, 0x800}});
    EXPECT_TRUE(Methods::IsTDuaAction(9, 0));
    EXPECT_TRUE(Methods::IsTDuaAction(-1, 0xFFFFFFFFu));
    EXPECT_TRUE(Methods::IsTDuaAction(17, 0x1001));
    EXPECT_FALSE(Methods::IsTDuaAction(17, 0xFFF));
}

TEST(Vocabulary, TypesWithoutABitPassNoFilter)
{
    for (const int type : {6, 33, 107, 137, -1, 1000})
        EXPECT_FALSE(Methods::IsSupportDTType(type, 0xFFFFFFFFu)) << type;
    EXPECT_TRUE(Methods::IsSupportDTType(149, 0x11));
    EXPECT_FALSE(Methods::IsSupportDTType(149, ~0x10u));
    EXPECT_FALSE(Methods::IsSupportDTType(static_cast<const CTxDataset *>(nullptr), 0xFFFFFFFFu));
}

template<class Code>
QString names(QString (*query)(Code), const std::vector<std::type_identity_t<Code>> &codes)
{
    QStringList result;
    for (const Code code : codes)
        result.append(query(code));
    return result.join(u'|');
}

/// The ways back are held by Translation.LookUpsFollowTheLanguage.
TEST(Vocabulary, CodesHaveNames)
{
    EXPECT_EQ(names(Methods::GetDatasetTypeName, {0, 33, 82, 101, 137, 149, 2, -1}),
              u"Tabular|TRAVERSE|MrSID|3D Point|3D PointGL|CAD|Unknown Type|Unknown Type"_s);
    EXPECT_EQ(names(Methods::GetFieldNameFromType, {1, 3, 10, 12, 13}), u"Boolean|Short Int|Text|Memo|"_s);
    EXPECT_EQ(names(Methods::GetDistanceUint, {0, 1000, 3048, 7}), u"degree|Decimeter|Foot|Meter"_s);
    EXPECT_EQ(names(Methods::GetAreaUint, {0, 16090000, 7}), u"Square Meter|Square Mile|Square Meter"_s);
    EXPECT_EQ(names(Methods::GetEncTypeName, {0, 5, 11, 6}), u"Uncoded|SFC|LZW|Unknown encoding type."_s);
    EXPECT_EQ(names(Methods::GetProjectTransformationMethodName, {9604, 42607, 9609}), u"Molodensky|Bursa-Wolf|"_s);
    QSet<QString> types;
    for (const auto &row : TdVocabulary::datasetTypes)
        types.insert(Methods::GetDatasetTypeName(row.type));
    EXPECT_EQ(types.size(), 21) << "no two dataset types have the same name";
}

TEST(Vocabulary, NamesMatchAsTheyStand)
{
    for (const char *name : {"", "boolean", "Double "})
        EXPECT_EQ(Methods::GetFieldTypeFromName(QLatin1StringView(name)), -1) << name;
    for (const char *name : {"uncoded", "NONE", "none", "None", "sbc", "", "ZIP"})
        EXPECT_EQ(Methods::GetEncType(QLatin1StringView(name)), 0) << name;
    EXPECT_EQ(Methods::GetMapUnitType(u"meter"_s), 1);
}

TEST(Vocabulary, FieldTypesHaveLengths)
{
    const std::vector<std::pair<qint16, int>> rows{{1, 1}, {3, 2}, {7, 8}, {8, 8}, {9, 0}, {10, 12}, {12, 40}, {13, 0}};
    for (const auto &[type, length] : rows)
        EXPECT_EQ(Methods::GetFieldDefaultLength(type), length) << type;
}

TEST(Vocabulary, LongBinaryAlwaysLeadsBackTo128)
{
    EXPECT_EQ(Methods::GetFieldNameFromType(11), u"Long Binary"_s);
    EXPECT_EQ(Methods::GetFieldTypeFromName(u"Long Binary"_s), 128);
}

TEST(Vocabulary, YardIs9114)
{
    EXPECT_EQ(Methods::GetDistanceUint(9114), u"Yard"_s);
    EXPECT_EQ(Methods::GetAreaUint(9114), u"Square Yard"_s);
    EXPECT_EQ(Methods::GetMapUnitType(u"Yard"_s), 9114);
    EXPECT_EQ(Methods::GetDistanceUint(9144), u"Meter"_s);
}

TEST(Vocabulary, DegreeHasNoWayBack)
{
    EXPECT_EQ(Methods::GetMapUnitType(Methods::GetDistanceUint(0)), 1);
    EXPECT_EQ(Methods::GetMapUnitType(Methods::GetAreaUint(0)), 10000);
}

TEST(Vocabulary, DoubleIsAcceptedAsNoEncoding)
{
    EXPECT_EQ(Methods::GetEncType(u"DOUBLE"_s), 0);
}

TEST(Vocabulary, CadElementsAreDrawnAsSimpleTypes)
{
    const std::pair<int, int> rows[] = {{1, 1}, {3, 3}, {34, 3}, {5, 5}, {31, 5}, {7, 7}, {0, 0}, {2, 0}, {1001, 0}};
    for (const auto &[element, simple] : rows)
        EXPECT_EQ(Methods::CADElemTypeToSimpleType(element), simple) << element;
}

TEST(Vocabulary, ExtensionsChooseTheEngine)
{
    const std::pair<const char *, int> rows[] = {{"/maps/a.dgn", 8},    {"a.DXF", 9},        {"a.Dwg", 9},
                                                 {"a.b/c.sit", 5},      {"a.eya", 5},        {"a.JPG", 5},
                                                 {"a.xyz-no-such", 14}, {"noextension", 14}, {"", 14},
                                                 {"/maps.dgn/a", 14},   {"a.dgn.", 14},      {"/maps/.dgn", 14}};
    for (const auto &[path, type] : rows)
        EXPECT_EQ(Methods::GetDsTypeByExtName(QLatin1StringView(path)), type) << path;
    ASSERT_GT(CTxImagePluginManager::GetImagePluginCount(), 0);
    for (int i = 0; i < CTxImagePluginManager::GetImagePluginCount(); ++i) {
        const QString extension = CTxImagePluginManager::GetPluginAt(i)->extension;
        EXPECT_EQ(Methods::GetDsTypeByExtName(u"a"_s + extension.toLower()), 5) << extension.toStdString();
    }
}

TEST(Vocabulary, TdbThatIsNoNativeDatabaseIs0)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"fake.TDB"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("SQLite format 3");
    file.close();
    EXPECT_EQ(Methods::GetDsTypeByExtName(file.fileName()), 0);
    EXPECT_EQ(Methods::GetDsTypeByExtName(u"/no/such.tdb"_s), 0);
}

} // namespace
