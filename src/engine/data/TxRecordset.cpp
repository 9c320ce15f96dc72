#include "engine/data/TxRecordset.h"

#include "engine/data/NativeSchema.h"
#include "engine/data/TxCursors.h"
#include "engine/data/TxRecordsetPrivate.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/OgrGeometry.h"

#include <QSet>

#include <algorithm>

CTxRecordset *CDatasetVector::Query(const CTxQueryDef &query)
{
    if (!d->isOpen || !d->layer()) {
        TxGdal::fail(QStringLiteral("“%1” is not open").arg(GetName()));
        return nullptr;
    }
    const TxGdal::ErrorCollector errors;
    const std::optional<TxQueryPlan> plan = TxQueryPlan::make(*d, query);
    if (!plan)
        return nullptr;
    auto recordset = std::make_unique<TxRecordsetPrivate>(this, query);
    recordset->setFields(plan->fields());
    bool refused = false;
    recordset->cursor = TxCursors::makeSqlite(*d, *plan, refused);
    if (!recordset->cursor && !refused)
        recordset->cursor = plan->isPlain() ? TxCursors::makeLayer(*d, *plan) : TxCursors::makeResult(*d, *plan);
    if (!recordset->cursor)
        return nullptr;
    recordset->onRecord = recordset->cursor->first();
    return d->adopt(std::move(recordset));
}

// The inside.

std::unique_ptr<CTxRecordset> TxRecordsetPrivate::wrap(std::unique_ptr<TxRecordsetPrivate> priv)
{
    return std::unique_ptr<CTxRecordset>(new CTxRecordset(std::move(priv)));
}

void TxRecordsetPrivate::setFields(const std::vector<TxRecordsetField> &list)
{
    fields = list;
    m_byName.clear();
    for (size_t index = fields.size(); index-- > 0;)
        m_byName.insert(fields[index].info.GetName().toCaseFolded(), static_cast<int>(index));
}

int TxRecordsetPrivate::findField(const QString &name) const
{
    return m_byName.value(name.toCaseFolded(), -1);
}

bool TxRecordsetPrivate::pin(qint64 id, bool matching)
{
    TxRecord record;
    if (!cursor || !cursor->fetch(id, matching, record))
        return false;
    pinned = std::move(record);
    return true;
}

void TxRecordsetPrivate::markGone()
{
    pinned.reset();
    gone = true;
}

void TxRecordsetPrivate::end()
{
    cursor.reset();
    pinned.reset();
    edited.reset();
    editMode = EditMode::None;
    onRecord = false;
}

// The face.

namespace {

/// Every recordset that exists. Never freed: a workspace may outlive the static objects of this file.
QSet<const CTxRecordset *> &livingRecordsets()
{
    static auto *living = new QSet<const CTxRecordset *>;
    return *living;
}

} // namespace

CTxRecordset::CTxRecordset(std::unique_ptr<TxRecordsetPrivate> priv) : d(std::move(priv))
{
    livingRecordsets().insert(this);
}

CTxRecordset::~CTxRecordset()
{
    livingRecordsets().remove(this);
}

CDatasetVector *CTxRecordset::GetDatasetOf(const CTxRecordset *recordset)
{
    return livingRecordsets().contains(recordset) ? recordset->GetDataset() : nullptr;
}

CDatasetVector *CTxRecordset::GetDataset() const
{
    return d->dataset;
}

bool CTxRecordset::IsEOF() const
{
    return !d->onRecord && !d->pinned;
}

bool CTxRecordset::MoveFirst()
{
    d->leaveRecord();
    const TxGdal::ErrorCollector errors;
    d->onRecord = d->cursor && d->cursor->first();
    return d->onRecord;
}

bool CTxRecordset::MoveNext()
{
    if (d->editMode != TxRecordsetPrivate::EditMode::None)
        d->leaveRecord();
    if (!d->onRecord)
        return false;
    const TxGdal::ErrorCollector errors;
    d->onRecord = d->cursor->next();
    return d->onRecord;
}

bool CTxRecordset::MoveToID(qint64 id)
{
    const TxGdal::ErrorCollector errors;
    if (!d->pin(id, true))
        return false;
    d->dropChanges();
    return true;
}

qint64 CTxRecordset::GetRecordCount() const
{
    const TxGdal::ErrorCollector errors;
    return d->cursor ? d->cursor->count() : -1;
}

qint64 CTxRecordset::GetID() const
{
    return d->currentId();
}

int CTxRecordset::GetFieldCount() const
{
    return static_cast<int>(d->fields.size());
}

bool CTxRecordset::GetFieldInfo(int index, CTxFieldInfo &info, int) const
{
    if (index < 0 || index >= GetFieldCount())
        return false;
    info = d->fields[static_cast<size_t>(index)].info;
    return true;
}

int CTxRecordset::FindField(const QString &name) const
{
    return d->findField(name);
}

bool CTxRecordset::GetFieldValue(int index, CTxVariant &value) const
{
    if (index < 0 || static_cast<size_t>(index) >= d->fields.size() || !d->hasRecord())
        return false;
    if (d->pinned)
        value = d->pinned->values[static_cast<size_t>(index)];
    else
        d->cursor->value(index, value);
    return true;
}

bool CTxRecordset::GetFieldValue(const QString &name, CTxVariant &value) const
{
    return GetFieldValue(d->findField(name), value);
}

namespace {

/// The text that stands at @p place, where the record keeps one beside its geometry and the query wants it; else
/// @p place.
std::unique_ptr<CElemGeometry> withText(const CTxRecordset &record, std::unique_ptr<CElemGeometry> place)
{
    const CElemDatasetInfo::Type kind = record.GetDataset()->GetType();
    const bool holdsTexts =
        kind == CElemDatasetInfo::Text || kind == CElemDatasetInfo::Text3D || kind == CElemDatasetInfo::CAD;
    const auto *anchor = holdsTexts ? dynamic_cast<const CGeoPoint *>(place.get()) : nullptr;
    CTxVariant text;
    if (!anchor || !record.GetFieldValue(QString::fromLatin1(NativeSchema::text), text) || text.IsNull())
        return place;
    CTxVariant angle;
    CTxVariant height;
    record.GetFieldValue(QString::fromLatin1(NativeSchema::textAngle), angle);
    record.GetFieldValue(QString::fromLatin1(NativeSchema::textHeight), height);
    auto element = std::make_unique<CGeoText>(anchor->GetPoint(), text.toText(), angle.toDouble(), height.toDouble());
    element->SetAnchor(*anchor);
    return element;
}

} // namespace

bool CTxRecordset::GetGeometry(CElemGeometry *&geometry) const
{
    geometry = nullptr;
    if (!d->hasRecord())
        return false;
    const TxGdal::ErrorCollector errors;
    std::unique_ptr<CElemGeometry> element;
    if (d->pinned)
        element = OgrGeometry::fromOgr(d->pinned->geometry.get());
    else
        element = OgrGeometry::fromOgr(d->cursor->geometry().get());
    geometry = withText(*this, std::move(element)).release();
    return geometry != nullptr;
}
