#include "WorkspaceFixture.h"

namespace {

using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

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
    QString a = QStringLiteral("a");
};

TEST_F(WorkspaceSort, ByLabelTakesNoNoticeOfLetterCase)
{
    QTreeWidgetItem *group = maps({QStringLiteral("beta"), QStringLiteral("Gamma"), QStringLiteral("alpha"),
                                   QStringLiteral("Alpha 2"), QStringLiteral("")});
    EXPECT_EQ(tree.SortChildrenV(group, Tree::SortByLabel), 1);
    EXPECT_EQ(labels(group), QStringList({QStringLiteral(""), QStringLiteral("alpha"), QStringLiteral("Alpha 2"),
                                          QStringLiteral("beta"), QStringLiteral("Gamma")}));
}

TEST_F(WorkspaceSort, KeepsTheOrderOfEqualLabelsAndWhatIsSelected)
{
    QTreeWidgetItem *group = maps({QStringLiteral("z"), QStringLiteral("m"), QStringLiteral("m")});
    QTreeWidgetItem *first = group->child(1);
    tree.setCurrentItem(group->child(0));
    tree.SortChildrenV(group, Tree::SortByLabel);
    EXPECT_EQ(group->child(0), first);
    EXPECT_EQ(tree.currentItem()->text(0), QStringLiteral("z"));
    EXPECT_TRUE(tree.currentItem()->isSelected());
}

TEST_F(WorkspaceSort, ByKindComparesIconNumbersAsText)
{
    fillAll();
    QTreeWidgetItem *root = tree.topLevelItem(0); // its children show icons 1, 4, 8, 6, 10
    const QStringList before = labels(root);
    EXPECT_EQ(tree.SortChildrenV(root, Tree::SortByKind), 1);
    EXPECT_EQ(labels(root),
              QStringList({QStringLiteral("Resources"), QStringLiteral("Datasources"), QStringLiteral("Maps"),
                           QStringLiteral("Layouts"), QStringLiteral("3D Scenes")}))
        << "\"10Resources\" comes before \"1Datasources\" and 4, 6, 8";
}

TEST_F(WorkspaceSort, ByKindGroupsDatasetsAndLetsNumbersRunIntoLabels)
{
    openLayers(a, {{QStringLiteral("tab"), QStringLiteral("wkbNone")},
                   {QStringLiteral("z"), QStringLiteral("wkbPoint")},
                   {QStringLiteral("q"), QStringLiteral("wkbLineString")},
                   {QStringLiteral("b"), QStringLiteral("wkbPoint")}});
    fillAll();
    QTreeWidgetItem *source = find(Node::ItemDataSource, a);
    tree.SortChildrenV(source, Tree::SortByKind);
    EXPECT_EQ(labels(source),
              QStringList({QStringLiteral("b"), QStringLiteral("z"), QStringLiteral("q"), QStringLiteral("tab")}));
}

TEST_F(WorkspaceSort, IsKeptForTheFillsThatFollow)
{
    openLayers(a,
               {{QStringLiteral("q"), QStringLiteral("wkbPoint")}, {QStringLiteral("p"), QStringLiteral("wkbPoint")}});
    fillAll();
    QTreeWidgetItem *source = find(Node::ItemDataSource, a);
    EXPECT_EQ(labels(source).first(), QStringLiteral("q"));
    tree.SortChildrenV(source, Tree::SortByLabel);
    tree.FillTreeItem(Tree::FillTypeDataSource, a);
    EXPECT_EQ(labels(source), QStringList({QStringLiteral("p"), QStringLiteral("q")}));
    tree.FillTreeItem(Tree::FillTypeDataset, a, QStringLiteral("p"));
    EXPECT_EQ(labels(source), QStringList({QStringLiteral("p"), QStringLiteral("p"), QStringLiteral("q")}));
}

TEST_F(WorkspaceSort, UnknownTypesDoNotSortButAreStored)
{
    QTreeWidgetItem *group = maps({QStringLiteral("b"), QStringLiteral("a")});
    EXPECT_EQ(tree.SortChildrenV(nullptr, Tree::SortByLabel), 0);
    EXPECT_EQ(tree.GetSortType(), Tree::SortNone) << "nothing is stored without a parent";
    EXPECT_EQ(tree.SortChildrenV(group, Tree::SortType(7)), 0);
    EXPECT_EQ(tree.GetSortType(), 7);
    EXPECT_EQ(labels(group), QStringList({QStringLiteral("b"), QStringLiteral("a")}));
}

} // namespace
