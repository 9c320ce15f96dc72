#pragma once

#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSourcePrivate.h"
#include "engine/data/TxRecordset.h"

#include <memory>
#include <optional>
#include <vector>

/// A field of a vector dataset and where OGR keeps it.
struct TxVectorField
{
    CTxFieldInfo info;
    int ogrIndex; ///< index in the layer's definition; -1 for TxID, which is the feature identifier
};

/// The inside of a vector dataset.
class TxVectorPrivate
{
public:
    TxVectorPrivate(CDatasetVector *owner, const QByteArray &layerName);
    ~TxVectorPrivate();

    static TxVectorPrivate &of(const CDatasetVector &dataset) { return *dataset.d; }

    TxDataSourcePrivate &dataSource() const { return TxDataSourcePrivate::of(*q->GetDataSource()); }
    /// The layer in the datasource as it is open now, null when it has gone. Not owned; never kept by callers, who read
    /// and write features by identifier alone: its reading position and its filters belong to the walker.
    OGRLayer *layer();
    /// The same without filters, free to be walked; a walk that is under way finds its place again when it moves.
    OGRLayer *idleLayer();
    /// True for an empty shapefile with heights, which has room for measures too. Its driver gives them to every shape
    /// or to none: the first one, to be told by settleMeasures() before it is made fit, decides, as it does when the
    /// file is read again.
    bool awaitsShape() const { return m_awaitsShape; }
    void settleMeasures(const OGRGeometry &first);
    /// True when reading or writing a record by identifier leaves the reading position alone. Most drivers move it,
    /// whatever their OLCRandomRead says, and some find only what lies behind it: those need idleLayer() before.
    bool keepsPlace();
    /// The fields, system fields first. Read at the first call and after schemaChanged().
    const std::vector<TxVectorField> &fields();
    /// The index in fields() of the field called @p name (letter case ignored), -1 when there is none.
    int findField(const QString &name);
    /// To be called after the layer's fields were changed.
    void schemaChanged();
    /// To be called after the layer got another name.
    void layerChanged() { m_generation = -1; }
    /// To be called after records were changed: bounds and count are then looked up anew.
    void contentChanged() { bounds.reset(); }
    /// @name The spatial index of a GeoPackage's table while many records are added
    /// Does nothing where there is none. What was added while it was paused is not found by place: whoever is about to
    /// look for records by place resumes it first.
    /// @{
    /// Stops entering new records into the index. To be called within a transaction; nothing may be left paused when it
    /// is committed. @return false when they are entered one by one still.
    bool pauseIndex();
    /// Enters the new records, all at once, if the index is paused. @return false on failure, reported to the error
    /// collectors: the transaction is then to be taken back.
    bool resumeIndex();
    /// The paused index, for whoever has looked at the new records already; null when it is not paused. Behind its
    /// resume() call forgetPause().
    class TxSpatialIndex *pausedIndex() const { return m_pausedIndex.get(); }
    /// Tells that the transaction in which the index was paused was taken back.
    void forgetPause();
    /// Counts a record that was added within the edit transaction, and pauses the index when there are many.
    void countAdded();
    /// @}
    /// Puts every recordset to its end and lets go of the statements behind them; the objects stay.
    void endRecordsets();
    /// Takes a recordset in and gives it out again as the pointer that callers get.
    CTxRecordset *adopt(std::unique_ptr<class TxRecordsetPrivate> recordset);

    CDatasetVector *const q;
    QByteArray source; ///< the OGR layer's name
    QString tileIndex; ///< name of the tile index dataset of a library dataset
    bool isOpen = false;
    std::optional<CRect2D> bounds;
    const void *walker = nullptr; ///< the cursor that the layer's reading position belongs to
    std::vector<std::unique_ptr<CTxRecordset>> recordsets;

private:
    OGRLayer *m_layer = nullptr;
    int m_generation = -1;      // of the datasource, when m_layer was looked up
    bool m_awaitsShape = false; // see awaitsShape()
    std::vector<TxVectorField> m_fields;
    QHash<QString, int> m_byName; // case-folded
    std::unique_ptr<class TxSpatialIndex> m_pausedIndex;
    int m_addedSinceResume = 0;
};
