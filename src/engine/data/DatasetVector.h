#pragma once

#include "engine/base/TxProgress.h"
#include "engine/data/TxDataset.h"
#include "engine/data/TxFieldInfo.h"

class CTxQueryDef;
class CTxRecordset;
class CTxVariant;

/// How CDatasetVector::Append() works. A value type.
struct TX_EXPORT CTxAppendDef
{
    /// A text field of the target that gets the name of the dataset each record came from; made when it is missing.
    /// Empty for none.
    QString tagField;
    /// Only what lies in this rectangle (in the target's coordinate system) is appended: lines and regions are cut at
    /// its edge, points and texts beyond it left out. Void for everything.
    CRect2D bounds;
    /// Counts records.
    TxProgress progress;
};

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

    /// Appends the records of @p source, from its first to its last, which may belong to any vector dataset of any
    /// datasource. Values go to the fields of the same name (letter case ignored) and are converted to their types;
    /// geometries are converted to the kind and the coordinate system of this dataset. Fields that this dataset lacks
    /// are left out, and system fields, but that an empty one takes the keys of edges, nodes, routes and tiles.
    ///
    /// All or nothing: when a record does not fit, the storage fails or the progress function stops it, the dataset is
    /// as it was before, and the error text says what failed at which record, and how far it came. The dataset must be
    /// open. Afterwards @p source stands at its end.
    bool Append(CTxRecordset *source, const CTxAppendDef &def = {});
    /// The same with the engine's progress dialog (CTxDlgProgress) when @p flag is true.
    /// @param name the tag field, @p bounds the clip rectangle, as in CTxAppendDef
    bool Append(CTxRecordset *source, bool flag, const QString &name, const CRect2D &bounds);

    /// The different values of the field called @p field over all records that meet @p filter (an SQL condition; empty
    /// for all), ascending, a null value first if there is one. At most @p limit of them (the smallest; -1 for all).
    /// @return false when the dataset is closed, has no such field or the condition is no SQL; and when @p progress
    /// (counting records) stops it.
    bool GetDistinctValues(const QString &field, QList<CTxVariant> &values, qint64 limit = -1,
                           const QString &filter = {}, const TxProgress &progress = {}) const;

    /// Of a library (tiled) dataset the name of its tile index dataset in the same datasource; else empty.
    QString GetTileIndexName() const;

private:
    friend class TxDataSourcePrivate;
    friend class TxVectorPrivate;
    CDatasetVector(CTxDataSource *dataSource, const QString &name, CElemDatasetInfo::Type type);

    const std::unique_ptr<class TxVectorPrivate> d;
};
