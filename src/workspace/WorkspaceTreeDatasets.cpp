#include "common/TdCommMethods.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/map/TxWorkspace.h"
#include "workspace/WorkspaceTreePrivate.h"

namespace {

/// Whether the icon of @p dataset shows it as open. Deliberate: tables and rasters always look open.
int openFlag(const CTxDataset &dataset)
{
    return dataset.IsVector() && dataset.GetType() != CElemDatasetInfo::Tabular && !dataset.IsOpen() ? 0 : 1;
}

/// Keeps a dataset open while it lives, and closes it only if it was closed before.
class OpenDataset
{
public:
    explicit OpenDataset(CTxDataset &dataset) : m_dataset(dataset), m_closeAgain(!dataset.IsOpen())
    {
        if (m_closeAgain)
            m_dataset.Open();
    }
    ~OpenDataset()
    {
        if (m_closeAgain)
            m_dataset.Close();
    }
    OpenDataset(const OpenDataset &) = delete;
    OpenDataset &operator=(const OpenDataset &) = delete;

private:
    CTxDataset &m_dataset;
    const bool m_closeAgain;
};

} // namespace

int CWorkspaceBarTree::FillDataSources()
{
    if (!(d->showItemMask & ShowDataSources) || !d->group(WorkspaceGroup::DataSources) || !d->workspace)
        return 0;
    const WorkspaceFillScope scope(*d);
    const CTxDataSources &dataSources = d->workspace->GetDataSources();
    QString alias;
    CTxDataSource *dataSource = nullptr;
    for (POSITION position = dataSources.GetStartPosition(); position;) {
        dataSources.GetNextAssoc(position, alias, dataSource);
        if (dataSource)
            FillDataSource(alias);
    }
    return 1;
}

int CWorkspaceBarTree::FillDataSource(const QString &alias)
{
    const WorkspaceFillScope scope(*d);
    const CTxDataSource *dataSource = d->dataSource(alias);
    QTreeWidgetItem *group = d->group(WorkspaceGroup::DataSources);
    if (!dataSource || !group)
        return workspaceTreeError();
    if (!scope.shows(CTdOleDataNode::ItemDataSource, alias))
        return 1;

    QTreeWidgetItem *item = FindHTreeItem(alias, QString(), CTdOleDataNode::ItemDataSource, false);
    if (item)
        DeleteSubItems(item, 0);
    else
        item = d->insertItem(group, alias, d->images.GetImageIndex(dataSource), CTdOleDataNode::ItemDataSource, alias);

    if (d->showItemMask & ShowDatasets) {
        // The children are made apart and added at once: one by one they would cost a change of the view each.
        const qint32 count = dataSource->GetDatasetCount();
        d->records.reserve(count);
        QList<QTreeWidgetItem *> children;
        children.reserve(count);
        bool complete = true;
        for (qint32 index = 0; index < count && complete; ++index) {
            CTxDataset *dataset = dataSource->GetDatasetAt(index);
            complete = dataset != nullptr;
            if (QTreeWidgetItem *child = dataset ? newDatasetItem(alias, dataset) : nullptr)
                children.append(child);
        }
        item->addChildren(children);
        if (!complete)
            return workspaceTreeError();
    }
    SortChildrenV(item, d->sortType);
    return 1;
}

int CWorkspaceBarTree::FillDataset(const QString &alias, const QString &name)
{
    const WorkspaceFillScope scope(*d);
    const CTxDataSource *dataSource = d->dataSource(alias);
    CTxDataset *dataset = dataSource ? dataSource->GetDataset(name) : nullptr;
    QTreeWidgetItem *item = nearestItem(alias, QString(), CTdOleDataNode::ItemDataSource);
    // Deliberate: a dataset that the display mask hides is an error here, as one that is missing.
    if (!dataset || !item || !CTdCommMethods::IsSupportDTType(dataset, d->datasetMask))
        return workspaceTreeError();
    if (QTreeWidgetItem *child = newDatasetItem(alias, dataset))
        item->addChild(child);
    return 1;
}

