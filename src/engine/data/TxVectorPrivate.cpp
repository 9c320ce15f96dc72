#include "engine/data/TxVectorPrivate.h"

#include "engine/base/TxSqlite.h"
#include "engine/data/NativeCatalogue.h"
#include "engine/data/TxFieldTypes.h"
#include "engine/data/TxRecordsetPrivate.h"
#include "engine/data/TxSpatialIndex.h"

#include <ogrsf_frmts.h>

TxVectorPrivate::TxVectorPrivate(CDatasetVector *owner, const QByteArray &layerName) : q(owner), source(layerName) {}

TxVectorPrivate::~TxVectorPrivate() = default;

OGRLayer *TxVectorPrivate::layer()
{
    TxDataSourcePrivate &owner = dataSource();
    if (!owner.gdal) // it could not be opened again when that was needed; perhaps it can now
        owner.reopen();
    if (m_generation != owner.generation) {
        m_generation = owner.generation;
        m_layer = owner.layer(source);
        m_awaitsShape = m_layer && owner.driver == "ESRI Shapefile" && wkbHasZ(m_layer->GetGeomType()) &&
                        m_layer->GetFeatureCount(FALSE) == 0;
        walker = nullptr;
        forgetPause(); // whoever opens the storage anew takes its transaction back before
    }
    return m_layer;
}

void TxVectorPrivate::settleMeasures(const OGRGeometry &first)
{
    m_awaitsShape = false;
    OGRFeatureDefn &definition = *m_layer->GetLayerDefn();
    const OGRwkbGeometryType withHeights = OGR_GT_SetZ(wkbFlatten(definition.GetGeomType()));
    definition.SetGeomType(first.IsMeasured() ? OGR_GT_SetM(withHeights) : withHeights);
}

OGRLayer *TxVectorPrivate::idleLayer()
{
    OGRLayer *idle = layer();
    walker = nullptr;
    if (idle) {
        idle->SetAttributeFilter(nullptr);
        idle->SetSpatialFilter(nullptr);
        if (idle->TestCapability(OLCIgnoreFields))
            idle->SetIgnoredFields(nullptr);
    }
    return idle;
}

bool TxVectorPrivate::keepsPlace()
{
    static const QByteArrayList drivers = {"GPKG", "ESRI Shapefile", "PostgreSQL"};
    OGRLayer *read = layer();
    return read && drivers.contains(dataSource().driver) && read->TestCapability(OLCRandomRead);
}

const std::vector<TxVectorField> &TxVectorPrivate::fields()
{
    if (!m_fields.empty())
        return m_fields;
    const TxGdal::ErrorCollector errors;
    OGRLayer *from = layer();
    if (!from)
        return m_fields;
    m_fields.push_back(
        {CTxFieldInfo(QStringLiteral("TxID"), CTxFieldInfo::Long, 0,
                      CTxFieldInfo::System | CTxFieldInfo::ReadOnly | CTxFieldInfo::Required | CTxFieldInfo::Unique),
         -1});
    // What the engine keeps comes before what users made.
    std::vector<TxVectorField> userFields;
    const bool isNative = dataSource().engineType == CTxDataSourceStorage::Native;
    const QHash<QString, CTxFieldInfo> noted =
        isNative ? NativeCatalogue::fields(*dataSource().gdal, QString::fromUtf8(source))
                 : QHash<QString, CTxFieldInfo>();
    const OGRFeatureDefn &definition = *from->GetLayerDefn();
    for (int index = 0; index < definition.GetFieldCount(); ++index) {
        CTxFieldInfo info = TxFieldTypes::fromOgr(*definition.GetFieldDefn(index));
        if (const auto note = noted.constFind(info.GetName().toLower()); note != noted.constEnd()) {
            info.SetType(note->GetType());
            info.SetSize(note->GetSize());
            info.SetPrecision(note->GetPrecision());
            info.SetFlags(info.GetFlags() | note->GetFlags());
            info.SetCaption(note->GetCaption());
        }
        if (info.GetName().compare(u"TxID", Qt::CaseInsensitive) == 0)
            continue; // another program's: the identifier alone is called so
        const bool isKept = info.IsSystemField() || info.GetName().compare(u"TxUserID", Qt::CaseInsensitive) == 0;
        (isKept ? m_fields : userFields).push_back({info, index});
    }
    m_fields.insert(m_fields.end(), userFields.begin(), userFields.end());
    return m_fields;
}

void TxVectorPrivate::schemaChanged()
{
    m_fields.clear();
    m_byName.clear();
}

int TxVectorPrivate::findField(const QString &name)
{
    if (m_byName.isEmpty()) {
        const std::vector<TxVectorField> &all = fields();
        for (size_t index = all.size(); index-- > 0;) // of two that differ in case the first is found
            m_byName.insert(all[index].info.GetName().toCaseFolded(), static_cast<int>(index));
    }
    return m_byName.value(name.toCaseFolded(), -1);
}

bool TxVectorPrivate::pauseIndex()
{
    OGRLayer *indexed = dataSource().isGeoPackage() ? layer() : nullptr;
    if (!indexed || m_pausedIndex)
        return m_pausedIndex != nullptr;
    indexed->SyncToDisk(); // the driver puts triggers aside by itself
    std::unique_ptr<TxSpatialIndex> index = TxSpatialIndex::find(
        TxSqlite::connection(*dataSource().gdal), QString::fromUtf8(source),
        QString::fromUtf8(indexed->GetGeometryColumn()), QString::fromUtf8(indexed->GetFIDColumn()));
    if (!index || !index->pause())
        return false;
    m_pausedIndex = std::move(index);
    return true;
}

bool TxVectorPrivate::resumeIndex()
{
    m_addedSinceResume = 0;
    layer(); // a pause does not outlive the opening of the storage
    if (m_pausedIndex && !m_pausedIndex->resume())
        return false;
    forgetPause();
    return true;
}

void TxVectorPrivate::forgetPause()
{
    m_pausedIndex.reset();
    m_addedSinceResume = 0;
}

void TxVectorPrivate::countAdded()
{
    constexpr int many = 64; // fewer than make the driver put its triggers aside
    if (++m_addedSinceResume == many) {
        const TxGdal::ErrorCollector errors; // without the pause it is slower, no more
        pauseIndex();
    }
}

void TxVectorPrivate::endRecordsets()
{
    for (const auto &recordset : recordsets)
        TxRecordsetPrivate::of(*recordset).end();
}

CTxRecordset *TxVectorPrivate::adopt(std::unique_ptr<TxRecordsetPrivate> recordset)
{
    recordsets.push_back(TxRecordsetPrivate::wrap(std::move(recordset)));
    return recordsets.back().get();
}
