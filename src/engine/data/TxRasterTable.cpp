#include "engine/data/TxRasterTable.h"

#include "engine/base/TxSqlite.h"

#include <array>

namespace {

struct Mention
{
    const char *table, *column;
};

/// Where a GeoPackage mentions a table of cells by name, those that point to others before these.
constexpr std::array mentions = {
    Mention{"gpkg_2d_gridded_tile_ancillary", "tpudt_name"},
    Mention{"gpkg_2d_gridded_coverage_ancillary", "tile_matrix_set_name"},
    Mention{"gpkg_tile_matrix", "table_name"},
    Mention{"gpkg_tile_matrix_set", "table_name"},
    Mention{"gpkg_extensions", "table_name"},
    Mention{"gpkg_metadata_reference", "table_name"},
    Mention{"gpkg_contents", "table_name"},
};

bool hasTable(sqlite3 *database, const char *name)
{
    return TxSqlite::integerOf(database, "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = ?",
                               {QString::fromLatin1(name)}) > 0;
}

/// Runs @p sql (with the places %1 for the table and %2 for the column) wherever a table of cells is mentioned.
bool runOnMentions(sqlite3 *database, const QString &sql, std::initializer_list<QString> parameters)
{
    for (const Mention &mention : mentions) {
        if (!hasTable(database, mention.table))
            continue;
        TxSqlite::Statement statement(database,
                                      sql.arg(QString::fromLatin1(mention.table), QString::fromLatin1(mention.column)));
        for (const QString &parameter : parameters)
            statement.bind(parameter);
        if (!statement.run())
            return false;
    }
    return true;
}

} // namespace

namespace TxRasterTable {

bool remove(GDALDataset &storage, const QString &name)
{
    sqlite3 *database = TxSqlite::connection(storage);
    TxSqlite::Savepoint step(database);
    return step.isOpen() && runOnMentions(database, QStringLiteral("DELETE FROM %1 WHERE %2 = ?"), {name}) &&
           TxSqlite::execute(database, QStringLiteral("DROP TABLE IF EXISTS ") + TxGdal::quoteIdentifier(name)) &&
           step.release();
}

bool rename(GDALDataset &storage, const QString &name, const QString &newName)
{
    sqlite3 *database = TxSqlite::connection(storage);
    TxSqlite::Savepoint step(database);
    return step.isOpen() &&
           runOnMentions(database, QStringLiteral("UPDATE %1 SET %2 = ? WHERE %2 = ?"), {newName, name}) &&
           TxSqlite::execute(database, QStringLiteral("ALTER TABLE %1 RENAME TO %2")
                                           .arg(TxGdal::quoteIdentifier(name), TxGdal::quoteIdentifier(newName))) &&
           step.release();
}

} // namespace TxRasterTable
