#include "DatabaseBuilder.h"

#include "SampleTable.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoText.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QFile>

#include <memory>

namespace {

/// A key that the engine keeps in datasets of some kind, and the field of the source that gives it.
struct KeySource
{
    CElemDatasetInfo::Type type;
    bool isCompanion;
    const char *source;
    const char *key;
};
constexpr KeySource keySources[] = {
    {CElemDatasetInfo::Network, false, "EdgeId", "TxEdgeID"},
    {CElemDatasetInfo::Network, false, "FromNode", "TxFNode"},
    {CElemDatasetInfo::Network, false, "ToNode", "TxTNode"},
    {CElemDatasetInfo::Point, true, "NodeId", "TxNodeID"},
    {CElemDatasetInfo::Region, true, "TileName", "TxLibTileName"},
    {CElemDatasetInfo::Route, false, "RouteId", "TxRouteID"},
};

/// The field of the sample's dataset that takes the source's field @p name: the key that it gives, or its namesake.
QString targetField(const VectorSample &sample, const QString &name)
{
    for (const KeySource &row : keySources) {
        if (row.type == sample.type && row.isCompanion == sample.isCompanion && name == QLatin1String(row.source))
            return QString::fromLatin1(row.key);
    }
    return name;
}

/// The field's value in the current record as text, empty for null.
QString textOf(const CTxRecordset &record, const QString &field)
{
    CTxVariant value;
    return record.GetFieldValue(field, value) ? value.toText() : QString();
}

double numberOf(const CTxRecordset &record, const QString &field)
{
    CTxVariant value;
    return record.GetFieldValue(field, value) ? value.toDouble() : 0.0;
}

/// True for datasets that hold texts.
bool holdsTexts(CElemDatasetInfo::Type type)
{
    return type == CElemDatasetInfo::Text || type == CElemDatasetInfo::Text3D || type == CElemDatasetInfo::CAD;
}

/// True for a field of the source that the texts themselves keep.
bool describesText(const VectorSample &sample, const QString &name)
{
    return holdsTexts(sample.type) &&
           (name == QStringLiteral("Text") || name == QStringLiteral("Height") || name == QStringLiteral("Angle"));
}

/// True for a record that stands for a text: in a text dataset each, in a drawing those that say so.
bool isText(const CTxRecordset &record, CElemDatasetInfo::Type type)
{
    return holdsTexts(type) &&
           (type != CElemDatasetInfo::CAD || textOf(record, QStringLiteral("Kind")) == QStringLiteral("Text"));
}

/// The text element that the fields Text, Angle and Height describe, at @p anchor.
std::unique_ptr<CElemGeometry> textElement(const CTxRecordset &record, const CGeoPoint &anchor)
{
    auto text = std::make_unique<CGeoText>(anchor.GetPoint(), textOf(record, QStringLiteral("Text")),
                                           numberOf(record, QStringLiteral("Angle")),
                                           numberOf(record, QStringLiteral("Height")));
    text->SetAnchor(anchor);
    return text;
}

} // namespace

bool DatabaseBuilder::fail(const QString &where)
{
    m_error = where + QStringLiteral(": ") + TxGetErrorMsgObj().GetErrorMessage();
    return false;
}

CTxDataSource *DatabaseBuilder::openSource(const char *path)
{
    return m_sources.Open(m_folder + QStringLiteral("/source/") + QString::fromUtf8(path), QString(),
                          CTxDataSource::Internal | CTxDataSource::OpenReadOnly);
}

bool DatabaseBuilder::build(const QString &path)
{
    QFile::remove(path);
    m_database = m_sources.Create(path, QStringLiteral("database"), CTxDataSourceStorage::Native);
    if (!m_database)
        return fail(path);
    for (const VectorSample &sample : vectorSamples()) {
        if (!addVector(sample))
            return false;
    }
    for (const RasterSample &sample : rasterSamples()) {
        if (!addRaster(sample))
            return false;
    }
    m_sources.CloseAll();
    return true;
}