/// Makes the item of a dataset, with its sub-dataset. @return null, with an error when the display mask hides it, and
/// without one when the display items do not name it.
QTreeWidgetItem *CWorkspaceBarTree::newDatasetItem(const QString &alias, CTxDataset *dataset)
{
    if (!CTdCommMethods::IsSupportDTType(dataset, d->datasetMask)) {
        workspaceTreeError();
        return nullptr;
    }
    const QString &name = dataset->GetName();
    if (!d->displayFilter->shows(CTdOleDataNode::ItemDataset, name, alias))
        return nullptr;
    WorkspaceTreeItem *item = d->newItem(name, d->images.GetImageIndex(dataset, openFlag(*dataset)),
                                         CTdOleDataNode::ItemDataset, name, alias);
    item->node()->entries.first().datasetType = dataset->GetType();
    if (const CTxDataset *subDataset = dataset->IsVector() ? dataset->GetChildDataset() : nullptr)
        FillSubDataset(item, dataset, subDataset);
    return item;
}

int CWorkspaceBarTree::FillSubDataset(QTreeWidgetItem *parent, const CTxDataset *dataset, const CTxDataset *subDataset)
{
    if (!(d->showItemMask & ShowSubDatasets) || !parent || !dataset || !subDataset ||
        !CTdCommMethods::IsSupportDTType(subDataset, d->datasetMask))
        return 0;
    d->insertItem(parent, subDataset->GetName(), d->images.GetImageIndex(subDataset, 1), CTdOleDataNode::ItemSubDataset,
                  subDataset->GetName(), subDataset->GetDataSource()->GetAlias());
    return 1;
}

/// Finds the item of a dataset and lists its tiles.
int CWorkspaceBarTree::FillTiles(const QString &alias, const QString &name)
{
    QTreeWidgetItem *item = nearestItem(name, alias, CTdOleDataNode::ItemDataset);
    const CTdOleDataNode *node = GetItemNode(item);
    if (!node || node->entries.isEmpty())
        return 0;
    CTxDataSource *dataSource = nullptr;
    CTxDataset *dataset = nullptr;
    CTdCommMethods::GetDSandDT(d->workspace, *node, dataSource, dataset);
    return dataset && dataset->IsVector() ? FillDTTier(item, static_cast<CDatasetVector *>(dataset)) : 0;
}

int CWorkspaceBarTree::FillDTTier(QTreeWidgetItem *item, CDatasetVector *dataset)
{
    const WorkspaceFillScope scope(*d);
    if (!item || !dataset)
        return 0;
    CTxDataset *found = dataset->GetDataSource()->GetDataset(dataset->GetTileIndexName());
    if (!found || !found->IsVector())
        return 0;
    auto *tileIndex = static_cast<CDatasetVector *>(found);
    const OpenDataset opened(*tileIndex);
    CTxQueryDef everyTile;
    everyTile.options = CTxQueryDef::SkipGeometry;
    CTxRecordset *tiles = tileIndex->Query(everyTile);
    if (!tiles)
        return 0;

    const int image = d->images.GetImageIndex(CElemDatasetInfo::Region, 1);
    const QString alias = dataset->GetDataSource()->GetAlias();
    QList<QTreeWidgetItem *> children;
    for (; !tiles->IsEOF(); tiles->MoveNext()) {
        CTxVariant tileName;
        CTxVariant tileId;
        tiles->GetFieldValue(QStringLiteral("TxLibTileName"), tileName);
        tiles->GetFieldValue(QStringLiteral("TxID"), tileId);
        children.append(d->newItem(CTdCommMethods::VAR2STR(tileName), image, CTdOleDataNode::ItemTile,
                                   dataset->GetName(), alias, tileId.toInt32()));
    }
    item->addChildren(children);
    CTdCommMethods::ReleaseRecordset(tiles);
    return 1;
}
