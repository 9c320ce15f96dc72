#include "engine/map/TxScenes.h"

#include <algorithm>

CTxSceneStorage *CTxScenes::GetAt(qint32 index) const
{
    return index >= 0 && index < GetCount() ? m_scenes[static_cast<size_t>(index)].get() : nullptr;
}

qint32 CTxScenes::Find(const QString &name) const
{
    const auto at =
        std::find_if(m_scenes.begin(), m_scenes.end(), [&name](const auto &scene) { return scene->m_name == name; });
    return at == m_scenes.end() ? -1 : static_cast<qint32>(at - m_scenes.begin());
}

CTxSceneStorage *CTxScenes::Add(const QString &name)
{
    if (name.isEmpty() || Find(name) >= 0)
        return nullptr;
    std::unique_ptr<CTxSceneStorage> scene(new CTxSceneStorage);
    scene->m_name = name;
    m_scenes.push_back(std::move(scene));
    return m_scenes.back().get();
}

bool CTxScenes::Remove(qint32 index)
{
    if (!GetAt(index))
        return false;
    m_scenes.erase(m_scenes.begin() + index);
    return true;
}

void CTxScenes::RemoveAll()
{
    m_scenes.clear();
}
