#include "WorkspaceFixture.h"

#include "basic/TdProfileFile.h"

namespace {

class WorkspaceSkeleton : public WorkspaceFixture
{
protected:
    CTdProfileFile profile{folder.filePath(u"profile.ini"_s)};
};

TEST(ShowItemMask, OnlyAddsBitsWithThoseTheyImply)
{
    const std::pair<QList<qint32>, qint32> rows[] = {{{}, 0},      {{0x800}, 0x80c},          {{0x8}, 0xc},
                                                     {{0x4}, 0x4}, {{0x11, 0x0, 0x20}, 0x31}, {{0xfff, 0x1}, 0xfff},
                                                     {{-1}, 0xfff}};
    for (const auto &[added, expected] : rows) {
        Tree tree;
        for (const qint32 mask : added)
            tree.SetShowItemMask(mask);
        EXPECT_EQ(tree.GetShowItemMask(), expected);
    }
}

TEST_F(WorkspaceSkeleton, ProfileForbidsGroupsWhenTheirBitsAreAdded)
{
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
    workspace.SetName(u"Plan 7"_s);
    connect();
    ASSERT_EQ(tree.topLevelItemCount(), 1);
    const QTreeWidgetItem *root = tree.topLevelItem(0);
    EXPECT_TRUE(root->isExpanded());
    EXPECT_EQ(root->childCount(), 5);
    const QTreeWidgetItem *resources = root->child(4);
    struct Row
    {
        const QTreeWidgetItem *item;
        QString label;
        qint32 kind;
        int image;
    };
    for (const Row &row :
         {Row{root, u"Plan 7"_s, 0, 0}, Row{root->child(0), u"Datasources"_s, 10, 1},
          Row{root->child(1), u"Maps"_s, 50, 4}, Row{root->child(2), u"3D Scenes"_s, 130, 8},
          Row{root->child(3), u"Layouts"_s, 70, 6}, Row{resources, u"Resources"_s, 90, 10},
          Row{resources->child(0), u"Symbol Library"_s, 100, 11}, Row{resources->child(1), u"Line Library"_s, 110, 12},
          Row{resources->child(2), u"Fill Library"_s, 120, 13}}) {
        const Node *node = Tree::GetItemNode(row.item);
        ASSERT_TRUE(node && node->entries.size() == 1);
        EXPECT_EQ(row.item->text(0), row.label);
        EXPECT_EQ(row.item->data(0, Qt::UserRole).value<Node *>(), node);
        EXPECT_EQ(node->wndType, 10);
        EXPECT_EQ(node->entries.first(), (Node::CTdOleData{QString(), row.label, row.kind, Node::noDatasetType}))
            << "the name of a fixed item is its label";
        EXPECT_EQ(node->number, 0);
        EXPECT_EQ(Tree::GetItemImage(row.item), row.image);
        EXPECT_FALSE(row.item->icon(0).isNull());
    }
}

TEST_F(WorkspaceSkeleton, UnnamedWorkspaceTakesTheNameThatIsShown)
{
    tree.ConnectWorkspace(workspace);
    EXPECT_EQ(tree.topLevelItem(0)->text(0), u"Untitle Workspace"_s);
    EXPECT_EQ(workspace.GetName(), u"Untitle Workspace"_s);
}

TEST_F(WorkspaceSkeleton, ProfileGivesCaptions)
{
    profile.SaveTreeItemAlias(CTdProfileFile::Workspace, u"Town"_s);
    profile.SaveTreeItemAlias(CTdProfileFile::Layouts, u"Sheets <&> \u05D0"_s);
    tree.SetProfileFile(&profile);
    fillAll();
    EXPECT_EQ(tree.topLevelItem(0)->text(0), u"Town"_s);
    EXPECT_EQ(workspace.GetName(), QString()) << "a caption does not name the workspace";
    EXPECT_EQ(group(Node::ItemLayouts)->text(0), u"Sheets <&> \u05D0"_s);
    EXPECT_EQ(group(Node::ItemMaps)->text(0), u"Maps"_s);
}

TEST_F(WorkspaceSkeleton, FillsAgainFromAnEmptyTree)
{
    fillAll();
    fillAll();
    EXPECT_EQ(tree.topLevelItemCount(), 1);
    EXPECT_EQ(group(Node::ItemResources)->childCount(), 3);
    tree.DisconnectWorkspace();
    EXPECT_EQ(tree.topLevelItemCount(), 0);
    EXPECT_EQ(find(Node::ItemMaps, u"Maps"_s), nullptr);
    EXPECT_EQ(tree.FillBasicItem(), 0) << "without a workspace there is nothing to show";
}

TEST_F(WorkspaceSkeleton, SurvivesAHostThatDeletesItems)
{
    addMapLayoutAndScene();
    fillAll();
    delete group(Node::ItemMaps);
    EXPECT_EQ(find(Node::ItemMap, u"m"_s), nullptr);
    EXPECT_EQ(tree.FillTreeItem(Tree::FillTypeMap, u"m"_s), 1);
    tree.clear();
    EXPECT_EQ(tree.FillTreeItem(Tree::FillTypeLayout, u"l"_s), 0);
    EXPECT_EQ(find(Node::ItemScenes, u"3D Scenes"_s), nullptr);
    tree.SetExpand(Tree::FillTypeDataset);
}

TEST_F(WorkspaceSkeleton, SetExpandOpensTheDatasourcesForDatasetsAlone)
{
    openLayers(a, {{u"p"_s}});
    fillAll();
    for (const int type : {1, 2, 8, 16, 128, 512, 0})
        tree.SetExpand(Tree::FillType(type));
    EXPECT_FALSE(group(Node::ItemDataSources)->isExpanded());
    tree.SetExpand(Tree::FillTypeDataset);
    EXPECT_TRUE(group(Node::ItemDataSources)->isExpanded());
}

} // namespace
