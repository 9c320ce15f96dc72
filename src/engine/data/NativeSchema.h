#pragma once

#include "engine/data/ElemDatasetInfo.h"
#include "engine/data/TxFieldInfo.h"

#include <array>

/// What the tables of the native database look like. A private header.
namespace NativeSchema {

/// Column of the record identifier.
inline constexpr char idColumn[] = "TxID";
/// Column of the geometry.
inline constexpr char geometryColumn[] = "TxGeometry";

/// @name Fields that the engine keeps beside the geometry
/// @{
inline constexpr char userId[] = "TxUserID";         ///< free for users, 0 at first
inline constexpr char length[] = "TxLength";         ///< plane length of lines
inline constexpr char area[] = "TxArea";             ///< plane area of regions
inline constexpr char perimeter[] = "TxPerimeter";   ///< plane length of a region's rings
inline constexpr char text[] = "TxText";             ///< what a text says; the geometry is its anchor
inline constexpr char textAngle[] = "TxTextAngle";   ///< direction of a text in degrees
inline constexpr char textHeight[] = "TxTextHeight"; ///< height of a text's letters in map units
inline constexpr char tileName[] = "TxLibTileName";  ///< of a tile index, the tile that a record stands for
/// @}

/// Those of them that follow from the geometry.
inline constexpr std::array derivedFields = {length, area, perimeter, text, textAngle, textHeight};

/// True for the kinds that the native database holds as records.
bool holdsRecords(CElemDatasetInfo::Type kind);
/// True for the kinds that the native database holds as cells.
bool holdsCells(CElemDatasetInfo::Type kind);
/// What a dataset is for, beside its kind.
enum class Role {
    Own,      ///< itself
    Nodes,    ///< points that are the nodes of a network
    TileIndex ///< regions that list the tiles of a library
};

/// The fields that a dataset of the kind @p kind has beside "TxID" before its user fields, "TxUserID" first.
CTxFieldInfos fields(CElemDatasetInfo::Type kind, Role role = Role::Own);
/// True for system fields that tie records together, which are written by whoever knows how they hang together.
bool isKeyField(const QString &name);

} // namespace NativeSchema
