#include "engine/base/TxSqlite.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxVectorPrivate.h"

namespace {

/// Calls @p act with the inside of every vector dataset, until it answers false. @return false if it did
template<class Act>
bool forEachVector(const TxDataSourcePrivate &dataSource, Act act)
{
    for (const auto &dataset : dataSource.datasets()) {
        if (dataset->IsVector() && !act(TxVectorPrivate::of(static_cast<CDatasetVector &>(*dataset))))
            return false;
    }
    return true;
}

} // namespace

bool CTxDataSource::BeginTrans()
{
    if (!d->isIdle())
        return false;
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
    if (!d->isIdle())
        return false;
    if (!d->transaction)
        return TxGdal::fail(QStringLiteral("“%1” has no open edit transaction").arg(d->alias));
    const TxGdal::ErrorCollector errors;
    // What was held back (spatial indexes by ourselves, extents and counts by the driver) belongs to the transaction
    // too.
    const bool isIndexed =
        forEachVector(*d, [](TxVectorPrivate &vector) { return !vector.pausedIndex() || vector.resumeIndex(); });
    if (isIndexed)
        d->gdal->FlushCache();
    if (!isIndexed || errors.hasFailure() || d->gdal->CommitTransaction() != OGRERR_NONE)
        return errors.fail(QStringLiteral("Cannot commit the changes of “%1”").arg(d->alias));
    d->transaction = false;
    return true;
}

bool CTxDataSource::RollbackTrans()
{
    if (!d->isIdle())
        return false;
    if (!d->transaction)
        return TxGdal::fail(QStringLiteral("“%1” has no open edit transaction").arg(d->alias));
    const TxGdal::ErrorCollector errors;
    d->endRecordsets();
    bool done = TxSqlite::rollback(*d->gdal);
    d->transaction = false;
    forEachVector(*d, [](TxVectorPrivate &vector) {
        vector.forgetPause();
        vector.contentChanged(); // looked up anew
        return true;
    });
    // The driver still believes in the extents that the records had, and a connection that could not take the changes
    // back is given up: the storage then forgets them by itself.
    if (d->isGeoPackage() || !done)
        done = d->reopen();
    return done || errors.fail(QStringLiteral("Cannot take back the changes of “%1”").arg(d->alias));
}
