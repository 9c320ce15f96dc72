#pragma once

#include "engine/map/TxWorkspaceDocument.h"

#include <QByteArray>

/// Writes workspace files (see docs/workspace-format.md).
namespace TxWorkspaceWriter {

/// @p document as the content of a workspace file; the same for the same document.
QByteArray write(const TxWorkspaceDocument &document);

} // namespace TxWorkspaceWriter
