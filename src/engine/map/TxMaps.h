#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxNamedMap.h"
#include "engine/map/TxMap.h"

/// The maps of a workspace by name.
class TX_EXPORT CTxMaps : public TxNamedMap<CTxMap>
{
public:
    CTxMaps() = default;

    /// Makes an empty map. @return null when @p name is empty or taken.
    CTxMap *Add(const QString &name);
    /// Removes and frees the map called @p name.
    bool Remove(const QString &name);
    bool Rename(const QString &name, const QString &newName);
    /// A free name made from @p proposal.
    QString GetUnoccupiedName(const QString &proposal) const;
    /// Removes all maps.
    void RemoveAll();
};
