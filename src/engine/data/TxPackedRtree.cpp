#include "engine/data/TxPackedRtree.h"

#include "engine/base/TxGdal.h"
#include "engine/base/TxSqlite.h"

#include <QtEndian>

#include <sqlite3.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

using TxSqlite::Statement;

namespace TxPackedRtree {

namespace {

constexpr size_t nodeHeader = 4; // depth of the tree (in the root; else zero) and count of cells, two bytes each
constexpr size_t cellSize = 24;  // an identifier of eight bytes and four single-precision numbers, high byte first
constexpr qint64 rootNode = 1;
constexpr double fill = 0.9; // room for what comes later

float below(double value)
{
    const auto rounded = static_cast<float>(value);
    return rounded > value ? std::nextafter(rounded, -std::numeric_limits<float>::infinity()) : rounded;
}

float above(double value)
{
    const auto rounded = static_cast<float>(value);
    return rounded < value ? std::nextafter(rounded, std::numeric_limits<float>::infinity()) : rounded;
}

QString tableName(const QString &tree, const char *suffix)
{
    return TxGdal::quoteIdentifier(tree + QLatin1String(suffix));
}

/// The number's bits, so that they compare as the numbers do.
quint32 sortable(float value)
{
    const auto bits = std::bit_cast<quint32>(value);
    constexpr quint32 sign = 0x80000000U;
    return (bits & sign) != 0 ? ~bits : bits | sign;
}

size_t nodesFor(size_t entries, size_t perNode)
{
    return (entries + perNode - 1) / perNode;
}

/// Writes the levels of a tree from its leaves up.
class Packer
{
public:
    Packer(sqlite3 *database, const QString &name, size_t nodeSize)
        : m_capacity((nodeSize - nodeHeader) / cellSize),
          m_perNode(std::max<size_t>(2, static_cast<size_t>(static_cast<double>(m_capacity) * fill))),
          m_node(static_cast<qsizetype>(nodeSize), '\0'), m_nodes(database, insertInto(name, "_node")),
          m_rowIds(database, insertInto(name, "_rowid")), m_parents(database, insertInto(name, "_parent"))
    {
    }

    bool write(std::vector<Entry> level)
    {
        quint16 depth = 0;
        for (; level.size() > m_capacity; ++depth) {
            std::vector<Entry> above = packLevel(level);
            if (above.empty() || !writePlaces(level, depth == 0 ? m_rowIds : m_parents))
                return false;
            level = std::move(above);
        }
        const std::vector<quint64> order = identity(level.size());
        if (!writeNode(rootNode, depth, level, order.data(), order.size()))
            return false;
        setPlaces(level, rootNode);
        return writePlaces(level, depth == 0 ? m_rowIds : m_parents);
    }

private:
    static QString insertInto(const QString &tree, const char *suffix)
    {
        return QStringLiteral("INSERT INTO %1 VALUES (?, ?)").arg(tableName(tree, suffix));
    }

    static std::vector<quint64> identity(size_t size)
    {
        std::vector<quint64> order(size);
        for (size_t i = 0; i < size; ++i)
            order[i] = i;
        return order;
    }

    /// Sorts @p count places of @p order, whose low halves are indices of @p level, by the middle of the entries
    /// between the edges @p from and @p to.
    static void sortBy(const std::vector<Entry> &level, float Entry::*from, float Entry::*to, quint64 *order,
                       size_t count)
    {
        for (size_t i = 0; i < count; ++i) {
            const auto index = static_cast<quint32>(order[i]);
            const Entry &entry = level[index];
            order[i] = quint64(sortable(entry.*from / 2 + entry.*to / 2)) << 32 | index;
        }
        std::sort(order, order + count);
    }

    /// Sort-tile-recursive packing: slices of equal count along x, nodes of equal count along y in each. It follows the
    /// places that there are, however unevenly they lie. @return the entries of the new nodes, none on failure.
    std::vector<Entry> packLevel(std::vector<Entry> &level)
    {
        std::vector<quint64> order = identity(level.size());
        sortBy(level, &Entry::minX, &Entry::maxX, order.data(), order.size());
        const auto slices = static_cast<size_t>(std::ceil(std::sqrt(nodesFor(level.size(), m_perNode))));
        std::vector<Entry> above;
        above.reserve(nodesFor(level.size(), m_perNode) + slices);
        for (size_t slice = 0; slice < slices; ++slice) {
            const size_t begin = slice * level.size() / slices;
            const size_t count = (slice + 1) * level.size() / slices - begin;
            quint64 *places = order.data() + begin;
            sortBy(level, &Entry::minY, &Entry::maxY, places, count);
            const size_t nodes = nodesFor(count, m_perNode);
            for (size_t node = 0; node < nodes; ++node) {
                const size_t first = node * count / nodes;
                const size_t size = (node + 1) * count / nodes - first;
                above.push_back(boundsOf(level, places + first, size));
                if (!writeNode(m_nextNode, 0, level, places + first, size))
                    return {};
                for (size_t i = first; i < first + size; ++i)
                    setPlace(level[static_cast<quint32>(places[i])], static_cast<quint32>(m_nextNode));
                ++m_nextNode;
            }
        }
        return above;
    }

    Entry boundsOf(const std::vector<Entry> &level, const quint64 *order, size_t count) const
    {
        Entry bounds = level[static_cast<quint32>(order[0])];
        bounds.id = m_nextNode;
        for (size_t i = 1; i < count; ++i) {
            const Entry &entry = level[static_cast<quint32>(order[i])];
            bounds.minX = std::min(bounds.minX, entry.minX);
            bounds.maxX = std::max(bounds.maxX, entry.maxX);
            bounds.minY = std::min(bounds.minY, entry.minY);
            bounds.maxY = std::max(bounds.maxY, entry.maxY);
        }
        return bounds;
    }

