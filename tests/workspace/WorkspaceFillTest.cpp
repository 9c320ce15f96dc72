#include "WorkspaceFixture.h"

#include "engine/data/TxDataset.h"

#include <QGuiApplication>

namespace {

using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

class WorkspaceFill : public WorkspaceFixture
{
protected:
    const QString a = QStringLiteral("a");
    const QString point = QStringLiteral("wkbPoint");
    const QString line = QStringLiteral("wkbLineString");
    const QString none = QStringLiteral("wkbNone");

    int fill(Tree::FillType type, const QString &first = QString(), const QString &second = QString())
    {
        return tree.FillTreeItem(type, first, second);
    }
    static Node::CTdOleData wanted(qint32 kind, const QString &name, const QString &alias = QString())
    {
        return {alias, name, kind, Node::noDatasetType};
    }
};

TEST_F(WorkspaceFill, DoesNothingWhileTheMaskIsZero)
{
    workspace.GetMaps().Add(QStringLiteral("m"));
    openLayers(a, {{QStringLiteral("p"), point}});
    tree.ConnectWorkspace(workspace);
    ASSERT_EQ(tree.topLevelItemCount(), 1);
    for (const int type : {1, 2, 4, 8, 16, 128, 512})
        EXPECT_EQ(fill(Tree::FillType(type), a, QStringLiteral("p")), 0) << type;
    EXPECT_EQ(tree.topLevelItem(0)->childCount(), 0);
}

TEST_F(WorkspaceFill, OfTheWholeWorkspaceAnswersZeroThoughAllIsFilled)
{
    for (const QString &name : {QStringLiteral("m2"), QStringLiteral("m1")})
        workspace.GetMaps().Add(name);
    workspace.GetLytStorages().Add(QStringLiteral("l"));
    workspace.GetScenes().Add(QStringLiteral("s"));
    openLayers(a, {{QStringLiteral("roads"), line}, {QStringLiteral("cities"), point}});
    tree.SetShowItemMask(everything);
    tree.ConnectWorkspace(workspace);
    EXPECT_EQ(fill(Tree::FillTypeWorkspace), 0);

    EXPECT_EQ(labels(group(Node::ItemDataSources)), QStringList{a});
    EXPECT_EQ(labels(find(Node::ItemDataSource, a)), QStringList({QStringLiteral("roads"), QStringLiteral("cities")}));
    EXPECT_EQ(labels(group(Node::ItemMaps)), QStringList({QStringLiteral("m2"), QStringLiteral("m1")}));
    EXPECT_EQ(labels(group(Node::ItemLayouts)), QStringList{QStringLiteral("l")});
    EXPECT_EQ(labels(group(Node::ItemScenes)), QStringList{QStringLiteral("s")});

    const Node *dataset = Tree::GetItemNode(find(Node::ItemDataset, QStringLiteral("cities"), a));
    ASSERT_TRUE(dataset && dataset->entries.size() == 1);
    EXPECT_EQ(dataset->entries.first(), (Node::CTdOleData{a, QStringLiteral("cities"), 30, CElemDatasetInfo::Point}));
    const Node *source = Tree::GetItemNode(find(Node::ItemDataSource, a));
    EXPECT_EQ(source->entries.first(), wanted(20, a)) << "a datasource's alias is its item name";
}

TEST_F(WorkspaceFill, ShowsTheWaitCursorAndTakesItAway)
{
    tree.SetShowItemMask(everything);
    tree.ConnectWorkspace(workspace);
    QList<int> shapes;
    QObject::connect(tree.model(), &QAbstractItemModel::rowsInserted, &tree, [&shapes] {
        shapes.append(QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape() : -1);
    });
    fill(Tree::FillTypeMap, QStringLiteral("m"));
    EXPECT_EQ(shapes, QList<int>{Qt::WaitCursor});
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(WorkspaceFill, UnknownTypesDoNothing)
{
    fillAll();
    for (const int type : {0, 3, 32, 64, 256, -1})
        EXPECT_EQ(fill(Tree::FillType(type), a), 0) << type;
}

struct LevelRow
{
    qint32 mask;
    int dataSources, datasets, maps, layouts, scenes;
};

class ShownLevels : public WorkspaceFixture, public testing::WithParamInterface<LevelRow>
{
};

TEST_P(ShownLevels, FollowTheMask)
{
    const LevelRow &row = GetParam();
    openLayers(QStringLiteral("a"), {{QStringLiteral("p"), QStringLiteral("wkbPoint")}});
    workspace.GetMaps().Add(QStringLiteral("m"));
    workspace.GetLytStorages().Add(QStringLiteral("l"));
    workspace.GetScenes().Add(QStringLiteral("s"));
    fillAll(row.mask);
    const auto count = [this](qint32 kind) { return group(kind) ? 1 : 0; };
    EXPECT_EQ(count(Node::ItemDataSource), row.dataSources);
    EXPECT_EQ(count(Node::ItemDataset), row.datasets);
    EXPECT_EQ(count(Node::ItemMap), row.maps);
    EXPECT_EQ(count(Node::ItemLayout), row.layouts);
    EXPECT_EQ(count(Node::ItemScene), row.scenes);
}

INSTANTIATE_TEST_SUITE_P(Masks, ShownLevels,
                         testing::Values(LevelRow{0x1, 0, 0, 0, 0, 0}, LevelRow{0x2, 0, 0, 0, 0, 0},
                                         LevelRow{0x6, 1, 0, 0, 0, 0}, LevelRow{0xa, 1, 1, 0, 0, 0},
                                         LevelRow{0x10, 0, 0, 0, 0, 0}, LevelRow{0x30, 0, 0, 1, 0, 0},
                                         LevelRow{0x20, 0, 0, 0, 0, 0}, LevelRow{0xc0, 0, 0, 0, 1, 0},
                                         LevelRow{0x600, 0, 0, 0, 0, 1}, LevelRow{0x46a, 1, 1, 0, 0, 0}));

TEST_F(WorkspaceFill, OfOneItemNeedsTheGroupAlone)
{
    openLayers(a, {{QStringLiteral("p"), point}});
    tree.SetShowItemMask(Tree::ShowMapGroup | Tree::ShowDataSourceGroup);
    tree.ConnectWorkspace(workspace);
    EXPECT_EQ(fill(Tree::FillTypeMap, QStringLiteral("m")), 1);
    EXPECT_NE(find(Node::ItemMap, QStringLiteral("m")), nullptr);
    EXPECT_EQ(fill(Tree::FillTypeDataSource, a), 1);
    EXPECT_EQ(labels(find(Node::ItemDataSource, a)), QStringList()) << "datasets have their bit";
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, QStringLiteral("p")), 1);
    EXPECT_EQ(labels(find(Node::ItemDataSource, a)), QStringList{QStringLiteral("p")});
}

