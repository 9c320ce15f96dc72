#include "engine/geometry/GeoCompound.h"

// Nothing here recurses: compounds that come from files may be nested deeper than the stack is.

namespace {

/// @p geometry as a compound, null when it is none.
CGeoCompound *asCompound(CElemGeometry *geometry)
{
    return geometry->GetType() == CElemGeometry::Compound ? static_cast<CGeoCompound *>(geometry) : nullptr;
}

} // namespace

CGeoCompound::~CGeoCompound()
{
    std::vector<std::unique_ptr<CElemGeometry>> doomed = std::move(m_members);
    while (!doomed.empty()) {
        const std::unique_ptr<CElemGeometry> member = std::move(doomed.back());
        doomed.pop_back();
        if (CGeoCompound *compound = asCompound(member.get())) {
            for (std::unique_ptr<CElemGeometry> &inner : compound->m_members)
                doomed.push_back(std::move(inner));
            compound->m_members.clear();
        }
    }
}

CRect2D CGeoCompound::GetBounds() const
{
    CRect2D bounds;
    for (const CElemGeometry *leaf : GetLeaves())
        bounds.Union(leaf->GetBounds());
    return bounds;
}

std::unique_ptr<CElemGeometry> CGeoCompound::Clone() const
{
    auto copy = std::make_unique<CGeoCompound>();
    struct Pair
    {
        const CGeoCompound *source;
        CGeoCompound *target;
    };
    std::vector<Pair> pending = {{this, copy.get()}};
    while (!pending.empty()) {
        const Pair pair = pending.back();
        pending.pop_back();
        for (const std::unique_ptr<CElemGeometry> &member : pair.source->m_members) {
            if (const CGeoCompound *inner = asCompound(member.get())) {
                auto made = std::make_unique<CGeoCompound>();
                pending.push_back({inner, made.get()});
                pair.target->m_members.push_back(std::move(made));
            } else {
                pair.target->m_members.push_back(member->Clone());
            }
        }
    }
    return copy;
}

CElemGeometry *CGeoCompound::GetGeometry(qint32 index) const
{
    return index >= 0 && index < GetGeometryCount() ? m_members[static_cast<size_t>(index)].get() : nullptr;
}

std::vector<CElemGeometry *> CGeoCompound::GetLeaves() const
{
    struct Place
    {
        const CGeoCompound *compound;
        size_t next;
    };
    std::vector<CElemGeometry *> leaves;
    std::vector<Place> path = {{this, 0}};
    while (!path.empty()) {
        Place &place = path.back();
        if (place.next == place.compound->m_members.size()) {
            path.pop_back();
            continue;
        }
        CElemGeometry *member = place.compound->m_members[place.next++].get();
        if (const CGeoCompound *inner = asCompound(member))
            path.push_back({inner, 0});
        else
            leaves.push_back(member);
    }
    return leaves;
}

bool CGeoCompound::AddGeometry(std::unique_ptr<CElemGeometry> member)
{
    if (!member)
        return false;
    m_members.push_back(std::move(member));
    return true;
}
