#include "Actions.h"
#include "AttributeTable.h"
#include "DesktopFixture.h"
#include "MapWindow.h"
#include "OutputPane.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/map/TxMapWnd.h"

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

namespace {

class Host : public WindowFixture
{
protected:
    Host()
    {
        window->openFiles({towns()});
        dataset = vector(workspace(), u"towns"_s);
    }

    /// A native database "own" with the points wells and springs and the network roads, of which a map and tables show
    /// wells.
    void showOwn()
    {
        own = createNative(workspace(), u"own"_s);
        ASSERT_NE(own, nullptr);
        wells = make(u"wells"_s, CElemDatasetInfo::Point);
        springs = make(u"springs"_s, CElemDatasetInfo::Point);
        roads = make(u"roads"_s, CElemDatasetInfo::Network);
        window->workspacePane().refill();
        ASSERT_TRUE(wells && springs && roads && area().addToMap(wells) && area().showTable(wells));
    }
    CDatasetVector *make(const QString &name, CElemDatasetInfo::Type type)
    {
        CTxDatasetDef def;
        def.name = name;
        def.type = type;
        auto *made = dynamic_cast<CDatasetVector *>(own->CreateDataset(def));
        EXPECT_TRUE(made && made->Open());
        CTxRecordset *records = made->Query(CTxQueryDef());
        EXPECT_TRUE(records->AddNew() && records->Update());
        made->ReleaseRecordset(records);
        return made;
    }

    void trigger(Actions::Id id) const
    {
        ASSERT_TRUE(window->actions()[id]->isEnabled());
        window->actions()[id]->trigger();
    }
    /// Answers the library's question that opens next.
    void answer(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, window.get(), [this, button] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                asked << box->text();
                box->button(button)->click();
            }
        });
    }

    CDatasetVector *dataset = nullptr;
    CTxDataSource *own = nullptr;
    CDatasetVector *wells = nullptr;
    CDatasetVector *springs = nullptr;
    CDatasetVector *roads = nullptr;
    QStringList asked;
};

TEST_F(Host, PrintsTheLibrarysLines)
{
    window->outputPane().clear();
    EXPECT_TRUE(CTdCommMethods::ShowText(u"Import"_s, u"done"_s, 3));
    EXPECT_EQ(window->outputPane().text(), u"Import:\tdone"_s);
}

TEST_F(Host, LetsGoOfADatasetThatClosesWhateverReadsIt)
{
    const int closed = CWorkspaceBarTree::GetItemImage(item(u"towns"_s, u"towns"_s));
    area().addToMap(dataset); // and its drawing is not begun yet
    area().showTable(dataset);
    EXPECT_NE(CWorkspaceBarTree::GetItemImage(item(u"towns"_s, u"towns"_s)), closed);
    select(u"towns"_s, u"towns"_s);
    trigger(Actions::CloseDataset);
    EXPECT_FALSE(dataset->IsOpen());
    EXPECT_TRUE(area().tables().isEmpty());
    EXPECT_EQ(CWorkspaceBarTree::GetItemImage(item(u"towns"_s, u"towns"_s)), closed);
    EXPECT_FALSE(window->actions()[Actions::CloseDataset]->isEnabled());
    area().currentMap()->canvas()->FinishDrawing();
    window->grab();
    EXPECT_FALSE(dataset->IsOpen()) << "nor does the map open it again by itself";
}

TEST_F(Host, ClosesTheDatasetsOfASelectionAlone)
{
    showOwn();
    area().showTable(dataset);
    select(u"wells"_s, u"own"_s);
    // The datasource is called like its dataset.
    tree()->FindHTreeItem(u"towns"_s, QString(), CTdOleDataNode::ItemDataSource, 0)->setSelected(true);
    trigger(Actions::CloseDataset);
    EXPECT_FALSE(wells->IsOpen());
    EXPECT_TRUE(dataset->IsOpen());
}

TEST_F(Host, SaysWhichWindowsHoldADatasetAndLeavesItToTheQuestion)
{
    EXPECT_TRUE(CTdCommMethods::PromoteCloseDataset(dataset)) << "nobody shows it: no question";
    area().addToMap(dataset);
    area().showTable(dataset);
    window->outputPane().clear();
    answer(QMessageBox::No);
    EXPECT_FALSE(CTdCommMethods::PromoteCloseDataset(dataset));
    EXPECT_TRUE(window->outputPane().text().contains(u"the map “towns”"_s)) << "of that name";
    EXPECT_TRUE(window->outputPane().text().contains(u"the attribute table of “towns”"_s));
    EXPECT_EQ(area().tables().size(), 1);
    answer(QMessageBox::Yes);
    EXPECT_TRUE(CTdCommMethods::PromoteCloseDataset(dataset));
    EXPECT_EQ(asked.size(), 2);
    EXPECT_TRUE(area().tables().isEmpty());
    EXPECT_TRUE(CTdCommMethods::PromoteCloseDataset(dataset)) << "closed, though the map has its layer";
    EXPECT_EQ(asked.size(), 2);
}

