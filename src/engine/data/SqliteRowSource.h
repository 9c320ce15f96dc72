#pragma once

#include <QByteArray>

struct sqlite3;
struct sqlite3_context;

/// Rows that C++ gives, for SQL to read as a table. A private header.
///
/// A single INSERT … SELECT from it writes many rows for a third of what as many INSERT statements cost.
class SqliteRowSource
{
public:
    enum class Move { Row, End, Failed };

    virtual ~SqliteRowSource();
    SqliteRowSource(const SqliteRowSource &) = delete;
    SqliteRowSource &operator=(const SqliteRowSource &) = delete;

    /// Makes the rows known to @p database as the table @p name with the columns c0, c1 …, until this object goes. They
    /// can be read once. @return false on failure.
    bool attach(sqlite3 *database, const QByteArray &name);

    /// Goes to the first or the next row.
    virtual Move next() = 0;
    /// Gives the value of a column by an sqlite3_result_…() function; texts and bytes must stay until next(). It is
    /// called once for each column and row that the statement wants. @return false to let the statement fail
    virtual bool give(int column, sqlite3_context *result) = 0;

    int columns() const { return m_columns; }

protected:
    explicit SqliteRowSource(int columns) : m_columns(columns) {}
    /// To be called when no statement reads the rows any more, before what the derived class needs goes.
    void detach();

private:
    const int m_columns;
    sqlite3 *m_database = nullptr; // not owned
    QByteArray m_name;
};
