#pragma once

#include "engine/base/TxGdal.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"

#include <QByteArray>
#include <QHash>

#include <memory>
#include <vector>

/// What is known of a dataset before it is opened.
struct TxDatasetEntry
{
    QString name;      ///< unique in the datasource
    QByteArray source; ///< of a vector the OGR layer's name; of a raster what GDAL opens
    CElemDatasetInfo::Type type = CElemDatasetInfo::CAD;
    CElemDataEnc::encType encType = CElemDataEnc::NONE;
    qint32 options = CTxDataset::NoOption; ///< flags of CTxDataset::Option
    QString tileIndex;                     ///< of a library dataset the name of its tile index dataset
    QString parent;                        ///< the dataset whose child this is; empty for none
    int bands = 0;                         ///< of a raster how many bands it is opened with; 0: the driver's choice
};

/// The inside of a datasource: the GDAL dataset with the layers and the list of our datasets.
class TxDataSourcePrivate
{
public:
    explicit TxDataSourcePrivate(CTxDataSource *owner) : q(owner) {}
    ~TxDataSourcePrivate();

    /// Opens a storage. @return null with the engine's last error set; never a datasource without content, but for
    /// kinds of storage in which datasets can be made.
    static std::unique_ptr<CTxDataSource> open(const QString &path, const QString &alias, quint32 options);
    /// The inside of @p dataSource, for the engine's other classes.
    static TxDataSourcePrivate &of(const CTxDataSource &dataSource) { return *dataSource.d; }

    /// @name The list of datasets
    /// @{
    /// Makes the object for @p entry, the last of the list. @return null when the name is taken exactly.
    CTxDataset *addDataset(const TxDatasetEntry &entry);
    /// Closes and frees @p dataset; it is taken from its parent and its child first.
    void removeDataset(CTxDataset *dataset);
    /// Gives @p dataset another name and another source.
    void renameDataset(CTxDataset *dataset, const QString &name, const QByteArray &source);
    /// Makes @p child the child of @p parent; it is then listed no more. Either may be null to part them.
    void attachChild(CTxDataset *parent, CTxDataset *child);
    /// Deletes the datasets that were made to go when the datasource closes. (DatasetDelete.cpp)
    void dropTemporary();
    /// Replaces the option flags of @p dataset.
    void setOptions(CTxDataset *dataset, qint32 options);
    /// The dataset called @p name exactly, null when there is none.
    CTxDataset *findExact(const QString &name) const { return m_byName.value(name); }
    /// As CTxDataSource::GetDataset.
    CTxDataset *find(const QString &name) const;
    /// True when some dataset bears @p name, letter case ignored.
    bool isTaken(const QString &name) const { return m_byFoldedName.contains(name.toCaseFolded()); }
    /// The datasets to list, in order: neither children nor internal ones.
    const std::vector<CTxDataset *> &listed() const;
    /// Every dataset, owned.
    const std::vector<std::unique_ptr<CTxDataset>> &datasets() const { return m_datasets; }
    /// @}

    /// @name The storage
    /// @{
    /// The layer called @p source, null when it has gone.
    OGRLayer *layer(const QByteArray &source) const;
    /// Closes the GDAL dataset and opens it anew, as after a rolled-back change of structure, when the driver's memory
    /// says what is not in the storage. Recordsets end first, datasets stay. @return false when it cannot be opened.
    bool reopen();
    /// Looks again what datasets there are (at the first call: for the first time); those that are still there stay.
    bool refresh();
    /// Copies the coordinate system of @p dataset itself; none where it has none.
    void ownProjection(const CTxDataset &dataset, CTxPJCoordSys &coordSys) const;
    /// Puts every recordset of the datasource to its end and lets go of the statements behind them.
    void endRecordsets();
    /// True for the native database and for GeoPackages: SQLite files with one schema.
    bool isGeoPackage() const;
    /// False, with the engine's last error set, while long work is under way.
    bool isIdle() const;
    /// True when changes are refused.
    bool isReadOnly() const { return (options & CTxDataSource::OpenReadOnly) != 0; }
    /// @}

    CTxDataSource *const q;
    QString alias;
    QString path;
    quint32 options = CTxDataSource::Normal;
    CTxDataSourceStorage::Type engineType = CTxDataSourceStorage::Unknown;
    bool transaction = false; ///< an edit transaction is open
    int busy = 0;             ///< long work is under way; what would pull the ground away from under it is refused
    TxGdal::DatasetPtr gdal;  ///< holds the layers; null where there are only rasters
    QByteArray gdalName;      ///< what gdal was opened by
    QStringList gdalOptions;  ///< open options of gdal
    QByteArray driver;        ///< short name of gdal's driver
    int generation = 0;       ///< counts the openings of gdal: layers of an older one are dead

private:
    friend class TxDataSourceOpener;

    std::vector<std::unique_ptr<CTxDataset>> m_datasets;
    QHash<QString, CTxDataset *> m_byName;
    QMultiHash<QString, CTxDataset *> m_byFoldedName;
    mutable std::vector<CTxDataset *> m_listed;
    mutable bool m_listedValid = false;
};
