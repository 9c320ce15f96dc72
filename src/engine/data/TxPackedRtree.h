#pragma once

#include "engine/base/TxExport.h"

#include <QString>

#include <ogr_core.h>

#include <vector>

struct sqlite3;

/// The R-trees of SQLite, written whole. A private header.
///
/// SQLite builds an R-tree entry by entry, splitting nodes as they fill: ten microseconds an entry, and nodes that are
/// two thirds full. Here all entries are known, so they are sorted into tiles and written as full nodes, straight into
/// the three tables in which SQLite keeps a tree. The form of these tables is part of SQLite's file format
/// (https://www.sqlite.org/rtree.html, "Shadow Tables"; the layout of a node is told in the head of its source file
/// rtree.c).
namespace TxPackedRtree {

/// An entry of a plane tree of single-precision bounds.
struct Entry
{
    qint64 id;
    float minX, maxX, minY, maxY;
};

/// The entry of what covers @p box, its edges rounded outwards.
TX_EXPORT Entry entryOf(qint64 id, const OGREnvelope &box);

/// Reads every entry of the tree @p name. @return false, reported to the error collectors, when it cannot be read.
TX_EXPORT bool read(sqlite3 *database, const QString &name, std::vector<Entry> &entries);

/// Takes @p entry in, in place of the one with the same identifier if there is one, for each of @p entries; one by one.
TX_EXPORT bool insert(sqlite3 *database, const QString &name, const std::vector<Entry> &entries);

/// True when write() knows the form of the tree @p name: plane, single precision, no columns of its own, and tables
/// that this connection may write.
TX_EXPORT bool isWritable(sqlite3 *database, const QString &name);

/// Replaces the tree's whole content. The identifiers must be different. Must run within a transaction or savepoint,
/// which is to be taken back when the answer is false (the failure is reported to the error collectors).
TX_EXPORT bool write(sqlite3 *database, const QString &name, std::vector<Entry> entries);

} // namespace TxPackedRtree
