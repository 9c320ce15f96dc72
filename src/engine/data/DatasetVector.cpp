#include "engine/data/DatasetVector.h"

#include "engine/data/TxNameRules.h"
#include "engine/data/TxRecordset.h"
#include "engine/data/TxVectorPrivate.h"
#include "engine/projection/TxPJCoordSys.h"

#include <ogrsf_frmts.h>

#include <algorithm>

CDatasetVector::CDatasetVector(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type)
    : CTxDataset(dataSource, name, type), d(std::make_unique<TxVectorPrivate>(this, QByteArray()))
{
}

CDatasetVector::~CDatasetVector() = default;

bool CDatasetVector::IsOpen() const
{
    return d->isOpen;
}

bool CDatasetVector::Open()
{
    if (d->isOpen)
        return true;
    const TxGdal::ErrorCollector errors;
    if (!d->layer())
        return errors.fail(QStringLiteral("“%1” is no longer in “%2”").arg(GetName(), GetDataSource()->GetAlias()));
    if (d->fields().empty())
        return errors.fail(QStringLiteral("The fields of “%1” cannot be read").arg(GetName()));
    d->isOpen = true;
    return true;
}

bool CDatasetVector::Close()
{
    if (d->isOpen && !d->dataSource().isIdle())
        return false;
    d->recordsets.clear();
    d->isOpen = false;
    return true;
}

CRect2D CDatasetVector::GetBounds() const
{
    if (d->bounds)
        return *d->bounds;
    CRect2D bounds;
    const TxGdal::ErrorCollector errors;
    OGREnvelope box;
    OGRLayer *layer = d->idleLayer();
    if (layer && layer->GetGeomType() != wkbNone && layer->GetExtent(&box, TRUE) == OGRERR_NONE && box.IsInit())
        bounds = CRect2D(box.MinX, box.MinY, box.MaxX, box.MaxY);
    if (layer)
        d->bounds = bounds;
    return bounds;
}

void CDatasetVector::GetProjection(CTxPJCoordSys &coordSys) const
{
    d->dataSource().ownProjection(*this, coordSys);
    if (coordSys.GetType() == CTxPJCoordSys::None)
        GetDataSource()->GetProjection(coordSys);
}

int CDatasetVector::GetFieldCount() const
{
    return static_cast<int>(d->fields().size());
}

bool CDatasetVector::GetFieldInfo(int index, CTxFieldInfo &info, int) const
{
    const std::vector<TxVectorField> &fields = d->fields();
    if (index < 0 || static_cast<size_t>(index) >= fields.size())
        return false;
    info = fields[static_cast<size_t>(index)].info;
    return true;
}

int CDatasetVector::FindField(const QString &name) const
{
    return d->findField(name);
}

bool CDatasetVector::IsAvailableFieldName(const QString &name) const
{
    return TxNameRules::isFieldName(name) && !CTxFieldInfo(name, CTxFieldInfo::Text).IsSystemField() &&
           d->findField(name) < 0;
}

bool CDatasetVector::ReleaseRecordset(CTxRecordset *recordset)
{
    const auto at = std::find_if(d->recordsets.begin(), d->recordsets.end(),
                                 [recordset](const auto &owned) { return owned.get() == recordset; });
    if (!recordset || at == d->recordsets.end())
        return false;
    d->recordsets.erase(at);
    return true;
}

int CDatasetVector::GetRecordsetCount() const
{
    return static_cast<int>(d->recordsets.size());
}

qint64 CDatasetVector::GetRecordCount() const
{
    const TxGdal::ErrorCollector errors;
    OGRLayer *layer = d->idleLayer();
    return layer ? layer->GetFeatureCount(TRUE) : -1;
}

QString CDatasetVector::GetTileIndexName() const
{
    return d->tileIndex;
}
