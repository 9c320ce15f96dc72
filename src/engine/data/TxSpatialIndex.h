#pragma once

#include "engine/data/TxPackedRtree.h"

#include <QString>

#include <limits>
#include <memory>

/// The spatial index of a GeoPackage's table: the R-tree "rtree_<table>_<geometry>", which triggers on the table keep.
/// A private header.
///
/// The trigger that enters new records one by one costs more than writing the records themselves. It can be put aside
/// while many of them are added, and the tree be written anew at the end. All of it is part of the transaction or
/// savepoint within which it happens, and is taken back with it.
class TxSpatialIndex
{
public:
    /// The index of @p table, whose records are identified by @p idColumn; null when it has none that is kept by a
    /// trigger. The driver of the connection must hold back nothing of it.
    static std::unique_ptr<TxSpatialIndex> find(sqlite3 *database, const QString &table, const QString &geometryColumn,
                                                const QString &idColumn);

    /// Stops entering new records. Changed and deleted ones are followed still. @return false when it cannot be done.
    bool pause();
    /// Enters the records that were added since pause(), and new ones from now on. @return false on failure, reported
    /// to the error collectors; the index is then paused still.
    bool resume();
    /// The same where the caller has looked at what was added: @p added has an entry for each new record that covers
    /// something.
    bool resume(std::vector<TxPackedRtree::Entry> added);

private:
    TxSpatialIndex(sqlite3 *database, const QString &table, const QString &geometryColumn, const QString &idColumn);

    bool readAdded(std::vector<TxPackedRtree::Entry> &added) const;
    bool enter(std::vector<TxPackedRtree::Entry> added) const;

    sqlite3 *const m_database; // not owned
    const QString m_table;
    const QString m_geometryColumn;
    const QString m_idColumn;
    const QString m_tree;
    QString m_trigger;        // the statement that makes it
    qint64 m_lastEntered = 0; // the highest identifier when the index was paused
};
