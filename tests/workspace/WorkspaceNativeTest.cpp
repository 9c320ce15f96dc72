#include "WorkspaceFixture.h"

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

namespace {

/// Sub-datasets, tiles and transactions, which a native database has.
class WorkspaceNative : public WorkspaceFixture
{
protected:
    const QString alias = u"atlas"_s;

    void SetUp() override
    {
        source =
            workspace.GetDataSources().Create(folder.filePath(u"atlas.tdb"_s), alias, CTxDataSourceStorage::Native);
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

    CTxDataSource *source = nullptr;
};

TEST_F(WorkspaceNative, ListsTheTilesOfALibraryDatasetAndLeavesItsIndexAsItWas)
{
    const QStringList names = {u"N50E010"_s, u"N50E020"_s, u""_s};
    auto *library =
        static_cast<CDatasetVector *>(create(u"Sheets"_s, CElemDatasetInfo::Region, {}, CTxDataset::Library));
    auto *index = static_cast<CDatasetVector *>(source->GetDataset(library->GetTileIndexName()));
    ASSERT_TRUE(index && index->Open());
    CTxRecordset *records = index->Query(CTxQueryDef());
    for (const QString &name : names)
        EXPECT_TRUE(records->AddNew() && records->SetFieldValue(u"TxLibTileName"_s, CTxVariant(name)) &&
                    records->Update());
    index->ReleaseRecordset(records);
    index->Close();
    fillAll();
    QTreeWidgetItem *item = find(Node::ItemDataset, u"Sheets"_s, alias);
    ASSERT_NE(item, nullptr);
    ASSERT_EQ(tree.FillTreeItem(Tree::FillTypeTiles, u"ATLAS"_s, u"SHEETS"_s), 1)
        << "the item is found whatever the letter case, and its node leads to the dataset";
    EXPECT_EQ(labels(item), names);
    EXPECT_FALSE(index->IsOpen()) << "opened for the list alone";
    for (int row = 0; row < item->childCount(); ++row) {
        const Node *node = Tree::GetItemNode(item->child(row));
        EXPECT_EQ(node->entries.first(), (Node::CTdOleData{alias, u"Sheets"_s, 150, Node::noDatasetType}));
        EXPECT_EQ(node->number, row + 1) << "the record's identifier";
        EXPECT_EQ(Tree::GetItemImage(item->child(row)), 31);
    }
    EXPECT_EQ(tree.FindHTreeItem(u"Sheets"_s, alias, Node::ItemTile, false), item->child(0));

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
    create(u"streets"_s, CElemDatasetInfo::Network);
    create(u"nodes"_s, CElemDatasetInfo::Point, u"streets"_s);
    fillAll(everything & ~Tree::ShowSubDatasets);
    QTreeWidgetItem *streets = find(Node::ItemDataset, u"streets"_s, alias);
    ASSERT_NE(streets, nullptr);
    EXPECT_EQ(labels(streets), QStringList());

    fillAll();
    streets = find(Node::ItemDataset, u"streets"_s, alias);
    ASSERT_EQ(labels(streets), QStringList{u"nodes"_s});
    EXPECT_EQ(Tree::GetItemNode(streets->child(0))->entries.first(),
              (Node::CTdOleData{alias, u"nodes"_s, 40, Node::noDatasetType}));
    EXPECT_EQ(Tree::GetItemImage(streets->child(0)), 25) << "sub-datasets always look open";
    EXPECT_EQ(Tree::GetItemImage(streets), 30);

    tree.SetDTDisplayMask(0x40); // networks
    tree.FillTreeItem(Tree::FillTypeDataSource, alias);
    EXPECT_EQ(labels(find(Node::ItemDataset, u"streets"_s, alias)), QStringList());
}

TEST_F(WorkspaceNative, DatasourceIconTellsTheTransaction)
{
    create(u"p"_s, CElemDatasetInfo::Point);
    fillAll();
    const auto image = [this] { return Tree::GetItemImage(sourceItem(alias)); };
    EXPECT_EQ(image(), 24);
    ASSERT_TRUE(source->BeginTrans());
    EXPECT_EQ(tree.ChangeItemState(source), 1);
    EXPECT_EQ(image(), 23);
    ASSERT_TRUE(source->RollbackTrans());
    tree.ChangeItemState(source);
    EXPECT_EQ(image(), 24);
}

} // namespace