    bool writeNode(qint64 number, quint16 depth, const std::vector<Entry> &level, const quint64 *order, size_t count)
    {
        m_node.fill('\0');
        char *at = m_node.data();
        qToBigEndian<quint16>(depth, at);
        qToBigEndian<quint16>(static_cast<quint16>(count), at + 2);
        at += nodeHeader;
        for (size_t i = 0; i < count; ++i, at += cellSize) {
            const Entry &entry = level[static_cast<quint32>(order[i])];
            qToBigEndian<qint64>(entry.id, at);
            const std::array edges = {entry.minX, entry.maxX, entry.minY, entry.maxY};
            for (size_t edge = 0; edge < edges.size(); ++edge)
                qToBigEndian<quint32>(std::bit_cast<quint32>(edges[edge]), at + 8 + 4 * edge);
        }
        return m_nodes.bind(number).bind(m_node).run();
    }

    /// Which node holds an entry is noted in the entry, whose bounds have been written by then: a table of millions of
    /// entries would need a second one else.
    static void setPlace(Entry &entry, quint32 node) { std::memcpy(&entry.minX, &node, sizeof node); }
    static void setPlaces(std::vector<Entry> &level, quint32 node)
    {
        for (Entry &entry : level)
            setPlace(entry, node);
    }
    static quint32 placeOf(const Entry &entry)
    {
        quint32 node = 0;
        std::memcpy(&node, &entry.minX, sizeof node);
        return node;
    }

    /// Writes which node holds each of the entries, in the order of identifiers, in which the table grows at its end.
    static bool writePlaces(std::vector<Entry> &level, Statement &insertPlace)
    {
        const auto byId = [](const Entry &one, const Entry &other) { return one.id < other.id; };
        if (!std::is_sorted(level.begin(), level.end(), byId))
            std::sort(level.begin(), level.end(), byId);
        return std::all_of(level.begin(), level.end(), [&insertPlace](const Entry &entry) {
            return insertPlace.bind(entry.id).bind(qint64(placeOf(entry))).run();
        });
    }

    const size_t m_capacity; // cells that a node can hold
    const size_t m_perNode;  // cells that it gets
    qint64 m_nextNode = rootNode + 1;
    QByteArray m_node;
    Statement m_nodes;
    Statement m_rowIds;
    Statement m_parents;
};

qint64 nodeSizeOf(sqlite3 *database, const QString &name)
{
    Statement size(database,
                   QStringLiteral("SELECT length(data) FROM %1 WHERE nodeno = 1").arg(tableName(name, "_node")));
    return size.next() ? size.integer(0) : 0;
}

} // namespace

Entry entryOf(qint64 id, const OGREnvelope &box)
{
    return {id, below(box.MinX), above(box.MaxX), below(box.MinY), above(box.MaxY)};
}

bool read(sqlite3 *database, const QString &name, std::vector<Entry> &entries)
{
    Statement all(database, QStringLiteral("SELECT * FROM ") + TxGdal::quoteIdentifier(name));
    while (all.next()) {
        entries.push_back({all.integer(0), static_cast<float>(all.real(1)), static_cast<float>(all.real(2)),
                           static_cast<float>(all.real(3)), static_cast<float>(all.real(4))});
    }
    return !all.failed();
}

bool insert(sqlite3 *database, const QString &name, const std::vector<Entry> &entries)
{
    Statement one(
        database,
        QStringLiteral("INSERT OR REPLACE INTO %1 VALUES (?, ?, ?, ?, ?)").arg(TxGdal::quoteIdentifier(name)));
    return std::all_of(entries.begin(), entries.end(), [&one](const Entry &entry) {
        return one.bind(entry.id)
            .bind(double(entry.minX))
            .bind(double(entry.maxX))
            .bind(double(entry.minY))
            .bind(double(entry.maxY))
            .run();
    });
}

bool isWritable(sqlite3 *database, const QString &name)
{
    int isDefensive = 0;
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, -1, &isDefensive);
    if (isDefensive != 0)
        return false;
    // Five columns of the tree and two of the table of rows: neither more dimensions nor columns beside them.
    const qint64 isPlane =
        TxSqlite::integerOf(database,
                            "SELECT (SELECT count(*) FROM pragma_table_xinfo(?1) WHERE hidden = 0) = 5"
                            " AND (SELECT count(*) FROM pragma_table_info(?2)) = 2"
                            " AND EXISTS (SELECT 1 FROM sqlite_master WHERE type = 'table' AND lower(name) = lower(?3)"
                            " AND lower(replace(sql, '\"', '')) LIKE '%using rtree%(%' AND lower(sql) NOT LIKE "
                            "'%rtree\\_i32%' ESCAPE '\\')",
                            {name, name + QStringLiteral("_rowid"), name});
    const qint64 nodeSize = isPlane != 0 ? nodeSizeOf(database, name) : 0;
    return nodeSize >= qint64(nodeHeader + 4 * cellSize);
}

bool write(sqlite3 *database, const QString &name, std::vector<Entry> entries)
{
    const qint64 nodeSize = nodeSizeOf(database, name);
    if (entries.size() >= std::numeric_limits<quint32>::max() || nodeSize <= qint64(nodeHeader + cellSize))
        return false;
    for (const char *suffix : {"_node", "_rowid", "_parent"}) {
        if (!TxSqlite::execute(database, QStringLiteral("DELETE FROM ") + tableName(name, suffix)))
            return false;
    }
    return Packer(database, name, static_cast<size_t>(nodeSize)).write(std::move(entries));
}

} // namespace TxPackedRtree
