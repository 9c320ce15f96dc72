#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/VocabularyTables.h"
#include "engine/base/TxToolkit.h"
#include "engine/data/TdbDataSourcePlus.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "engine/data/TxImagePluginManager.h"

using namespace TdVocabulary;

namespace {

/// The bit of @p code in @p table, 0 when it has none.
template<class Table>
quint32 bitOf(const Table &table, qint32 code)
{
    const BitRow *row = TdTable::find(table, &BitRow::code, code);
    return row ? row->bit : 0;
}

} // namespace

quint32 CTdCommMethods::QueryTDDTType(qint32 datasetType)
{
    const DatasetTypeRow *row = TdTable::find(datasetTypes, &DatasetTypeRow::type, datasetType);
    return row ? row->bit : 0;
}

bool CTdCommMethods::IsSupportDTType(qint32 datasetType, quint32 mask)
{
    return (QueryTDDTType(datasetType) & mask) != 0;
}

bool CTdCommMethods::IsSupportDTType(const CTxDataset *dataset, quint32 mask)
{
    return dataset && IsSupportDTType(dataset->GetType(), mask);
}

quint32 CTdCommMethods::QueryTDDSType(qint32 engineType)
{
    return bitOf(engineTypes, engineType);
}

bool CTdCommMethods::IsSupportDSType(const CTxDataSource *dataSource, quint32 mask)
{
    return dataSource && (QueryTDDSType(dataSource->GetEngineType()) & mask) != 0;
}

quint32 CTdCommMethods::QueryTDFieldType(qint16 fieldType)
{
    const FieldTypeRow *row = TdTable::find(fieldTypes, &FieldTypeRow::type, fieldType);
    return row ? row->bit : 0;
}

quint32 CTdCommMethods::QueryTDuaAction(qint32 action)
{
    return bitOf(editActions, action);
}

bool CTdCommMethods::IsTDuaAction(qint32 action, quint32 mask)
{
    // Deliberate: an action without a bit asks for nothing, so every mask allows it.
    const quint32 bit = QueryTDuaAction(action);
    return (bit & mask) == bit;
}

QString CTdCommMethods::GetDatasetTypeName(qint32 datasetType)
{
    const DatasetTypeRow *row = TdTable::find(datasetTypes, &DatasetTypeRow::type, datasetType);
    return CTdModule::LoadString(row ? row->name : TdStringId::DatasetUnknown);
}

QString CTdCommMethods::GetFieldNameFromType(qint16 fieldType)
{
    const FieldTypeRow *row = TdTable::find(fieldTypes, &FieldTypeRow::type, fieldType);
    return row ? CTdModule::LoadString(row->name) : QString();
}

qint16 CTdCommMethods::GetFieldTypeFromName(const QString &name)
{
    for (const FieldTypeRow &row : fieldTypes)
        if (name == CTdModule::LoadString(row.name))
            return row.type;
    return -1;
}

qint32 CTdCommMethods::GetFieldDefaultLength(qint16 fieldType)
{
    const FieldTypeRow *row = TdTable::find(fieldTypes, &FieldTypeRow::type, fieldType);
    return row ? row->defaultLength : 0;
}

QString CTdCommMethods::GetDistanceUint(qint32 unit)
{
    const UnitRow *row = TdTable::find(units, &UnitRow::code, unit);
    return CTdModule::LoadString(row ? row->distance : TdStringId::UnitMeter);
}

QString CTdCommMethods::GetAreaUint(qint32 unit)
{
    const UnitRow *row = TdTable::find(units, &UnitRow::code, unit);
    return CTdModule::LoadString(row ? row->area : TdStringId::AreaMeter);
}

qint32 CTdCommMethods::GetMapUnitType(const QString &name)
{
    for (const auto column : {&UnitRow::distance, &UnitRow::area})
        for (const UnitRow &row : units)
            if (row.found && name == CTdModule::LoadString(row.*column))
                return row.code;
    return 1;
}

QString CTdCommMethods::GetEncTypeName(qint32 encType)
{
    if (encType == CElemDataEnc::NONE)
        return CTdModule::LoadString(TdStringId::EncodingNone);
    const EncodingRow *row = TdTable::find(encodings, &EncodingRow::type, encType);
    return row ? QString::fromLatin1(row->name) : CTdModule::LoadString(TdStringId::EncodingUnknown);
}

CElemDataEnc::encType CTdCommMethods::GetEncType(const QString &name)
{
    if (name.compare(CTdModule::LoadString(TdStringId::EncodingNone), Qt::CaseInsensitive) == 0 ||
        name.compare(u"NONE", Qt::CaseInsensitive) == 0)
        return CElemDataEnc::NONE;
    for (const EncodingRow &row : encodings)
        if (name == QLatin1StringView(row.name))
            return row.type;
    // Deliberate: "DOUBLE", which old files give for plain doubles, is no encoding either.
    return CElemDataEnc::NONE;
}

QString CTdCommMethods::GetProjectTransformationMethodName(qint32 method)
{
    const TransformationRow *row = TdTable::find(transformations, &TransformationRow::method, method);
    return row ? QString::fromLatin1(row->name) : QString();
}

qint32 CTdCommMethods::CADElemTypeToSimpleType(qint32 cadElementType)
{
    const CadElementRow *row = TdTable::find(cadElements, &CadElementRow::element, cadElementType);
    return row ? row->simple : 0;
}

qint32 CTdCommMethods::GetDsTypeByExtName(const QString &path)
{
    QString drive;
    QString dir;
    QString name;
    QString extension;
    CTxToolkit::SplitPath(path, drive, dir, name, extension);
    const QString upper = extension.toUpper();

    if (upper == u".TDB")
        return CTdbDataSourcePlus::IsTdb5File(path) ? CTxDataSourceStorage::Native : 0;
    for (const ExtensionRow &row : extensions)
        if (upper == QLatin1StringView(row.extension))
            return row.type;
    for (int i = 0; i < CTxImagePluginManager::GetImagePluginCount(); ++i) {
        const CTxImagePluginDef *plugin = CTxImagePluginManager::GetPluginAt(i);
        if (plugin && plugin->extension.compare(extension, Qt::CaseInsensitive) == 0)
            return CTxDataSourceStorage::ImageFile;
    }
    // Deliberate: what nobody knows is given to the native database engine, which then says what is wrong with it.
    return CTxDataSourceStorage::Native;
}
