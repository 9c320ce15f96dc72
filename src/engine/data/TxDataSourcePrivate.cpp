#include "engine/data/TxDataSourcePrivate.h"

#include "engine/base/TxSqlite.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/TxDatasetListing.h"
#include "engine/data/TxRasterPrivate.h"
#include "engine/data/TxVectorPrivate.h"
#include "engine/projection/TxCoordSysPrivate.h"

#include <ogrsf_frmts.h>

#include <algorithm>

TxDataSourcePrivate::~TxDataSourcePrivate()
{
    for (const auto &dataset : m_datasets)
        dataset->Close();
    if (transaction && gdal)
        TxSqlite::rollback(*gdal);
    m_datasets.clear();
    const TxGdal::ErrorCollector errors; // what closing a broken file says helps nobody any more
    gdal.reset();
}

CTxDataset *TxDataSourcePrivate::addDataset(const TxDatasetEntry &entry)
{
    if (m_byName.contains(entry.name))
        return nullptr;
    const bool isRaster = entry.type >= CElemDatasetInfo::Image && entry.type <= CElemDatasetInfo::ECW;
    std::unique_ptr<CTxDataset> dataset;
    if (isRaster) {
        std::unique_ptr<CDatasetRaster> raster(new CDatasetRaster(q, entry.name, entry.type));
        raster->d->source = entry.source;
        raster->d->bands = entry.bands;
        dataset = std::move(raster);
    } else {
        std::unique_ptr<CDatasetVector> vector(new CDatasetVector(q, entry.name, entry.type));
        vector->d->source = entry.source;
        vector->d->tileIndex = entry.tileIndex;
        dataset = std::move(vector);
    }
    dataset->m_encType = entry.encType;
    dataset->m_options = entry.options | (isReadOnly() ? CTxDataset::ReadOnly : CTxDataset::NoOption);
    CTxDataset *result = dataset.get();
    m_byName.insert(entry.name, result);
    m_byFoldedName.insert(entry.name.toCaseFolded(), result);
    m_datasets.push_back(std::move(dataset));
    m_listedValid = false;
    return result;
}

void TxDataSourcePrivate::removeDataset(CTxDataset *dataset)
{
    const auto at = std::find_if(m_datasets.begin(), m_datasets.end(),
                                 [dataset](const auto &owned) { return owned.get() == dataset; });
    if (at == m_datasets.end())
        return;
    dataset->Close();
    attachChild(dataset->m_parent, nullptr);
    attachChild(dataset, nullptr);
    m_byName.remove(dataset->m_name);
    m_byFoldedName.remove(dataset->m_name.toCaseFolded(), dataset);
    m_datasets.erase(at);
    m_listedValid = false;
}

void TxDataSourcePrivate::renameDataset(CTxDataset *dataset, const QString &name, const QByteArray &source)
{
    m_byName.remove(dataset->m_name);
    m_byFoldedName.remove(dataset->m_name.toCaseFolded(), dataset);
    dataset->m_name = name;
    m_byName.insert(name, dataset);
    m_byFoldedName.insert(name.toCaseFolded(), dataset);
    if (dataset->IsVector()) {
        TxVectorPrivate &vector = TxVectorPrivate::of(*static_cast<CDatasetVector *>(dataset));
        vector.source = source;
        vector.layerChanged();
    } else {
        static_cast<CDatasetRaster *>(dataset)->d->source = source;
    }
}

void TxDataSourcePrivate::attachChild(CTxDataset *parent, CTxDataset *child)
{
    if (parent && parent->m_child)
        parent->m_child->m_parent = nullptr;
    if (child && child->m_parent)
        child->m_parent->m_child = nullptr;
    if (parent)
        parent->m_child = child;
    if (child)
        child->m_parent = parent;
    m_listedValid = false;
}

void TxDataSourcePrivate::setOptions(CTxDataset *dataset, qint32 newOptions)
{
    dataset->m_options = newOptions;
    m_listedValid = false;
}

CTxDataset *TxDataSourcePrivate::find(const QString &name) const
{
    if (CTxDataset *exact = findExact(name))
        return exact;
    const auto [begin, end] = m_byFoldedName.equal_range(name.toCaseFolded());
    return begin != end && std::next(begin) == end ? *begin : nullptr;
}

const std::vector<CTxDataset *> &TxDataSourcePrivate::listed() const
{
    if (!m_listedValid) {
        m_listed.clear();
        for (const auto &dataset : m_datasets) {
            if (!dataset->m_parent && (dataset->m_options & CTxDataset::Internal) == 0)
                m_listed.push_back(dataset.get());
        }
        m_listedValid = true;
    }
    return m_listed;
}

OGRLayer *TxDataSourcePrivate::layer(const QByteArray &source) const
{
    if (!gdal)
        return nullptr;
    const int place = TxDatasetListing::placeOf(source);
    return place >= 0 ? gdal->GetLayer(place) : gdal->GetLayerByName(source.constData());
}

bool TxDataSourcePrivate::reopen()
{
    endRecordsets();
    const TxGdal::ErrorCollector errors;
    const bool onlyReads = isReadOnly() || engineType == CTxDataSourceStorage::ImageFile;
    const unsigned access = onlyReads ? GDAL_OF_READONLY : GDAL_OF_UPDATE;
    const unsigned content = onlyReads ? GDAL_OF_VECTOR | GDAL_OF_RASTER : GDAL_OF_VECTOR;
    gdal.reset(); // before it is opened anew: one file, one connection
    transaction = false;
    ++generation;
    gdal = TxGdal::open(gdalName, content | access, gdalOptions, {QString::fromUtf8(driver)});
    return gdal || errors.fail(QStringLiteral("Cannot open “%1” again").arg(path));
}

void TxDataSourcePrivate::endRecordsets()
{
    for (const auto &dataset : m_datasets) {
        if (dataset->IsVector())
            TxVectorPrivate::of(*static_cast<CDatasetVector *>(dataset.get())).endRecordsets();
    }
}

void TxDataSourcePrivate::ownProjection(const CTxDataset &dataset, CTxPJCoordSys &coordSys) const
{
    coordSys = CTxPJCoordSys();
    const TxGdal::ErrorCollector errors;
    if (dataset.IsVector()) {
        OGRLayer *from = TxVectorPrivate::of(static_cast<const CDatasetVector &>(dataset)).layer();
        if (from)
            coordSys = TxCoordSysPrivate::fromReference(from->GetSpatialRef());
    } else {
        TxGdal::DatasetPtr holder;
        const GDALDataset *from = static_cast<const CDatasetRaster &>(dataset).d->raster(holder);
        if (from)
            coordSys = TxCoordSysPrivate::fromReference(from->GetSpatialRef());
    }
}

bool TxDataSourcePrivate::isIdle() const
{
    return busy == 0 || TxGdal::fail(QStringLiteral("“%1” is busy with an append").arg(alias));
}

bool TxDataSourcePrivate::isGeoPackage() const
{
    return driver == "GPKG";
}
