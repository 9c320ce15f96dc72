#pragma once

#include <QString>

/// What can be told of a datasource's path or connection string without GDAL. A private header.
namespace TxStoragePath {

/// True for a connection string ("PG:dbname=…", "postgresql://…"), and for any other text with a prefix that names a
/// driver and is no existing path.
bool isConnection(const QString &path);

/// An alias made from the path: the file's or folder's name without extension, the database's name of a connection.
QString aliasOf(const QString &path);

/// The path as messages may show it: a connection string without its password.
QString displayed(const QString &path);

/// Why @p path cannot be a datasource whatever it holds (nothing there, a dangling link, not readable, empty, neither
/// file nor folder), in words that follow the path's name; empty when it may be one.
QString refusal(const QString &path);

/// Why the file @p path is not whole, for formats whose drivers would open it all the same: shapefiles and their
/// tables, SQLite files, PNG and JPEG images. Only headers and ends are read. Empty when nothing speaks against it.
QString damage(const QString &path);

} // namespace TxStoragePath
