#include "engine/data/TdbDataSourcePlus.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QtEndian>

#include <cstring>
#include <memory>

#include <sqlite3.h>

namespace {

/// The fields of an SQLite file header that a GeoPackage fixes, and those that tell whether the file is whole.
struct Header
{
    static constexpr int size = 100;
    static constexpr int pageSizeAt = 16;
    static constexpr int changeCounterAt = 24;
    static constexpr int pageCountAt = 28;
    static constexpr int userVersionAt = 60;
    static constexpr int applicationIdAt = 68;
    static constexpr int validForAt = 92;

    static constexpr char magic[] = "SQLite format 3";   // with its closing zero
    static constexpr quint32 applicationId = 0x47504B47; // "GPKG"
    static constexpr quint32 lowestUserVersion = 10200;
    static constexpr quint32 userVersionEnd = 10400;
};

quint32 word(const QByteArray &header, int at)
{
    return qFromBigEndian<quint32>(header.constData() + at);
}

bool hasOurHeader(const QByteArray &header)
{
    return header.size() == Header::size &&
           std::memcmp(header.constData(), Header::magic, sizeof(Header::magic)) == 0 &&
           word(header, Header::applicationIdAt) == Header::applicationId &&
           word(header, Header::userVersionAt) >= Header::lowestUserVersion &&
           word(header, Header::userVersionAt) < Header::userVersionEnd;
}

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

/// Opens @p path so that nothing is written, locked or waited for: neither locks nor journals are looked at, no file
/// appears beside this one and no journal is replayed. It reads nothing yet.
Database openUntouched(const QString &path)
{
    const QByteArray uri =
        "file:" + QUrl::toPercentEncoding(QFileInfo(path).absoluteFilePath(), "/") + "?mode=ro&immutable=1";
    sqlite3 *opened = nullptr;
    const int status = sqlite3_open_v2(uri.constData(), &opened,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    Database database(opened, sqlite3_close);
    if (status != SQLITE_OK)
        database.reset();
    return database;
}

/// The header of an open file and the file's size. They are read through SQLite's own file object: opening the file by
/// other means and closing it again would drop the locks that this process holds on it.
bool readHeader(sqlite3 *database, QByteArray &header, qint64 &fileSize)
{
    sqlite3_file *file = nullptr;
    sqlite3_int64 size = 0;
    header.resize(Header::size);
    if (sqlite3_file_control(database, nullptr, SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK || !file->pMethods ||
        file->pMethods->xFileSize(file, &size) != SQLITE_OK ||
        file->pMethods->xRead(file, header.data(), Header::size, 0) != SQLITE_OK)
        return false;
    fileSize = size;
    return true;
}

/// True when the header knows how many pages there are and the file is shorter. A journal beside the file will put it
/// right at the next opening, so nothing is said of it then.
bool isCutOff(const QByteArray &header, qint64 fileSize, const QString &path)
{
    const bool knowsCount = word(header, Header::changeCounterAt) == word(header, Header::validForAt);
    if (!knowsCount || QFile::exists(path + QStringLiteral("-journal")))
        return false;
    qint64 pageSize = qFromBigEndian<quint16>(header.constData() + Header::pageSizeAt);
    if (pageSize == 1)
        pageSize = 65536; // what does not fit 16 bits
    return fileSize < pageSize * word(header, Header::pageCountAt);
}

/// The version that the catalogue tells, -1 when there is no catalogue.
int catalogueVersion(sqlite3 *database)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
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
    if (path.isEmpty() || path.contains(QChar(u'\0')) || !QFileInfo(path).isFile()) // a pipe or device could block
        return false;
    const Database database = openUntouched(path);
    QByteArray header;
    qint64 fileSize = 0;
    return database && readHeader(database.get(), header, fileSize) && hasOurHeader(header) &&
           !isCutOff(header, fileSize, path) && catalogueVersion(database.get()) == version;
}
