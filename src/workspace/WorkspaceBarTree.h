#pragma once

#include "common/TdCommonExport.h"
#include "workspace/WkspImageList.h"

#include <QTreeWidget>

#include <memory>

class CDatasetVector;
class CTdOleDataNode;
class CTdProfileFile;
class CTxDataSource;
class CTxDataset;
class CTxWorkspace;
class CWorkspaceBarListCtrl;

/// The workspace tree: the open workspace with its datasources and datasets, maps, layouts, scenes and resource
/// libraries.
///
/// The host sets the show-item mask, connects a workspace, and fills: everything, or one item at a time. Each item
/// carries a CTdOleDataNode that says what it stands for (Qt::UserRole of column 0, or GetItemNode()); the tree owns
/// the nodes, they die with their items. The tree names engine objects and looks them up when it needs them; it keeps
/// a pointer to the workspace alone. Nothing follows the workspace by itself: the host fills again, or tells what
/// changed (UpdateDatasetState(), ChangeItemState()).
///
/// Results named int are 1 for success and 0 for failure. To be used from the user-interface thread only.
class TDCOMMON_API CWorkspaceBarTree : public QTreeWidget
{
    Q_OBJECT

public:
    /// Bits of the show-item mask: which groups and levels are shown. Do not change the values.
    enum ShowItem : qint32 {
        ShowWorkspace = 0x1,
        ShowDataSourceGroup = 0x2,
        ShowDataSources = 0x4,
        ShowDatasets = 0x8, ///< implies ShowDataSources
        ShowMapGroup = 0x10,
        ShowMaps = 0x20,
        ShowLayouts = 0x40,
        ShowLayoutGroup = 0x80,
        ShowResources = 0x100, ///< the group and its three libraries
        ShowSceneGroup = 0x200,
        ShowScenes = 0x400,
        ShowSubDatasets = 0x800 ///< implies ShowDatasets and ShowDataSources
    };

    /// What FillTreeItem() fills. Do not change the values.
    enum FillType : qint32 {
        FillTypeWorkspace = 1,
        FillTypeDataSource = 2,
        FillTypeDataset = 4,
        FillTypeTiles = 8,
        FillTypeMap = 16,
        FillTypeLayout = 128,
        FillTypeScene = 512
    };

    /// How SortChildrenV() sorts. Do not change the values.
    enum SortType : qint32 { SortNone = 0, SortByLabel = 1, SortByKind = 2 };

    explicit CWorkspaceBarTree(QWidget *parent = nullptr);
    ~CWorkspaceBarTree() override;

    /// Connects the tree to @p workspace, which stays the host's and must live until another one is connected or the
    /// tree is gone (DisconnectWorkspace() ends that), and shows root and groups.
    void ConnectWorkspace(CTxWorkspace &workspace);
    /// Empties the tree and lets the workspace go. For hosts that close the workspace before the tree.
    void DisconnectWorkspace();
    /// The connected workspace, null when there is none.
    CTxWorkspace *GetWorkspace() const;

    /// Fills one part of the tree. Does nothing and returns 0 while the show-item mask is 0.
    /// @param first datasource alias, or name of the map, layout or scene
    /// @param second dataset name (datasets and tiles)
    /// @return the fill's result; always 0 for the whole workspace, and 0 for an unknown @p type
    int FillTreeItem(FillType type, const QString &first = QString(), const QString &second = QString());

    /// Empties the tree and shows root and groups.
    int FillBasicItem();
    /// Fills every datasource of the workspace.
    int FillDataSources();
    /// Shows a datasource with its datasets. One that is there already keeps its item and gets new children.
    int FillDataSource(const QString &alias);
    /// Adds a dataset, with its sub-dataset, to the item of its datasource. A dataset of a type outside the dataset
    /// display mask is an error.
    int FillDataset(const QString &alias, const QString &name);
    /// Lists the tiles of a library dataset under @p item.
    int FillDTTier(QTreeWidgetItem *item, CDatasetVector *dataset);
    int FillMaps();
    /// Adds a map to its group, even when it is there already.
    int FillMap(const QString &name);
    int FillLyts();
    int FillLyt(const QString &name);
    int FillScenes();
    int FillScene(const QString &name);

