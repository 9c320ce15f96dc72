#pragma once

#include "engine/base/TxExport.h"
#include "engine/data/ElemDataEnc.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/data/TxDataSourceStorage.h"
#include "engine/data/TxFieldInfo.h"
#include "engine/geometry/Rect2D.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <memory>

class CTxDataset;
class CTxPJCoordSys;

/// What a new dataset shall be. A value type.
struct TX_EXPORT CTxDatasetDef
{
    QString name;
    CElemDatasetInfo::Type type = CElemDatasetInfo::Point;
    CElemDataEnc::encType encType = CElemDataEnc::NONE;
    qint32 options = 0;    ///< flags of CTxDataset::Option that the datasource can keep
    CTxFieldInfos fields;  ///< user fields
    QString coordSys;      ///< anything CTxPJCoordSys::FromText reads; empty for none
    QString parentDataset; ///< the dataset this one becomes the child of; empty for none
    QString tileIndex;     ///< of a library dataset the name of its tile index dataset
    QSize rasterSize;      ///< width and height in cells, of raster kinds
    CRect2D rasterBounds;  ///< where the raster lies, of raster kinds
    QString pixelFormat;   ///< "Byte", "Int16", "Float32" …, of raster kinds
    int bandCount = 1;     ///< of raster kinds
};

/// A datasource: one container of datasets (a file, a folder, a database), open.
///
/// Belongs to the CTxDataSources it was opened in; dead after close.
class TX_EXPORT CTxDataSource
{
public:
    /// How a datasource is opened; the flags are combined. Do not change the values.
    enum OpenOption : quint32 {
        Internal = 0x1,    ///< not for pickers
        Normal = 0x2,      ///< opened for users; every datasource has it that is not internal
        OpenReadOnly = 0x4 ///< changes are refused
    };

    /// What a datasource can do; asked by HasCapability(). Do not change the values.
    enum Capability : qint32 {
        CanCreateDatasets = 1,
        CanDeleteDatasets = 2,
        CanCreateFields = 3,
        CanEditRecords = 4,
        CanHoldRasters = 5,
        CanRenameDatasets = 6,
        CanTransact = 14
    };

    ~CTxDataSource();
    CTxDataSource(const CTxDataSource &) = delete;
    CTxDataSource &operator=(const CTxDataSource &) = delete;

    /// The alias: its key in the workspace.
    const QString &GetAlias() const;
    /// The path or connection string it was opened by.
    const QString &GetPath() const;
    /// The kind of storage.
    CTxDataSourceStorage::Type GetEngineType() const;
    /// The short name of the GDAL driver that opened it: "GPKG", "ESRI Shapefile", "GTiff".
    QString GetDriverName() const;
    /// Flags of OpenOption; OpenReadOnly is there also when the storage cannot be written.
    quint32 GetOpenOptions() const;
    /// True for a database server.
    bool IsDatabaseType() const;
    /// True when the datasource can do what @p capability (a Capability code) says; false for unknown codes.
    bool HasCapability(int capability) const;

    /// How many datasets there are to list. Children and internal datasets do not count.
    qint32 GetDatasetCount() const;
    /// The dataset at 0-based @p index, null when out of range.
    CTxDataset *GetDatasetAt(qint32 index) const;
    /// The dataset called @p name, children and internal ones included; null when there is none. Letter case counts,
    /// but where nothing has exactly this name, a name that differs in case alone is found if it is the only one.
    CTxDataset *GetDataset(const QString &name) const;

    /// True when a new dataset may bear @p name: 1 to 63 characters, a letter or underscore first, then letters (of
    /// any script), digits and underscores, no prefix that the storage reserves, not in use (letter case ignored).
    /// @param[out] taken when given, names that are also refused
    bool IsAvailableDatasetName(const QString &name, const QStringList *taken = nullptr) const;
    /// A free name made from @p proposal: what is not allowed in it is replaced by "_", and "_1", "_2" … is added where
    /// it is taken. Never empty.
    QString GetUnoccupiedDatasetName(const QString &proposal, const QStringList *taken = nullptr) const;

    /// Makes a new dataset. @return it, closed; null on failure (see TxGetErrorMsgObj()).
    CTxDataset *CreateDataset(const CTxDatasetDef &def);
    /// Makes a new, empty dataset with the kind, the user fields and the coordinate system (for rasters also size,
    /// place and pixel format) of @p source, in the encoding @p encoding.
    ///
    /// Shapefiles keep 10 bytes of a field's name: longer ones are cut there, with "_1", "_2" … at the end where two
    /// would be the same, and CDatasetVector::Append finds them again. The user fields stand in the order of the source,
    /// so that the n-th of the one is the n-th of the other. Fields of a type that the storage lacks are refused.
    CTxDataset *CreateDatasetFrom(const QString &name, const CTxDataset *source, CElemDataEnc::encType encoding);
    /// Deletes the dataset called @p name with its children and tiles; its pointer is dead afterwards.
    bool DeleteDataset(const QString &name);
    /// Gives a closed dataset a new name.
    bool RenameDataset(const QString &name, const QString &newName);
    /// Looks again what datasets there are; pointers of datasets that still exist stay as they are.
    bool Refresh();

    /// True while an edit transaction is open.
    bool IsTransStarted() const;
    /// Opens an edit transaction. @return false when one is open or the storage knows none.
    bool BeginTrans();
    /// Makes the changes since BeginTrans() last.
    bool CommitTrans();
    /// Takes the changes since BeginTrans() back. Recordsets that are open then stand at their end.
    bool RollbackTrans();

    /// Copies the datasource's coordinate system: that of its first dataset which has one.
    void GetProjection(CTxPJCoordSys &coordSys) const;

private:
    friend class CTxDataSources;
    friend class TxDataSourcePrivate;
    CTxDataSource();

    const std::unique_ptr<class TxDataSourcePrivate> d;
};
