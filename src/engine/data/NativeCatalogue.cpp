#include "engine/data/NativeCatalogue.h"

#include "engine/base/TxSqlite.h"
#include "engine/data/TdbDataSourcePlus.h"

#include <algorithm>

using TxSqlite::Statement;

namespace {

constexpr char tables[] = R"(
CREATE TABLE tdb_format (
    version INTEGER NOT NULL
);
CREATE TABLE tdb_datasets (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    kind INTEGER NOT NULL,
    encoding INTEGER NOT NULL DEFAULT 0,
    options INTEGER NOT NULL DEFAULT 0,
    parent TEXT,
    tile_index TEXT,
    bands INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE tdb_fields (
    dataset TEXT NOT NULL,
    name TEXT NOT NULL,
    type INTEGER NOT NULL,
    size INTEGER NOT NULL DEFAULT 0,
    precision INTEGER NOT NULL DEFAULT 0,
    flags INTEGER NOT NULL DEFAULT 0,
    caption TEXT,
    PRIMARY KEY (dataset, name)
) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS gpkg_extensions (
    table_name TEXT,
    column_name TEXT,
    extension_name TEXT NOT NULL,
    definition TEXT NOT NULL,
    scope TEXT NOT NULL,
    CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name)
);
)";

} // namespace

bool NativeCatalogue::exists(GDALDataset &storage)
{
    sqlite3 *database = TxSqlite::connection(storage);
    if (!database || TxSqlite::integerOf(database,
                                         "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN "
                                         "('tdb_format', 'tdb_datasets', 'tdb_fields')",
                                         {}) != 3)
        return false;
    return TxSqlite::integerOf(database, "SELECT version FROM tdb_format", {}) == CTdbDataSourcePlus::version;
}

bool NativeCatalogue::create(GDALDataset &storage)
{
    sqlite3 *database = TxSqlite::connection(storage);
    if (!database || !TxSqlite::execute(database, QString::fromLatin1(tables)))
        return false;
    Statement format(database, "INSERT INTO tdb_format (version) VALUES (?)");
    if (!format.bind(qint64(CTdbDataSourcePlus::version)).run())
        return false;
    // Other programs may change features without harm, but should know that there is more than they understand.
    Statement extension(database, "INSERT INTO gpkg_extensions (table_name, extension_name, definition, scope) "
                                  "VALUES (?, 'terravox_catalogue', 'TdCommon docs/tdb-format.md', 'write-only')");
    for (const char *table : {"tdb_format", "tdb_datasets", "tdb_fields"}) {
        if (!extension.bind(QString::fromLatin1(table)).run())
            return false;
    }
    return true;
}

QList<TxDatasetEntry> NativeCatalogue::datasets(GDALDataset &storage)
{
    QList<TxDatasetEntry> entries;
    sqlite3 *database = TxSqlite::connection(storage);
    if (!database)
        return entries;
    Statement select(database, "SELECT d.name, kind, encoding, options, parent, tile_index, bands "
                               "FROM tdb_datasets d JOIN gpkg_contents c ON c.table_name = d.name "
                               "ORDER BY d.id");
    while (select.next()) {
        TxDatasetEntry entry;
        entry.name = select.text(0);
        entry.type = static_cast<CElemDatasetInfo::Type>(select.integer(1));
        entry.encType = static_cast<CElemDataEnc::encType>(select.integer(2));
        entry.options = static_cast<qint32>(select.integer(3));
        entry.tileIndex = select.text(5);
        entry.parent = select.text(4);
        entry.bands = static_cast<int>(std::clamp<qint64>(select.integer(6), 0, 4));
        entry.source = entry.name.toUtf8();
        entries.append(entry);
    }
    return entries;
}

bool NativeCatalogue::addDataset(GDALDataset &storage, const TxDatasetEntry &entry)
{
    Statement insert(TxSqlite::connection(storage),
                     "INSERT INTO tdb_datasets (name, kind, encoding, options, parent, tile_index, bands) "
                     "VALUES (?, ?, ?, ?, ?, ?, ?)");
    const auto orNull = [](const QString &text) { return text.isEmpty() ? QString() : text; };
    return insert.bind(entry.name)
        .bind(qint64(entry.type))
        .bind(qint64(entry.encType))
        .bind(qint64(entry.options))
        .bind(orNull(entry.parent))
        .bind(orNull(entry.tileIndex))
        .bind(qint64(entry.bands))
        .run();
}

bool NativeCatalogue::removeDataset(GDALDataset &storage, const QString &name)
{
    for (const char *sql : {"DELETE FROM tdb_datasets WHERE name = ?", "DELETE FROM tdb_fields WHERE dataset = ?"}) {
        if (!Statement(TxSqlite::connection(storage), sql).bind(name).run())
            return false;
    }
    return true;
}

bool NativeCatalogue::renameDataset(GDALDataset &storage, const QString &name, const QString &newName)
{
    for (const char *sql :
         {"UPDATE tdb_datasets SET name = ? WHERE name = ?", "UPDATE tdb_datasets SET parent = ? WHERE parent = ?",
          "UPDATE tdb_datasets SET tile_index = ? WHERE tile_index = ?",
          "UPDATE tdb_fields SET dataset = ? WHERE dataset = ?"}) {
        if (!Statement(TxSqlite::connection(storage), sql).bind(newName).bind(name).run())
            return false;
    }
    return true;
}

QHash<QString, CTxFieldInfo> NativeCatalogue::fields(GDALDataset &storage, const QString &dataset)
{
    QHash<QString, CTxFieldInfo> infos;
    sqlite3 *database = TxSqlite::connection(storage);
    if (!database)
        return infos;
    Statement select(database, "SELECT name, type, size, precision, flags, caption FROM tdb_fields WHERE dataset = ?");
    select.bind(dataset);
    while (select.next()) {
        CTxFieldInfo info(select.text(0), static_cast<qint16>(select.integer(1)),
                          static_cast<qint32>(select.integer(2)), static_cast<quint32>(select.integer(4)));
        info.SetPrecision(static_cast<qint32>(select.integer(3)));
        info.SetCaption(select.text(5));
        infos.insert(info.GetName().toLower(), info);
    }
    return infos;
}

bool NativeCatalogue::addFields(GDALDataset &storage, const QString &dataset, const CTxFieldInfos &infos)
{
    Statement insert(TxSqlite::connection(storage),
                     "INSERT OR REPLACE INTO tdb_fields (dataset, name, type, size, precision, flags, caption) "
                     "VALUES (?, ?, ?, ?, ?, ?, ?)");
    for (const CTxFieldInfo &info : infos) {
        const bool hasCaption = info.GetCaption() != info.GetName();
        const bool done = insert.bind(dataset)
                              .bind(info.GetName())
                              .bind(qint64(info.GetType()))
                              .bind(qint64(info.GetSize()))
                              .bind(qint64(info.GetPrecision()))
                              .bind(qint64(info.GetFlags()))
                              .bind(hasCaption ? info.GetCaption() : QString())
                              .run();
        if (!done)
            return false;
    }
    return true;
}
