#include "engine/base/TxSqliteFile.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QtEndian>

#include <cstring>

#include <sqlite3.h>

namespace {

/// Offsets in the header (SQLite file format, section 1.3).
constexpr int pageSizeAt = 16;
constexpr int changeCounterAt = 24;
constexpr int pageCountAt = 28;
constexpr int validForAt = 92;

constexpr char magic[] = "SQLite format 3"; // with its closing zero

} // namespace

void TxSqliteFile::Closer::operator()(sqlite3 *database) const
{
    sqlite3_close(database);
}

TxSqliteFile::TxSqliteFile(const QString &path) : m_path(path)
{
    if (path.isEmpty() || path.contains(QChar(u'\0')) || !QFileInfo(path).isFile())
        return;
    const QByteArray uri =
        "file:" + QUrl::toPercentEncoding(QFileInfo(path).absoluteFilePath(), "/") + "?mode=ro&immutable=1";
    sqlite3 *opened = nullptr;
    const int status = sqlite3_open_v2(uri.constData(), &opened,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    m_database.reset(opened);
    if (status != SQLITE_OK || !readHeader())
        m_database.reset();
    else
        sqlite3_db_config(opened, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

bool TxSqliteFile::readHeader()
{
    sqlite3_file *file = nullptr;
    sqlite3_int64 size = 0;
    m_header.resize(headerSize);
    if (sqlite3_file_control(m_database.get(), nullptr, SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        !file->pMethods || file->pMethods->xFileSize(file, &size) != SQLITE_OK ||
        file->pMethods->xRead(file, m_header.data(), headerSize, 0) != SQLITE_OK)
        return false;
    m_size = size;
    return true;
}

bool TxSqliteFile::isDatabase() const
{
    return isOpen() && std::memcmp(m_header.constData(), magic, sizeof(magic)) == 0;
}

quint32 TxSqliteFile::word(int offset) const
{
    return qFromBigEndian<quint32>(m_header.constData() + offset);
}

qint64 TxSqliteFile::statedSize() const
{
    const bool knowsCount = word(changeCounterAt) == word(validForAt);
    if (!knowsCount || QFile::exists(m_path + QStringLiteral("-journal")) ||
        QFile::exists(m_path + QStringLiteral("-wal")))
        return m_size;
    const qint64 stored = qFromBigEndian<quint16>(m_header.constData() + pageSizeAt);
    return (stored == 1 ? 65536 : stored) * word(pageCountAt); // 65536 does not fit 16 bits
}
