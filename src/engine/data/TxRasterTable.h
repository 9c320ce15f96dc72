#pragma once

#include "engine/data/TxDataSourcePrivate.h"

/// The tables of cells in a GeoPackage. A private header.
namespace TxRasterTable {

/// Deletes the table @p name of cells and all that the file says of it, on the connection of @p storage.
bool remove(GDALDataset &storage, const QString &name);

/// Gives the table @p name of cells the name @p newName.
bool rename(GDALDataset &storage, const QString &name, const QString &newName);

} // namespace TxRasterTable
