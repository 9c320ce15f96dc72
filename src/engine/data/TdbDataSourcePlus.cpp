#include "engine/data/TdbDataSourcePlus.h"

#include "engine/base/TxSqliteFile.h"

#include <memory>

#include <sqlite3.h>

namespace {

/// What a GeoPackage writes into the header of its file: who it is at byte 68, its version at byte 60.
constexpr int userVersionAt = 60;
constexpr int applicationIdAt = 68;
constexpr quint32 applicationId = 0x47504B47; // "GPKG"
constexpr quint32 lowestUserVersion = 10200;
constexpr quint32 userVersionEnd = 10400;

bool isGeoPackage(const TxSqliteFile &file)
{
    return file.isDatabase() && file.word(applicationIdAt) == applicationId &&
           file.word(userVersionAt) >= lowestUserVersion && file.word(userVersionAt) < userVersionEnd;
}

/// The version that the catalogue tells, -1 when there is no catalogue.
int catalogueVersion(sqlite3 *database)
{
    // A hostile schema could make a view run forever; a table of one row needs a handful of steps.
    sqlite3_progress_handler(
        database, 100'000, [](void *) { return 1; }, nullptr);

    constexpr char sql[] = "SELECT version FROM tdb_format WHERE "
                           "(SELECT type FROM sqlite_master WHERE name = 'tdb_format') = 'table'";
    sqlite3_stmt *prepared = nullptr;
    const int status = sqlite3_prepare_v2(database, sql, -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(prepared, sqlite3_finalize);
    if (status != SQLITE_OK || sqlite3_step(prepared) != SQLITE_ROW)
        return -1;
    return sqlite3_column_int(prepared, 0);
}

} // namespace

bool CTdbDataSourcePlus::IsTdb5File(const QString &path)
{
    const TxSqliteFile file(path);
    return isGeoPackage(file) && file.statedSize() <= file.size() && catalogueVersion(file.connection()) == version;
}