TEST_F(WorkspaceFill, WithoutTheirGroupMapsAndScenesSucceedAndLayoutsFail)
{
    tree.SetShowItemMask(Tree::ShowWorkspace);
    tree.ConnectWorkspace(workspace);
    const ErrorCounter errors;
    EXPECT_EQ(fill(Tree::FillTypeMap, QStringLiteral("m")), 1);
    EXPECT_EQ(fill(Tree::FillTypeScene, QStringLiteral("s")), 1);
    EXPECT_EQ(errors.count(), 0);
    EXPECT_EQ(fill(Tree::FillTypeLayout, QStringLiteral("l")), 0);
    EXPECT_EQ(fill(Tree::FillTypeDataSource, a), 0);
}

TEST_F(WorkspaceFill, OfAMapAgainGivesASecondItem)
{
    fillAll();
    fill(Tree::FillTypeMap, QStringLiteral("m"));
    QTreeWidgetItem *first = find(Node::ItemMap, QStringLiteral("m"));
    fill(Tree::FillTypeMap, QStringLiteral("m"));
    EXPECT_EQ(group(Node::ItemMaps)->childCount(), 2);
    EXPECT_EQ(find(Node::ItemMap, QStringLiteral("m")), first) << "the one that was inserted first is found";
}

TEST_F(WorkspaceFill, OfADatasourceAgainKeepsItsItemAndPlace)
{
    for (const QString &alias : {a, QStringLiteral("b"), QStringLiteral("c")})
        openLayers(alias, {{QStringLiteral("p"), point}, {QStringLiteral("q"), line}});
    fillAll();
    QTreeWidgetItem *middle = find(Node::ItemDataSource, QStringLiteral("b"));
    middle->setExpanded(true);
    fill(Tree::FillTypeDataset, QStringLiteral("b"), QStringLiteral("p"));
    EXPECT_EQ(middle->childCount(), 3) << "a dataset that is filled again stands there twice";

    EXPECT_EQ(fill(Tree::FillTypeDataSource, QStringLiteral("b")), 1);
    EXPECT_EQ(find(Node::ItemDataSource, QStringLiteral("b")), middle);
    EXPECT_EQ(group(Node::ItemDataSources)->indexOfChild(middle), 1);
    EXPECT_TRUE(middle->isExpanded());
    EXPECT_EQ(labels(middle), QStringList({QStringLiteral("p"), QStringLiteral("q")}));
    EXPECT_EQ(find(Node::ItemDataset, QStringLiteral("p"), QStringLiteral("b")), middle->child(0));
}

