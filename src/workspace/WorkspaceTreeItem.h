#pragma once

#include "basic/TdOleDataNode.h"

#include <QIcon>
#include <QTreeWidgetItem>

#include <memory>

class WorkspaceTreeRecords;

/// An item of the workspace tree. It keeps label, image and node in plain members, where QTreeWidgetItem would keep
/// lists of variants: that halves the cost of a large fill.
///
/// The node is shared so that a copied branch may hold the nodes of the original.
class WorkspaceTreeItem : public QTreeWidgetItem
{
public:
    static constexpr int itemClass = QTreeWidgetItem::UserType + 30;

    /// What data() knows beyond what every item has. Do not change the values: hosts ask for them.
    enum Role {
        NodeRole = Qt::UserRole,          ///< CTdOleDataNode *
        ImageIndexRole = Qt::UserRole + 1 ///< int
    };

    WorkspaceTreeItem(const QString &label, int imageIndex, const QIcon &icon, std::shared_ptr<CTdOleDataNode> node);
    /// Takes itself out of the records it stands in.
    ~WorkspaceTreeItem() override;

    QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant &value) override;
    QTreeWidgetItem *clone() const override;
    /// By rank while the tree sorts, else by label.
    bool operator<(const QTreeWidgetItem &other) const override;

    const QString &label() const { return m_label; }
    int imageIndex() const { return m_imageIndex; }
    /// Shows another image. @return false when it is the one that is shown.
    bool setImage(int imageIndex, const QIcon &icon);
    CTdOleDataNode *node() const { return m_node.get(); }
    /// The node's only entry, null when there is no node or it has none.
    const CTdOleDataNode::CTdOleData *entry() const;
    /// Frees the node, and leaves the records.
    void releaseNode();
    /// The item's place among its siblings when they are sorted next.
    void setSortRank(int rank) { m_sortRank = rank; }

    /// @p item as an item of a workspace tree, null when it is none.
    static WorkspaceTreeItem *from(QTreeWidgetItem *item)
    {
        return item && item->type() == itemClass ? static_cast<WorkspaceTreeItem *>(item) : nullptr;
    }

private:
    friend class WorkspaceTreeRecords;

    QString m_label;
    QIcon m_icon;
    std::shared_ptr<CTdOleDataNode> m_node;
    int m_imageIndex;
    int m_sortRank = -1;

    // Where it stands in the records; null while it does not.
    WorkspaceTreeRecords *m_records = nullptr;
    WorkspaceTreeItem *m_previousAlike = nullptr;
    WorkspaceTreeItem *m_nextAlike = nullptr;
    QString m_keyName; // the names it is filed under, whatever becomes of the node's
    QString m_keyAlias;
    qint32 m_keyKind = 0;
    size_t m_keyHash = 0;
};
