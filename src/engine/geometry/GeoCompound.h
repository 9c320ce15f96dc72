#pragma once

#include "engine/geometry/ElemGeometry.h"

#include <vector>

/// A compound of geometries, which may be compounds themselves, nested to any depth.
class TX_EXPORT CGeoCompound : public CElemGeometry
{
public:
    CGeoCompound() = default;
    ~CGeoCompound() override;
    CGeoCompound(const CGeoCompound &) = delete;
    CGeoCompound &operator=(const CGeoCompound &) = delete;

    Type GetType() const override { return Compound; }
    CRect2D GetBounds() const override;
    std::unique_ptr<CElemGeometry> Clone() const override;

    /// How many members there are; members of members do not count.
    qint32 GetGeometryCount() const { return static_cast<qint32>(m_members.size()); }
    /// The member at 0-based @p index, null when out of range. It stays the compound's.
    CElemGeometry *GetGeometry(qint32 index) const;
    /// The members that are no compounds, those of member compounds in their place: what is to be drawn, measured or
    /// searched. They stay the compound's.
    std::vector<CElemGeometry *> GetLeaves() const;
    /// Adds @p member at the end; null is refused.
    bool AddGeometry(std::unique_ptr<CElemGeometry> member);

private:
    std::vector<std::unique_ptr<CElemGeometry>> m_members; // never null
};
