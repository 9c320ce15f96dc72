#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// Paths and connection strings as a workspace file holds them: what lies in or below the file's folder is named
/// relative to it, so that the folder can be moved as a whole.
namespace TxPortablePath {

/// True for what is handed to a driver as it is: "PG:…" and other prefixes of two and more letters, "/vsi…", inline
/// XML and JSON, paths with a drive letter.
TX_EXPORT bool isConnection(const QString &path);
/// @p path as it is written to a workspace file in @p folder (absolute; empty while there is no file).
TX_EXPORT QString toStored(const QString &path, const QString &folder);
/// What @p stored, read from a workspace file in @p folder, stands for.
TX_EXPORT QString fromStored(const QString &stored, const QString &folder);
/// @p connection without the password in it ("password=…", "pwd=…", "//user:password@host").
TX_EXPORT QString withoutPassword(const QString &connection);

} // namespace TxPortablePath
