#pragma once

class CTxDataset;
class CTxPJCoordSys;

/// The coordinate systems of layers, as maps take them.
namespace LayerCoordSys {

/// Copies the system that @p dataset states itself to @p coordSys, and none when it states none. Unlike
/// CTxDataset::GetProjection() this takes nothing from the datasource: a database holds datasets of many systems, and a
/// picture in metres that passes for degrees would put its map, and every other layer with it, out of the world. In a
/// map such a dataset lies in the coordinates of the map.
void stated(const CTxDataset &dataset, CTxPJCoordSys &coordSys);

} // namespace LayerCoordSys
