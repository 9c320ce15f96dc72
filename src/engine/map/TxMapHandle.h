#pragma once

#include "engine/map/TxMap.h"

#include <memory>

/// A pointer to a map that turns null when the map goes.
class TxMapHandle
{
public:
    TxMapHandle() = default;
    explicit TxMapHandle(CTxMap *map) : m_map(map)
    {
        if (map)
            m_life = map->m_life;
    }

    CTxMap *get() const { return m_life.expired() ? nullptr : m_map; }

private:
    CTxMap *m_map = nullptr;
    std::weak_ptr<char> m_life;
};
