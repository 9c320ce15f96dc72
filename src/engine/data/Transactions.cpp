#include "engine/base/TxSqlite.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxVectorPrivate.h"

namespace {

/// Makes every dataset look up anew what it knows of its records.
void contentChanged(const TxDataSourcePrivate &dataSource)
{
    for (const auto &dataset : dataSource.datasets()) {
        if (dataset->IsVector())
            TxVectorPrivate::of(static_cast<CDatasetVector &>(*dataset)).contentChanged();
    }
}

} // namespace

bool CTxDataSource::BeginTrans()
{
    if (d->transaction)
        return TxGdal::fail(QStringLiteral("“%1” has an open edit transaction already").arg(d->alias));
    if (!HasCapability(CanTransact))
        return TxGdal::fail(QStringLiteral("“%1” knows no edit transactions").arg(d->alias));
    const TxGdal::ErrorCollector errors;
    if (d->gdal->StartTransaction() != OGRERR_NONE)
        return errors.fail(QStringLiteral("Cannot open an edit transaction in “%1”").arg(d->alias));
    if (d->isGeoPackage() && !TxSqlite::lockForWriting(*d->gdal)) {
        TxSqlite::rollback(*d->gdal);
        return errors.fail(QStringLiteral("Cannot open an edit transaction in “%1”").arg(d->alias));
    }
    d->transaction = true;
    return true;
}

bool CTxDataSource::CommitTrans()
{
    if (!d->transaction)
        return TxGdal::fail(QStringLiteral("“%1” has no open edit transaction").arg(d->alias));
    const TxGdal::ErrorCollector errors;
    // What the driver holds back (extents, counts) belongs to the transaction too.
    d->gdal->FlushCache();
    if (errors.hasFailure() || d->gdal->CommitTransaction() != OGRERR_NONE)
        return errors.fail(QStringLiteral("Cannot commit the changes of “%1”").arg(d->alias));
    d->transaction = false;
    return true;
}

bool CTxDataSource::RollbackTrans()
{
    if (!d->transaction)
        return TxGdal::fail(QStringLiteral("“%1” has no open edit transaction").arg(d->alias));
    const TxGdal::ErrorCollector errors;
    d->endRecordsets();
    bool done = TxSqlite::rollback(*d->gdal);
    d->transaction = false;
    contentChanged(*d);
    // The driver still believes in the extents that the records had, and a connection that could not take the changes
    // back is given up: the storage then forgets them by itself.
    if (d->isGeoPackage() || !done)
        done = d->reopen();
    return done || errors.fail(QStringLiteral("Cannot take back the changes of “%1”").arg(d->alias));
}
