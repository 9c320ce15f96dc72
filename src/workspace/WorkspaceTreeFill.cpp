#include "basic/TdProfileFile.h"
#include "common/TdModule.h"
#include "engine/map/TxWorkspace.h"
#include "res/StringId.h"
#include "workspace/WorkspaceTreePrivate.h"

namespace {

/// A group under the root. Do not change the order of the rows: it is the order on the screen.
struct GroupRow
{
    WorkspaceGroup group;
    CWorkspaceBarTree::ShowItem bit;
    CTdOleDataNode::ItemType kind;
    CTdWkspImageList::ImageType image;
    TdStringId::Id caption;
    QString (CTdProfileFile::*alias)() const; ///< the caption that the user prefers
};

constexpr GroupRow groupTable[] = {
    {WorkspaceGroup::DataSources, CWorkspaceBarTree::ShowDataSourceGroup, CTdOleDataNode::ItemDataSources,
     CTdWkspImageList::ImageDataSources, TdStringId::TreeDataSources, &CTdProfileFile::LoadTreeItemDSSAlias},
    {WorkspaceGroup::Maps, CWorkspaceBarTree::ShowMapGroup, CTdOleDataNode::ItemMaps, CTdWkspImageList::ImageMaps,
     TdStringId::TreeMaps, &CTdProfileFile::LoadTreeItemMapsAlias},
    {WorkspaceGroup::Scenes, CWorkspaceBarTree::ShowSceneGroup, CTdOleDataNode::ItemScenes,
     CTdWkspImageList::ImageScenes, TdStringId::TreeScenes, &CTdProfileFile::LoadTreeItemScenesAlias},
    {WorkspaceGroup::Layouts, CWorkspaceBarTree::ShowLayoutGroup, CTdOleDataNode::ItemLayouts,
     CTdWkspImageList::ImageLayouts, TdStringId::TreeLayouts, &CTdProfileFile::LoadTreeItemLytsAlias},
    {WorkspaceGroup::Resources, CWorkspaceBarTree::ShowResources, CTdOleDataNode::ItemResources,
     CTdWkspImageList::ImageResources, TdStringId::TreeResources, &CTdProfileFile::LoadTreeItemResAlias},
};

struct LibraryRow
{
    CTdOleDataNode::ItemType kind;
    CTdWkspImageList::ImageType image;
    TdStringId::Id caption;
};

constexpr LibraryRow libraryTable[] = {
    {CTdOleDataNode::ItemSymbolLibrary, CTdWkspImageList::ImageSymbolLibrary, TdStringId::TreeSymbolLibrary},
    {CTdOleDataNode::ItemLineLibrary, CTdWkspImageList::ImageLineLibrary, TdStringId::TreeLineLibrary},
    {CTdOleDataNode::ItemFillLibrary, CTdWkspImageList::ImageFillLibrary, TdStringId::TreeFillLibrary},
};

/// The root's caption: the profile's, else the workspace's name, which an unnamed workspace is given here.
QString rootCaption(const CTdProfileFile *profile, CTxWorkspace &workspace)
{
    if (const QString alias = profile ? profile->LoadTreeItemWSAlias() : QString(); !alias.isEmpty())
        return alias;
    if (workspace.GetName().isEmpty())
        workspace.SetName(
            CTdModule::LoadString(TdStringId::UntitledWorkspace)); // deliberate: saved under what is shown
    return workspace.GetName();
}

} // namespace

int CWorkspaceBarTree::FillTreeItem(FillType type, const QString &first, const QString &second)
{
    const WorkspaceFillScope scope(*d);
    if (d->showItemMask == 0)
        return 0;

    int result = 0;
    switch (type) {
    case FillTypeWorkspace:
        FillWorkspace();
        break; // deliberate: 0 whatever happened, hosts do not read anything into it
    case FillTypeDataSource:
        result = FillDataSource(first);
        break;
    case FillTypeDataset:
        result = FillDataset(first, second);
        if (d->sortType != SortNone)
            SortChildrenV(FindHTreeItem(first, QString(), CTdOleDataNode::ItemDataSource, false), d->sortType);
        break;
    case FillTypeTiles:
        result = FillTiles(first, second);
        break;
    case FillTypeMap:
        result = FillMap(first);
        break;
    case FillTypeLayout:
        result = FillLyt(first);
        break;
    case FillTypeScene:
        result = FillScene(first);
        break;
    }
    viewport()->update();
    return result;
}

