#include "engine/base/TxSqlite.h"

#include <cpl_error.h>
#include <gdal_priv.h>
#include <sqlite3.h>

namespace TxSqlite {

namespace {

void report(sqlite3 *database)
{
    CPLError(CE_Failure, CPLE_AppDefined, "SQLite: %s", sqlite3_errmsg(database));
}

} // namespace

sqlite3 *connection(GDALDataset &dataset)
{
    return static_cast<sqlite3 *>(dataset.GetInternalHandle("SQLITE_HANDLE"));
}

bool lockForWriting(GDALDataset &dataset)
{
    return execute(connection(dataset), QStringLiteral("UPDATE gpkg_contents SET table_name = table_name WHERE 0"));
}

bool rollback(GDALDataset &dataset)
{
    const bool isSqlite = qstrcmp(dataset.GetDriverName(), "GPKG") == 0;
    if (isSqlite && sqlite3_get_autocommit(connection(dataset)) != 0)
        execute(connection(dataset), QStringLiteral("BEGIN"));
    return dataset.RollbackTransaction() == OGRERR_NONE;
}

Statement::Statement(sqlite3 *database, const char *sql) : m_database(database)
{
    check(sqlite3_prepare_v2(database, sql, -1, &m_statement, nullptr));
}

Statement::Statement(sqlite3 *database, const QString &sql) : Statement(database, sql.toUtf8().constData()) {}

Statement::~Statement()
{
    sqlite3_finalize(m_statement);
}

void Statement::check(int status)
{
    if (status == SQLITE_OK || status == SQLITE_ROW || status == SQLITE_DONE)
        return;
    m_failed = true;
    report(m_database);
}

Statement &Statement::bind(qint64 value)
{
    if (m_statement)
        check(sqlite3_bind_int64(m_statement, ++m_bound, value));
    return *this;
}

Statement &Statement::bind(double value)
{
    if (m_statement)
        check(sqlite3_bind_double(m_statement, ++m_bound, value));
    return *this;
}

Statement &Statement::bind(const QString &value)
{
    if (value.isNull())
        return bindNull();
    const QByteArray utf8 = value.toUtf8();
    if (m_statement)
        check(sqlite3_bind_text(m_statement, ++m_bound, utf8.constData(), static_cast<int>(utf8.size()),
                                SQLITE_TRANSIENT));
    return *this;
}

Statement &Statement::bind(const QByteArray &value)
{
    if (m_statement)
        check(sqlite3_bind_blob(m_statement, ++m_bound, value.constData(), static_cast<int>(value.size()),
                                SQLITE_TRANSIENT));
    return *this;
}

Statement &Statement::bindNull()
{
    if (m_statement)
        check(sqlite3_bind_null(m_statement, ++m_bound));
    return *this;
}

bool Statement::next()
{
    if (!m_statement || m_failed)
        return false;
    const int status = sqlite3_step(m_statement);
    check(status);
    return status == SQLITE_ROW;
}

bool Statement::run()
{
    while (next()) {
    }
    if (m_statement)
        sqlite3_reset(m_statement);
    m_bound = 0;
    return !m_failed;
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

QString Statement::text(int column) const
{
    const auto *utf8 = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return utf8 ? QString::fromUtf8(utf8, sqlite3_column_bytes(m_statement, column)) : QString();
}

QByteArrayView Statement::bytes(int column) const
{
    const void *blob = sqlite3_column_blob(m_statement, column);
    return QByteArrayView(static_cast<const char *>(blob), sqlite3_column_bytes(m_statement, column));
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

bool execute(sqlite3 *database, const QString &sql)
{
    if (sqlite3_exec(database, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    report(database);
    return false;
}

qint64 integerOf(sqlite3 *database, const char *sql, std::initializer_list<QString> parameters, qint64 fallback)
{
    Statement statement(database, sql);
    for (const QString &parameter : parameters)
        statement.bind(parameter);
    return statement.next() ? statement.integer(0) : fallback;
}

Savepoint::Savepoint(sqlite3 *database)
    : m_database(database), m_open(execute(database, QStringLiteral("SAVEPOINT tx_step")))
{
}

Savepoint::~Savepoint()
{
    if (m_open)
        execute(m_database, QStringLiteral("ROLLBACK TO tx_step; RELEASE tx_step"));
}

bool Savepoint::release()
{
    if (!m_open || !execute(m_database, QStringLiteral("RELEASE tx_step")))
        return false;
    m_open = false;
    return true;
}

} // namespace TxSqlite
