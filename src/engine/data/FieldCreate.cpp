#include "engine/base/TxSqlite.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/NativeCatalogue.h"
#include "engine/data/TxFieldDefinition.h"
#include "engine/data/TxSchemaChange.h"
#include "engine/data/TxVectorPrivate.h"

#include <ogrsf_frmts.h>
#include <sqlite3.h>

#include <QSet>

#include <algorithm>

namespace {

/// True when a table of @p dataSource with the columns of @p layer can have @p count more. SQLite itself finds out only
/// behind the last that fits, and takes half a minute to come there.
bool hasRoomFor(const TxDataSourcePrivate &dataSource, OGRLayer &layer, qsizetype count)
{
    const bool isSqlite = dataSource.isGeoPackage() || dataSource.engineType == CTxDataSourceStorage::SQLite;
    sqlite3 *database = isSqlite ? TxSqlite::connection(*dataSource.gdal) : nullptr;
    if (!database)
        return true;
    const int most = sqlite3_limit(database, SQLITE_LIMIT_COLUMN, -1);
    const int own = 1 + (layer.GetGeomType() == wkbNone ? 0 : 1); // identifier and geometry
    const int has = own + layer.GetLayerDefn()->GetFieldCount();
    if (count <= most - has)
        return true;
    CPLError(CE_Failure, CPLE_AppDefined, "it has %d columns, and no table can have more than %d", has, most);
    return false;
}

/// True when every field can be made as such. Asked before anything is changed: a change that is taken back ends the
/// recordsets of the datasource.
bool areSound(const CTxFieldInfos &infos)
{
    return std::all_of(infos.begin(), infos.end(),
                       [](const CTxFieldInfo &info) { return TxFieldDefinition::toOgr(info) != nullptr; });
}

/// Adds the fields to the layer. A driver that cannot take changes back is helped by hand.
bool addToLayer(OGRLayer &layer, const CTxFieldInfos &infos, const QByteArray &driver, bool undoesItself)
{
    const int before = layer.GetLayerDefn()->GetFieldCount();
    const bool done = TxFieldDefinition::addTo(layer, infos, driver);
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
    OGRLayer *present = d->layer();
    bool done = present && areSound(infos) && hasRoomFor(dataSource, *present, infos.size());
    if (done) {
        TxSchemaChange change(dataSource);
        OGRLayer *layer = change.isOpen() ? d->layer() : nullptr;
        done = layer && addToLayer(*layer, infos, dataSource.driver, change.undoesItself()) &&
               layer->SyncToDisk() == OGRERR_NONE;
        if (done && dataSource.engineType == CTxDataSourceStorage::Native)
            done = NativeCatalogue::addFields(*dataSource.gdal, GetName(), infos);
        done = done && change.commit();
        d->schemaChanged();
    }
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
