#include "engine/base/TxSqlite.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/NativeCatalogue.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/TxDatasetMaker.h"
#include "engine/data/TxFilesAside.h"
#include "engine/data/TxRasterTable.h"
#include "engine/data/TxSchemaChange.h"
#include "engine/data/TxVectorPrivate.h"

#include <QDir>
#include <QFileInfo>

#include <ogrsf_frmts.h>

#include <array>

namespace {

/// The tiles that the tile index @p index lists, as far as they are datasets that are kept for a library.
QList<CTxDataset *> tilesOf(const TxDataSourcePrivate &dataSource, const QString &index)
{
    QList<CTxDataset *> tiles;
    sqlite3 *database = TxSqlite::connection(*dataSource.gdal);
    TxSqlite::Statement names(database,
                              QStringLiteral("SELECT \"%1\" FROM %2")
                                  .arg(QLatin1String(NativeSchema::tileName), TxGdal::quoteIdentifier(index)));
    while (names.next()) {
        CTxDataset *tile = dataSource.findExact(names.text(0));
        if (tile && (tile->GetOptions() & CTxDataset::Internal) != 0 && !tiles.contains(tile))
            tiles.append(tile);
    }
    return tiles;
}

/// True when a library other than @p library has the tile index @p index.
bool isShared(const TxDataSourcePrivate &dataSource, const QString &index, const CTxDataset *library)
{
    for (const auto &dataset : dataSource.datasets()) {
        if (dataset.get() != library && dataset->IsVector() &&
            static_cast<const CDatasetVector &>(*dataset).GetTileIndexName() == index)
            return true;
    }
    return false;
}

/// @p dataset with everything that goes with it: its children, and of a library the tile index and the tiles.
QList<CTxDataset *> familyOf(const TxDataSourcePrivate &dataSource, CTxDataset *dataset)
{
    QList<CTxDataset *> family = {dataset};
    for (qsizetype i = 0; i < family.size(); ++i) { // it grows on the way
        const auto add = [&family](CTxDataset *member) {
            if (member && !family.contains(member))
                family.append(member);
        };
        CTxDataset *member = family.at(i);
        add(member->GetChildDataset());
        const QString index =
            member->IsVector() ? static_cast<const CDatasetVector *>(member)->GetTileIndexName() : QString();
        CTxDataset *indexDataset = index.isEmpty() ? nullptr : dataSource.findExact(index);
        if (!indexDataset || isShared(dataSource, index, member))
            continue;
        for (CTxDataset *tile : tilesOf(dataSource, index))
            add(tile);
        add(indexDataset);
    }
    return family;
}

/// The files that the shapefile called @p name consists of in @p folder, with the indexes and descriptions that
/// programs put beside it.
QStringList shapefileParts(const QString &folder, const QString &name)
{
    constexpr std::array extensions = {u"shp", u"shx", u"dbf", u"prj", u"cpg", u"qpj", u"qix", u"sbn",
                                       u"sbx", u"fbn", u"fbx", u"idm", u"ind", u"mxs", u"ixs", u"shp.xml"};
    QStringList parts;
    const QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    for (const QString &file : files) {
        if (file.size() <= name.size() || !file.startsWith(name) || file.at(name.size()) != u'.')
            continue;
        const QString extension = file.mid(name.size() + 1).toLower();
        if (std::find(extensions.begin(), extensions.end(), extension) != extensions.end())
            parts.append(file);
    }
    return parts;
}

/// Of a storage without transactions that has a dataset in several files: takes those out of the way. @return false,
/// and GDAL's handler is told why, when they cannot be.
bool takeAside(const TxDataSourcePrivate &dataSource, const CTxDataset &dataset, TxFilesAside &aside)
{
    if (dataSource.engineType != CTxDataSourceStorage::Shapefile || !dataset.IsVector())
        return true;
    const QFileInfo place(QString::fromUtf8(dataSource.gdalName));
    const QString folder = place.isDir() ? place.filePath() : place.path();
    const OGRLayer *layer = TxVectorPrivate::of(static_cast<const CDatasetVector &>(dataset)).layer();
    const QString name = layer ? QString::fromUtf8(layer->GetDescription()) : QString();
    const QString reason = name.isEmpty() ? QString() : aside.take(folder, shapefileParts(folder, name));
    if (!reason.isEmpty())
        CPLError(CE_Failure, CPLE_FileIO, "%s", reason.toUtf8().constData());
    return reason.isEmpty();
}

/// Deletes the layer of the storage that is called @p source.
bool deleteLayer(const TxDataSourcePrivate &dataSource, const QByteArray &source)
{
    const OGRLayer *layer = dataSource.layer(source);
    for (int i = 0; layer && i < dataSource.gdal->GetLayerCount(); ++i) {
        if (dataSource.gdal->GetLayer(i) == layer)
            return dataSource.gdal->DeleteLayer(i) == OGRERR_NONE;
    }
    return false;
}

} // namespace

