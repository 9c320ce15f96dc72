#include "Rows.h"
#include "WorkspaceFixture.h"

#include "engine/data/TxDataset.h"

#include <QGuiApplication>

namespace {

class WorkspaceFill : public WorkspaceFixture
{
protected:
    const QString line = u"LineString"_s;
    const QString none = u"None"_s;

    int fill(int type, const QString &first = QString(), const QString &second = QString())
    {
        return tree.FillTreeItem(Tree::FillType(type), first, second);
    }
    static Node::CTdOleData wanted(qint32 kind, const QString &name, const QString &alias = QString())
    {
        return {alias, name, kind, Node::noDatasetType};
    }
};

TEST_F(WorkspaceFill, DoesNothingWhileTheMaskIsZeroOrForUnknownTypes)
{
    addMapLayoutAndScene();
    openLayers(a, {{u"p"_s}});
    tree.ConnectWorkspace(workspace);
    ASSERT_EQ(tree.topLevelItemCount(), 1);
    for (const int type : {1, 2, 4, 8, 16, 128, 512})
        EXPECT_EQ(fill(type, a, u"p"_s), 0) << type;
    EXPECT_EQ(tree.topLevelItem(0)->childCount(), 0);
    fillAll();
    for (const int type : {0, 3, 32, 64, 256, -1})
        EXPECT_EQ(fill(type, a), 0) << type;
}

TEST_F(WorkspaceFill, OfTheWholeWorkspaceAnswersZeroThoughAllIsFilled)
{
    workspace.GetMaps().Add(u"m2"_s);
    addMapLayoutAndScene();
    openLayers(a, {{u"roads"_s, line}, {u"cities"_s}});
    connect();
    EXPECT_EQ(fill(Tree::FillTypeWorkspace), 0);

    EXPECT_EQ(labels(group(Node::ItemDataSources)), QStringList{a});
    EXPECT_EQ(labels(sourceItem(a)), QStringList({u"roads"_s, u"cities"_s}));
    EXPECT_EQ(labels(group(Node::ItemMaps)), QStringList({u"m2"_s, u"m"_s}));
    EXPECT_EQ(labels(group(Node::ItemLayouts)), QStringList{u"l"_s});
    EXPECT_EQ(labels(group(Node::ItemScenes)), QStringList{u"s"_s});

    const Node *dataset = Tree::GetItemNode(find(Node::ItemDataset, u"cities"_s, a));
    ASSERT_TRUE(dataset && dataset->entries.size() == 1);
    EXPECT_EQ(dataset->entries.first(), (Node::CTdOleData{a, u"cities"_s, 30, CElemDatasetInfo::Point}));
    EXPECT_EQ(Tree::GetItemNode(sourceItem(a))->entries.first(), wanted(20, a)) << "its alias is its item name";
}

TEST_F(WorkspaceFill, ShowsTheWaitCursorAndTakesItAway)
{
    connect();
    QList<int> shapes;
    QObject::connect(tree.model(), &QAbstractItemModel::rowsInserted, &tree, [&shapes] {
        shapes.append(QGuiApplication::overrideCursor() ? QGuiApplication::overrideCursor()->shape() : -1);
    });
    fill(Tree::FillTypeMap, u"m"_s);
    EXPECT_EQ(shapes, QList<int>{Qt::WaitCursor});
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

/// A mask, and what it shows: each group and its items have a bit of their own.
using ShownLevels = WithRows<WorkspaceFixture, std::pair<qint32, QList<qint32>>>;

TEST_P(ShownLevels, FollowTheMask)
{
    openLayers(a, {{u"p"_s}});
    addMapLayoutAndScene();
    fillAll(GetParam().first);
    QList<qint32> shown;
    for (const qint32 kind : {10, 20, 30, 50, 60, 70, 80, 90, 130, 140})
        if (group(kind))
            shown.append(kind);
    EXPECT_EQ(shown, GetParam().second);
}

using Shown = std::pair<qint32, QList<qint32>>;
INSTANTIATE_TEST_SUITE_P(Masks, ShownLevels,
                         testing::Values(Shown{0x1, {}}, Shown{0x2, {10}}, Shown{0x6, {10, 20}},
                                         Shown{0xa, {10, 20, 30}}, Shown{0x10, {50}}, Shown{0x30, {50, 60}},
                                         Shown{0x20, {}}, Shown{0x80, {70}}, Shown{0xc0, {70, 80}}, Shown{0x100, {90}},
                                         Shown{0x200, {130}}, Shown{0x600, {130, 140}}, Shown{0x46a, {10, 20, 30}}));

TEST_F(WorkspaceFill, OfOneItemNeedsTheGroupAlone)
{
    openLayers(a, {{u"p"_s}});
    connect(Tree::ShowMapGroup | Tree::ShowDataSourceGroup);
    EXPECT_EQ(fill(Tree::FillTypeMap, u"m"_s), 1);
    EXPECT_NE(find(Node::ItemMap, u"m"_s), nullptr);
    EXPECT_EQ(fill(Tree::FillTypeDataSource, a), 1);
    EXPECT_EQ(labels(sourceItem(a)), QStringList()) << "datasets have their bit";
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, u"p"_s), 1);
    EXPECT_EQ(labels(sourceItem(a)), QStringList{u"p"_s});
}