bool DatabaseBuilder::addVector(const VectorSample &sample)
{
    const QString name = QString::fromUtf8(sample.name);
    CTxDataSource *source = openSource(sample.source);
    auto *from = source ? dynamic_cast<CDatasetVector *>(source->GetDatasetAt(0)) : nullptr;
    if (!from || !from->Open())
        return fail(QString::fromUtf8(sample.source));

    CDatasetVector *to = makeVector(sample, *from);
    if (!to || !to->Open())
        return fail(name);
    if (!m_database->BeginTrans())
        return fail(name);
    if (!copyRecords(*from, *to, sample)) {
        m_database->RollbackTrans();
        return false;
    }
    if (!m_database->CommitTrans())
        return fail(name);
    to->Close();
    return m_sources.Close(source->GetAlias()) || fail(name);
}

CDatasetVector *DatabaseBuilder::makeVector(const VectorSample &sample, const CDatasetVector &source)
{
    CTxDatasetDef def;
    def.name = QString::fromUtf8(sample.name);
    def.type = sample.type;
    def.coordSys = QString::fromUtf8(sample.coordSys);
    def.tileIndex = QString::fromUtf8(sample.tileIndex);
    def.options = sample.tileIndex ? CTxDataset::Library : CTxDataset::NoOption;
    for (int i = 0; i < source.GetFieldCount(); ++i) {
        CTxFieldInfo info;
        if (source.GetFieldInfo(i, info) && !info.IsSystemField() && info.GetName() != QStringLiteral("WKT") &&
            targetField(sample, info.GetName()) == info.GetName() && !describesText(sample, info.GetName()))
            def.fields.append(info);
    }
    if (!sample.isCompanion)
        return dynamic_cast<CDatasetVector *>(m_database->CreateDataset(def));
    auto *made = dynamic_cast<CDatasetVector *>(m_database->GetDataset(def.name));
    return made && made->CreateFields(def.fields) ? made : nullptr;
}

bool DatabaseBuilder::copyRecords(CDatasetVector &source, CDatasetVector &target, const VectorSample &sample)
{
    CTxRecordset *from = source.Query(CTxQueryDef());
    CTxRecordset *to = target.Query(CTxQueryDef());
    bool done = from && to;
    for (; done && !from->IsEOF(); from->MoveNext())
        done = copyRecord(*from, *to, sample);
    if (!done)
        fail(target.GetName());
    source.ReleaseRecordset(from);
    target.ReleaseRecordset(to);
    return done;
}

bool DatabaseBuilder::copyRecord(CTxRecordset &from, CTxRecordset &to, const VectorSample &sample)
{
    if (!to.AddNew())
        return false;
    for (int i = 0; i < from.GetFieldCount(); ++i) {
        CTxFieldInfo info;
        CTxVariant value;
        if (!from.GetFieldInfo(i, info) || info.IsSystemField())
            continue;
        const QString field = targetField(sample, info.GetName());
        if (to.FindField(field) >= 0 && !(from.GetFieldValue(i, value) && to.SetFieldValue(field, value)))
            return false;
    }
    if (sample.type != CElemDatasetInfo::Tabular) {
        CElemGeometry *read = nullptr;
        if (!from.GetGeometry(read))
            return false;
        std::unique_ptr<CElemGeometry> geometry(read);
        if (isText(from, sample.type))
            geometry = textElement(from, static_cast<const CGeoPoint &>(*geometry));
        if (!to.SetGeometry(geometry.get()))
            return false;
    }
    return to.Update();
}

bool DatabaseBuilder::addRaster(const RasterSample &sample)
{
    const QString name = QString::fromUtf8(sample.name);
    CTxDataSource *source = openSource(sample.source);
    auto *from = source ? dynamic_cast<CDatasetRaster *>(source->GetDatasetAt(0)) : nullptr;
    if (!from || !from->Open())
        return fail(QString::fromUtf8(sample.source));

    CTxPJCoordSys coordSys;
    from->GetProjection(coordSys);
    CTxDatasetDef def;
    def.name = name;
    def.type = sample.type;
    def.coordSys = coordSys.ToWkt();
    def.rasterSize = from->GetSize();
    def.rasterBounds = from->GetBounds();
    def.pixelFormat = QString::fromUtf8(sample.pixelFormat);
    def.bandCount = from->GetBandCount();
    auto *to = dynamic_cast<CDatasetRaster *>(m_database->CreateDataset(def));
    if (!to || !to->Open() || !to->Append(from))
        return fail(name);
    to->Close();
    return m_sources.Close(source->GetAlias()) || fail(name);
}
