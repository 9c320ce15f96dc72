#pragma once

#include "basic/OleDropTargetEx.h"
#include "basic/TdOleDataNode.h"
#include "workspace/WaitCursor.h"
#include "workspace/WkspImageList.h"
#include "workspace/WorkspaceBarTree.h"
#include "workspace/WorkspaceDisplayFilter.h"
#include "workspace/WorkspaceTreeItem.h"
#include "workspace/WorkspaceTreeRecords.h"

#include <QPersistentModelIndex>

#include <array>
#include <optional>
#include <source_location>

/// The groups under the root, in the order in which they are shown.
enum class WorkspaceGroup { DataSources, Maps, Scenes, Layouts, Resources };
inline constexpr size_t workspaceGroupCount = 5;

/// The state of a workspace tree.
class WorkspaceTreePrivate
{
public:
    explicit WorkspaceTreePrivate(CWorkspaceBarTree *q) : m_tree(q) {}

    CTxWorkspace *workspace = nullptr;         // not owned
    CTdProfileFile *profile = nullptr;         // not owned
    CWorkspaceBarListCtrl *listCtrl = nullptr; // not owned
    qint32 showItemMask = 0;
    quint32 datasetMask = 0x3ffff;
    CWorkspaceBarTree::SortType sortType = CWorkspaceBarTree::SortNone;
    int autoHide = 0;
    CTdOleDataNode displayItems;
    CTdWkspImageList images;
    COleDropTargetEx dropTarget;
    WorkspaceTreeRecords records;

    /// The group's item, null while the group is not shown, and when somebody deleted its item.
    QTreeWidgetItem *group(WorkspaceGroup which) const { return m_tree->itemFromIndex(m_groups[size_t(which)]); }
    void setGroup(WorkspaceGroup which, QTreeWidgetItem *item)
    {
        m_groups[size_t(which)] = m_tree->indexFromItem(item);
    }

    /// The open datasource called @p alias, null when there is none or no workspace is connected.
    CTxDataSource *dataSource(const QString &alias) const;

    /// Makes an item with its node, and files it. It belongs to nobody yet.
    WorkspaceTreeItem *newItem(const QString &label, int imageIndex, CTdOleDataNode::ItemType kind,
                               const QString &itemName, const QString &alias = QString(), qint32 number = 0);
    /// Adds an item as the last child of @p parent.
    WorkspaceTreeItem *insertItem(QTreeWidgetItem *parent, const QString &label, int imageIndex,
                                  CTdOleDataNode::ItemType kind, const QString &itemName,
                                  const QString &alias = QString());
    /// The index of the icon for @p type.
    int image(CTdWkspImageList::ImageType type) const { return images.GetImageIndex(type); }

    /// The filter of the fill that runs; the outermost FillScope keeps it.
    std::optional<WorkspaceDisplayFilter> displayFilter;

private:
    CWorkspaceBarTree *const m_tree; // owns this
    std::array<QPersistentModelIndex, workspaceGroupCount> m_groups;
};

/// Stands around every fill: the wait cursor, and one display-items filter for the whole fill, however it nests.
class WorkspaceFillScope
{
public:
    explicit WorkspaceFillScope(WorkspaceTreePrivate &tree) : m_tree(tree), m_outermost(!tree.displayFilter)
    {
        if (m_outermost) {
            m_cursor.emplace();
            m_tree.displayFilter.emplace(m_tree.displayItems);
        }
    }
    ~WorkspaceFillScope()
    {
        if (m_outermost)
            m_tree.displayFilter.reset();
    }
    WorkspaceFillScope(const WorkspaceFillScope &) = delete;
    WorkspaceFillScope &operator=(const WorkspaceFillScope &) = delete;

    bool shows(CTdOleDataNode::ItemType kind, const QString &name, const QString &alias = QString()) const
    {
        return m_tree.displayFilter->shows(kind, name, alias);
    }

private:
    WorkspaceTreePrivate &m_tree;
    const bool m_outermost;
    std::optional<WaitCursor> m_cursor;
};

/// Reports an inconsistency inside the tree: through the switched-off error prompt, with the tree's source name and
/// the line, and into the log category terravox.workspace at debug level.
/// @return 0, the result of the fill that failed
int workspaceTreeError(const std::source_location &where = std::source_location::current());