TEST_F(WorkspaceFill, WithoutTheirGroupMapsAndScenesSucceedAndLayoutsFail)
{
    connect(Tree::ShowWorkspace);
    const ErrorCounter errors;
    EXPECT_EQ(fill(Tree::FillTypeMap, u"m"_s), 1);
    EXPECT_EQ(fill(Tree::FillTypeScene, u"s"_s), 1);
    EXPECT_EQ(errors.count(), 0);
    EXPECT_EQ(fill(Tree::FillTypeLayout, u"l"_s), 0);
    EXPECT_EQ(fill(Tree::FillTypeDataSource, a), 0);
}

TEST_F(WorkspaceFill, OfAMapAgainGivesASecondItem)
{
    fillAll();
    fill(Tree::FillTypeMap, u"m"_s);
    QTreeWidgetItem *first = find(Node::ItemMap, u"m"_s);
    fill(Tree::FillTypeMap, u"m"_s);
    EXPECT_EQ(group(Node::ItemMaps)->childCount(), 2);
    EXPECT_EQ(find(Node::ItemMap, u"m"_s), first) << "the one that was inserted first is found";
}

TEST_F(WorkspaceFill, OfADatasourceAgainKeepsItsItemAndPlace)
{
    for (const QString &alias : {a, u"b"_s, u"c"_s})
        openLayers(alias, {{u"p"_s}, {u"q"_s, line}});
    fillAll();
    QTreeWidgetItem *middle = sourceItem(u"b"_s);
    middle->setExpanded(true);
    fill(Tree::FillTypeDataset, u"b"_s, u"p"_s);
    EXPECT_EQ(middle->childCount(), 3) << "a dataset that is filled again stands there twice";

    EXPECT_EQ(fill(Tree::FillTypeDataSource, u"b"_s), 1);
    EXPECT_EQ(sourceItem(u"b"_s), middle);
    EXPECT_EQ(group(Node::ItemDataSources)->indexOfChild(middle), 1);
    EXPECT_TRUE(middle->isExpanded());
    EXPECT_EQ(labels(middle), QStringList({u"p"_s, u"q"_s}));
    EXPECT_EQ(find(Node::ItemDataset, u"p"_s, u"b"_s), middle->child(0));
}

TEST_F(WorkspaceFill, HiddenDatasetTypeGoesThroughTheErrorPrompt)
{
    openLayers(a, {{u"p"_s}, {u"q"_s, line}, {u"t"_s, none}});
    tree.SetDTDisplayMask(0x2); // lines
    const ErrorCounter errors;
    fillAll();
    EXPECT_EQ(labels(sourceItem(a)), QStringList{u"q"_s});
    EXPECT_EQ(errors.count(), 2);
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, u"p"_s), 0);
    EXPECT_EQ(errors.count(), 3);
    EXPECT_EQ(fill(Tree::FillTypeDataSource, a), 1) << "the datasource itself is filled all the same";
    tree.SetDTDisplayMask(0);
    fill(Tree::FillTypeDataSource, a);
    EXPECT_EQ(labels(sourceItem(a)), QStringList()) << "the mask is replaced, not added to";
}

TEST_F(WorkspaceFill, ReportsWhatIsNotThere)
{
    openLayers(a, {{u"p"_s}});
    connect();
    const ErrorCounter errors;
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, u"p"_s), 0) << "its datasource is not in the tree";
    EXPECT_EQ(fill(Tree::FillTypeDataSource, u"z"_s), 0);
    EXPECT_EQ(fill(Tree::FillTypeDataset, u"z"_s, u"p"_s), 0);
    fill(Tree::FillTypeDataSource, a);
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, u"z"_s), 0);
    EXPECT_EQ(errors.count(), 4);
    EXPECT_EQ(fill(Tree::FillTypeTiles, a, u"z"_s), 0);
    EXPECT_EQ(fill(Tree::FillTypeTiles, a, u"p"_s), 0) << "no library dataset";
}

