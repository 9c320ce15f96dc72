#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct sqlite3;

/// A look at an SQLite file that leaves no trace: nothing is written, locked or waited for, no file appears beside it
/// and no journal is replayed. A private header.
///
/// It reads through SQLite's own file object. POSIX drops all locks that a process holds on a file when the process
/// closes any descriptor of it, so a file that may be open as a database must not be read by other means.
class TxSqliteFile
{
public:
    static constexpr int headerSize = 100;

    /// Opens @p path if it is a regular file; nothing else is touched, since a pipe or device could block.
    explicit TxSqliteFile(const QString &path);

    /// True when the file could be opened and has a whole header.
    bool isOpen() const { return m_database != nullptr; }
    /// True when the header is that of an SQLite database.
    bool isDatabase() const;
    /// The word of 32 bits at @p offset of the header.
    quint32 word(int offset) const;
    /// The file's size in bytes.
    qint64 size() const { return m_size; }
    /// The size that the header tells, or the size itself where the header does not know, or where a journal beside the
    /// file will put it right at the next opening.
    qint64 statedSize() const;
    /// The connection, for reading. Its schema is not trusted.
    sqlite3 *connection() const { return m_database.get(); }

private:
    struct Closer
    {
        void operator()(sqlite3 *database) const;
    };
    bool readHeader();

    const QString m_path;
    std::unique_ptr<sqlite3, Closer> m_database;
    QByteArray m_header;
    qint64 m_size = 0;
};
