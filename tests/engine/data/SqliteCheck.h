#pragma once

#include <QString>
#include <QVariantList>

#include <sqlite3.h>

#include <string>

/// A look at a database with SQLite alone, apart from the engine.
class SqliteCheck
{
public:
    explicit SqliteCheck(const QString &path)
    {
        sqlite3_open(path.toUtf8().constData(), &m_database);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr); // they call functions of the driver
    }
    ~SqliteCheck() { sqlite3_close(m_database); }
    SqliteCheck(const SqliteCheck &) = delete;
    SqliteCheck &operator=(const SqliteCheck &) = delete;

    sqlite3 *handle() const { return m_database; }

    bool run(const QString &sql)
    {
        return sqlite3_exec(m_database, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    /// What a query gives, as texts and whole numbers.
    QList<QVariantList> rows(const QString &sql)
    {
        QList<QVariantList> all;
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(m_database, sql.toUtf8().constData(), -1, &statement, nullptr);
        while (statement && sqlite3_step(statement) == SQLITE_ROW) {
            QVariantList row;
            for (int i = 0; i < sqlite3_column_count(statement); ++i)
                row.append(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, i))));
            all.append(row);
        }
        sqlite3_finalize(statement);
        return all;
    }

    /// The first value that a query gives; the error where it gives none.
    std::string text(const QString &sql)
    {
        const QList<QVariantList> all = rows(sql);
        return all.isEmpty() ? std::string("none: ") + sqlite3_errmsg(m_database) : all[0][0].toString().toStdString();
    }

private:
    sqlite3 *m_database = nullptr;
};
