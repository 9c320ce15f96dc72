#pragma once

#include "engine/base/TxExport.h"
#include "engine/map/TxLayer.h"

#include <memory>
#include <vector>

/// The layers of a map, the topmost (drawn last) first. Owns them.
class TX_EXPORT CTxLayers
{
public:
    CTxLayers() = default;
    CTxLayers(const CTxLayers &) = delete;
    CTxLayers &operator=(const CTxLayers &) = delete;

    int GetCount() const { return static_cast<int>(m_layers.size()); }
    /// The layer at 0-based @p index, null when out of range.
    CTxLayer *GetLayerAt(int index) const;
    /// The index of the layer called @p name (letter case ignored), -1 when there is none.
    int GetLayerIndex(const QString &name) const;
    /// The index of @p layer, -1 when it is not one of these.
    int FindLayer(const CTxLayer *layer) const;

    /// Puts @p layer on top; its name is made unique. @return the layer.
    CTxLayer *Add(std::unique_ptr<CTxLayer> layer);
    /// Removes and frees the layer at @p index. @return false when out of range.
    bool Remove(int index);
    /// Moves a layer from one place to another. @return false when either is out of range.
    bool Move(int from, int to);

    /// The one layer that is edited, null when there is none.
    CTxLayer *GetEditableLayer() const;
    /// Makes the layer at @p index the editable one and no other; -1 makes none editable.
    /// @return false when out of range or the layer is locked.
    bool SetEditableLayer(int index);

private:
    std::vector<std::unique_ptr<CTxLayer>> m_layers;
};
