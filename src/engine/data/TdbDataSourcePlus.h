#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// The native single-file database.
class TX_EXPORT CTdbDataSourcePlus
{
public:
    /// The generation of native databases that this engine writes and opens.
    static constexpr int version = 5;

    /// True when @p path is a native database that this engine opens: the file header, the catalogue and its version
    /// are looked at. Quick, and safe on any file, whatever its content.
    static bool IsTdb5File(const QString &path);
};
