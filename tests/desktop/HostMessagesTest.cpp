#include "AttributeTable.h"
#include "DesktopFixture.h"
#include "DocumentArea.h"
#include "MapWindow.h"
#include "OutputPane.h"
#include "WorkspacePane.h"
#include "basic/TdHostMessage.h"
#include "basic/TdOleDataNode.h"
#include "common/SuggestiveTextFormat.h"
#include "common/TdCommMethods.h"
#include "common/TdModule.h"
#include "common/TdSendMessage.h"
#include "engine/map/TxMapWnd.h"
#include "workspace/WorkspaceBarTree.h"

namespace {

class Host : public WindowFixture
{
protected:
    Host()
    {
        window->openFiles({towns()});
        dataset = vector(workspace(), QStringLiteral("towns"));
    }

    static qint64 send(CTdHostMessage::Message number)
    {
        const CTdOleDataNode node(CTdOleDataNode::WndNone, CTdOleDataNode::ItemDataset, QStringLiteral("towns"),
                                  QStringLiteral("towns"), 0, 0);
        CTdHostMessage message(number, &node);
        EXPECT_TRUE(TdSendMessageToMainWnd(message));
        return message.result();
    }

    CDatasetVector *dataset = nullptr;
};

TEST_F(Host, PrintsTheLibrarysLines)
{
    window->outputPane().clear();
    EXPECT_TRUE(CTdCommMethods::ShowText(QStringLiteral("Import"), QStringLiteral("done"), 3));
    EXPECT_EQ(window->outputPane().text(), QStringLiteral("Import:\tdone"));
}

TEST_F(Host, LetsGoOfADatasetBeforeItCloses)
{
    window->documentArea().addToMap(dataset);
    window->documentArea().showTable(dataset);
    send(CTdHostMessage::DatasetClosing);
    EXPECT_EQ(dataset->GetRecordsetCount(), 0) << "no cursor is left";
    EXPECT_TRUE(window->documentArea().tables().isEmpty());
    EXPECT_TRUE(dataset->Close());
    send(CTdHostMessage::DatasetClosed);
    window->documentArea().currentMap()->canvas()->FinishDrawing();
}

TEST_F(Host, ShowsInTheTreeThatADatasetOpenedAndClosed)
{
    CWorkspaceBarTree *tree = window->workspacePane().tree();
    const QTreeWidgetItem *item =
        tree->FindHTreeItem(QStringLiteral("towns"), QStringLiteral("towns"), CTdOleDataNode::ItemDataset, 0);
    const int closed = CWorkspaceBarTree::GetItemImage(item);
    window->documentArea().addToMap(dataset);
    EXPECT_NE(CWorkspaceBarTree::GetItemImage(item), closed);
    send(CTdHostMessage::DatasetClosing);
    ASSERT_TRUE(dataset->Close());
    send(CTdHostMessage::DatasetClosed);
    EXPECT_EQ(CWorkspaceBarTree::GetItemImage(item), closed);
}

TEST_F(Host, LeavesADatasetThatIsShownToTheQuestion)
{
    CTdHostMessage unused(CTdHostMessage::ReleaseDataset, dataset);
    EXPECT_TRUE(TdSendMessageToMainWnd(unused));
    EXPECT_EQ(unused.result(), 0) << "nobody shows it: it may be closed without a question";
    window->documentArea().showTable(dataset);
    CTdHostMessage used(CTdHostMessage::ReleaseDataset, dataset);
    EXPECT_TRUE(TdSendMessageToMainWnd(used));
    EXPECT_NE(used.result(), 0);
}

TEST_F(Host, ADeletedDatasetLeavesTreeMapsAndTables)
{
    CTxDataSource *own = workspace().GetDataSources().Create(folder.filePath(QStringLiteral("own.tdb")),
                                                             QStringLiteral("own"), CTxDataSourceStorage::Native);
    ASSERT_NE(own, nullptr);
    CTxDatasetDef def;
    def.name = QStringLiteral("wells");
    def.type = CElemDatasetInfo::Point;
    CTxDataset *wells = own->CreateDataset(def);
    ASSERT_NE(wells, nullptr);
    window->workspacePane().refill();
    ASSERT_TRUE(window->documentArea().addToMap(wells));
    window->documentArea().showTable(static_cast<CDatasetVector *>(wells));

    const CTdOleDataNode node(CTdOleDataNode::WndNone, CTdOleDataNode::ItemDataset, QStringLiteral("wells"),
                              QStringLiteral("own"), 0, 0);
    CTdHostMessage before(CTdHostMessage::DatasetDeleting, &node);
    TdSendMessageToMainWnd(before);
    EXPECT_TRUE(own->DeleteDataset(QStringLiteral("wells")));
    CTdHostMessage after(CTdHostMessage::DatasetDeleted, &node);
    TdSendMessageToMainWnd(after);

    EXPECT_TRUE(window->documentArea().tables().isEmpty());
    EXPECT_EQ(window->documentArea().currentMap()->map()->GetLayers().GetCount(), 0);
    EXPECT_EQ(window->workspacePane().tree()->FindHTreeItem(QStringLiteral("wells"), QStringLiteral("own"),
                                                            CTdOleDataNode::ItemDataset, 0),
              nullptr);
}

TEST_F(Host, IsForgottenWhenTheWindowGoes)
{
    EXPECT_EQ(CTdModule::GetMainWnd(), window.get());
    window.reset();
    EXPECT_EQ(CTdModule::GetMainWnd(), nullptr);
    EXPECT_FALSE(CTdCommMethods::ShowText(QStringLiteral("a"), QStringLiteral("b"), 3));
}

} // namespace
