#include "WorkspaceFixture.h"

#include <QMimeData>
#include <QUrl>

#include <random>

namespace {

class WorkspaceItems : public WorkspaceFixture
{
protected:
    void SetUp() override
    {
        openLayers(a, {{u"p"_s}, {u"q"_s}});
        fillAll();
    }
};

/// The look-up as a walk over @p items, which stand in the order of their insertion.
QTreeWidgetItem *walk(const QList<QTreeWidgetItem *> &items, const QString &name, const QString &alias, qint32 kind,
                      bool noCase)
{
    const Qt::CaseSensitivity sensitivity = noCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    for (QTreeWidgetItem *item : items) {
        const Node::CTdOleData &entry = Tree::GetItemNode(item)->entries.first();
        if (entry.itemType == kind && entry.itemName.compare(name, sensitivity) == 0 &&
            entry.alias.compare(alias, sensitivity) == 0)
            return item;
    }
    return nullptr;
}

TEST_F(WorkspaceItems, LookupAnswersWhatAWalkInTheOrderOfInsertionAnswers)
{
    const QStringList names = u"roads,Roads,ROADS,,\u00C4x,\u00E4X,\u03C3,\u03C2,\u03A3,\u00DF,ss,\u212A,k,i,\u0130,I,"
                              u"\U00010400,\U00010428"_s.split(u',')
                              << QString(QChar(0xD801)) << QString(QChar(0xDC00));
    QTreeWidgetItem *maps = group(Node::ItemMaps);
    QTreeWidgetItem *scenes = group(Node::ItemScenes);
    QList<QTreeWidgetItem *> items;
    std::mt19937 random(20260); // the same run every time
    const auto any = [&random](qsizetype count) { return int(random() % quint32(count)); };

    for (int step = 0; step < 6000; ++step) {
        QTreeWidgetItem *parent = any(2) ? maps : scenes;
        const qint32 kind = parent == maps ? Node::ItemMap : Node::ItemScene;
        const QString &name = names.at(any(names.size()));
        QTreeWidgetItem *child = parent->childCount() ? parent->child(any(parent->childCount())) : nullptr;
        const int action = any(240);
        if (action < 120) {
            parent == maps ? tree.FillMap(name) : tree.FillScene(name);
            items.append(parent->child(parent->childCount() - 1));
        } else if (action < 180 && child) {
            items.removeAll(child);
            any(2) ? tree.DeleteSubItems(child, 1) : delete child;
        } else if (action < 200 && child) { // a new name, told to the tree: it counts as inserted now
            Tree::GetItemNode(child)->entries.first().itemName = name;
            tree.UpdateItemRecord(child);
            items.removeAll(child);
            items.append(child);
        } else if (action == 200) {
            items.removeIf([parent](const QTreeWidgetItem *item) { return item->parent() == parent; });
            tree.DeleteSubItems(parent, 0);
        } else if (action > 220) {
            tree.SortChildrenV(parent, Tree::SortByLabel);
        }
        for (const bool noCase : {false, true}) {
            ASSERT_EQ(tree.FindHTreeItem(name, QString(), kind, noCase), walk(items, name, QString(), kind, noCase))
                << "step " << step << ", name " << name.toStdString() << (noCase ? ", case ignored" : "");
            ASSERT_EQ(tree.FindHTreeItem(name, name, kind, noCase), walk(items, name, name, kind, noCase));
        }
    }
    EXPECT_NE(tree.FindHTreeItem(u"P"_s, u"A"_s, Node::ItemDataset, true), nullptr);
    EXPECT_EQ(tree.FindHTreeItem(u"p"_s, u"A"_s, Node::ItemDataset, false), nullptr) << "an alias by its letters";
}

TEST_F(WorkspaceItems, FindFirstItemGoesDownBeforeItGoesOn)
{
    EXPECT_EQ(tree.FindFirstItem(Node::ItemWorkspace), tree.topLevelItem(0));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemDataset)->text(0), u"p"_s);
    EXPECT_EQ(tree.FindFirstItem(Node::ItemTile), nullptr);
    tree.DeleteSubItemsData(sourceItem(a));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemDataset), nullptr)
        << "an item without a node is passed over with its children";
    tree.DeleteSubItemsData(tree.topLevelItem(0));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemMaps), nullptr);
    tree.DeleteAllItemsEx();
    EXPECT_EQ(tree.FindFirstItem(Node::ItemWorkspace), nullptr);
}

