#include "WorkspaceFixture.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

namespace {

using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

/// Sub-datasets, tiles and transactions, which a native database has.
class WorkspaceNative : public WorkspaceFixture
{
protected:
    const QString alias = QStringLiteral("atlas");

    void SetUp() override
    {
        source = workspace.GetDataSources().Create(folder.filePath(QStringLiteral("atlas.tdb")), alias,
                                                   CTxDataSourceStorage::Native);
        ASSERT_NE(source, nullptr) << TxGetErrorMsgObj().GetErrorMessage().toStdString();
    }
    CTxDataset *create(const QString &name, CElemDatasetInfo::Type type, const QString &parent = QString(),
                       qint32 options = 0)
    {
        CTxDatasetDef def;
        def.name = name;
        def.type = type;
        def.parentDataset = parent;
        def.options = options;
        CTxDataset *dataset = source->CreateDataset(def);
        EXPECT_NE(dataset, nullptr) << TxGetErrorMsgObj().GetErrorMessage().toStdString();
        return dataset;
    }
    /// A library dataset with @p tiles in its index.
    CDatasetVector *createLibrary(const QString &name, const QStringList &tiles)
    {
        auto *library = static_cast<CDatasetVector *>(create(name, CElemDatasetInfo::Region, {}, CTxDataset::Library));
        auto *index = static_cast<CDatasetVector *>(source->GetDataset(library->GetTileIndexName()));
        EXPECT_TRUE(index && index->Open());
        CTxRecordset *records = index->Query(CTxQueryDef());
        for (const QString &tile : tiles) {
            EXPECT_TRUE(records->AddNew());
            EXPECT_TRUE(records->SetFieldValue(QStringLiteral("TxLibTileName"), CTxVariant(tile)));
            EXPECT_TRUE(records->Update());
        }
        index->ReleaseRecordset(records);
        index->Close();
        return library;
    }

    CTxDataSource *source = nullptr;
};

TEST_F(WorkspaceNative, ListsTheTilesOfALibraryDatasetAndLeavesItsIndexAsItWas)
{
    const QStringList names = {QStringLiteral("N50E010"), QStringLiteral("N50E020"), QStringLiteral("")};
    CDatasetVector *library = createLibrary(QStringLiteral("Sheets"), names);
    auto *index = static_cast<CDatasetVector *>(source->GetDataset(library->GetTileIndexName()));
    fillAll();
    QTreeWidgetItem *item = find(Node::ItemDataset, QStringLiteral("Sheets"), alias);
    ASSERT_NE(item, nullptr);
    ASSERT_EQ(tree.FillTreeItem(Tree::FillTypeTiles, QStringLiteral("ATLAS"), QStringLiteral("SHEETS")), 1)
        << "the item is found whatever the letter case, and its node leads to the dataset";
    EXPECT_EQ(labels(item), names);
    EXPECT_FALSE(index->IsOpen()) << "opened for the list alone";
    for (int row = 0; row < item->childCount(); ++row) {
        const Node *node = Tree::GetItemNode(item->child(row));
        EXPECT_EQ(node->entries.first(), (Node::CTdOleData{alias, QStringLiteral("Sheets"), 150, Node::noDatasetType}));
        EXPECT_EQ(node->number, row + 1) << "the record's identifier";
        EXPECT_EQ(Tree::GetItemImage(item->child(row)), 31);
    }
    EXPECT_EQ(tree.FindHTreeItem(QStringLiteral("Sheets"), alias, Node::ItemTile, false), item->child(0));

    ASSERT_TRUE(index->Open());
    EXPECT_EQ(tree.FillDTTier(item, library), 1);
    EXPECT_TRUE(index->IsOpen()) << "it was open before";
    EXPECT_EQ(index->GetRecordsetCount(), 0);
    EXPECT_EQ(item->childCount(), 6) << "tiles are added, whatever is there";
    EXPECT_EQ(tree.FillDTTier(nullptr, library), 0);
    EXPECT_EQ(tree.FillDTTier(item, nullptr), 0);
    EXPECT_EQ(tree.FillDTTier(item, index), 0) << "no library dataset";
}

TEST_F(WorkspaceNative, ShowsSubDatasetsForTheirBit)
{
    create(QStringLiteral("streets"), CElemDatasetInfo::Network);
    create(QStringLiteral("nodes"), CElemDatasetInfo::Point, QStringLiteral("streets"));
    fillAll(everything & ~Tree::ShowSubDatasets);
    QTreeWidgetItem *streets = find(Node::ItemDataset, QStringLiteral("streets"), alias);
    ASSERT_NE(streets, nullptr);
    EXPECT_EQ(labels(streets), QStringList());

    fillAll();
    streets = find(Node::ItemDataset, QStringLiteral("streets"), alias);
    ASSERT_EQ(labels(streets), QStringList{QStringLiteral("nodes")});
    EXPECT_EQ(Tree::GetItemNode(streets->child(0))->entries.first(),
              (Node::CTdOleData{alias, QStringLiteral("nodes"), 40, Node::noDatasetType}));
    EXPECT_EQ(Tree::GetItemImage(streets->child(0)), 25) << "sub-datasets always look open";
    EXPECT_EQ(Tree::GetItemImage(streets), 30);

    tree.SetDTDisplayMask(0x40); // networks
    tree.FillTreeItem(Tree::FillTypeDataSource, alias);
    EXPECT_EQ(labels(find(Node::ItemDataset, QStringLiteral("streets"), alias)), QStringList());
}

TEST_F(WorkspaceNative, DatasourceIconTellsTheTransaction)
{
    create(QStringLiteral("p"), CElemDatasetInfo::Point);
    fillAll();
    const auto image = [this] { return Tree::GetItemImage(find(Node::ItemDataSource, alias)); };
    EXPECT_EQ(image(), 24);
    ASSERT_TRUE(source->BeginTrans());
    EXPECT_EQ(tree.ChangeItemState(source), 1);
    EXPECT_EQ(image(), 23);
    ASSERT_TRUE(source->RollbackTrans());
    tree.ChangeItemState(source);
    EXPECT_EQ(image(), 24);
}

} // namespace
