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
    /// Puts the record @p id in front of the walk (as it is stored now) until the next move, if the query gives it: what
    /// MoveToID() does.
    bool pin(qint64 id);
    /// Puts the record @p id, which was just written, in front of the walk until the next move. It is read when somebody
    /// asks for it, so that writing many records reads none.
    void pinWritten(qint64 id);
    /// Reads the field at @p index of the current record. @return false when there is no such record or field.
    bool value(size_t index, CTxVariant &value);
    /// The geometry of the current record; a text where the record says one. Null when there is none.
    std::unique_ptr<CElemGeometry> geometry();
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
    /// Indices of the fields that a text is made of, shown or not; -1 for what there is not.
    struct TextFields
    {
        int text = -1;
        int angle = -1;
        int height = -1;
    };
    const TextFields &textFields() const { return m_text; }
    /// The index of the field called @p name (letter case ignored), -1 when there is none.
    int findField(const QString &name) const;
    /// Gives the recordset its fields; those behind the first @p visible are not shown.
    void setFields(const std::vector<TxRecordsetField> &list, size_t visible);

    CDatasetVector *const dataset;
    const CTxQueryDef query;
    std::vector<TxRecordsetField> fields; ///< made by setFields()
    size_t visibleCount = 0;              ///< how many of the fields are shown
    std::unique_ptr<TxCursor> cursor;     ///< null after end()
    bool onRecord = false;                ///< the walk stands on a record
    bool gone = false;                    ///< the record that the walk stands on was deleted
    std::optional<TxRecord> pinned;       ///< stands in front of the walk

    /// @name The record that is open for change (RecordsetEdit.cpp)
    /// @{
    /// True when callers may write the field at @p index.
    bool isWritable(size_t index);
    /// Where the layer keeps what follows from the geometry, in the order of NativeSchema::derivedFields; -1 for what it
    /// does not keep.
    const std::vector<int> &derivedPlaces();

    EditMode editMode = EditMode::None;
    OGRFeatureUniquePtr edited; ///< a copy, of the layer's whole definition
    /// @}

private:
    bool readPinned();

    QHash<QString, int> m_byName; // indices of shown fields by case-folded name
    std::vector<bool> m_writable; // of the fields, once somebody writes
    std::vector<int> m_derived;   // derivedPlaces(), once somebody writes
    mutable size_t m_lastFound = 0; // the field that findField() gave last
    bool m_pinIsRead = false;     // pinned holds more than the identifier
    TextFields m_text;
};
