#pragma once

#include "engine/data/ElemDatasetInfo.h"
#include "engine/data/TxFieldInfo.h"

/// What the tables of the native database look like. A private header.
namespace NativeSchema {

/// Column of the record identifier.
constexpr char idColumn[] = "TxID";
/// Column of the geometry.
constexpr char geometryColumn[] = "TxGeometry";

/// @name Fields that the engine keeps beside the geometry
/// @{
constexpr char userId[] = "TxUserID";         ///< free for users, 0 at first
constexpr char length[] = "TxLength";         ///< plane length of lines
constexpr char area[] = "TxArea";             ///< plane area of regions
constexpr char perimeter[] = "TxPerimeter";   ///< plane length of a region's rings
constexpr char text[] = "TxText";             ///< what a text says; the geometry is its anchor
constexpr char textAngle[] = "TxTextAngle";   ///< direction of a text in degrees
constexpr char textHeight[] = "TxTextHeight"; ///< height of a text's letters in map units
constexpr char tileName[] = "TxLibTileName";  ///< of a tile index, the tile that a record stands for
/// @}

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