TEST_F(WorkspaceFill, HiddenDatasetTypeGoesThroughTheErrorPrompt)
{
    openLayers(a, {{QStringLiteral("p"), point}, {QStringLiteral("q"), line}, {QStringLiteral("t"), none}});
    tree.SetDTDisplayMask(0x2); // lines
    const ErrorCounter errors;
    fillAll();
    EXPECT_EQ(labels(find(Node::ItemDataSource, a)), QStringList{QStringLiteral("q")});
    EXPECT_EQ(errors.count(), 2);
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, QStringLiteral("p")), 0);
    EXPECT_EQ(errors.count(), 3);
    EXPECT_EQ(fill(Tree::FillTypeDataSource, a), 1) << "the datasource itself is filled all the same";
    tree.SetDTDisplayMask(0);
    fill(Tree::FillTypeDataSource, a);
    EXPECT_EQ(labels(find(Node::ItemDataSource, a)), QStringList()) << "the mask is replaced, not added to";
}

TEST_F(WorkspaceFill, ReportsWhatIsNotThere)
{
    openLayers(a, {{QStringLiteral("p"), point}});
    tree.SetShowItemMask(everything);
    tree.ConnectWorkspace(workspace);
    const ErrorCounter errors;
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, QStringLiteral("p")), 0) << "its datasource is not in the tree";
    EXPECT_EQ(fill(Tree::FillTypeDataSource, QStringLiteral("z")), 0);
    EXPECT_EQ(fill(Tree::FillTypeDataset, QStringLiteral("z"), QStringLiteral("p")), 0);
    fill(Tree::FillTypeDataSource, a);
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, QStringLiteral("z")), 0);
    EXPECT_EQ(errors.count(), 4);
    EXPECT_EQ(fill(Tree::FillTypeTiles, a, QStringLiteral("z")), 0);
    EXPECT_EQ(fill(Tree::FillTypeTiles, a, QStringLiteral("p")), 0) << "no library dataset";
}

TEST_F(WorkspaceFill, DisplayItemsConfineAllButLayouts)
{
    openLayers(a, {{QStringLiteral("p"), point}, {QStringLiteral("q"), point}});
    openLayers(QStringLiteral("b"), {{QStringLiteral("p"), point}});
    for (const QString &name : {QStringLiteral("m"), QStringLiteral("M")})
        workspace.GetMaps().Add(name);
    workspace.GetLytStorages().Add(QStringLiteral("l"));
    workspace.GetScenes().Add(QStringLiteral("s"));
    tree.GetDisplayItems()->entries = {wanted(20, a), wanted(30, QStringLiteral("q"), a),
                                       wanted(30, QStringLiteral("P"), a), wanted(60, QStringLiteral("M"), a)};
    fillAll();
    EXPECT_EQ(labels(group(Node::ItemDataSources)), QStringList{a});
    EXPECT_EQ(labels(find(Node::ItemDataSource, a)), QStringList{QStringLiteral("q")}) << "letter case counts";
    EXPECT_EQ(labels(group(Node::ItemMaps)), QStringList{QStringLiteral("M")});
    EXPECT_EQ(labels(group(Node::ItemScenes)), QStringList());
    EXPECT_EQ(labels(group(Node::ItemLayouts)), QStringList{QStringLiteral("l")});
    EXPECT_EQ(fill(Tree::FillTypeDataSource, QStringLiteral("b")), 1) << "left out without an error";
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, QStringLiteral("p")), 1);

    tree.GetDisplayItems()->entries.clear();
    fill(Tree::FillTypeWorkspace);
    EXPECT_EQ(labels(group(Node::ItemDataSources)), QStringList({a, QStringLiteral("b")}));
    EXPECT_EQ(group(Node::ItemMaps)->childCount(), 2);
}

