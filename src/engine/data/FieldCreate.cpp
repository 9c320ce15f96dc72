#include "engine/data/DatasetVector.h"
#include "engine/data/NativeCatalogue.h"
#include "engine/data/TxFieldDefinition.h"
#include "engine/data/TxSchemaChange.h"
#include "engine/data/TxVectorPrivate.h"

#include <ogrsf_frmts.h>

#include <QSet>

namespace {

/// Adds the fields to the layer. A driver that cannot take changes back is helped by hand.
bool addToLayer(OGRLayer &layer, const CTxFieldInfos &infos, bool undoesItself)
{
    const int before = layer.GetLayerDefn()->GetFieldCount();
    const bool done = TxFieldDefinition::addTo(layer, infos);
    if (!done && !undoesItself) {
        for (int i = layer.GetLayerDefn()->GetFieldCount() - 1; i >= before; --i)
            layer.DeleteField(i);
    }
    return done;
}

} // namespace

bool CDatasetVector::CreateFields(const CTxFieldInfos &infos)
{
    TxDataSourcePrivate &dataSource = d->dataSource();
    const QString failure = QStringLiteral("Cannot create fields in “%1”").arg(GetName());
    QString reason = TxSchemaChange::refusal(dataSource);
    if (reason.isEmpty() && !GetDataSource()->HasCapability(CTxDataSource::CanCreateFields))
        reason = QStringLiteral("its datasource adds no fields");
    if (reason.isEmpty() && GetRecordsetCount() > 0)
        reason = QStringLiteral("recordsets of it are open");
    QSet<QString> taken;
    for (const CTxFieldInfo &info : infos) {
        const QString folded = info.GetName().toCaseFolded();
        if (reason.isEmpty() && (!IsAvailableFieldName(info.GetName()) || taken.contains(folded)))
            reason = QStringLiteral("“%1” cannot be the name of a new field").arg(info.GetName().left(80));
        taken.insert(folded);
    }
    if (!reason.isEmpty())
        return TxGdal::fail(failure + QStringLiteral(": ") + reason);

    const TxGdal::ErrorCollector errors;
    bool done = false;
    {
        TxSchemaChange change(dataSource);
        OGRLayer *layer = change.isOpen() ? d->layer() : nullptr;
        done = layer && addToLayer(*layer, infos, change.undoesItself()) && layer->SyncToDisk() == OGRERR_NONE;
        if (done && dataSource.engineType == CTxDataSourceStorage::Native)
            done = NativeCatalogue::addFields(*dataSource.gdal, GetName(), infos);
        done = done && change.commit();
    }
    d->schemaChanged();
    return done || errors.fail(failure);
}

bool CDatasetVector::CreateField(const CTxFieldInfo &info)
{
    return CreateFields({info});
}

bool CDatasetVector::CreateField(const QString &name, qint16 type, qint32 size, quint32 flags)
{
    return CreateFields({CTxFieldInfo(name, type, size, flags)});
}
