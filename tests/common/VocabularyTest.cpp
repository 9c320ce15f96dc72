#include "common/TdCommMethods.h"
#include "engine/data/TxDataset.h"
#include "engine/data/TxImagePluginManager.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace {

using Methods = CTdCommMethods;

/// The bits that @p query gives for every code from -2 to 200; codes without a bit are left out.
std::map<int, quint32> bits(const std::function<quint32(int)> &query)
{
    std::map<int, quint32> found;
    for (int code = -2; code <= 200; ++code)
        if (const quint32 bit = query(code))
            found[code] = bit;
    return found;
}

// The masks are stored by hosts: here they stand once more, as the contract.

TEST(Vocabulary, DatasetTypesHaveTheirBits)
{
    EXPECT_EQ(bits([](int type) { return Methods::QueryTDDTType(type); }), (std::map<int, quint32>{{0, 0x20},
                                                                                                   {1, 0x1},
                                                                                                   {3, 0x2},
                                                                                                   {4, 0x40},
                                                                                                   {5, 0x4},
                                                                                                   {7, 0x8},
                                                                                                   {35, 0x80},
                                                                                                   {81, 0x100},
                                                                                                   {82, 0x200},
                                                                                                   {83, 0x400},
                                                                                                   {84, 0x800},
                                                                                                   {85, 0x1000},
                                                                                                   {101, 0x4000},
                                                                                                   {103, 0x8000},
                                                                                                   {105, 0x10000},
                                                                                                   {139, 0x2000},
                                                                                                   {149, 0x10}}));
}

TEST(Vocabulary, EngineTypes15And17ShareABit)
{
    EXPECT_EQ(bits([](int type) { return Methods::QueryTDDSType(type); }), (std::map<int, quint32>{{0, 0x1},
                                                                                                   {2, 0x8},
                                                                                                   {4, 0x40000},
                                                                                                   {5, 0x200},
                                                                                                   {8, 0x4000},
                                                                                                   {9, 0x8000},
                                                                                                   {10, 0x400},
                                                                                                   {12, 0x40},
                                                                                                   {14, 0x2},
                                                                                                   {15, 0x80},
                                                                                                   {16, 0x10},
                                                                                                   {17, 0x80},
                                                                                                   {18, 0x800},
                                                                                                   {19, 0x1000},
                                                                                                   {20, 0x2000},
                                                                                                   {21, 0x10000},
                                                                                                   {22, 0x20000}}));
}

TEST(Vocabulary, BooleanAndMemoShareABit)
{
    EXPECT_EQ(bits([](int type) { return Methods::QueryTDFieldType(static_cast<qint16>(type)); }),
              (std::map<int, quint32>{{1, 0x20},
                                      {2, 0x200},
                                      {3, 0x4},
                                      {4, 0x2},
                                      {5, 0x1000},
                                      {6, 0x40},
                                      {7, 0x1},
                                      {8, 0x800},
                                      {9, 0x400},
                                      {10, 0x10},
                                      {12, 0x20},
                                      {18, 0x100},
                                      {19, 0x80},
                                      {21, 0x8},
                                      {22, 0x8000},
                                      {128, 0x4000}}));
}

TEST(Vocabulary, EditActionsHaveTheirBits)
{
    EXPECT_EQ(bits([](int action) { return Methods::QueryTDuaAction(action); }),
              (std::map<int, quint32>{{1, 0x1},
                                      {2, 0x2},
                                      {3, 0x4},
                                      {4, 0x8},
                                      {5, 0x10},
                                      {6, 0x20},
                                      {7, 0x40},
                                      {8, 0x80},
                                      {17, 0x1000},
                                      {21, 0x100},
                                      {22, 0x200},
                                      {101, 0x400},
                                      {102, 0x800}}));
}

