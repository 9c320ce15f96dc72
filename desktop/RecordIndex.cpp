#include "RecordIndex.h"

void RecordIndex::append(qint64 id)
{
    const qint64 place = m_size % chunkRows;
    if (place == 0)
        m_chunks.push_back({id, {}});
    Chunk &chunk = m_chunks.back();
    if (chunk.ids.empty() && id != chunk.first + place) {
        chunk.ids.reserve(static_cast<size_t>(chunkRows));
        for (qint64 i = 0; i < place; ++i)
            chunk.ids.push_back(chunk.first + i);
    }
    if (!chunk.ids.empty())
        chunk.ids.push_back(id);
    ++m_size;
}

qint64 RecordIndex::at(qint64 row) const
{
    const Chunk &chunk = m_chunks[static_cast<size_t>(row / chunkRows)];
    const qint64 place = row % chunkRows;
    return chunk.ids.empty() ? chunk.first + place : chunk.ids[static_cast<size_t>(place)];
}

void RecordIndex::clear()
{
    m_chunks.clear();
    m_size = 0;
}

qint64 RecordIndex::memory() const
{
    qint64 bytes = static_cast<qint64>(m_chunks.capacity() * sizeof(Chunk));
    for (const Chunk &chunk : m_chunks)
        bytes += static_cast<qint64>(chunk.ids.capacity() * sizeof(qint64));
    return bytes;
}
