#pragma once

#include <QList>
#include <QtGlobal>

#include <vector>

/// Which record stands in which row: a list of record identifiers that only grows at its end.
///
/// Identifiers that follow one another cost nothing, others eight bytes each, so the usual dataset of a million records
/// needs a few kilobytes. Reading a row takes constant time.
class RecordIndex
{
public:
    /// Adds a row for the record @p id.
    void append(qint64 id);
    /// How many rows there are.
    qint64 size() const { return m_size; }
    /// The record of the 0-based row @p row, which must exist.
    qint64 at(qint64 row) const;
    void clear();
    /// Bytes used, about.
    qint64 memory() const;

private:
    static constexpr qint64 chunkRows = 4096;

    /// chunkRows rows: the records from first on, or those listed where they do not follow one another.
    struct Chunk
    {
        qint64 first = 0;
        std::vector<qint64> ids; // empty while every record follows the one before
    };
    std::vector<Chunk> m_chunks;
    qint64 m_size = 0;
};
