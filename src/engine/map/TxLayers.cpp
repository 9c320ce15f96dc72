#include "engine/map/TxLayers.h"

#include "engine/map/TxUniqueName.h"

#include <algorithm>

CTxLayer *CTxLayers::GetLayerAt(int index) const
{
    return index >= 0 && index < GetCount() ? m_layers[static_cast<size_t>(index)].get() : nullptr;
}

int CTxLayers::GetLayerIndex(const QString &name) const
{
    const auto at = std::find_if(m_layers.begin(), m_layers.end(), [&name](const auto &layer) {
        return layer->GetName().compare(name, Qt::CaseInsensitive) == 0;
    });
    return at == m_layers.end() ? -1 : static_cast<int>(at - m_layers.begin());
}

int CTxLayers::FindLayer(const CTxLayer *layer) const
{
    const auto at =
        std::find_if(m_layers.begin(), m_layers.end(), [layer](const auto &own) { return own.get() == layer; });
    return at == m_layers.end() ? -1 : static_cast<int>(at - m_layers.begin());
}

CTxLayer *CTxLayers::Add(std::unique_ptr<CTxLayer> layer)
{
    if (!layer)
        return nullptr;
    const QString name = layer->GetName();
    const QString free = txUniqueName(name, [this](const QString &proposal) { return GetLayerIndex(proposal) >= 0; });
    if (free != name)
        layer->SetName(free);
    layer->m_editable = false;
    m_layers.insert(m_layers.begin(), std::move(layer));
    return m_layers.front().get();
}

bool CTxLayers::Remove(int index)
{
    if (!GetLayerAt(index))
        return false;
    m_layers.erase(m_layers.begin() + index);
    return true;
}

bool CTxLayers::Move(int from, int to)
{
    if (!GetLayerAt(from) || !GetLayerAt(to))
        return false;
    const auto first = m_layers.begin();
    if (from < to)
        std::rotate(first + from, first + from + 1, first + to + 1);
    else
        std::rotate(first + to, first + from, first + from + 1);
    return true;
}

CTxLayer *CTxLayers::GetEditableLayer() const
{
    const auto at = std::find_if(m_layers.begin(), m_layers.end(), [](const auto &layer) { return layer->m_editable; });
    return at == m_layers.end() ? nullptr : at->get();
}

bool CTxLayers::SetEditableLayer(int index)
{
    const CTxLayer *wanted = GetLayerAt(index);
    if (index != -1 && (!wanted || wanted->IsEditableLock()))
        return false;
    for (const auto &layer : m_layers)
        layer->m_editable = layer.get() == wanted;
    return true;
}
