#include "engine/data/TxDataSource.h"

#include "engine/data/TxDataSourcePrivate.h"
#include "engine/data/TxDatasetListing.h"
#include "engine/data/TxNameRules.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QSet>

CTxDataSource::CTxDataSource() : d(std::make_unique<TxDataSourcePrivate>(this)) {}

CTxDataSource::~CTxDataSource()
{
    d->dropTemporary();
}

const QString &CTxDataSource::GetAlias() const
{
    return d->alias;
}

const QString &CTxDataSource::GetPath() const
{
    return d->path;
}

CTxDataSourceStorage::Type CTxDataSource::GetEngineType() const
{
    return d->engineType;
}

QString CTxDataSource::GetDriverName() const
{
    return QString::fromUtf8(d->driver);
}

quint32 CTxDataSource::GetOpenOptions() const
{
    return d->options;
}

bool CTxDataSource::IsDatabaseType() const
{
    const CTxDataSourceStorage::Entry *row = CTxDataSourceStorage::find(d->engineType);
    return row && row->isDatabase;
}

bool CTxDataSource::HasCapability(int capability) const
{
    if (d->isReadOnly() || !d->gdal)
        return false;
    switch (capability) {
    case CanCreateDatasets:
        return d->gdal->TestCapability(ODsCCreateLayer);
    case CanDeleteDatasets:
        return d->gdal->TestCapability(ODsCDeleteLayer);
    case CanCreateFields:
    case CanEditRecords:
        return d->engineType != CTxDataSourceStorage::ImageFile; // every driver opened for changes else can do both
    case CanHoldRasters:
        return d->isGeoPackage();
    case CanRenameDatasets:
        return d->isGeoPackage();
    case CanTransact:
        return d->gdal->TestCapability(ODsCTransactions);
    default:
        return false;
    }
}

qint32 CTxDataSource::GetDatasetCount() const
{
    return static_cast<qint32>(d->listed().size());
}

CTxDataset *CTxDataSource::GetDatasetAt(qint32 index) const
{
    const std::vector<CTxDataset *> &listed = d->listed();
    return index >= 0 && static_cast<size_t>(index) < listed.size() ? listed[static_cast<size_t>(index)] : nullptr;
}

CTxDataset *CTxDataSource::GetDataset(const QString &name) const
{
    return d->find(name);
}

bool CTxDataSource::IsAvailableDatasetName(const QString &name, const QStringList *taken) const
{
    return TxNameRules::isDatasetName(name) && !d->isTaken(name) &&
           !(taken && taken->contains(name, Qt::CaseInsensitive));
}

QString CTxDataSource::GetUnoccupiedDatasetName(const QString &proposal, const QStringList *taken) const
{
    return TxNameRules::firstFree(TxNameRules::madeDatasetName(proposal),
                                  [&](const QString &name) { return IsAvailableDatasetName(name, taken); });
}

bool CTxDataSource::Refresh()
{
    if (!d->isIdle())
        return false;
    if (d->transaction)
        return TxGdal::fail(QStringLiteral("“%1” cannot be looked at anew within a transaction").arg(d->alias));
    return d->refresh();
}

bool CTxDataSource::IsTransStarted() const
{
    return d->transaction;
}

void CTxDataSource::GetProjection(CTxPJCoordSys &coordSys) const
{
    coordSys = CTxPJCoordSys();
    for (const auto &dataset : d->datasets()) {
        d->ownProjection(*dataset, coordSys);
        if (coordSys.GetType() != CTxPJCoordSys::None)
            return;
    }
}
