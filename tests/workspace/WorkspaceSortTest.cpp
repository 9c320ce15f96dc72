#include "WorkspaceFixture.h"

namespace {

class WorkspaceSort : public WorkspaceFixture
{
protected:
    QTreeWidgetItem *maps(const QStringList &names)
    {
        fillAll();
        for (const QString &name : names)
            tree.FillMap(name);
        return group(Node::ItemMaps);
    }
};

TEST_F(WorkspaceSort, ByLabelTakesNoNoticeOfLetterCaseAndKeepsTheSelection)
{
    QTreeWidgetItem *group = maps({u"beta"_s, u"Gamma"_s, u"alpha"_s, u"Alpha 2"_s, u""_s, u"beta"_s});
    QTreeWidgetItem *first = group->child(0);
    tree.setCurrentItem(group->child(1));
    EXPECT_EQ(tree.SortChildrenV(group, Tree::SortByLabel), 1);
    EXPECT_EQ(labels(group), QStringList({u""_s, u"alpha"_s, u"Alpha 2"_s, u"beta"_s, u"beta"_s, u"Gamma"_s}));
    EXPECT_EQ(group->child(3), first) << "equal labels keep their order";
    EXPECT_EQ(tree.currentItem(), group->child(5));
    EXPECT_TRUE(tree.currentItem()->isSelected());
}

TEST_F(WorkspaceSort, ByKindComparesIconNumbersAsText)
{
    openLayers(a, {{u"tab"_s, u"None"_s}, {u"z"_s}, {u"q"_s, u"LineString"_s}, {u"b"_s}});
    fillAll();
    QTreeWidgetItem *root = tree.topLevelItem(0); // its children show icons 1, 4, 8, 6, 10
    EXPECT_EQ(tree.SortChildrenV(root, Tree::SortByKind), 1);
    EXPECT_EQ(labels(root), QStringList({u"Resources"_s, u"Datasources"_s, u"Maps"_s, u"Layouts"_s, u"3D Scenes"_s}))
        << "\"10Resources\" comes before \"1Datasources\" and 4, 6, 8";
    tree.SortChildrenV(sourceItem(a), Tree::SortByKind);
    EXPECT_EQ(labels(sourceItem(a)), QStringList({u"b"_s, u"z"_s, u"q"_s, u"tab"_s}));
}

TEST_F(WorkspaceSort, IsKeptForTheFillsThatFollow)
{
    openLayers(a, {{u"q"_s}, {u"p"_s}});
    fillAll();
    EXPECT_EQ(labels(sourceItem(a)).first(), u"q"_s);
    tree.SortChildrenV(sourceItem(a), Tree::SortByLabel);
    tree.FillTreeItem(Tree::FillTypeDataSource, a);
    EXPECT_EQ(labels(sourceItem(a)), QStringList({u"p"_s, u"q"_s}));
    tree.FillTreeItem(Tree::FillTypeDataset, a, u"p"_s);
    EXPECT_EQ(labels(sourceItem(a)), QStringList({u"p"_s, u"p"_s, u"q"_s}));
}

TEST_F(WorkspaceSort, UnknownTypesDoNotSortButAreStored)
{
    QTreeWidgetItem *group = maps({u"b"_s, a});
    EXPECT_EQ(tree.SortChildrenV(nullptr, Tree::SortByLabel), 0);
    EXPECT_EQ(tree.GetSortType(), Tree::SortNone) << "nothing is stored without a parent";
    EXPECT_EQ(tree.SortChildrenV(group, Tree::SortType(7)), 0);
    EXPECT_EQ(tree.GetSortType(), 7);
    EXPECT_EQ(labels(group), QStringList({u"b"_s, a}));
}

} // namespace
