#pragma once

#include <QStringList>

class CTxWorkspace;

/// Where the maps of a workspace show a dataset. Layers name their dataset by the alias of its datasource and its name.
namespace DatasetUse {

/// The names of the maps with a layer over the dataset, whether they have a window or not.
QStringList mapsOf(const CTxWorkspace &workspace, const QString &alias, const QString &dataset);
/// Takes the layers over the dataset out of every map.
void removeLayers(CTxWorkspace &workspace, const QString &alias, const QString &dataset);
/// Turns the layers over the dataset to its new name.
void renameLayers(CTxWorkspace &workspace, const QString &alias, const QString &dataset, const QString &newName);

} // namespace DatasetUse
