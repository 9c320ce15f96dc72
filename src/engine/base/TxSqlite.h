#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <initializer_list>
#include <memory>

class GDALDataset;
struct sqlite3;
struct sqlite3_stmt;

/// Prepared statements of SQLite, run on the connection that a GDAL dataset holds. A private header.
namespace TxSqlite {

/// The connection of a GeoPackage or SQLite dataset; null when it has none.
sqlite3 *connection(GDALDataset &dataset);

/// Locks the GeoPackage @p dataset for writing, within the transaction that is open. SQLite would lock at the first
/// write by itself; a driver that is refused then tries a dozen statements more, and waits for each.
/// @return false when another connection holds the lock
bool lockForWriting(GDALDataset &dataset);

/// Takes back the transaction that @p dataset (of any driver) has open. When SQLite has ended it by itself already, as
/// on a full disk, the driver is still told, or it would write what it believes to know of the lost records when it
/// closes.
bool rollback(GDALDataset &dataset);

/// One prepared statement. Parameters are bound in the order of the calls. What SQLite reports goes to the error
/// collectors, as GDAL's messages do.
class Statement
{
public:
    Statement(sqlite3 *database, const char *sql);
    Statement(sqlite3 *database, const QString &sql);
    ~Statement();
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    Statement &bind(qint64 value);
    Statement &bind(double value);
    Statement &bind(const QString &value); ///< a null string binds null
    Statement &bind(const QByteArray &value);
    Statement &bindNull();

    /// Goes to the first or next row. @return false behind the last one, and on failure (see failed()).
    bool next();
    /// Runs a statement that gives no rows (rows are passed over) and makes it ready to be bound anew.
    bool run();
    bool failed() const { return m_failed; }
    /// The statement itself, null when it could not be prepared.
    sqlite3_stmt *handle() const { return m_statement; }

    qint64 integer(int column) const;
    double real(int column) const;
    QString text(int column) const;         ///< null for null
    QByteArrayView bytes(int column) const; ///< where the connection keeps them, until the next move
    bool isNull(int column) const;

private:
    void check(int status);

    sqlite3 *const m_database;
    sqlite3_stmt *m_statement = nullptr;
    int m_bound = 0;
    bool m_failed = false;
};

/// Runs statements that give no rows, parted by semicolons.
bool execute(sqlite3 *database, const QString &sql);
/// The first column of the first row, @p fallback when there is none.
qint64 integerOf(sqlite3 *database, const char *sql, std::initializer_list<QString> parameters, qint64 fallback = 0);

/// A savepoint: what runs while it lives is taken back when it is destroyed without release(). Works within a
/// transaction and without one.
class Savepoint
{
public:
    explicit Savepoint(sqlite3 *database);
    ~Savepoint();
    Savepoint(const Savepoint &) = delete;
    Savepoint &operator=(const Savepoint &) = delete;

    bool isOpen() const { return m_open; }
    /// Keeps the changes. @return false when they cannot be kept; they are then taken back.
    bool release();

private:
    sqlite3 *const m_database;
    bool m_open;
};

} // namespace TxSqlite
