#include "common/TdCommMethods.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxWorkspace.h"
#include "workspace/WorkspaceTreePrivate.h"

namespace {

void releaseNodesBelow(QTreeWidgetItem *item)
{
    for (int child = 0; child < item->childCount(); ++child)
        releaseNodesBelow(item->child(child));
    if (WorkspaceTreeItem *own = WorkspaceTreeItem::from(item))
        own->releaseNode();
}

QTreeWidgetItem *firstOfKind(QTreeWidgetItem *item, qint32 kind)
{
    const CTdOleDataNode *node = CWorkspaceBarTree::GetItemNode(item);
    if (!node || node->entries.isEmpty())
        return nullptr;
    if (node->entries.first().itemType == kind)
        return item;
    for (int child = 0; child < item->childCount(); ++child) {
        if (QTreeWidgetItem *found = firstOfKind(item->child(child), kind))
            return found;
    }
    return nullptr;
}

} // namespace

CTxDataSource *WorkspaceTreePrivate::dataSource(const QString &alias) const
{
    CTxDataSource *found = nullptr;
    if (workspace)
        workspace->GetDataSources().Lookup(alias, found);
    return found;
}

WorkspaceTreeItem *WorkspaceTreePrivate::newItem(const QString &label, int imageIndex, CTdOleDataNode::ItemType kind,
                                                 const QString &itemName, const QString &alias, qint32 number)
{
    auto *item = new WorkspaceTreeItem(
        label, imageIndex, images.icon(imageIndex),
        std::make_shared<CTdOleDataNode>(CTdOleDataNode::WndWorkspaceTree, kind, itemName, alias, 0u, number));
    records.add(item);
    return item;
}

WorkspaceTreeItem *WorkspaceTreePrivate::insertItem(QTreeWidgetItem *parent, const QString &label, int imageIndex,
                                                    CTdOleDataNode::ItemType kind, const QString &itemName,
                                                    const QString &alias)
{
    WorkspaceTreeItem *item = newItem(label, imageIndex, kind, itemName, alias);
    parent->addChild(item);
    return item;
}

QTreeWidgetItem *CWorkspaceBarTree::FindHTreeItem(const QString &name, const QString &alias, qint32 kind,
                                                  int noCase) const
{
    return d->records.find(name, alias, kind, noCase != 0);
}

/// The item of that kind, alias and name. Letter case does not count, but where names differ in letter case alone, each
/// finds its own item.
QTreeWidgetItem *CWorkspaceBarTree::nearestItem(const QString &name, const QString &alias, qint32 kind) const
{
    QTreeWidgetItem *exact = FindHTreeItem(name, alias, kind, false);
    return exact ? exact : FindHTreeItem(name, alias, kind, true);
}

QTreeWidgetItem *CWorkspaceBarTree::FindFirstItem(qint32 kind) const
{
    for (int top = 0; top < topLevelItemCount(); ++top) {
        QTreeWidgetItem *root = topLevelItem(top);
        if (top == 0 && !GetItemNode(root))
            return nullptr;
        if (QTreeWidgetItem *found = firstOfKind(root, kind))
            return found;
    }
    return nullptr;
}

void CWorkspaceBarTree::UpdateItemRecord(QTreeWidgetItem *item)
{
    if (WorkspaceTreeItem *own = WorkspaceTreeItem::from(item))
        d->records.add(own);
}

void CWorkspaceBarTree::DeleteAllItemsEx()
{
    d->records.clear();
    clear();
}

void CWorkspaceBarTree::DeleteSubItems(QTreeWidgetItem *item, int withSelf)
{
    if (!item)
        return;
    if (withSelf) {
        delete item;
        return;
    }
    // Deleting a child looks for it among its siblings, so they are taken out first.
    qDeleteAll(item->takeChildren());
}

void CWorkspaceBarTree::DeleteSubItemsData(QTreeWidgetItem *item)
{
    if (item)
        releaseNodesBelow(item);
}

void CWorkspaceBarTree::UpdateDatasetState()
{
    const QTreeWidgetItem *group = d->group(WorkspaceGroup::DataSources);
    if (!group || !d->workspace)
        return;
    for (int source = 0; source < group->childCount(); ++source) {
        const QTreeWidgetItem *dataSourceItem = group->child(source);
        for (int child = 0; child < dataSourceItem->childCount(); ++child) {
            WorkspaceTreeItem *item = WorkspaceTreeItem::from(dataSourceItem->child(child));
            const CTdOleDataNode *node = item ? item->node() : nullptr;
            if (!node || node->entries.size() != 1 || node->entries.first().itemType != CTdOleDataNode::ItemDataset)
                continue;
            CTxDataSource *dataSource = nullptr;
            CTxDataset *dataset = nullptr;
            CTdCommMethods::GetDSandDT(d->workspace, *node, dataSource, dataset);
            if (!dataset || !dataset->IsVector() || dataset->GetType() == CElemDatasetInfo::Tabular)
                continue;
            const int image = d->images.GetImageIndex(dataset, dataset->IsOpen());
            item->setImage(image, d->images.icon(image));
        }
    }
}

int CWorkspaceBarTree::ChangeItemState(const CTxDataSource *dataSource)
{
    if (!dataSource)
        return 0;
    auto *item =
        WorkspaceTreeItem::from(nearestItem(dataSource->GetAlias(), QString(), CTdOleDataNode::ItemDataSource));
    if (!item)
        return 0;
    const int image = d->images.GetImageIndex(dataSource);
    item->setImage(image, d->images.icon(image));
    return 1;
}

int CWorkspaceBarTree::ChangeItemState(const CTxDataset *dataset)
{
    if (!dataset)
        return 0;
    auto *item = WorkspaceTreeItem::from(
        nearestItem(dataset->GetName(), dataset->GetDataSource()->GetAlias(), CTdOleDataNode::ItemDataset));
    if (!item)
        return 0;
    const int image = d->images.GetImageIndex(dataset, !dataset->IsVector() || dataset->IsOpen());
    return item->setImage(image, d->images.icon(image)) ? 1 : 0;
}

CTdOleDataNode *CWorkspaceBarTree::GetItemNode(const QTreeWidgetItem *item)
{
    const WorkspaceTreeItem *own = WorkspaceTreeItem::from(const_cast<QTreeWidgetItem *>(item));
    return own ? own->node() : nullptr;
}

int CWorkspaceBarTree::GetItemImage(const QTreeWidgetItem *item)
{
    const WorkspaceTreeItem *own = WorkspaceTreeItem::from(const_cast<QTreeWidgetItem *>(item));
    return own ? own->imageIndex() : -1;
}
