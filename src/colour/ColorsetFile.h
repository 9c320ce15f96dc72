#pragma once

#include "common/TdCommonExport.h"

#include <QString>

class ColorsetTable;

/// The files that the dialog "Edit Colorset" saves.
namespace ColorsetFile {

enum class SaveResult {
    Saved,
    Protected, ///< a file of the name is there and cannot be deleted
    Failed,    ///< the file cannot be written
};

/// @p path with ".sct" behind it, unless that is its extension already, in any letter case.
TDCOMMON_API QString withExtension(const QString &path);
/// Writes @p table to @p path. A file that is there already is replaced when the new one is complete, else it stays.
TDCOMMON_API SaveResult save(const QString &path, const ColorsetTable &table);

} // namespace ColorsetFile
