#include "WorkspaceFixture.h"

#include <QMimeData>

#include <random>

namespace {

using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

class WorkspaceItems : public WorkspaceFixture
{
protected:
    const QString a = QStringLiteral("a");
    void SetUp() override
    {
        openLayers(
            a, {{QStringLiteral("p"), QStringLiteral("wkbPoint")}, {QStringLiteral("q"), QStringLiteral("wkbPoint")}});
        fillAll();
    }
};

/// The look-up as a walk over all items in the order of their insertion.
class WalkedRecords
{
public:
    void add(QTreeWidgetItem *item) { m_items.append(item); }
    void remove(const QTreeWidgetItem *item) { m_items.removeAll(item); }
    QTreeWidgetItem *find(const QString &name, const QString &alias, qint32 kind, bool noCase) const
    {
        const Qt::CaseSensitivity sensitivity = noCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
        for (QTreeWidgetItem *item : m_items) {
            const Node::CTdOleData &entry = Tree::GetItemNode(item)->entries.first();
            if (entry.itemType == kind && entry.itemName.compare(name, sensitivity) == 0 &&
                entry.alias.compare(alias, sensitivity) == 0)
                return item;
        }
        return nullptr;
    }

private:
    QList<QTreeWidgetItem *> m_items;
};

TEST(WorkspaceLookup, AnswersWhatAWalkInTheOrderOfInsertionAnswers)
{
    const QStringList names = {
        QStringLiteral("roads"),      QStringLiteral("Roads"),      QStringLiteral("ROADS"),  QStringLiteral(""),
        QStringLiteral("\u00C4x"),    QStringLiteral("\u00E4X"),    QStringLiteral("\u03C3"), QStringLiteral("\u03C2"),
        QStringLiteral("\u03A3"),     QStringLiteral("\u00DF"),     QStringLiteral("ss"),     QStringLiteral("\u212A"),
        QStringLiteral("k"),          QStringLiteral("i"),          QStringLiteral("\u0130"), QStringLiteral("I"),
        QStringLiteral("\U00010400"), QStringLiteral("\U00010428"), QString(QChar(0xD801)),   QString(QChar(0xDC00))};
    CTxWorkspace workspace;
    Tree tree;
    tree.SetShowItemMask(0xfff);
    tree.ConnectWorkspace(workspace);
    QTreeWidgetItem *maps = tree.FindFirstItem(Node::ItemMaps);
    QTreeWidgetItem *scenes = tree.FindFirstItem(Node::ItemScenes);
    WalkedRecords walked;
    std::mt19937 random(20260); // the same run every time
    const auto any = [&random](qsizetype count) { return qsizetype(random() % quint32(count)); };

    for (int step = 0; step < 6000; ++step) {
        QTreeWidgetItem *parent = any(2) ? maps : scenes;
        const qint32 kind = parent == maps ? Node::ItemMap : Node::ItemScene;
        const QString &name = names.at(any(names.size()));
        switch (any(12)) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
            parent == maps ? tree.FillMap(name) : tree.FillScene(name);
            walked.add(parent->child(parent->childCount() - 1));
            break;
        case 6:
        case 7:
        case 8:
            if (parent->childCount() > 0) {
                QTreeWidgetItem *gone = parent->child(int(any(parent->childCount())));
                walked.remove(gone);
                any(2) ? tree.DeleteSubItems(gone, 1) : delete gone;
            }
            break;
        case 9:
            if (parent->childCount() > 0) { // a new name, told to the tree: it counts as inserted now
                QTreeWidgetItem *renamed = parent->child(int(any(parent->childCount())));
                Tree::GetItemNode(renamed)->entries.first().itemName = name;
                tree.UpdateItemRecord(renamed);
                walked.remove(renamed);
                walked.add(renamed);
            }
            break;
        case 10:
            if (any(20) == 0) {
                for (int child = 0; child < parent->childCount(); ++child)
                    walked.remove(parent->child(child));
                tree.DeleteSubItems(parent, 0);
            }
            break;
        default:
            tree.SortChildrenV(parent, Tree::SortByLabel);
        }
        for (const bool noCase : {false, true}) {
            ASSERT_EQ(tree.FindHTreeItem(name, QString(), kind, noCase), walked.find(name, QString(), kind, noCase))
                << "step " << step << ", name " << name.toStdString() << (noCase ? ", case ignored" : "");
            ASSERT_EQ(tree.FindHTreeItem(name, name, kind, noCase), walked.find(name, name, kind, noCase));
        }
    }
}

