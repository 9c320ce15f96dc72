#include "DesktopFixture.h"

#include <QSignalSpy>

#include <algorithm>

namespace {

class Document : public DesktopFixture
{
protected:
    WorkspaceDocument document{prompts};
};

TEST_F(Document, AFreshWorkspaceIsNothingToAskAbout)
{
    document.workspace().SetName(u"Untitled"_s);
    EXPECT_FALSE(document.isModified());
    EXPECT_TRUE(document.mayClose());
    EXPECT_EQ(prompts.unsavedQuestions, 0);
}

TEST_F(Document, AsksBeforeChangesAreLost)
{
    ASSERT_TRUE(document.openFile(towns()));
    EXPECT_TRUE(document.isModified());

    prompts.unsavedAnswer = Prompts::Unsaved::Cancel;
    EXPECT_FALSE(document.newWorkspace());
    EXPECT_EQ(document.workspace().GetDataSources().GetCount(), 1);

    prompts.unsavedAnswer = Prompts::Unsaved::Save;
    prompts.fileToSave.clear(); // the file dialog is cancelled
    EXPECT_FALSE(document.newWorkspace());
    EXPECT_EQ(document.workspace().GetDataSources().GetCount(), 1);

    prompts.fileToSave = folder.filePath(u"kept.txw"_s);
    EXPECT_TRUE(document.newWorkspace());
    EXPECT_EQ(document.workspace().GetDataSources().GetCount(), 0);
    EXPECT_TRUE(QFile::exists(prompts.fileToSave));
    EXPECT_EQ(prompts.unsavedQuestions, 3);

    EXPECT_TRUE(document.openWorkspace(prompts.fileToSave));
    EXPECT_EQ(document.title(), "kept");
    EXPECT_EQ(document.workspace().GetDataSources().GetCount(), 1);
    EXPECT_FALSE(document.isModified());
    EXPECT_TRUE(document.closeDataSource(u"towns"_s));
    EXPECT_TRUE(document.isModified());
    prompts.unsavedAnswer = Prompts::Unsaved::Discard;
    EXPECT_TRUE(document.mayClose());
}

TEST_F(Document, LookingAroundInAMapIsNothingToAskAboutButSavedWithTheRest)
{
    const QString file = folder.filePath(u"looked.txw"_s);
    CTxMap *map = document.addMap(u"Map"_s);
    ASSERT_TRUE(document.saveAs(file));
    map->SetViewBounds(CRect2D(0, 0, 2, 2));
    EXPECT_FALSE(document.isModified());
    ASSERT_TRUE(document.save());
    ASSERT_TRUE(document.openWorkspace(file));
    EXPECT_EQ(document.workspace().GetMaps().GetAt(0)->GetViewBounds(), CRect2D(0, 0, 2, 2));
}

TEST_F(Document, AFileThatIsNoWorkspaceLeavesTheWorkspaceAsItWas)
{
    ASSERT_TRUE(document.openFile(towns()));
    prompts.unsavedAnswer = Prompts::Unsaved::Discard;
    QSignalSpy failed(&document, &WorkspaceDocument::failed);
    QSignalSpy closing(&document, &WorkspaceDocument::workspaceClosing);
    EXPECT_FALSE(document.openWorkspace(write(u"bad.txw"_s, "<workspace version=")));
    EXPECT_FALSE(document.openWorkspace(folder.filePath(u"gone.txw"_s)));
    EXPECT_EQ(failed.count(), 2);
    EXPECT_EQ(closing.count(), 0) << "nobody has to let go of anything";
    EXPECT_EQ(document.workspace().GetDataSources().GetCount(), 1);
}

TEST_F(Document, LayersFollowARenamedDatasource)
{
    ASSERT_TRUE(document.openFile(towns()));
    CTxMap *map = document.addMap(u"Map"_s);
    map->GetLayers().Add(std::make_unique<CTxLayer>(&document.workspace().GetDataSources(), u"towns"_s, u"towns"_s));
    EXPECT_TRUE(document.renameDataSource(u"towns"_s, u"cities"_s));
    EXPECT_NE(map->GetLayers().GetLayerAt(0)->GetDataset(), nullptr);
    EXPECT_FALSE(document.renameDataSource(u"cities"_s, QString()));
    ASSERT_TRUE(document.closeDataSource(u"cities"_s));
    EXPECT_EQ(map->GetLayers().GetLayerAt(0)->GetDataset(), nullptr);
    ASSERT_TRUE(document.openFile(towns()));
    EXPECT_NE(map->GetLayers().GetLayerAt(0)->GetDataset(), nullptr) << "it has the alias back that it had";
}

TEST_F(Document, AsksBeforeATransactionIsTakenBack)
{
    CTxDataSource *source = createNative(document.workspace(), u"own"_s);
    ASSERT_NE(source, nullptr);
    ASSERT_TRUE(source->BeginTrans());
    EXPECT_FALSE(document.closeDataSource(u"own"_s));
    EXPECT_EQ(prompts.questions.size(), 1);
    EXPECT_NE(document.workspace().GetDataSources().find(u"own"_s), nullptr);
    prompts.confirmAnswer = true;
    EXPECT_TRUE(document.closeDataSource(u"own"_s));
}

TEST_F(Document, AMissingDatasourceStaysUntilItIsFoundOrRemoved)
{
    const QString file = towns();
    const QString gone = districts();
    ASSERT_EQ(document.openFiles({file, gone}), 2);
    const QString path = folder.filePath(u"w.txw"_s);
    ASSERT_TRUE(document.saveAs(path));
    ASSERT_TRUE(QFile::rename(file, folder.filePath(u"moved.geojson"_s)));
    ASSERT_TRUE(QFile::remove(gone));
    QSignalSpy told(&document, &WorkspaceDocument::told);
    ASSERT_TRUE(document.openWorkspace(path));
    ASSERT_EQ(document.workspace().GetMissingDataSources().size(), 2);
    const auto lines = std::count_if(told.cbegin(), told.cend(), [](const QList<QVariant> &line) {
        return line.first().toString().startsWith(u"Missing datasource"_s);
    });
    EXPECT_EQ(lines, 2);

    EXPECT_FALSE(document.locateMissing(u"towns"_s, QString()));
    EXPECT_TRUE(document.locateMissing(u"towns"_s, folder.filePath(u"moved.geojson"_s)));
    EXPECT_NE(document.workspace().GetDataSources().find(u"towns"_s), nullptr);
    EXPECT_TRUE(document.removeMissing(u"districts"_s));
    EXPECT_TRUE(document.workspace().GetMissingDataSources().isEmpty());
}

} // namespace
