#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// Path helpers.
class TX_EXPORT CTxToolkit
{
public:
    /// Splits @p path into drive (empty, or a letter with colon), folder (with its trailing separator), file name
    /// without extension, and extension with its leading dot. Joined again they give @p path. A leading dot of a file
    /// name starts no extension.
    static void SplitPath(const QString &path, QString &drive, QString &dir, QString &name, QString &ext);
    /// True when @p path names an existing file (not a folder).
    static bool IsFileExisted(const QString &path);
};