TEST_F(WorkspaceFill, DisplayItemsConfineAllButLayouts)
{
    openLayers(a, {{u"p"_s}, {u"q"_s}});
    openLayers(u"b"_s, {{u"p"_s}});
    addMapLayoutAndScene();
    workspace.GetMaps().Add(u"M"_s);
    tree.GetDisplayItems()->entries = {wanted(20, a), wanted(30, u"q"_s, a), wanted(30, u"P"_s, a),
                                       wanted(60, u"M"_s, a)};
    fillAll();
    EXPECT_EQ(labels(group(Node::ItemDataSources)), QStringList{a});
    EXPECT_EQ(labels(sourceItem(a)), QStringList{u"q"_s}) << "letter case counts";
    EXPECT_EQ(labels(group(Node::ItemMaps)), QStringList{u"M"_s});
    EXPECT_EQ(labels(group(Node::ItemScenes)), QStringList());
    EXPECT_EQ(labels(group(Node::ItemLayouts)), QStringList{u"l"_s});
    EXPECT_EQ(fill(Tree::FillTypeDataSource, u"b"_s), 1) << "left out without an error";
    EXPECT_EQ(fill(Tree::FillTypeDataset, a, u"p"_s), 1);

    tree.GetDisplayItems()->entries.clear();
    fill(Tree::FillTypeWorkspace);
    EXPECT_EQ(labels(group(Node::ItemDataSources)), QStringList({a, u"b"_s}));
    EXPECT_EQ(group(Node::ItemMaps)->childCount(), 2);
}

TEST_F(WorkspaceFill, IconsTellOpenFromClosedButTablesAlwaysLookOpen)
{
    CTxDataSource *dataSource = openLayers(a, {{u"p"_s}, {u"t"_s, none}, {u"z"_s, u"Point25D"_s}});
    ASSERT_NE(dataSource, nullptr);
    fillAll();
    const auto images = [this] {
        QList<int> result{Tree::GetItemImage(sourceItem(a))};
        for (int child = 0; child < 3; ++child)
            result.append(Tree::GetItemImage(sourceItem(a)->child(child)));
        return result;
    };
    EXPECT_EQ(images(), (QList<int>{3, 26, 49, 42})) << "3: a file that knows no transactions";

    CTxDataset *dataset = dataSource->GetDataset(u"p"_s);
    ASSERT_TRUE(dataset->Open());
    EXPECT_EQ(images(), (QList<int>{3, 26, 49, 42})) << "nothing follows by itself";
    EXPECT_EQ(tree.ChangeItemState(dataset), 1);
    EXPECT_EQ(images(), (QList<int>{3, 25, 49, 42}));
    EXPECT_EQ(tree.ChangeItemState(dataset), 0) << "it shows that already";
    dataset->Close();
    tree.UpdateDatasetState();
    EXPECT_EQ(images(), (QList<int>{3, 26, 49, 42}));
    EXPECT_EQ(tree.ChangeItemState(dataSource), 1);
    EXPECT_EQ(tree.ChangeItemState(static_cast<CTxDataset *>(nullptr)), 0);
    EXPECT_EQ(tree.ChangeItemState(static_cast<CTxDataSource *>(nullptr)), 0);
}

TEST_F(WorkspaceFill, NamesThatDifferInCaseAloneShowTheirOwnState)
{
    CTxDataSource *source = openLayers(a, {{u"Roads"_s}, {u"ROADS"_s}});
    ASSERT_NE(source, nullptr);
    fillAll();
    CTxDataset *second = source->GetDataset(u"ROADS"_s);
    ASSERT_TRUE(second && second->Open());
    EXPECT_EQ(tree.ChangeItemState(second), 1);
    EXPECT_EQ(Tree::GetItemImage(find(Node::ItemDataset, u"ROADS"_s, a)), 25);
    EXPECT_EQ(Tree::GetItemImage(find(Node::ItemDataset, u"Roads"_s, a)), 26);
}

TEST_F(WorkspaceFill, TakesAliasesAndNamesOfAnyKind)
{
    const QStringList odd = u"\u05E9\u05DC\u05D5\u05DD|\U0001F5FA\uFE0F map|a\nb\tc|<b>x</b>|Roads|roads"_s.split(u'|')
                            << QString(10000, u'n');
    for (const QString &name : odd) {
        openLayers(name, {{u"Data"_s}, {u"data"_s, line}});
        workspace.GetMaps().Add(name);
    }
    fillAll();
    tree.resize(200, 300);
    tree.expandAll();
    tree.grab(); // lays everything out
    for (const QString &name : odd) {
        ASSERT_NE(sourceItem(name), nullptr) << name.left(20).toStdString();
        EXPECT_EQ(sourceItem(name)->text(0), name);
        EXPECT_NE(find(Node::ItemMap, name), nullptr);
        EXPECT_EQ(labels(sourceItem(name)), QStringList({u"Data"_s, u"data"_s}))
            << "aliases and names that differ in case alone keep apart";
    }
}

} // namespace