TEST_F(WorkspaceItems, LookupComparesKindAliasAndName)
{
    QTreeWidgetItem *dataset = tree.FindHTreeItem(QStringLiteral("p"), a, Node::ItemDataset, false);
    ASSERT_NE(dataset, nullptr);
    EXPECT_EQ(tree.FindHTreeItem(QStringLiteral("P"), QStringLiteral("A"), Node::ItemDataset, 7), dataset);
    EXPECT_EQ(tree.FindHTreeItem(QStringLiteral("P"), a, Node::ItemDataset, 0), nullptr);
    EXPECT_EQ(tree.FindHTreeItem(QStringLiteral("p"), QString(), Node::ItemDataset, 1), nullptr);
    EXPECT_EQ(tree.FindHTreeItem(QStringLiteral("p"), a, Node::ItemMap, 1), nullptr);
}

TEST_F(WorkspaceItems, FindFirstItemGoesDownBeforeItGoesOn)
{
    EXPECT_EQ(tree.FindFirstItem(Node::ItemWorkspace), tree.topLevelItem(0));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemDataset)->text(0), QStringLiteral("p"));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemTile), nullptr);
    tree.DeleteSubItemsData(find(Node::ItemDataSource, a));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemDataset), nullptr)
        << "an item without a node is passed over with its children";
    tree.DeleteSubItemsData(tree.topLevelItem(0));
    EXPECT_EQ(tree.FindFirstItem(Node::ItemMaps), nullptr);
    tree.DeleteAllItemsEx();
    EXPECT_EQ(tree.FindFirstItem(Node::ItemWorkspace), nullptr);
}

TEST_F(WorkspaceItems, DeletionsTakeNodesAndRecords)
{
    QTreeWidgetItem *source = find(Node::ItemDataSource, a);
    tree.DeleteSubItems(source, 0);
    EXPECT_EQ(source->childCount(), 0);
    EXPECT_EQ(find(Node::ItemDataset, QStringLiteral("p"), a), nullptr);
    EXPECT_EQ(find(Node::ItemDataSource, a), source);

    tree.FillTreeItem(Tree::FillTypeDataSource, a);
    tree.DeleteSubItemsData(source);
    EXPECT_EQ(source->childCount(), 2) << "only the nodes go";
    EXPECT_EQ(Tree::GetItemNode(source->child(0)), nullptr);
    EXPECT_FALSE(source->child(0)->data(0, Qt::UserRole).isValid());
    EXPECT_EQ(find(Node::ItemDataSource, a), nullptr);

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
    QTreeWidgetItem *dataset = find(Node::ItemDataset, QStringLiteral("p"), a);
    Node *node = Tree::GetItemNode(dataset);
    dataset->setData(0, Qt::UserRole, 5);
    EXPECT_EQ(dataset->data(0, Qt::UserRole).value<Node *>(), node);
    dataset->setText(0, QStringLiteral("shown"));
    EXPECT_EQ(dataset->text(0), QStringLiteral("shown"));
    EXPECT_EQ(find(Node::ItemDataset, QStringLiteral("p"), a), dataset) << "the node names the item, not the label";
}

TEST_F(WorkspaceItems, AreDraggedAsOneNode)
{
    QTreeWidgetItem *source = find(Node::ItemDataSource, a);
    const std::unique_ptr<QMimeData> mime(tree.mimeData({source->child(0), source->child(1)}));
    Node node;
    ASSERT_TRUE(mime && Node::fromMime(*mime, node));
    ASSERT_EQ(node.entries.size(), 2);
    EXPECT_EQ(node.itemType, Node::ItemDataset);
    EXPECT_EQ(node.entries.last().itemName, QStringLiteral("q"));
    EXPECT_EQ(node.entries.last().alias, a);
    EXPECT_EQ(tree.mimeData({}), nullptr);
}

} // namespace
