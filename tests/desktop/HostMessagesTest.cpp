#include "Actions.h"
#include "AttributeTable.h"
#include "DesktopFixture.h"
#include "DocumentArea.h"
#include "MapWindow.h"
#include "OutputPane.h"
#include "WorkspacePane.h"
#include "basic/TdOleDataNode.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/map/TxMapWnd.h"
#include "workspace/WorkspaceBarTree.h"

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
        dataset = vector(workspace(), QStringLiteral("towns"));
    }

    /// A native database "own" with the points wells and springs and the network roads, of which a map and tables show
    /// wells.
    void showOwn()
    {
        own = workspace().GetDataSources().Create(folder.filePath(QStringLiteral("own.tdb")), QStringLiteral("own"),
                                                  CTxDataSourceStorage::Native);
        ASSERT_NE(own, nullptr);
        wells = make(QStringLiteral("wells"), CElemDatasetInfo::Point);
        springs = make(QStringLiteral("springs"), CElemDatasetInfo::Point);
        roads = make(QStringLiteral("roads"), CElemDatasetInfo::Network);
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

    DocumentArea &area() const { return window->documentArea(); }
    QTreeWidgetItem *item(const QString &name, const QString &alias) const
    {
        return window->workspacePane().tree()->FindHTreeItem(name, alias, CTdOleDataNode::ItemDataset, 0);
    }
    void select(const QString &name, const QString &alias) const
    {
        window->workspacePane().tree()->clearSelection();
        item(name, alias)->setSelected(true);
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
    EXPECT_TRUE(CTdCommMethods::ShowText(QStringLiteral("Import"), QStringLiteral("done"), 3));
    EXPECT_EQ(window->outputPane().text(), QStringLiteral("Import:\tdone"));
}

TEST_F(Host, LetsGoOfADatasetThatClosesWhateverReadsIt)
{
    const int closed = CWorkspaceBarTree::GetItemImage(item(QStringLiteral("towns"), QStringLiteral("towns")));
    area().addToMap(dataset); // and its drawing is not begun yet
    area().showTable(dataset);
    EXPECT_NE(CWorkspaceBarTree::GetItemImage(item(QStringLiteral("towns"), QStringLiteral("towns"))), closed);
    select(QStringLiteral("towns"), QStringLiteral("towns"));
    trigger(Actions::CloseDataset);
    EXPECT_FALSE(dataset->IsOpen());
    EXPECT_TRUE(area().tables().isEmpty());
    EXPECT_EQ(CWorkspaceBarTree::GetItemImage(item(QStringLiteral("towns"), QStringLiteral("towns"))), closed);
    EXPECT_FALSE(window->actions()[Actions::CloseDataset]->isEnabled());
    area().currentMap()->canvas()->FinishDrawing();
    window->grab();
    EXPECT_FALSE(dataset->IsOpen()) << "nor does the map open it again by itself";
}

TEST_F(Host, ClosesTheDatasetsOfASelectionAlone)
{
    showOwn();
    area().showTable(dataset);
    select(QStringLiteral("wells"), QStringLiteral("own"));
    const CWorkspaceBarTree *tree = window->workspacePane().tree(); // the datasource is called like its dataset
    tree->FindHTreeItem(QStringLiteral("towns"), QString(), CTdOleDataNode::ItemDataSource, 0)->setSelected(true);
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
    EXPECT_TRUE(window->outputPane().text().contains(QStringLiteral("the map “towns”"))) << "of that name";
    EXPECT_TRUE(window->outputPane().text().contains(QStringLiteral("the attribute table of “towns”")));
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
    select(QStringLiteral("wells"), QStringLiteral("own"));
    trigger(Actions::Delete);
    EXPECT_EQ(prompts.questions.last(), QStringLiteral("Delete the dataset “wells”?"));
    EXPECT_TRUE(prompts.explanations.last().startsWith(QStringLiteral("The map “wells” shows this data")));
    EXPECT_EQ(own->GetDataset(QStringLiteral("wells")), wells) << "not allowed";

    prompts.confirmAnswer = true;
    trigger(Actions::Delete);
    EXPECT_EQ(own->GetDataset(QStringLiteral("wells")), nullptr);
    EXPECT_EQ(item(QStringLiteral("wells"), QStringLiteral("own")), nullptr);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetCount(), 1);
    ASSERT_EQ(area().tables().size(), 2);
    for (AttributeTable *table : area().tables()) {
        const QTableView *view = table->findChild<QTableView *>();
        if (table->dataset() != springs)
            continue;
        ASSERT_EQ(view->model()->rowCount(), 1);
        EXPECT_EQ(view->model()->index(0, 0).data().toString(), QStringLiteral("1")) << "its cursor was ended";
    }

    select(QStringLiteral("roads"), QStringLiteral("own"));
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
    EXPECT_TRUE(prompts.warnings[0].startsWith(QStringLiteral("“wells” could not be deleted. ")));
    EXPECT_TRUE(prompts.warnings[0].contains(QStringLiteral("transaction"))) << qPrintable(prompts.warnings[0]);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetCount(), 1);
    EXPECT_NE(item(QStringLiteral("wells"), QStringLiteral("own")), nullptr);
}

