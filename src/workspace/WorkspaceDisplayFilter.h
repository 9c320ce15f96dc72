#pragma once

#include "basic/TdOleDataNode.h"

#include <QHash>
#include <QSet>

#include <optional>

/// Tells which items the host wants to see, from the list it gave (the display items). For one fill: the list may not
/// change while the filter lives.
class WorkspaceDisplayFilter
{
public:
    explicit WorkspaceDisplayFilter(const CTdOleDataNode &wanted) : m_wanted(wanted) {}

    /// True when the list is empty, or holds an entry of that kind and name and, for datasets, of that datasource
    /// alias. Letter case counts.
    bool shows(CTdOleDataNode::ItemType kind, const QString &name, const QString &alias = QString()) const;

private:
    struct Entry
    {
        qint32 kind;
        QString name;
        QString alias;

        bool operator==(const Entry &other) const = default;
        friend size_t qHash(const Entry &entry, size_t seed)
        {
            return qHashMulti(seed, entry.kind, entry.name, entry.alias);
        }
    };
    static Entry entryOf(qint32 kind, const QString &name, const QString &alias);

    const CTdOleDataNode &m_wanted;               // not owned
    mutable std::optional<QSet<Entry>> m_entries; // made for the first question
};
