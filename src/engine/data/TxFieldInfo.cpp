#include "engine/data/TxFieldInfo.h"

#include <algorithm>
#include <array>

namespace {

/// What the names of all fields begin with that the engine keeps.
constexpr QStringView systemPrefix = u"Tx";
/// Those names.
constexpr std::array systemNames = {
    u"TxID",    u"TxParentID", u"TxLength", u"TxArea",    u"TxPerimeter", u"TxGeometry",    u"TxEdgeID",
    u"TxFNode", u"TxTNode",    u"TxNodeID", u"TxRouteID", u"TxText",      u"TxLibTileName",
};

} // namespace

CTxFieldInfo::CTxFieldInfo(const QString &name, qint16 type, qint32 size, quint32 flags)
    : m_name(name), m_size(size), m_flags(flags), m_type(type)
{
}

bool CTxFieldInfo::IsSystemField() const
{
    if ((m_flags & System) != 0)
        return true;
    // Asked for every field of every record that is copied: most names are told by their beginning.
    return m_name.startsWith(systemPrefix, Qt::CaseInsensitive) &&
           std::any_of(systemNames.begin(), systemNames.end(), [this](const char16_t *name) {
               return m_name.compare(QStringView(name), Qt::CaseInsensitive) == 0;
           });
}

bool CTxFieldInfo::CanUpdate() const
{
    return !IsSystemField() && (m_flags & ReadOnly) == 0;
}

int CTxFieldInfos::Find(const QString &name) const
{
    const auto at = std::find_if(cbegin(), cend(), [&name](const CTxFieldInfo &info) {
        return info.GetName().compare(name, Qt::CaseInsensitive) == 0;
    });
    return at == cend() ? -1 : static_cast<int>(at - cbegin());
}
