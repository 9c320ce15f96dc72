#pragma once

#include "engine/data/TxDataset.h"
#include "engine/data/TxFieldInfo.h"

class CTxQueryDef;
class CTxRecordset;

/// A dataset of records with fields and, but for tables, a geometry each.
///
/// Fields are numbered from 0, system fields first ("TxID", then what the kind of dataset keeps), user fields behind.
class TX_EXPORT CDatasetVector : public CTxDataset
{
public:
    ~CDatasetVector() override;

    bool IsVector() const override { return true; }
    bool IsOpen() const override;
    bool Open() override;
    bool Close() override;
    CRect2D GetBounds() const override;
    void GetProjection(CTxPJCoordSys &coordSys) const override;

    /// How many fields there are, system fields included; 0 when they cannot be read.
    int GetFieldCount() const;
    /// Reads the description of the field at @p index. @p detail is 4 for everything that is known (the only level).
    /// @return false when @p index is out of range or the field cannot be read; @p info is then left as it was.
    bool GetFieldInfo(int index, CTxFieldInfo &info, int detail = 4) const;
    /// The index of the field called @p name (letter case ignored), -1 when there is none.
    int FindField(const QString &name) const;
    /// True when a new user field may bear @p name: 1 to 63 characters, a letter or underscore first, then letters
    /// (of any script), digits and underscores, not a word reserved by SQL, not a system name, not in use.
    bool IsAvailableFieldName(const QString &name) const;
    /// Adds the fields @p infos, all or none of them. The dataset may be open, but no recordset of it may be.
    bool CreateFields(const CTxFieldInfos &infos);
    /// Adds one field.
    bool CreateField(const CTxFieldInfo &info);
    /// Adds one field from its name, type code, size and flags (see CTxFieldInfo).
    bool CreateField(const QString &name, qint16 type, qint32 size, quint32 flags);

    /// Opens a cursor over the records that @p query asks for; it stands on the first of them. The dataset must be
    /// open. The recordset stays the engine's: give it back to ReleaseRecordset(); it is dead when the dataset closes.
    /// @return null on failure (a condition that is no SQL, an unknown field, a closed dataset).
    CTxRecordset *Query(const CTxQueryDef &query);
    /// Takes a recordset back and frees it. @return false for null and for a pointer that is not a living recordset of
    /// this dataset (it is then not touched).
    bool ReleaseRecordset(CTxRecordset *recordset);
    /// How many recordsets of this dataset are not given back.
    int GetRecordsetCount() const;

    /// How many records there are, -1 when it cannot be told. May have to count.
    qint64 GetRecordCount() const;

    /// Of a library (tiled) dataset the name of its tile index dataset in the same datasource; else empty.
    QString GetTileIndexName() const;

private:
    friend class TxDataSourcePrivate;
    friend class TxVectorPrivate;
    CDatasetVector(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type);

    const std::unique_ptr<class TxVectorPrivate> d;
};