TEST_F(Host, ADeletedDatasetLeavesTreeMapsAndTables)
{
    ASSERT_NO_FATAL_FAILURE(showOwn());
    ASSERT_TRUE(area().addToMap(springs) && area().showTable(springs));
    ASSERT_TRUE(area().showTable(dynamic_cast<CDatasetVector *>(roads->GetChildDataset())));
    area().showMap(area().currentMap()->map()->GetName());
    select(u"wells"_s, u"own"_s);
    trigger(Actions::Delete);
    EXPECT_EQ(prompts.questions.last(), u"Delete the dataset “wells”?"_s);
    EXPECT_TRUE(prompts.explanations.last().startsWith(u"The map “wells” shows this data"_s));
    EXPECT_EQ(own->GetDataset(u"wells"_s), wells) << "not allowed";

    prompts.confirmAnswer = true;
    trigger(Actions::Delete);
    EXPECT_EQ(own->GetDataset(u"wells"_s), nullptr);
    EXPECT_EQ(item(u"wells"_s, u"own"_s), nullptr);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetCount(), 1);
    ASSERT_EQ(area().tables().size(), 2);
    for (AttributeTable *table : area().tables()) {
        const QTableView *view = table->findChild<QTableView *>();
        if (table->dataset() != springs)
            continue;
        ASSERT_EQ(view->model()->rowCount(), 1);
        EXPECT_EQ(view->model()->index(0, 0).data().toString(), u"1"_s) << "its cursor was ended";
    }

    select(u"roads"_s, u"own"_s);
    trigger(Actions::Delete);
    EXPECT_EQ(area().tables().size(), 1) << "the nodes went along";
    EXPECT_TRUE(prompts.warnings.isEmpty());
}

TEST_F(Host, ADatasetThatCannotBeDeletedStaysEverywhere)
{
    ASSERT_NO_FATAL_FAILURE(showOwn());
    ASSERT_TRUE(own->BeginTrans());
    CTdCommMethods::DeleteDataset(own, wells);
    ASSERT_TRUE(own->RollbackTrans());
    ASSERT_EQ(prompts.warnings.size(), 1);
    EXPECT_TRUE(prompts.warnings[0].startsWith(u"“wells” could not be deleted. "_s));
    EXPECT_TRUE(prompts.warnings[0].contains(u"transaction"_s)) << qPrintable(prompts.warnings[0]);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetCount(), 1);
    EXPECT_NE(item(u"wells"_s, u"own"_s), nullptr);
}

TEST_F(Host, RenamingAsksWhetherWindowsShallLetGo)
{
    ASSERT_NO_FATAL_FAILURE(showOwn());
    prompts.textToEnter = u"deep_wells"_s;
    select(u"wells"_s, u"own"_s);
    answer(QMessageBox::No);
    trigger(Actions::Rename);
    EXPECT_EQ(wells->GetName(), u"wells"_s);
    EXPECT_EQ(area().tables().size(), 1);
    answer(QMessageBox::Yes);
    trigger(Actions::Rename);
    EXPECT_EQ(wells->GetName(), u"deep_wells"_s);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetLayerAt(0)->GetDataset(), wells);
    EXPECT_NE(item(u"deep_wells"_s, u"own"_s), nullptr);
}

TEST_F(Host, ADoubleClickOnATileShowsIt)
{
    own = createNative(workspace(), u"own"_s);
    CTxDatasetDef def;
    def.name = u"Sheets"_s;
    def.type = CElemDatasetInfo::Region;
    def.options = CTxDataset::Library;
    ASSERT_TRUE(own && own->CreateDataset(def));
    CTxDataset *tile = make(u"SheetA"_s, CElemDatasetInfo::Region);
    auto *index = dynamic_cast<CDatasetVector *>(own->GetDataset(u"Sheets_Tile"_s));
    ASSERT_TRUE(index && index->Open());
    CTxRecordset *records = index->Query(CTxQueryDef());
    for (const char *name : {"Gone", "SheetA"})
        EXPECT_TRUE(records->AddNew() && records->SetFieldValue(u"TxLibTileName"_s, QString(name)) &&
                    records->Update());
    index->ReleaseRecordset(records);
    window->workspacePane().refill();
    select(u"Sheets"_s, u"own"_s);
    trigger(Actions::ListTiles);
    QTreeWidgetItem *sheets = item(u"Sheets"_s, u"own"_s);
    ASSERT_EQ(sheets->childCount(), 2);
    Q_EMIT tree()->itemActivated(sheets->child(0), 0);
    EXPECT_EQ(area().currentMap(), nullptr);
    EXPECT_TRUE(window->outputPane().text().contains(u"The tile “Gone” is not there."_s));
    Q_EMIT tree()->itemActivated(sheets->child(1), 0);
    ASSERT_NE(area().currentMap(), nullptr);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetLayerAt(0)->GetDataset(), tile);
}

} // namespace
