#include "engine/map/TxMaps.h"

#include "engine/map/TxUniqueName.h"

CTxMap *CTxMaps::Add(const QString &name)
{
    if (name.isEmpty())
        return nullptr;
    std::unique_ptr<CTxMap> map(new CTxMap);
    map->m_name = name;
    return insert(name, std::move(map));
}

bool CTxMaps::Remove(const QString &name)
{
    return take(name) != nullptr;
}

bool CTxMaps::Rename(const QString &name, const QString &newName)
{
    if (newName.isEmpty() || !rename(name, newName))
        return false;
    find(newName)->m_name = newName;
    return true;
}

QString CTxMaps::GetUnoccupiedName(const QString &proposal) const
{
    return txUniqueName(proposal.isEmpty() ? QStringLiteral("Map") : proposal,
                        [this](const QString &name) { return find(name) != nullptr; });
}

void CTxMaps::RemoveAll()
{
    clear();
}