TEST_F(WorkspaceFill, IconsTellOpenFromClosedButTablesAlwaysLookOpen)
{
    CTxDataSource *source = openLayers(a, {{QStringLiteral("p"), point},
                                           {QStringLiteral("t"), none},
                                           {QStringLiteral("z"), QStringLiteral("wkbPoint25D")}});
    ASSERT_NE(source, nullptr);
    fillAll();
    const auto image = [this](const QString &name) { return Tree::GetItemImage(find(Node::ItemDataset, name, a)); };
    EXPECT_EQ(image(QStringLiteral("p")), 26);
    EXPECT_EQ(image(QStringLiteral("t")), 49);
    EXPECT_EQ(image(QStringLiteral("z")), 42);
    EXPECT_EQ(Tree::GetItemImage(find(Node::ItemDataSource, a)), 3) << "a file that knows no transactions";

    CTxDataset *dataset = source->GetDataset(QStringLiteral("p"));
    ASSERT_TRUE(dataset->Open());
    EXPECT_EQ(image(QStringLiteral("p")), 26) << "nothing follows by itself";
    EXPECT_EQ(tree.ChangeItemState(dataset), 1);
    EXPECT_EQ(image(QStringLiteral("p")), 25);
    EXPECT_EQ(tree.ChangeItemState(dataset), 0) << "it shows that already";
    dataset->Close();
    tree.UpdateDatasetState();
    EXPECT_EQ(image(QStringLiteral("p")), 26);
    EXPECT_EQ(image(QStringLiteral("t")), 49);
    EXPECT_EQ(tree.ChangeItemState(source), 1);
    EXPECT_EQ(tree.ChangeItemState(static_cast<CTxDataset *>(nullptr)), 0);
    EXPECT_EQ(tree.ChangeItemState(static_cast<CTxDataSource *>(nullptr)), 0);
}

TEST_F(WorkspaceFill, TakesAliasesAndNamesOfAnyKind)
{
    const QStringList odd = {QString(10000, QChar(u'n')),
                             QStringLiteral("\u05E9\u05DC\u05D5\u05DD"),
                             QStringLiteral("\U0001F5FA\uFE0F map"),
                             QStringLiteral("a\nb\tc"),
                             QStringLiteral("<b>x</b>"),
                             QStringLiteral("Roads"),
                             QStringLiteral("roads")};
    for (const QString &name : odd) {
        openLayers(name, {{QStringLiteral("Data"), point}, {QStringLiteral("data"), line}});
        workspace.GetMaps().Add(name);
    }
    fillAll();
    tree.resize(200, 300);
    tree.expandAll();
    tree.grab(); // lays everything out
    for (const QString &name : odd) {
        ASSERT_NE(find(Node::ItemDataSource, name), nullptr) << name.left(20).toStdString();
        EXPECT_EQ(find(Node::ItemDataSource, name)->text(0), name);
        EXPECT_NE(find(Node::ItemMap, name), nullptr);
        EXPECT_EQ(labels(find(Node::ItemDataSource, name)),
                  QStringList({QStringLiteral("Data"), QStringLiteral("data")}))
            << "aliases and names that differ in case alone keep apart";
    }
}

TEST_F(WorkspaceFill, OfManyDatasetsStaysComplete)
{
    constexpr int count = 20000;
    CTxDataSource *source =
        workspace.GetDataSources().Open(writeManyLayers(folder.path(), QStringLiteral("many.ovf"), count), a);
    ASSERT_NE(source, nullptr);
    fillAll();
    const QTreeWidgetItem *item = find(Node::ItemDataSource, a);
    ASSERT_EQ(item->childCount(), count);
    for (int number = 0; number < count; number += 997) {
        QTreeWidgetItem *child = item->child(number);
        EXPECT_EQ(child->text(0), source->GetDatasetAt(number)->GetName());
        EXPECT_EQ(tree.FindHTreeItem(child->text(0).toUpper(), a, Node::ItemDataset, true), child);
    }
}

} // namespace
