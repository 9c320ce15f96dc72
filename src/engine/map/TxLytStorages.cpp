#include "engine/map/TxLytStorages.h"

CTxLytStorage *CTxLytStorages::Add(const QString &name)
{
    if (name.isEmpty())
        return nullptr;
    std::unique_ptr<CTxLytStorage> layout(new CTxLytStorage);
    layout->m_name = name;
    return insert(name, std::move(layout));
}

bool CTxLytStorages::Remove(const QString &name)
{
    return take(name) != nullptr;
}

bool CTxLytStorages::Rename(const QString &name, const QString &newName)
{
    if (newName.isEmpty() || !rename(name, newName))
        return false;
    find(newName)->m_name = newName;
    return true;
}

void CTxLytStorages::RemoveAll()
{
    clear();
}
