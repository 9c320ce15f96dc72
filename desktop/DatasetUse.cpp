#include "DatasetUse.h"

#include "engine/map/TxWorkspace.h"

namespace {

bool shows(const CTxLayer &layer, const QString &alias, const QString &dataset)
{
    return layer.GetDataSourceAlias() == alias && layer.GetDatasetName() == dataset;
}

} // namespace

QStringList DatasetUse::mapsOf(const CTxWorkspace &workspace, const QString &alias, const QString &dataset)
{
    QStringList names;
    for (int m = 0; m < workspace.GetMaps().GetCount(); ++m) {
        const CTxMap *map = workspace.GetMaps().GetAt(m);
        bool found = false;
        for (int i = 0; i < map->GetLayers().GetCount() && !found; ++i)
            found = shows(*map->GetLayers().GetLayerAt(i), alias, dataset);
        if (found)
            names << map->GetName();
    }
    return names;
}

void DatasetUse::removeLayers(CTxWorkspace &workspace, const QString &alias, const QString &dataset)
{
    for (int m = 0; m < workspace.GetMaps().GetCount(); ++m) {
        CTxLayers &layers = workspace.GetMaps().GetAt(m)->GetLayers();
        for (int i = layers.GetCount() - 1; i >= 0; --i)
            if (shows(*layers.GetLayerAt(i), alias, dataset))
                layers.Remove(i);
    }
}

void DatasetUse::renameLayers(CTxWorkspace &workspace, const QString &alias, const QString &dataset,
                              const QString &newName)
{
    for (int m = 0; m < workspace.GetMaps().GetCount(); ++m) {
        const CTxLayers &layers = workspace.GetMaps().GetAt(m)->GetLayers();
        for (int i = 0; i < layers.GetCount(); ++i)
            if (shows(*layers.GetLayerAt(i), alias, dataset))
                layers.GetLayerAt(i)->SetDatasetName(newName);
    }
}
