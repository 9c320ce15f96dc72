#pragma once

#include "common/ConstantTable.h"
#include "engine/data/ElemDataEnc.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/data/TxDataSourceStorage.h"
#include "engine/data/TxFieldInfo.h"
#include "res/StringId.h"

#include <array>

/// The vocabulary of the engine's codes: one row for a code, searched in both directions. Codes, bits and the order of
/// the rows are known to callers: do not change them.
namespace TdVocabulary {

/// A dataset type, its name and its bit in filter masks.
struct DatasetTypeRow
{
    qint32 type;
    TdStringId::Id name;
    quint32 bit;
};
// Deliberate: the bits do not follow the types, and parcels, traverses, 3D texts and GL points have none, so that no
// filter ever lets them pass. Stored filters rely on both.
inline constexpr auto datasetTypes = std::to_array<DatasetTypeRow>({
    {CElemDatasetInfo::Tabular, TdStringId::DatasetTabular, 0x20},
    {CElemDatasetInfo::Point, TdStringId::DatasetPoint, 0x1},
    {CElemDatasetInfo::Line, TdStringId::DatasetLine, 0x2},
    {CElemDatasetInfo::Network, TdStringId::DatasetNetwork, 0x40},
    {CElemDatasetInfo::Region, TdStringId::DatasetRegion, 0x4},
    {CElemDatasetInfo::Parcel, TdStringId::DatasetParcel, 0},
    {CElemDatasetInfo::Text, TdStringId::DatasetText, 0x8},
    {CElemDatasetInfo::Traverse, TdStringId::DatasetTraverse, 0},
    {CElemDatasetInfo::Route, TdStringId::DatasetRoute, 0x80},
    {CElemDatasetInfo::Image, TdStringId::DatasetImage, 0x100},
    {CElemDatasetInfo::MrSID, TdStringId::DatasetMrSid, 0x200},
    {CElemDatasetInfo::Grid, TdStringId::DatasetGrid, 0x400},
    {CElemDatasetInfo::DEM, TdStringId::DatasetDem, 0x800},
    {CElemDatasetInfo::ECW, TdStringId::DatasetEcw, 0x1000},
    {CElemDatasetInfo::Point3D, TdStringId::DatasetPoint3D, 0x4000},
    {CElemDatasetInfo::Line3D, TdStringId::DatasetLine3D, 0x8000},
    {CElemDatasetInfo::Region3D, TdStringId::DatasetRegion3D, 0x10000},
    {CElemDatasetInfo::Text3D, TdStringId::DatasetText3D, 0},
    {CElemDatasetInfo::PointGL3D, TdStringId::DatasetPointGl3D, 0},
    {CElemDatasetInfo::TIN, TdStringId::DatasetTin, 0x2000},
    {CElemDatasetInfo::CAD, TdStringId::DatasetCad, 0x10},
});
static_assert(TdTable::hasUniqueKeys(datasetTypes, &DatasetTypeRow::type));

/// A code and its bit in a mask.
struct BitRow
{
    qint32 code;
    quint32 bit;
};
/// Datasource engine types. Deliberate: 15 and 17 share a bit, since filters of old hosts know them as one kind.
inline constexpr auto engineTypes = std::to_array<BitRow>({
    {CTxDataSourceStorage::Shapefile, 0x1},
    {CTxDataSourceStorage::GeoPackage, 0x8},
    {CTxDataSourceStorage::PostgreSQL, 0x40000},
    {CTxDataSourceStorage::ImageFile, 0x200},
    {CTxDataSourceStorage::DGN, 0x4000},
    {CTxDataSourceStorage::DXF, 0x8000},
    {CTxDataSourceStorage::GeoJSON, 0x400},
    {CTxDataSourceStorage::MapInfo, 0x40},
    {CTxDataSourceStorage::Native, 0x2},
    {CTxDataSourceStorage::KML, 0x80},
    {CTxDataSourceStorage::CSV, 0x10},
    {CTxDataSourceStorage::GML, 0x80},
    {CTxDataSourceStorage::SQLite, 0x800},
    {CTxDataSourceStorage::FileGDB, 0x1000},
    {CTxDataSourceStorage::E00, 0x2000},
    {CTxDataSourceStorage::VirtualVector, 0x10000},
    {CTxDataSourceStorage::OtherVector, 0x20000},
});
static_assert(TdTable::hasUniqueKeys(engineTypes, &BitRow::code));

/// Edit actions.
inline constexpr auto editActions = std::to_array<BitRow>({
    {1, 0x1},
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
    {102, 0x800},
});
static_assert(TdTable::hasUniqueKeys(editActions, &BitRow::code));

/// A field type, its name, its bit in masks and its usual length.
struct FieldTypeRow
{
    qint16 type;
    TdStringId::Id name;
    quint32 bit;
    qint32 defaultLength; ///< bytes, of texts characters; 0 where there is none
};
// The rows stand in the order in which a name is looked up; the first one that has it wins.
// Deliberate: Boolean and Memo share a bit; both binary types are called "Long Binary", and that name gives 128, the
// only one of the two with a bit, because its row stands first.
inline constexpr auto fieldTypes = std::to_array<FieldTypeRow>({
    {CTxFieldInfo::Boolean, TdStringId::FieldBoolean, 0x20, 1},
    {CTxFieldInfo::Short, TdStringId::FieldShort, 0x4, 2},
    {CTxFieldInfo::Long, TdStringId::FieldLong, 0x2, 4},
    {CTxFieldInfo::Single, TdStringId::FieldSingle, 0x40, 4},
    {CTxFieldInfo::Double, TdStringId::FieldDouble, 0x1, 8},
    {CTxFieldInfo::Numeric, TdStringId::FieldNumeric, 0x80, 0},
    {CTxFieldInfo::Float, TdStringId::FieldFloat, 0x8, 0},
    {CTxFieldInfo::Text, TdStringId::FieldText, 0x10, 12},
    {CTxFieldInfo::Character, TdStringId::FieldCharacter, 0x100, 0},
    {CTxFieldInfo::Byte, TdStringId::FieldByte, 0x200, 1},
    {CTxFieldInfo::Binary, TdStringId::FieldBinary, 0x400, 0},
    {CTxFieldInfo::Date, TdStringId::FieldDate, 0x800, 8},
    {CTxFieldInfo::Currency, TdStringId::FieldCurrency, 0x1000, 8},
    {CTxFieldInfo::Memo, TdStringId::FieldMemo, 0x20, 40},
    {CTxFieldInfo::GeometryBinary, TdStringId::FieldLongBinary, 0x4000, 0},
    {CTxFieldInfo::Time, TdStringId::FieldTime, 0x8000, 0},
    {CTxFieldInfo::LongBinary, TdStringId::FieldLongBinary, 0, 0},
});
static_assert(TdTable::hasUniqueKeys(fieldTypes, &FieldTypeRow::type));

/// A unit of length by its length in tenths of a millimetre, and the unit of area that belongs to it.
struct UnitRow
{
    qint32 code;
    TdStringId::Id distance;
    TdStringId::Id area;
    bool found; ///< its names are looked up
};
// The rows stand in the order in which a name is looked up.
// Deliberate: the yard is 9114 (a yard has 9144 tenths of a millimetre), the engine's code. Degrees have an area name,
// since areas of geographic systems are given in square metres, and are not found by name.
inline constexpr auto units = std::to_array<UnitRow>({
    {10000000, TdStringId::UnitKilometer, TdStringId::AreaKilometer, true},
    {10000, TdStringId::UnitMeter, TdStringId::AreaMeter, true},
    {1000, TdStringId::UnitDecimeter, TdStringId::AreaDecimeter, true},
    {100, TdStringId::UnitCentimeter, TdStringId::AreaCentimeter, true},
    {10, TdStringId::UnitMillimeter, TdStringId::AreaMillimeter, true},
    {9114, TdStringId::UnitYard, TdStringId::AreaYard, true},
    {254, TdStringId::UnitInch, TdStringId::AreaInch, true},
    {3048, TdStringId::UnitFoot, TdStringId::AreaFoot, true},
    {16090000, TdStringId::UnitMile, TdStringId::AreaMile, true},
    {0, TdStringId::UnitDegree, TdStringId::AreaMeter, false},
});
static_assert(TdTable::hasUniqueKeys(units, &UnitRow::code));

/// An encoding and its name, which is not translated. NONE has a translated name instead.
struct EncodingRow
{
    CElemDataEnc::encType type;
    const char *name;
};
inline constexpr auto encodings = std::to_array<EncodingRow>({
    {CElemDataEnc::SBC, "SBC"},
    {CElemDataEnc::SWC, "SWC"},
    {CElemDataEnc::STC, "STC"},
    {CElemDataEnc::SDC, "SDC"},
    {CElemDataEnc::SFC, "SFC"},
    {CElemDataEnc::SPC, "SPC"},
    {CElemDataEnc::DCT, "DCT"},
    {CElemDataEnc::SGL, "SGL"},
    {CElemDataEnc::LZW, "LZW"},
});
static_assert(TdTable::hasUniqueKeys(encodings, &EncodingRow::type));

/// A datum transformation method (EPSG code, or the engine's own) and its name, which is not translated.
struct TransformationRow
{
    qint32 method;
    const char *name;
};
inline constexpr auto transformations = std::to_array<TransformationRow>({
    {9603, "Geocentric Translation (3-par.)"},
    {9604, "Molodensky"},
    {9605, "Abridged Molodensky"},
    {9606, "Position Vector (7-par.)"},
    {9607, "Coordinate Frame (7-par.)"},
    {9608, "Geocentric Transform for Korean"},
    {42607, "Bursa-Wolf"},
});
static_assert(TdTable::hasUniqueKeys(transformations, &TransformationRow::method));

/// The type of a CAD element and the dataset type that it is drawn as.
struct CadElementRow
{
    qint32 element;
    CElemDatasetInfo::Type simple;
};
inline constexpr auto cadElements = std::to_array<CadElementRow>({
    {1, CElemDatasetInfo::Point},   {3, CElemDatasetInfo::Line},    {24, CElemDatasetInfo::Line},
    {25, CElemDatasetInfo::Line},   {27, CElemDatasetInfo::Line},   {28, CElemDatasetInfo::Line},
    {29, CElemDatasetInfo::Line},   {34, CElemDatasetInfo::Line},   {5, CElemDatasetInfo::Region},
    {11, CElemDatasetInfo::Region}, {12, CElemDatasetInfo::Region}, {13, CElemDatasetInfo::Region},
    {15, CElemDatasetInfo::Region}, {17, CElemDatasetInfo::Region}, {19, CElemDatasetInfo::Region},
    {20, CElemDatasetInfo::Region}, {21, CElemDatasetInfo::Region}, {23, CElemDatasetInfo::Region},
    {31, CElemDatasetInfo::Region}, {7, CElemDatasetInfo::Text},
});
static_assert(TdTable::hasUniqueKeys(cadElements, &CadElementRow::element));

/// The engine type that opens files with an extension. Other extensions: see CTdCommMethods::GetDsTypeByExtName().
struct ExtensionRow
{
    const char *extension; ///< upper case, with its leading dot
    CTxDataSourceStorage::Type type;
};
inline constexpr auto extensions = std::to_array<ExtensionRow>({
    {".DGN", CTxDataSourceStorage::DGN},
    {".DXF", CTxDataSourceStorage::DXF},
    {".DWG", CTxDataSourceStorage::DXF},
    {".SIT", CTxDataSourceStorage::ImageFile},
    {".EYA", CTxDataSourceStorage::ImageFile},
});

} // namespace TdVocabulary
