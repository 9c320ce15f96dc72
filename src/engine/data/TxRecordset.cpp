#include "engine/data/TxRecordset.h"

#include "engine/base/TxVectorState.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/TxCursors.h"
#include "engine/data/TxRecordsetPrivate.h"
#include "engine/geometry/GeoText.h"
#include "engine/geometry/OgrGeometry.h"
#include "engine/geometry/OgrText.h"

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
    recordset->setFields(plan->fields(), plan->visibleCount());
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

void TxRecordsetPrivate::setFields(const std::vector<TxRecordsetField> &list, size_t visible)
{
    fields = list;
    visibleCount = visible;
    m_byName.clear();
    for (size_t index = visible; index-- > 0;)
        m_byName.insert(fields[index].info.GetName().toCaseFolded(), static_cast<int>(index));
    const auto place = [this](const char *name) {
        const auto at = std::find_if(fields.begin(), fields.end(), [name](const TxRecordsetField &field) {
            return field.info.GetName().compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
        });
        return at == fields.end() ? -1 : static_cast<int>(at - fields.begin());
    };
    m_text = {place(NativeSchema::text), place(NativeSchema::textAngle), place(NativeSchema::textHeight)};
}

int TxRecordsetPrivate::findField(const QString &name) const
{
    // Records are mostly read and written field after field: the one behind the last is tried first.
    const size_t next = m_lastFound + 1 < visibleCount ? m_lastFound + 1 : 0;
    for (const size_t place : {next, m_lastFound}) {
        if (place < visibleCount && fields[place].info.GetName() == name) {
            m_lastFound = place;
            return static_cast<int>(place);
        }
    }
    const int found = m_byName.value(name.toCaseFolded(), -1);
    if (found >= 0)
        m_lastFound = static_cast<size_t>(found);
    return found;
}

bool TxRecordsetPrivate::pin(qint64 id)
{
    TxRecord record;
    if (!cursor || !cursor->fetch(id, true, record))
        return false;
    pinned = std::move(record);
    m_pinIsRead = true;
    return true;
}

void TxRecordsetPrivate::pinWritten(qint64 id)
{
    pinned = TxRecord();
    pinned->id = id;
    m_pinIsRead = false;
}

bool TxRecordsetPrivate::readPinned()
{
    if (m_pinIsRead)
        return true;
    TxRecord record;
    if (!cursor || !cursor->fetch(pinned->id, false, record))
        return false; // deleted by another since it was written
    pinned = std::move(record);
    m_pinIsRead = true;
    return true;
}

bool TxRecordsetPrivate::value(size_t index, CTxVariant &value)
{
    if (!hasRecord() || index >= fields.size() || (pinned && !readPinned()))
        return false;
    if (pinned)
        value = pinned->values[index];
    else
        cursor->value(static_cast<int>(index), value);
    return true;
}

std::unique_ptr<CElemGeometry> TxRecordsetPrivate::geometry()
{
    if (!hasRecord() || (pinned && !readPinned()))
        return nullptr;
    std::unique_ptr<CElemGeometry> element =
        OgrGeometry::fromOgr(pinned ? pinned->geometry.get() : cursor->geometry().get());
    const bool isPoint =
        element && (element->GetType() == CElemGeometry::Point || element->GetType() == CElemGeometry::Point3D);
    if (!isPoint)
        return element;
    const auto &anchor = static_cast<const CGeoPoint &>(*element);
    const auto numberAt = [this](int field) {
        CTxVariant number;
        return field >= 0 && value(static_cast<size_t>(field), number) ? number.toDouble() : 0.0;
    };
    CTxVariant said;
    if (m_text.text >= 0 && value(static_cast<size_t>(m_text.text), said) && !said.IsNull()) {
        auto text = std::make_unique<CGeoText>(anchor.GetPoint(), said.toText(), numberAt(m_text.angle),
                                               numberAt(m_text.height));
        text->SetAnchor(anchor);
        return text;
    }
    std::unique_ptr<CElemGeometry> drawn = OgrText::fromStyle(pinned ? pinned->style : cursor->style(), anchor);
    return drawn ? std::move(drawn) : std::move(element);
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
    TxVectorState::clearUpperHalves();
    d->onRecord = d->cursor && d->cursor->first();
    return d->onRecord;
}

bool CTxRecordset::MoveNext()
{
    d->leaveRecord();
    if (!d->onRecord)
        return false;
    const TxGdal::ErrorCollector errors;
    TxVectorState::clearUpperHalves(); // here too: between two records the caller may have hashed a text
    d->onRecord = d->cursor->next();
    return d->onRecord;
}

bool CTxRecordset::MoveToID(qint64 id)
{
    const TxGdal::ErrorCollector errors;
    if (!d->pin(id))
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
    return static_cast<int>(d->visibleCount);
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
    return index >= 0 && index < GetFieldCount() && d->value(static_cast<size_t>(index), value);
}

bool CTxRecordset::GetFieldValue(const QString &name, CTxVariant &value) const
{
    return GetFieldValue(d->findField(name), value);
}

bool CTxRecordset::GetGeometry(CElemGeometry *&geometry) const
{
    const TxGdal::ErrorCollector errors;
    geometry = d->geometry().release();
    return geometry != nullptr;
}
