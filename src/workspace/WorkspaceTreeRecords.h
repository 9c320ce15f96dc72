#pragma once

#include <QHash>
#include <QString>

class WorkspaceTreeItem;

/// The tree's item map: every item that was inserted, found by kind, datasource alias and name.
///
/// It answers what a walk over all items in the order of their insertion would answer, at the cost of one hash access.
/// Items that are alike but for letter case stand in one chain, the oldest first. Letter case is ignored as
/// QString::compare() with Qt::CaseInsensitive ignores it: by the simple case folding of each code point.
class WorkspaceTreeRecords
{
public:
    WorkspaceTreeRecords() = default;
    ~WorkspaceTreeRecords() { clear(); }
    WorkspaceTreeRecords(const WorkspaceTreeRecords &) = delete;
    WorkspaceTreeRecords &operator=(const WorkspaceTreeRecords &) = delete;

    /// Files @p item under the kind, alias and name of its node's first entry; without such an entry nothing happens.
    void add(WorkspaceTreeItem *item);
    /// Takes @p item out.
    void remove(WorkspaceTreeItem *item);
    /// Lets every item go.
    void clear();
    /// Makes room for @p more items.
    void reserve(qsizetype more);
    /// How many items there are.
    qsizetype count() const { return m_count; }

    /// The oldest item of that kind, alias and name; null when there is none.
    WorkspaceTreeItem *find(const QString &name, const QString &alias, qint32 kind, bool noCase) const;

private:
    struct Key
    {
        QString name;
        QString alias;
        qint32 kind;
        size_t hash;

        bool operator==(const Key &other) const;
        friend size_t qHash(const Key &key, size_t seed) { return key.hash ^ seed; }
    };
    struct Chain
    {
        WorkspaceTreeItem *oldest = nullptr; // not owned
        WorkspaceTreeItem *newest = nullptr; // not owned
        bool isUniform = true;               // every item bears the names of the key exactly
    };

    static size_t hashOf(const QString &name, const QString &alias, qint32 kind);

    QHash<Key, Chain> m_chains;
    qsizetype m_count = 0;
};
