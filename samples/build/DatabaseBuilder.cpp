#include "DatabaseBuilder.h"

#include "SampleTable.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoText.h"
#include "engine/map/TxWorkspace.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QFile>

#include <utility>

namespace {

/// System fields that are filled from a plain field of the source: what the derivation calls it, and the engine.
struct SystemSource
{
    const char *source;
    const char *field;
};
constexpr SystemSource systemSources[] = {
    {"EdgeId", "TxEdgeID"}, {"FromNode", "TxFNode"},       {"ToNode", "TxTNode"},
    {"NodeId", "TxNodeID"}, {"TileName", "TxLibTileName"},
};

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

/// True for a record that stands for a text: in a text dataset each, in a drawing those that say so.
bool isText(const CTxRecordset &record, CElemDatasetInfo::Type type)
{
    return type == CElemDatasetInfo::Text || type == CElemDatasetInfo::Text3D ||
           (type == CElemDatasetInfo::CAD && textOf(record, QStringLiteral("Kind")) == QStringLiteral("Text"));
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

DatabaseBuilder::DatabaseBuilder(const QString &folder)
    : m_folder(folder), m_workspace(std::make_unique<CTxWorkspace>())
{
}

DatabaseBuilder::~DatabaseBuilder() = default;

bool DatabaseBuilder::fail(const QString &where)
{
    m_error = where + QStringLiteral(": ") + TxGetErrorMsgObj().GetErrorMessage();
    return false;
}

CTxDataSource *DatabaseBuilder::openSource(const char *path)
{
    return m_workspace->GetDataSources().Open(m_folder + QStringLiteral("/source/") + QString::fromUtf8(path),
                                              QString(), CTxDataSource::Internal | CTxDataSource::OpenReadOnly);
}

bool DatabaseBuilder::build(const QString &path)
{
    QFile::remove(path);
    m_database = m_workspace->GetDataSources().Create(path, QStringLiteral("database"), CTxDataSourceStorage::Native);
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
    m_workspace->Close();
    return true;
}

bool DatabaseBuilder::addVector(const VectorSample &sample)
{
    const QString name = QString::fromUtf8(sample.name);
    CTxDataSource *source = openSource(sample.source);
    auto *from = source ? dynamic_cast<CDatasetVector *>(source->GetDatasetAt(0)) : nullptr;
    if (!from || !from->Open())
        return fail(QString::fromUtf8(sample.source));

    CTxDatasetDef def;
    def.name = name;
    def.type = sample.type;
    def.coordSys = QString::fromUtf8(sample.coordSys);
    def.parentDataset = QString::fromUtf8(sample.parent);
    def.tileIndex = QString::fromUtf8(sample.tileIndex);
    def.options = (sample.tileIndex ? CTxDataset::Library : 0) | (sample.hidden ? CTxDataset::Internal : 0);
    for (int i = 0; i < from->GetFieldCount(); ++i) {
        CTxFieldInfo info;
        if (from->GetFieldInfo(i, info) && !info.IsSystemField() && info.GetName() != QStringLiteral("WKT"))
            def.fields.append(info);
    }
    auto *to = dynamic_cast<CDatasetVector *>(m_database->CreateDataset(def));
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
    return m_workspace->GetDataSources().Close(source->GetAlias()) || fail(name);
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
        if (!from.GetFieldInfo(i, info) || info.IsSystemField() || to.FindField(info.GetName()) < 0)
            continue;
        if (!from.GetFieldValue(i, value) || !to.SetFieldValue(info.GetName(), value))
            return false;
    }
    for (const SystemSource &row : systemSources) {
        const QString field = QString::fromUtf8(row.field);
        CTxVariant value;
        if (to.FindField(field) >= 0 && from.GetFieldValue(QString::fromUtf8(row.source), value) &&
            !to.SetFieldValue(field, value))
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
    return m_workspace->GetDataSources().Close(source->GetAlias()) || fail(name);
}