TEST_F(Host, RenamingAsksWhetherWindowsShallLetGo)
{
    ASSERT_NO_FATAL_FAILURE(showOwn());
    prompts.textToEnter = QStringLiteral("deep_wells");
    select(QStringLiteral("wells"), QStringLiteral("own"));
    answer(QMessageBox::No);
    trigger(Actions::Rename);
    EXPECT_EQ(wells->GetName(), QStringLiteral("wells"));
    EXPECT_EQ(area().tables().size(), 1);
    answer(QMessageBox::Yes);
    trigger(Actions::Rename);
    EXPECT_EQ(wells->GetName(), QStringLiteral("deep_wells"));
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetLayerAt(0)->GetDataset(), wells);
    EXPECT_NE(item(QStringLiteral("deep_wells"), QStringLiteral("own")), nullptr);
}

TEST_F(Host, ADoubleClickOnATileShowsIt)
{
    own = workspace().GetDataSources().Create(folder.filePath(QStringLiteral("own.tdb")), QStringLiteral("own"),
                                              CTxDataSourceStorage::Native);
    CTxDatasetDef def;
    def.name = QStringLiteral("Sheets");
    def.type = CElemDatasetInfo::Region;
    def.options = CTxDataset::Library;
    ASSERT_TRUE(own && own->CreateDataset(def));
    CTxDataset *tile = make(QStringLiteral("SheetA"), CElemDatasetInfo::Region);
    auto *index = dynamic_cast<CDatasetVector *>(own->GetDataset(QStringLiteral("Sheets_Tile")));
    ASSERT_TRUE(index && index->Open());
    CTxRecordset *records = index->Query(CTxQueryDef());
    for (const char *name : {"Gone", "SheetA"})
        EXPECT_TRUE(records->AddNew() && records->SetFieldValue(QStringLiteral("TxLibTileName"), QString(name)) &&
                    records->Update());
    index->ReleaseRecordset(records);
    window->workspacePane().refill();
    select(QStringLiteral("Sheets"), QStringLiteral("own"));
    trigger(Actions::ListTiles);
    CWorkspaceBarTree *tree = window->workspacePane().tree();
    QTreeWidgetItem *sheets = item(QStringLiteral("Sheets"), QStringLiteral("own"));
    ASSERT_EQ(sheets->childCount(), 2);
    Q_EMIT tree->itemActivated(sheets->child(0), 0);
    EXPECT_EQ(area().currentMap(), nullptr);
    EXPECT_TRUE(window->outputPane().text().contains(QStringLiteral("The tile “Gone” is not there.")));
    Q_EMIT tree->itemActivated(sheets->child(1), 0);
    ASSERT_NE(area().currentMap(), nullptr);
    EXPECT_EQ(area().currentMap()->map()->GetLayers().GetLayerAt(0)->GetDataset(), tile);
}

TEST_F(Host, IsForgottenWhenTheWindowGoes)
{
    EXPECT_EQ(CTdModule::GetMainWnd(), window.get());
    window.reset();
    EXPECT_EQ(CTdModule::GetMainWnd(), nullptr);
    EXPECT_FALSE(CTdCommMethods::ShowText(QStringLiteral("a"), QStringLiteral("b"), 3));
}

} // namespace
