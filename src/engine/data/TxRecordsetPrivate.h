#pragma once

#include "engine/data/TxCursor.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxVectorPrivate.h"

#include <memory>
#include <optional>
#include <vector>

/// A field of a recordset.
struct TxRecordsetField
{
    CTxFieldInfo info;
    int ogrIndex; ///< index in the dataset's layer; -1 for TxID, -2 for a field of a joined dataset (not to be written)
};

/// The inside of a recordset: the walk, and one record that stands in front of it.
class TxRecordsetPrivate
{
public:
    /// What the record that Edit() or AddNew() opened will become.
    enum class EditMode { None, Change, Add };

    TxRecordsetPrivate(CDatasetVector *owner, const CTxQueryDef &definition) : dataset(owner), query(definition) {}

    static TxRecordsetPrivate &of(const CTxRecordset &recordset) { return *recordset.d; }
    static std::unique_ptr<CTxRecordset> wrap(std::unique_ptr<TxRecordsetPrivate> priv);

    TxVectorPrivate &vector() const { return TxVectorPrivate::of(*dataset); }
    /// Puts the record @p id in front of the walk (as it is stored now) until the next move: what MoveToID() does, and
    /// what Update() does with the record it wrote. With @p matching only if the query gives it.
    bool pin(qint64 id, bool matching);
    /// Tells that the current record was deleted: there is none until the next move.
    void markGone();
    /// Ends the walk for good: the recordset stands at its end and cannot be moved. What close and rollback do.
    void end();
    /// True when there is a current record.
    bool hasRecord() const { return pinned || (onRecord && !gone); }
    /// Closes the record that is open for change, without writing it.
    void dropChanges()
    {
        editMode = EditMode::None;
        edited.reset();
    }
    /// What every move begins with: forgets what stands in front of the walk, and what was not written.
    void leaveRecord()
    {
        dropChanges();
        pinned.reset();
        gone = false;
    }
    /// The current record's identifier, -1 when there is none.
    qint64 currentId() const { return pinned ? pinned->id : hasRecord() ? cursor->id() : -1; }
    /// The index of the field called @p name (letter case ignored), -1 when there is none.
    int findField(const QString &name) const;
    /// Gives the recordset its fields.
    void setFields(const std::vector<TxRecordsetField> &list);

    CDatasetVector *const dataset;
    const CTxQueryDef query;
    const quint64 serial = ++lastSerial; ///< tells a recordset from one that stood at its address before
    std::vector<TxRecordsetField> fields; ///< made by setFields()
    std::unique_ptr<TxCursor> cursor;     ///< null after end()
    bool onRecord = false;                ///< the walk stands on a record
    bool gone = false;                    ///< the record that the walk stands on was deleted
    std::optional<TxRecord> pinned;       ///< stands in front of the walk

    /// @name The record that is open for change (RecordsetEdit.cpp)
    /// @{
    EditMode editMode = EditMode::None;
    OGRFeatureUniquePtr edited; ///< a copy, of the layer's whole definition
    /// @}

private:
    QHash<QString, int> m_byName; // indices of fields by case-folded name

    static inline quint64 lastSerial = 0;
};
