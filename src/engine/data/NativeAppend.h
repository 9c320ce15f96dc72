#pragma once

#include "engine/data/AppendFields.h"
#include "engine/data/TxPackedRtree.h"

#include <ogr_core.h>

#include <functional>
#include <optional>
#include <vector>

struct sqlite3_context;
struct sqlite3_stmt;

/// Copies records from a GeoPackage's table to another one's (or the same one's) by SQLite alone, value by value as
/// they are stored, without a feature between. A private header.
///
/// Only what needs no conversion is copied so: both sides keep the same kind of geometry, and every value is stored as
/// the target would store it. A record that is not so shows when it comes by; what was copied until then is taken back,
/// and the records are to be written in the general way. The source is read through its own connection, so what was
/// changed there and not yet committed is copied too.
class NativeAppend
{
public:
    /// What became of the records.
    enum class Result {
        Copied, ///< all of them are in the target
        Unfit,  ///< none are: some need a conversion, or the spatial index cannot be put aside
        Failed  ///< the storage refused one, or the caller stopped the work; the caller takes the change back
    };
    /// Called now and then with the number of records copied; false stops the work.
    using Step = std::function<bool(qint64 copied)>;

    NativeAppend(const TxRecordsetPrivate &source, TxVectorPrivate &target, const AppendFields &fields);

    /// Gives every record @p text in the field @p ogrIndex of the target.
    void setTag(int ogrIndex, const QString &text);
    /// Leaves records with a higher identifier out.
    void setLastId(qint64 id) { m_lastId = id; }

    /// True when the two tables are alike enough. Coordinate systems are not looked at.
    bool isPossible();
    /// Copies the records, within the transaction or savepoint that is open on the target.
    Result run(const Step &step);

    qint64 copied() const { return m_copied; }
    /// The identifier of the record that the storage refused.
    qint64 currentId() const { return m_currentId; }

private:
    /// How the values of a column are looked at before they are copied.
    enum class Check { Whole, Real, Text, Moment, TimeOfDay, Bytes, AsItIs };
    struct Column
    {
        int from; ///< column of the query
        int to;   ///< field of the target's layer
        Check check;
        double lowest, highest; ///< of numbers
        int safeBytes;          ///< of texts and bytes
        bool isNullable;
    };

    class Rows;

    int columnCount() const;
    bool addPairs(const AppendFields &fields);
    bool addDerived();
    bool knowsGeometry();
    QString insertText() const;
    Result copyAll(const Step &step);
    bool enterEntries();
    static bool giveValue(const Column &column, sqlite3_stmt *from, sqlite3_context *result);
    bool giveGeometry(sqlite3_stmt *from, qint64 place, sqlite3_context *result);

    const TxRecordsetPrivate &m_source;
    TxVectorPrivate &m_target;
    OGRLayer *const m_from;
    OGRLayer *const m_to;
    bool m_isPaired = false;
    std::vector<Column> m_columns;
    int m_tagIndex = -1;
    QByteArray m_tag;
    qint64 m_lastId = -1;
    bool m_hasGeometry = false;                  // on both sides
    quint32 m_wkbType = 0;                       // that geometries must have; 0 for any simple one
    int m_geometryColumn = -1;                   // of the query
    qint32 m_systemId = 0;                       // of the target's coordinate system
    bool m_isIndexed = false;                    // the target has a spatial index, which is paused
    QByteArray m_geometry;                       // the one that is written, where its system's number differs
    std::vector<TxPackedRtree::Entry> m_entries; // identifiers count from 0 until all are written
    OGREnvelope m_bounds;                        // of what was copied
    qint64 m_copied = 0;
    qint64 m_currentId = -1;
    qint64 m_lastWritten = -1;
    bool m_isConsecutive = true; // the new records' identifiers follow one another
};
