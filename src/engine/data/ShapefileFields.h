#pragma once

#include <QStringList>

/// What fields of other storages are called in a shapefile. A private header.
namespace ShapefileFields {

constexpr qsizetype nameBytes = 10; ///< that are kept of a field's name, in UTF-8

/// What a shapefile calls the fields @p names, in their order: those that are too long are cut, without half a
/// character, and where that name is taken "_1", "_2" … stands at its end. Names that differ stay different (letter
/// case ignored).
QStringList cutNames(const QStringList &names);

} // namespace ShapefileFields
