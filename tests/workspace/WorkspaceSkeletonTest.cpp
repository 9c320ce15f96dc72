#include "WorkspaceFixture.h"

#include "basic/TdProfileFile.h"

namespace {

using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

class WorkspaceSkeleton : public WorkspaceFixture
{
};

struct MaskRow
{
    QList<qint32> added;
    qint32 expected;
};

class ShowItemMask : public testing::TestWithParam<MaskRow>
{
};

TEST_P(ShowItemMask, OnlyAddsBitsWithThoseTheyImply)
{
    Tree tree;
    for (const qint32 mask : GetParam().added)
        tree.SetShowItemMask(mask);
    EXPECT_EQ(tree.GetShowItemMask(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Masks, ShowItemMask,
                         testing::Values(MaskRow{{}, 0}, MaskRow{{0}, 0}, MaskRow{{0x800}, 0x80c}, MaskRow{{0x8}, 0xc},
                                         MaskRow{{0x4}, 0x4}, MaskRow{{0x11, 0x0, 0x20}, 0x31},
                                         MaskRow{{0xfff, 0x1}, 0xfff}, MaskRow{{0x2, 0x2}, 0x2}, MaskRow{{-1}, 0xfff}));

TEST_F(WorkspaceSkeleton, ProfileForbidsGroupsWhenTheirBitsAreAdded)
{
    CTdProfileFile profile(folder.filePath(QStringLiteral("profile.ini")));
    profile.SetTreeItemDisp(CTdProfileFile::Maps, false);
    profile.SetTreeItemDisp(CTdProfileFile::Workspace, false);
    tree.SetProfileFile(&profile);
    fillAll();
    EXPECT_EQ(tree.GetShowItemMask(), 0xfff & ~0x11);
    EXPECT_EQ(group(Node::ItemMaps), nullptr);
    EXPECT_EQ(tree.topLevelItemCount(), 1) << "the root is there whatever its bit says";

    tree.SetProfileFile(nullptr);
    tree.SetShowItemMask(Tree::ShowMapGroup);
    EXPECT_EQ(tree.GetShowItemMask(), 0xfff & ~0x1) << "permissions count when bits are added";
}

TEST_F(WorkspaceSkeleton, ShowsGroupsInTheirOrderWithNodes)
{
    workspace.SetName(QStringLiteral("Plan 7"));
    tree.SetShowItemMask(everything);
    tree.ConnectWorkspace(workspace);

    ASSERT_EQ(tree.topLevelItemCount(), 1);
    const QTreeWidgetItem *root = tree.topLevelItem(0);
    EXPECT_EQ(root->text(0), QStringLiteral("Plan 7"));
    EXPECT_TRUE(root->isExpanded());
    EXPECT_EQ(labels(root),
              QStringList({QStringLiteral("Datasources"), QStringLiteral("Maps"), QStringLiteral("3D Scenes"),
                           QStringLiteral("Layouts"), QStringLiteral("Resources")}));
    EXPECT_EQ(labels(root->child(4)), QStringList({QStringLiteral("Symbol Library"), QStringLiteral("Line Library"),
                                                   QStringLiteral("Fill Library")}));

    struct Row
    {
        const QTreeWidgetItem *item;
        qint32 kind;
        int image;
    };
    const QList<Row> rows = {{root, 0, 0},
                             {root->child(0), 10, 1},
                             {root->child(1), 50, 4},
                             {root->child(2), 130, 8},
                             {root->child(3), 70, 6},
                             {root->child(4), 90, 10},
                             {root->child(4)->child(0), 100, 11},
                             {root->child(4)->child(1), 110, 12},
                             {root->child(4)->child(2), 120, 13}};
    for (const Row &row : rows) {
        const Node *node = Tree::GetItemNode(row.item);
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(row.item->data(0, Qt::UserRole).value<Node *>(), node);
        EXPECT_EQ(node->wndType, 10);
        ASSERT_EQ(node->entries.size(), 1);
        const Node::CTdOleData &entry = node->entries.first();
        EXPECT_EQ(entry.itemType, row.kind);
        EXPECT_EQ(entry.itemName, row.item->text(0)) << "the name of a fixed item is its label";
        EXPECT_EQ(entry.alias, QString());
        EXPECT_EQ(entry.datasetType, Node::noDatasetType);
        EXPECT_EQ(node->number, 0);
        EXPECT_EQ(Tree::GetItemImage(row.item), row.image);
        EXPECT_FALSE(row.item->icon(0).isNull());
    }
}

TEST_F(WorkspaceSkeleton, UnnamedWorkspaceTakesTheNameThatIsShown)
{
    tree.ConnectWorkspace(workspace);
    EXPECT_EQ(tree.topLevelItem(0)->text(0), QStringLiteral("Untitle Workspace"));
    EXPECT_EQ(workspace.GetName(), QStringLiteral("Untitle Workspace"));
}

TEST_F(WorkspaceSkeleton, ProfileGivesCaptions)
{
    CTdProfileFile profile(folder.filePath(QStringLiteral("profile.ini")));
    profile.SaveTreeItemAlias(CTdProfileFile::Workspace, QStringLiteral("Town"));
    profile.SaveTreeItemAlias(CTdProfileFile::Layouts, QStringLiteral("Sheets <&> \u05D0"));
    tree.SetProfileFile(&profile);
    fillAll();
    EXPECT_EQ(tree.topLevelItem(0)->text(0), QStringLiteral("Town"));
    EXPECT_EQ(workspace.GetName(), QString()) << "a caption does not name the workspace";
    EXPECT_EQ(group(Node::ItemLayouts)->text(0), QStringLiteral("Sheets <&> \u05D0"));
    EXPECT_EQ(group(Node::ItemMaps)->text(0), QStringLiteral("Maps"));
}

struct GroupRow
{
    qint32 bit;
    qint32 kind;
};

class SingleGroup : public WorkspaceFixture, public testing::WithParamInterface<GroupRow>
{
};

TEST_P(SingleGroup, IsShownForItsBitAlone)
{
    tree.SetShowItemMask(GetParam().bit);
    tree.ConnectWorkspace(workspace);
    ASSERT_EQ(tree.topLevelItem(0)->childCount(), 1);
    EXPECT_EQ(Tree::GetItemNode(tree.topLevelItem(0)->child(0))->itemType, GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(Groups, SingleGroup,
                         testing::Values(GroupRow{0x2, 10}, GroupRow{0x10, 50}, GroupRow{0x80, 70}, GroupRow{0x100, 90},
                                         GroupRow{0x200, 130}));

TEST_F(WorkspaceSkeleton, FillsAgainFromAnEmptyTree)
{
    fillAll();
    const int count = group(Node::ItemResources)->childCount();
    fillAll();
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    EXPECT_EQ(group(Node::ItemResources)->childCount(), count);
    tree.DisconnectWorkspace();
    EXPECT_EQ(tree.topLevelItemCount(), 0);
    EXPECT_EQ(find(Node::ItemMaps, QStringLiteral("Maps")), nullptr);
    EXPECT_EQ(tree.FillBasicItem(), 0) << "without a workspace there is nothing to show";
}

TEST_F(WorkspaceSkeleton, SurvivesAHostThatDeletesItems)
{
    workspace.GetMaps().Add(QStringLiteral("M"));
    fillAll();
    delete group(Node::ItemMaps);
    EXPECT_EQ(find(Node::ItemMap, QStringLiteral("M")), nullptr);
    EXPECT_EQ(tree.FillTreeItem(Tree::FillTypeMap, QStringLiteral("M")), 1);
    tree.clear();
    EXPECT_EQ(tree.FillTreeItem(Tree::FillTypeLayout, QStringLiteral("L")), 0);
    EXPECT_EQ(find(Node::ItemScenes, QStringLiteral("3D Scenes")), nullptr);
    tree.SetExpand(Tree::FillTypeDataset);
}

TEST_F(WorkspaceSkeleton, SetExpandOpensTheDatasourcesForDatasetsAlone)
{
    openLayers(QStringLiteral("a"), {{QStringLiteral("p"), QStringLiteral("wkbPoint")}});
    fillAll();
    QTreeWidgetItem *sources = group(Node::ItemDataSources);
    for (const int type : {1, 2, 8, 16, 128, 512, 0})
        tree.SetExpand(Tree::FillType(type));
    EXPECT_FALSE(sources->isExpanded());
    tree.SetExpand(Tree::FillTypeDataset);
    EXPECT_TRUE(sources->isExpanded());
}

TEST_F(WorkspaceSkeleton, KeepsHostsSettings)
{
    EXPECT_EQ(tree.SetAutoHide(5), 0);
    EXPECT_EQ(tree.SetAutoHide(0), 5);
    EXPECT_EQ(tree.GetAutoHide(), 0);
    EXPECT_EQ(tree.GetRelatedListCtrl(), nullptr);
    EXPECT_EQ(tree.GetDTDisplayMask(), 0x3ffffu);
    EXPECT_TRUE(tree.GetDisplayItems()->entries.isEmpty());
}

} // namespace
