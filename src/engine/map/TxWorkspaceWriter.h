#pragma once

#include "engine/base/TxExport.h"
#include "engine/map/TxWorkspaceDocument.h"

#include <QByteArray>

/// Writes workspace files (see docs/workspace-format.md).
namespace TxWorkspaceWriter {

/// @p document as the content of a workspace file; the same for the same document.
TX_EXPORT QByteArray write(const TxWorkspaceDocument &document);

} // namespace TxWorkspaceWriter