TEST(Vocabulary, IsTDuaActionOfAnUnknownActionIsTrue)
{
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

struct NameRow
{
    int code;
    const char *first;
    const char *second;
};

TEST(Vocabulary, DatasetTypesHaveNames)
{
    const NameRow rows[] = {
        {0, "Tabular", ""},     {1, "Point", ""},        {3, "Line", ""},         {4, "Network", ""},
        {5, "Region", ""},      {6, "Parcel", ""},       {7, "Text", ""},         {33, "TRAVERSE", ""},
        {35, "Route", ""},      {81, "Image", ""},       {82, "MrSID", ""},       {83, "Grid", ""},
        {84, "DEM", ""},        {85, "ECW", ""},         {101, "3D Point", ""},   {103, "3D Line", ""},
        {105, "3D Region", ""}, {107, "3D Text", ""},    {137, "3D PointGL", ""}, {139, "TIN", ""},
        {149, "CAD", ""},       {2, "Unknown Type", ""}, {-1, "Unknown Type", ""}};
    for (const NameRow &row : rows)
        EXPECT_EQ(Methods::GetDatasetTypeName(row.code), QLatin1StringView(row.first)) << row.code;
}

TEST(Vocabulary, FieldTypesHaveNamesAndLengths)
{
    struct Row
    {
        qint16 code;
        const char *name;
        int length;
    };
    const Row rows[] = {{1, "Boolean", 1},  {2, "Byte", 1},   {3, "Short Int", 2}, {4, "Long Int", 4},
                        {5, "Currency", 8}, {6, "Single", 4}, {7, "Double", 8},    {8, "Date", 8},
                        {9, "Binary", 0},   {10, "Text", 12}, {12, "Memo", 40},    {18, "Character", 0},
                        {19, "Numeric", 0}, {21, "Float", 0}, {22, "Time", 0},     {128, "Long Binary", 0}};
    for (const Row &row : rows) {
        EXPECT_EQ(Methods::GetFieldNameFromType(row.code), QLatin1StringView(row.name));
        EXPECT_EQ(Methods::GetFieldTypeFromName(QLatin1StringView(row.name)), row.code);
        EXPECT_EQ(Methods::GetFieldDefaultLength(row.code), row.length) << row.name;
    }
    EXPECT_TRUE(Methods::GetFieldNameFromType(13).isEmpty());
    EXPECT_EQ(Methods::GetFieldDefaultLength(13), 0);
    for (const char *name : {"", "boolean", "Double "})
        EXPECT_EQ(Methods::GetFieldTypeFromName(QLatin1StringView(name)), -1) << name;
}

TEST(Vocabulary, LongBinaryAlwaysLeadsBackTo128)
{
    EXPECT_EQ(Methods::GetFieldNameFromType(11), QStringLiteral("Long Binary"));
    EXPECT_EQ(Methods::GetFieldTypeFromName(Methods::GetFieldNameFromType(11)), 128);
}

TEST(Vocabulary, UnitsHaveNames)
{
    const NameRow rows[] = {{0, "degree", "Square Meter"},
                            {10, "Millimeter", "Square Millimeter"},
                            {100, "Centimeter", "Square Centimeter"},
                            {254, "Inch", "Square Inch"},
                            {1000, "Decimeter", "Square Decimeter"},
                            {3048, "Foot", "Square Foot"},
                            {10000, "Meter", "Square Meter"},
                            {10000000, "Kilometer", "Square Kilometer"},
                            {16090000, "Mile", "Square Mile"},
                            {7, "Meter", "Square Meter"}};
    for (const NameRow &row : rows) {
        EXPECT_EQ(Methods::GetDistanceUint(row.code), QLatin1StringView(row.first)) << row.code;
        EXPECT_EQ(Methods::GetAreaUint(row.code), QLatin1StringView(row.second)) << row.code;
    }
    EXPECT_EQ(Methods::GetMapUnitType(QStringLiteral("Square Mile")), 16090000);
    EXPECT_EQ(Methods::GetMapUnitType(QStringLiteral("meter")), 1);
}

TEST(Vocabulary, YardIs9114)
{
    EXPECT_EQ(Methods::GetDistanceUint(9114), QStringLiteral("Yard"));
    EXPECT_EQ(Methods::GetAreaUint(9114), QStringLiteral("Square Yard"));
    EXPECT_EQ(Methods::GetMapUnitType(QStringLiteral("Yard")), 9114);
    EXPECT_EQ(Methods::GetDistanceUint(9144), QStringLiteral("Meter"));
}

TEST(Vocabulary, DegreeHasNoWayBack)
{
    EXPECT_EQ(Methods::GetMapUnitType(Methods::GetDistanceUint(0)), 1);
    EXPECT_EQ(Methods::GetMapUnitType(Methods::GetAreaUint(0)), 10000);
}

TEST(Vocabulary, EncodingsHaveNames)
{
    const NameRow rows[] = {{0, "Uncoded", ""}, {1, "SBC", ""}, {2, "SWC", ""}, {3, "STC", ""}, {4, "SDC", ""},
                            {5, "SFC", ""},     {7, "SPC", ""}, {8, "DCT", ""}, {9, "SGL", ""}, {11, "LZW", ""}};
    for (const NameRow &row : rows) {
        EXPECT_EQ(Methods::GetEncTypeName(row.code), QLatin1StringView(row.first));
        EXPECT_EQ(Methods::GetEncType(QLatin1StringView(row.first)), row.code);
    }
    EXPECT_EQ(Methods::GetEncTypeName(6), QStringLiteral("Unknown encoding type."));
    for (const char *name : {"uncoded", "UNCODED", "none", "None", "sbc", "", "ZIP"})
        EXPECT_EQ(Methods::GetEncType(QLatin1StringView(name)), 0) << name;
}

TEST(Vocabulary, DoubleIsAcceptedAsNoEncoding)
{
    EXPECT_EQ(Methods::GetEncType(QStringLiteral("DOUBLE")), 0);
}

TEST(Vocabulary, TransformationsHaveEnglishNames)
{
    const NameRow rows[] = {{9603, "Geocentric Translation (3-par.)", ""},
                            {9604, "Molodensky", ""},
                            {9605, "Abridged Molodensky", ""},
                            {9606, "Position Vector (7-par.)", ""},
                            {9607, "Coordinate Frame (7-par.)", ""},
                            {9608, "Geocentric Transform for Korean", ""},
                            {42607, "Bursa-Wolf", ""},
                            {9609, "", ""}};
    for (const NameRow &row : rows)
        EXPECT_EQ(Methods::GetProjectTransformationMethodName(row.code), QLatin1StringView(row.first)) << row.code;
}

TEST(Vocabulary, CadElementsAreDrawnAsSimpleTypes)
{
    std::map<int, QList<int>> elements;
    for (int element = -1; element < 1100; ++element)
        if (const int simple = Methods::CADElemTypeToSimpleType(element))
            elements[simple].append(element);
    EXPECT_EQ(
        elements,
        (std::map<int, QList<int>>{
            {1, {1}}, {3, {3, 24, 25, 27, 28, 29, 34}}, {5, {5, 11, 12, 13, 15, 17, 19, 20, 21, 23, 31}}, {7, {7}}}));
}

TEST(Vocabulary, ExtensionsChooseTheEngine)
{
    struct Row
    {
        const char *path;
        int type;
    };
    const Row rows[] = {{"/maps/a.dgn", 8},  {"a.DXF", 9},   {"a.Dwg", 9},          {"a.b/c.sit", 5},    {"a.eya", 5},
                        {"a.tif", 5},        {"a.JPG", 5},   {"a.xyz-no-such", 14}, {"noextension", 14}, {"", 14},
                        {"/maps.dgn/a", 14}, {"a.dgn.", 14}, {"/maps/.dgn", 14}};
    for (const Row &row : rows)
        EXPECT_EQ(Methods::GetDsTypeByExtName(QLatin1StringView(row.path)), row.type) << row.path;
}

TEST(Vocabulary, TdbThatIsNoNativeDatabaseIs0)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("fake.TDB"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("SQLite format 3");
    file.close();
    EXPECT_EQ(Methods::GetDsTypeByExtName(path), 0);
    EXPECT_EQ(Methods::GetDsTypeByExtName(QStringLiteral("/no/such.tdb")), 0);
}

TEST(Vocabulary, EveryImagePluginsExtensionIsAnImage)
{
    ASSERT_GT(CTxImagePluginManager::GetImagePluginCount(), 0);
    for (int i = 0; i < CTxImagePluginManager::GetImagePluginCount(); ++i) {
        const QString extension = CTxImagePluginManager::GetPluginAt(i)->extension;
        EXPECT_EQ(Methods::GetDsTypeByExtName(QStringLiteral("a") + extension.toLower()), 5) << extension.toStdString();
    }
}

} // namespace
