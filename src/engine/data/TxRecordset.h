#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxHandle.h"
#include "engine/base/TxVariant.h"
#include "engine/data/TxFieldInfo.h"

#include <memory>

class CDatasetVector;
class CElemGeometry;

/// A cursor over the records of a vector dataset.
///
/// Made by CDatasetVector::Query(), given back to CDatasetVector::ReleaseRecordset(). It keeps one record in memory
/// (a few more where the driver streams), however many there are. A fresh cursor stands on the first record. Changes
/// take effect with Update(); while the datasource has no transaction started, each Update() and Delete() is one.
class TX_EXPORT CTxRecordset
{
public:
    ~CTxRecordset();
    CTxRecordset(const CTxRecordset &) = delete;
    CTxRecordset &operator=(const CTxRecordset &) = delete;

    /// The dataset the cursor belongs to; never null.
    CDatasetVector *GetDataset() const;
    /// The dataset that @p recordset belongs to; null for null and for a recordset that is dead (it is not touched).
    static CDatasetVector *GetDatasetOf(const CTxRecordset *recordset);

    /// True behind the last record, and when there is none.
    bool IsEOF() const;
    /// Goes (back) to the first record. @return false when there is none or the walk cannot be begun anew.
    bool MoveFirst();
    /// Goes to the next record. @return false behind the last one.
    bool MoveNext();
    /// Goes to the record with the identifier @p id (its "TxID") if the query gives it; MoveNext() goes on from where
    /// the walk stood before. @return false when there is none; the place is then kept.
    bool MoveToID(qint64 id);
    /// How many records the query gives, -1 when it cannot be told. May have to count.
    qint64 GetRecordCount() const;
    /// The identifier ("TxID") of the current record, -1 at the end.
    qint64 GetID() const;

    /// How many fields a record of this query has.
    int GetFieldCount() const;
    /// Reads the description of the field at 0-based @p index; see CDatasetVector::GetFieldInfo.
    bool GetFieldInfo(int index, CTxFieldInfo &info, int detail = 4) const;
    /// The index of the field called @p name (letter case ignored), -1 when there is none.
    int FindField(const QString &name) const;
    /// Reads a field of the current record. A null field gives a variant of code Null and true.
    /// @return false at the end, or when there is no such field; @p value is then left as it was.
    bool GetFieldValue(int index, CTxVariant &value) const;
    bool GetFieldValue(const QString &name, CTxVariant &value) const;

    /// The geometry of the current record. On success @p geometry points to a new object that the caller owns. A point
    /// that the record keeps a text for is that text, whatever fields the query wants.
    /// @return false, and null, at the end or when the record has none.
    bool GetGeometry(CElemGeometry *&geometry) const;

    /// Begins to change the current record; SetFieldValue() and SetGeometry() work on a copy until Update().
    bool Edit();
    /// Begins a new record of nulls and defaults.
    bool AddNew();
    /// Writes a field of the record that Edit() or AddNew() opened. The value is converted to the field's type.
    /// @return false when no record is open for change, there is no such field, it cannot be written, or the value
    /// does not fit the field.
    bool SetFieldValue(const QString &name, const CTxVariant &value);
    bool SetFieldValue(int index, const CTxVariant &value);
    /// Gives the open record a geometry; null takes it away. The geometry is copied.
    bool SetGeometry(const CElemGeometry *geometry);
    /// Writes the open record to the dataset. After AddNew() GetID() is the new record's identifier until the next
    /// move. @return false on failure; the record then stays open for change.
    bool Update();
    /// Drops the changes of the open record.
    void CancelUpdate();
    /// Deletes the current record; MoveNext() goes to the one behind it.
    bool Delete();

private:
    friend class TxVectorPrivate;
    friend class TxRecordsetPrivate;
    template<class Object>
    friend class TxHandle;
    explicit CTxRecordset(std::unique_ptr<class TxRecordsetPrivate> priv);

    const std::unique_ptr<TxRecordsetPrivate> d;
    TxLife m_life;
};