    /// Expands the "Datasources" group for FillTypeDataset; does nothing for everything else.
    void SetExpand(FillType type);
    /// Adds bits of ShowItem, with those that they imply, to the show-item mask. Never takes any away. Bits of groups
    /// that the profile does not permit are left out.
    void SetShowItemMask(qint32 mask);
    qint32 GetShowItemMask() const;
    /// Replaces the dataset display mask: the type bits (see CTdCommMethods::QueryTDDTType) of the datasets shown.
    void SetDTDisplayMask(quint32 mask);
    quint32 GetDTDisplayMask() const;
    /// The list of items to which the fills confine themselves while it has entries. The host changes it between fills.
    CTdOleDataNode *GetDisplayItems();
    /// The profile that gives captions and permissions of groups. Not owned, may be null. Permissions count when bits
    /// are added, captions when the tree is filled.
    void SetProfileFile(CTdProfileFile *profile);
    /// The popup mode flag. @return the value before
    int SetAutoHide(int autoHide);
    int GetAutoHide() const;
    /// The list view that goes with the tree. Not owned, may be null.
    void SetRelatedListCtrl(CWorkspaceBarListCtrl *listCtrl);
    CWorkspaceBarListCtrl *GetRelatedListCtrl() const;

    /// The item of that kind (a CTdOleDataNode::ItemType), datasource alias and name that was inserted first; null when
    /// there is none. With @p noCase letter case does not count (simple case folding). Takes the same time however
    /// many items there are.
    QTreeWidgetItem *FindHTreeItem(const QString &name, const QString &alias, qint32 kind, int noCase) const;
    /// The first item of that kind, parents before their children; null when there is none. Items without a node are
    /// passed over with all that is below them.
    QTreeWidgetItem *FindFirstItem(qint32 kind) const;
    /// Finds @p item under what its node says now. To be called by who changes a node's entry in place.
    void UpdateItemRecord(QTreeWidgetItem *item);

    /// Sorts the children (not their children) of @p parent and keeps @p type for the fills that follow.
    /// @return 1; 0 for null and for types that do not sort
    int SortChildrenV(QTreeWidgetItem *parent, SortType type);
    /// The sort that was applied last.
    SortType GetSortType() const;

    /// Deletes every item and every node.
    void DeleteAllItemsEx();
    /// Deletes what is below @p item, and @p item itself when @p withSelf is not 0.
    void DeleteSubItems(QTreeWidgetItem *item, int withSelf);
    /// Deletes the nodes of @p item and of all that is below it; the items stay.
    void DeleteSubItemsData(QTreeWidgetItem *item);

    /// Shows for every vector dataset whether it is open now.
    void UpdateDatasetState();
    /// Shows the state of @p dataSource. @return 0 when it is null or has no item
    int ChangeItemState(const CTxDataSource *dataSource);
    /// Shows the state of @p dataset. @return 0 when it is null, has no item, or the item shows it already
    int ChangeItemState(const CTxDataset *dataset);

    /// The node of an item, null when it has none. Dead when the item is deleted.
    static CTdOleDataNode *GetItemNode(const QTreeWidgetItem *item);
    /// The index of an item's icon in GetWkspImageList(), -1 for items that are not the tree's own.
    static int GetItemImage(const QTreeWidgetItem *item);
    /// The small icons that the items show.
    const CTdWkspImageList &GetWkspImageList() const;

    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QList<QTreeWidgetItem *> &items) const override;
    /// Copies only: after a move the tree would delete the items, and a file manager the datasource's file.
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    friend class WorkspaceTreeFilter;

    void InitTree();
    void FillWorkspace();
    int FillResource(QTreeWidgetItem *group);
    int FillTiles(const QString &alias, const QString &name);
    int FillSubDataset(QTreeWidgetItem *parent, const CTxDataset *dataset, const CTxDataset *subDataset);
    QTreeWidgetItem *newDatasetItem(const QString &alias, CTxDataset *dataset);
    QTreeWidgetItem *nearestItem(const QString &name, const QString &alias, qint32 kind) const;
    QString toolTipOf(const QTreeWidgetItem *item) const;

    const std::unique_ptr<class WorkspaceTreePrivate> d;
};
