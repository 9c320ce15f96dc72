#pragma once

#include "engine/base/TxExport.h"
#include "engine/map/TxWorkspaceDocument.h"

#include <QByteArray>

#include <optional>

/// Reads workspace files (see docs/workspace-format.md).
namespace TxWorkspaceReader {

/// The largest file that is read, in bytes.
constexpr qint64 maximumSize = 256 * 1024 * 1024;

/// The document that @p xml holds. Names that occur twice are made unique, what is not known is kept.
/// @param[out] error on failure what is wrong and where, for people
/// @return nothing when @p xml is no workspace of a version that can be read, or holds a value that makes no sense
TX_EXPORT std::optional<TxWorkspaceDocument> read(const QByteArray &xml, QString &error);

} // namespace TxWorkspaceReader
