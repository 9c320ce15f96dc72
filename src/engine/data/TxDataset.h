#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxHandle.h"
#include "engine/data/ElemDataEnc.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/geometry/Rect2D.h"

#include <QString>

#include <memory>

class CTxDataSource;
class CTxPJCoordSys;

/// A dataset: the base of feature datasets (CDatasetVector) and image and grid datasets (CDatasetRaster).
///
/// A dataset belongs to its datasource and lives until it is deleted or the datasource closes. Name, kind and options
/// are known without opening it; its content can be read only while it is open. Field descriptions are read on demand
/// in either state.
class TX_EXPORT CTxDataset
{
public:
    /// What is special about a dataset; the flags are combined.
    enum Option : qint32 {
        NoOption = 0,
        Library = 0x1,   ///< divided into tiles, listed by its tile index dataset
        ReadOnly = 0x2,  ///< its records cannot be changed
        Temporary = 0x4, ///< goes when its datasource closes
        Internal = 0x8   ///< kept for another dataset (a tile index, a tile): found by name, not by index
    };

    virtual ~CTxDataset();
    CTxDataset(const CTxDataset &) = delete;
    CTxDataset &operator=(const CTxDataset &) = delete;

    /// The dataset's kind.
    CElemDatasetInfo::Type GetType() const { return m_type; }
    /// The dataset's name, unique in its datasource.
    const QString &GetName() const { return m_name; }
    /// The datasource that owns it; never null.
    CTxDataSource *GetDataSource() const { return m_dataSource; }
    /// Option flags, combined.
    qint32 GetOptions() const { return m_options; }
    /// How its content is encoded.
    CElemDataEnc::encType GetEncType() const { return m_encType; }

    /// True for a CDatasetVector, false for a CDatasetRaster.
    virtual bool IsVector() const = 0;
    /// True between Open() and Close().
    virtual bool IsOpen() const = 0;
    /// Makes the content readable; opening an open dataset succeeds. @return false on failure (see TxGetErrorMsgObj()).
    virtual bool Open() = 0;
    /// Releases the content and every recordset that was not given back; closing a closed dataset succeeds.
    virtual bool Close() = 0;

    /// The attached child dataset (the nodes of a network, for example), owned by the same datasource; null when none.
    CTxDataset *GetChildDataset() const { return m_child; }
    /// The dataset whose child this is, null when none.
    CTxDataset *GetParentDataset() const { return m_parent; }

    /// The rectangle that holds the content, in the dataset's coordinate system; void when it is empty or not known.
    /// Opens nothing, but may have to look at every record the first time.
    virtual CRect2D GetBounds() const = 0;
    /// Copies the dataset's coordinate system to @p coordSys; that of its datasource where it has none of its own.
    virtual void GetProjection(CTxPJCoordSys &coordSys) const = 0;

protected:
    CTxDataset(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type);

private:
    friend class TxDataSourcePrivate;
    template<class Object>
    friend class TxHandle;

    CTxDataSource *m_dataSource; // owns this
    CTxDataset *m_child = nullptr;
    CTxDataset *m_parent = nullptr;
    QString m_name;
    CElemDatasetInfo::Type m_type;
    CElemDataEnc::encType m_encType = CElemDataEnc::NONE;
    qint32 m_options = NoOption;
    TxLife m_life;
};
