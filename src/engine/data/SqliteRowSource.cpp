#include "engine/data/SqliteRowSource.h"

#include <sqlite3.h>

#include <memory>

namespace {

struct RowTable : sqlite3_vtab
{
    explicit RowTable(SqliteRowSource *given) : sqlite3_vtab(), source(given) {}
    SqliteRowSource *source; // not owned
};

struct RowCursor : sqlite3_vtab_cursor
{
    RowCursor() : sqlite3_vtab_cursor() {}
    SqliteRowSource::Move at = SqliteRowSource::Move::End;

    SqliteRowSource &source() const { return *static_cast<RowTable *>(pVtab)->source; }
    int next()
    {
        at = source().next();
        return at == SqliteRowSource::Move::Failed ? SQLITE_ERROR : SQLITE_OK; // others end the transaction
    }
};

int connectTable(sqlite3 *database, void *source, int, const char *const *, sqlite3_vtab **table, char **)
{
    auto *rows = static_cast<SqliteRowSource *>(source);
    QByteArray columns = "c0";
    for (int i = 1; i < rows->columns(); ++i)
        columns += ", c" + QByteArray::number(i);
    const int status = sqlite3_declare_vtab(database, "CREATE TABLE rows (" + columns + ')');
    if (status == SQLITE_OK)
        *table = new RowTable(rows);
    return status;
}

int disconnectTable(sqlite3_vtab *table)
{
    delete static_cast<RowTable *>(table);
    return SQLITE_OK;
}

int planRead(sqlite3_vtab *, sqlite3_index_info *)
{
    return SQLITE_OK; // there is one way to read it
}

int openCursor(sqlite3_vtab *, sqlite3_vtab_cursor **cursor)
{
    *cursor = new RowCursor;
    return SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor *cursor)
{
    delete static_cast<RowCursor *>(cursor);
    return SQLITE_OK;
}

int firstRow(sqlite3_vtab_cursor *cursor, int, const char *, int, sqlite3_value **)
{
    return static_cast<RowCursor *>(cursor)->next();
}

int nextRow(sqlite3_vtab_cursor *cursor)
{
    return static_cast<RowCursor *>(cursor)->next();
}

int isAtEnd(sqlite3_vtab_cursor *cursor)
{
    return static_cast<RowCursor *>(cursor)->at == SqliteRowSource::Move::Row ? 0 : 1;
}

int giveColumn(sqlite3_vtab_cursor *cursor, sqlite3_context *result, int column)
{
    return static_cast<RowCursor *>(cursor)->source().give(column, result) ? SQLITE_OK : SQLITE_ERROR;
}

int giveRowId(sqlite3_vtab_cursor *, sqlite3_int64 *id)
{
    *id = 0;
    return SQLITE_OK;
}

/// A table that is there without being created: it has no xCreate.
const sqlite3_module &rowModule()
{
    static const sqlite3_module module = [] {
        sqlite3_module made = {};
        made.xConnect = connectTable;
        made.xBestIndex = planRead;
        made.xDisconnect = disconnectTable;
        made.xOpen = openCursor;
        made.xClose = closeCursor;
        made.xFilter = firstRow;
        made.xNext = nextRow;
        made.xEof = isAtEnd;
        made.xColumn = giveColumn;
        made.xRowid = giveRowId;
        return made;
    }();
    return module;
}

} // namespace

SqliteRowSource::~SqliteRowSource()
{
    detach();
}

bool SqliteRowSource::attach(sqlite3 *database, const QByteArray &name)
{
    if (sqlite3_create_module_v2(database, name, &rowModule(), this, nullptr) != SQLITE_OK)
        return false;
    m_database = database;
    m_name = name;
    return true;
}

void SqliteRowSource::detach()
{
    if (m_database)
        sqlite3_create_module_v2(m_database, m_name, nullptr, nullptr, nullptr);
    m_database = nullptr;
}