bool TxDatasetMaker::removeStored(const TxDataSourcePrivate &dataSource, const CTxDataset &dataset)
{
    const bool isNative = dataSource.engineType == CTxDataSourceStorage::Native;
    const bool gone =
        dataset.IsVector()
            ? deleteLayer(dataSource, TxVectorPrivate::of(static_cast<const CDatasetVector &>(dataset)).source)
            : TxRasterTable::remove(*dataSource.gdal, dataset.GetName());
    return gone && (!isNative || NativeCatalogue::removeDataset(*dataSource.gdal, dataset.GetName()));
}

bool CTxDataSource::DeleteDataset(const QString &name)
{
    CTxDataset *dataset = d->find(name);
    if (!dataset)
        return TxGdal::fail(QStringLiteral("There is no dataset “%1” in “%2”").arg(name.left(80), d->alias));
    if (!HasCapability(CanDeleteDatasets))
        return TxGdal::fail(QStringLiteral("Datasets of “%1” cannot be deleted").arg(d->alias));
    const QString reason = TxSchemaChange::refusal(*d);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);

    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Cannot delete the dataset “%1”").arg(dataset->GetName());
    const QList<CTxDataset *> family = familyOf(*d, dataset);
    TxSchemaChange change(*d);
    bool done = change.isOpen();
    for (CTxDataset *member : family) {
        if (done)
            member->Close();
    }
    if (done)
        d->endRecordsets(); // SQLite drops no table while a statement of the connection reads
    TxFilesAside aside;
    done = done && takeAside(*d, *dataset, aside); // storages of files know no families
    for (CTxDataset *member : family)
        done = done && TxDatasetMaker::removeStored(*d, *member);
    if (!done || !change.commit()) {
        errors.fail(failure);
        aside.bringBack();
        if (change.isOpen() && !change.undoesItself())
            d->reopen(); // the driver may believe that the dataset has gone
        return false;
    }
    aside.drop();
    for (auto member = family.crbegin(); member != family.crend(); ++member)
        d->removeDataset(*member);
    return true;
}

void TxDataSourcePrivate::dropTemporary()
{
    QStringList names;
    for (const auto &dataset : m_datasets) {
        if (dataset->GetOptions() & CTxDataset::Temporary)
            names.append(dataset->GetName());
    }
    if (names.isEmpty() || isReadOnly())
        return;
    if (transaction)
        q->RollbackTrans(); // as closing does
    for (const QString &name : std::as_const(names)) {
        if (findExact(name)) // it may have gone with another
            q->DeleteDataset(name);
    }
}

bool CTxDataSource::RenameDataset(const QString &name, const QString &newName)
{
    CTxDataset *dataset = d->find(name);
    if (!dataset)
        return TxGdal::fail(QStringLiteral("There is no dataset “%1” in “%2”").arg(name.left(80), d->alias));
    if (dataset->GetName() == newName)
        return true;
    if (!HasCapability(CanRenameDatasets))
        return TxGdal::fail(QStringLiteral("Datasets of “%1” cannot be renamed").arg(d->alias));
    if (dataset->IsOpen())
        return TxGdal::fail(QStringLiteral("“%1” is open: close it before it is renamed").arg(dataset->GetName()));
    const bool differsInCaseOnly = dataset->GetName().compare(newName, Qt::CaseInsensitive) == 0;
    if (differsInCaseOnly || !IsAvailableDatasetName(newName))
        return TxGdal::fail(QStringLiteral("“%1” cannot be the name of a dataset").arg(newName.left(80)));
    const QString reason = TxSchemaChange::refusal(*d);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);

    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Cannot rename the dataset “%1”").arg(dataset->GetName());
    d->endRecordsets();
    TxSchemaChange change(*d);
    bool done = change.isOpen();
    if (done && dataset->IsVector()) {
        OGRLayer *layer = TxVectorPrivate::of(*static_cast<CDatasetVector *>(dataset)).layer();
        done = layer && layer->Rename(newName.toUtf8().constData()) == OGRERR_NONE;
    } else if (done) {
        done = TxRasterTable::rename(*d->gdal, dataset->GetName(), newName);
    }
    if (done && d->engineType == CTxDataSourceStorage::Native)
        done = NativeCatalogue::renameDataset(*d->gdal, dataset->GetName(), newName);
    if (!done || !change.commit())
        return errors.fail(failure);

    for (const auto &other : d->datasets()) {
        if (!other->IsVector())
            continue;
        TxVectorPrivate &vector = TxVectorPrivate::of(static_cast<CDatasetVector &>(*other));
        if (vector.tileIndex == dataset->GetName())
            vector.tileIndex = newName;
    }
    d->renameDataset(dataset, newName, newName.toUtf8());
    return true;
}