TEST_F(WorkspaceItems, DeletionsTakeNodesAndRecords)
{
    QTreeWidgetItem *source = sourceItem(a);
    tree.DeleteSubItems(source, 0);
    EXPECT_EQ(source->childCount(), 0);
    EXPECT_EQ(find(Node::ItemDataset, u"p"_s, a), nullptr);
    EXPECT_EQ(sourceItem(a), source);

    tree.FillTreeItem(Tree::FillTypeDataSource, a);
    tree.DeleteSubItemsData(source);
    EXPECT_EQ(source->childCount(), 2) << "only the nodes go";
    EXPECT_EQ(Tree::GetItemNode(source->child(0)), nullptr);
    EXPECT_FALSE(source->child(0)->data(0, Qt::UserRole).isValid());
    EXPECT_EQ(sourceItem(a), nullptr);

    tree.DeleteSubItems(group(Node::ItemDataSources), 1);
    EXPECT_EQ(tree.FillTreeItem(Tree::FillTypeDataSource, a), 0) << "its group has gone";
    tree.DeleteSubItems(nullptr, 1);
    tree.DeleteSubItemsData(nullptr);
    tree.DeleteAllItemsEx();
    EXPECT_EQ(tree.topLevelItemCount(), 0);
}

TEST_F(WorkspaceItems, MayOutliveTheTree)
{
    auto other = std::make_unique<Tree>();
    other->SetShowItemMask(everything);
    other->ConnectWorkspace(workspace);
    const std::unique_ptr<QTreeWidgetItem> root(other->takeTopLevelItem(0));
    other.reset();
    EXPECT_NE(Tree::GetItemNode(root.get()), nullptr);
}

TEST_F(WorkspaceItems, KeepTheirNodeAndImageFromHosts)
{
    QTreeWidgetItem *dataset = find(Node::ItemDataset, u"p"_s, a);
    Node *node = Tree::GetItemNode(dataset);
    dataset->setData(0, Qt::UserRole, 5);
    EXPECT_EQ(dataset->data(0, Qt::UserRole).value<Node *>(), node);
    dataset->setText(0, u"shown"_s);
    EXPECT_EQ(dataset->text(0), u"shown"_s);
    EXPECT_EQ(find(Node::ItemDataset, u"p"_s, a), dataset) << "the node names the item, not the label";
}

TEST_F(WorkspaceItems, AreDraggedAsOneNode)
{
    QTreeWidgetItem *source = sourceItem(a);
    const std::unique_ptr<QMimeData> mime(tree.mimeData({source->child(0), source->child(1)}));
    Node node;
    ASSERT_TRUE(mime && Node::fromMime(*mime, node));
    ASSERT_EQ(node.entries.size(), 2);
    EXPECT_EQ(node.itemType, Node::ItemDataset);
    EXPECT_EQ(node.entries.last().itemName, u"q"_s);
    EXPECT_EQ(node.entries.last().alias, a);
    EXPECT_FALSE(mime->hasUrls());
    EXPECT_EQ(tree.mimeData({}), nullptr);
}

TEST_F(WorkspaceItems, OfDatasourcesAreDraggedWithTheirFileWhichIsNeverMoved)
{
    const std::unique_ptr<QMimeData> mime(tree.mimeData({sourceItem(a)}));
    CTxDataSource *source = nullptr;
    ASSERT_TRUE(mime && workspace.GetDataSources().Lookup(a, source));
    EXPECT_EQ(mime->urls(), QList<QUrl>{QUrl::fromLocalFile(source->GetPath())});
    EXPECT_EQ(mime->text(), a);
    EXPECT_EQ(tree.model()->supportedDragActions(), Qt::CopyAction);
}

} // namespace
