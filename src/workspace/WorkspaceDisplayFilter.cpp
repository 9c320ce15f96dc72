#include "workspace/WorkspaceDisplayFilter.h"

WorkspaceDisplayFilter::Entry WorkspaceDisplayFilter::entryOf(qint32 kind, const QString &name, const QString &alias)
{
    return {kind, name, kind == CTdOleDataNode::ItemDataset ? alias : QString()};
}

bool WorkspaceDisplayFilter::shows(CTdOleDataNode::ItemType kind, const QString &name, const QString &alias) const
{
    if (m_wanted.entries.isEmpty())
        return true;
    if (!m_entries) {
        m_entries.emplace();
        m_entries->reserve(m_wanted.entries.size());
        for (const auto &entry : m_wanted.entries)
            m_entries->insert(entryOf(entry.itemType, entry.itemName, entry.alias));
    }
    return m_entries->contains(entryOf(kind, name, alias));
}