void CWorkspaceBarTree::FillWorkspace()
{
    FillBasicItem();
    FillDataSources();
    FillMaps();
    FillLyts();
    FillScenes();
}

int CWorkspaceBarTree::FillBasicItem()
{
    const WorkspaceFillScope scope(*d);
    DeleteAllItemsEx();
    if (!d->workspace)
        return workspaceTreeError();

    const QString rootLabel = rootCaption(d->profile, *d->workspace);
    WorkspaceTreeItem *root =
        d->newItem(rootLabel, d->image(CTdWkspImageList::ImageWorkspace), CTdOleDataNode::ItemWorkspace, rootLabel);
    addTopLevelItem(root); // deliberate: whether its mask bit is set or not

    for (const GroupRow &row : groupTable) {
        if (!(d->showItemMask & row.bit))
            continue;
        const QString alias = d->profile ? (d->profile->*row.alias)() : QString();
        const QString label = alias.isEmpty() ? CTdModule::LoadString(row.caption) : alias;
        QTreeWidgetItem *group = d->insertItem(root, label, d->image(row.image), row.kind, label);
        d->setGroup(row.group, group);
        if (row.group == WorkspaceGroup::Resources)
            FillResource(group);
    }
    root->setExpanded(true);
    return 1;
}

int CWorkspaceBarTree::FillResource(QTreeWidgetItem *group)
{
    for (const LibraryRow &row : libraryTable) {
        const QString label = CTdModule::LoadString(row.caption);
        d->insertItem(group, label, d->image(row.image), row.kind, label);
    }
    return 1;
}

int CWorkspaceBarTree::FillMaps()
{
    if (!(d->showItemMask & ShowMaps) || !d->group(WorkspaceGroup::Maps) || !d->workspace)
        return 0;
    const WorkspaceFillScope scope(*d);
    const CTxMaps &maps = d->workspace->GetMaps();
    QString name;
    CTxMap *map = nullptr;
    for (POSITION position = maps.GetStartPosition(); position;) {
        maps.GetNextAssoc(position, name, map);
        FillMap(name);
    }
    return 1;
}

int CWorkspaceBarTree::FillMap(const QString &name)
{
    const WorkspaceFillScope scope(*d);
    QTreeWidgetItem *group = d->group(WorkspaceGroup::Maps);
    // Deliberate: no search for an item that is there already; a host that fills a map twice sees it twice.
    if (group && scope.shows(CTdOleDataNode::ItemMap, name))
        d->insertItem(group, name, d->image(CTdWkspImageList::ImageMap), CTdOleDataNode::ItemMap, name);
    return 1; // deliberate: also without the group
}

int CWorkspaceBarTree::FillLyts()
{
    if (!(d->showItemMask & ShowLayouts) || !d->group(WorkspaceGroup::Layouts) || !d->workspace)
        return 0;
    const WorkspaceFillScope scope(*d);
    const CTxLytStorages &layouts = d->workspace->GetLytStorages();
    QString name;
    CTxLytStorage *layout = nullptr;
    for (POSITION position = layouts.GetStartPosition(); position;) {
        layouts.GetNextAssoc(position, name, layout);
        FillLyt(name);
    }
    return 1;
}

int CWorkspaceBarTree::FillLyt(const QString &name)
{
    const WorkspaceFillScope scope(*d);
    QTreeWidgetItem *group = d->group(WorkspaceGroup::Layouts);
    if (!group)
        return workspaceTreeError();
    // Deliberate: the display items do not confine layouts.
    d->insertItem(group, name, d->image(CTdWkspImageList::ImageLayout), CTdOleDataNode::ItemLayout, name);
    return 1;
}

int CWorkspaceBarTree::FillScenes()
{
    if (!(d->showItemMask & ShowScenes) || !d->group(WorkspaceGroup::Scenes) || !d->workspace)
        return 0;
    const WorkspaceFillScope scope(*d);
    const CTxScenes &scenes = d->workspace->GetScenes();
    for (qint32 index = 0; index < scenes.GetCount(); ++index) {
        if (const CTxSceneStorage *scene = scenes.GetAt(index))
            FillScene(scene->GetName());
    }
    return 1;
}

int CWorkspaceBarTree::FillScene(const QString &name)
{
    const WorkspaceFillScope scope(*d);
    QTreeWidgetItem *group = d->group(WorkspaceGroup::Scenes);
    if (group && scope.shows(CTdOleDataNode::ItemScene, name))
        d->insertItem(group, name, d->image(CTdWkspImageList::ImageScene), CTdOleDataNode::ItemScene, name);
    return 1;
}
